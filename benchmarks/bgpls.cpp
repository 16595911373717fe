// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// BGP-LS keys of all six route types.
#include "as_number.hpp"

namespace bgpdt::bench {
namespace {

constexpr u32 ipv4_zero = 0;
constexpr const char *type_names[] = {"", "NODE", "LINK", "IPV4-PREFIX", "IPV6-PREFIX", "TEPOLICY", "SRV6-SID"};
constexpr const char *protocol_names[] = {"",       "ISIS-LEVEL-1", "ISIS-LEVEL-2", "OSPFv2", "DIRECT",
                                          "STATIC", "OSPFv3",       "BGP",          "",       "SEGMENT-ROUTING"};

bool is_isis(u32 protocol) { return protocol == SYSDT_LS_ISIS_LEVEL_1 || protocol == SYSDT_LS_ISIS_LEVEL_2; }
bool is_ospf(u32 protocol) { return protocol == SYSDT_LS_OSPFV2 || protocol == SYSDT_LS_OSPFV3; }

/// The groups of a node, those of a speaker of BGP among them.
struct Node {
    u32 seen = 0;
    SYSDT_AsNum as{};
    SYSDT_AsNum member{};
    u32 ls_id = 0;
    u32 area = 0;
    u32 bgp_router = 0;
    u32 ipv4_router = 0;
    u8 ipv6_router[16]{};
    u8 igp_router[8]{};
};
enum : u32 {
    has_as = 1,
    has_ls_id = 2,
    has_area = 4,
    has_igp = 8,
    has_bgp = 16,
    has_member = 32,
    has_v4 = 64,
    has_v6 = 128
};

/// Whether a route type's local node has the groups that it must have, and none that it must not have.
bool fits(const Node &node, u32 type, u32 protocol)
{
    switch (type) {
    case SYSDT_LS_LINK:
    case SYSDT_LS_SRV6_SID: {
        const bool bgp = protocol == SYSDT_LS_BGP;
        const u32 needed = bgp ? has_ls_id | has_bgp : has_ls_id | has_area;
        return (node.seen & needed) == needed && (node.seen & (bgp ? has_area : has_bgp)) == 0;
    }
    case SYSDT_LS_TE_POLICY: return (node.seen & (has_ls_id | has_member)) == has_ls_id;
    default: return (node.seen & (has_ls_id | has_bgp | has_member)) == has_ls_id;
    }
}

template <class Descriptor>
void store_igp(const Node &node, Descriptor &out)
{
    out.as = node.as;
    out.bgpLsId = node.ls_id;
    out.ospfArea = node.area;
    std::memcpy(out.igpRouterId, node.igp_router, sizeof node.igp_router);
}

void store_member(const Node &node, SYSDT_LsMemberNodeDesc &out)
{
    store_igp(node, out);
    out.memberAs = node.member;
}

void store_local(const Node &node, u32 type, SYSDT_LsPrefix &out)
{
    switch (type) {
    case SYSDT_LS_LINK:
        store_member(node, out.link.local);
        out.link.localBgpRouterId = node.bgp_router;
        break;
    case SYSDT_LS_SRV6_SID:
        store_member(node, out.srv6Sid.local);
        out.srv6Sid.bgpRouterId = node.bgp_router;
        break;
    case SYSDT_LS_TE_POLICY:
        out.tePolicy.as = node.as;
        out.tePolicy.bgpLsId = node.ls_id;
        out.tePolicy.bgpRouterId = node.bgp_router;
        out.tePolicy.ipv4RouterId = node.ipv4_router;
        std::memcpy(out.tePolicy.ipv6RouterId, node.ipv6_router, sizeof node.ipv6_router);
        break;
    default: store_igp(node, out.node.local);
    }
}

/// The block that the contract names for the state of a parse.
struct Context {
    void *block = SYS_DataTypeMalloc(sizeof(LsPrefixParseContext));
    ~Context() { SYS_DataTypeFree(block); }
};

// ------------------------------------------------------------------------------------------------ floor

/// A place in a text.
struct Cursor {
    const char *at;
    const char *end; ///< the text's NUL
};

template <std::size_t size>
bool word(Cursor &text, const char (&expected)[size])
{
    if (text.end - text.at < static_cast<std::ptrdiff_t>(size - 1) || std::memcmp(text.at, expected, size - 1) != 0)
        return false;
    text.at += size - 1;
    return true;
}

bool close(const char *&at) { return skip(at, ']'); }
bool once(u32 &seen, u32 bit) { return (seen & bit) == 0 && ((seen |= bit), true); }

bool address_group(const char *&at, u32 &out) { return ipv4(at, out) && close(at); }
bool number_group(const char *&at, u32 &out, u32 max = UINT32_MAX) { return number(at, out, max) && close(at); }

bool igp_router(const char *&at, u32 protocol, u8 *out)
{
    if (is_isis(protocol)) {
        constexpr u8 places[] = {0, 2, 5, 7, 10, 12, 15};
        for (int i = 0; i < 7; ++i) {
            const u32 high = hex_value(at[places[i]]);
            const u32 low = high < 16 ? hex_value(at[places[i] + 1]) : 16;
            if (low >= 16)
                return false;
            out[i] = static_cast<u8>(high << 4 | low);
        }
        at += 17;
        return true;
    }
    u32 router;
    if (!is_ospf(protocol) || !ipv4(at, router))
        return false;
    std::memcpy(out, &(router = swapped(router)), sizeof router);
    if (*at == '/') {
        ++at;
        if (!ipv4(at, router))
            return false;
        std::memcpy(out + 4, &(router = swapped(router)), sizeof router);
    }
    return true;
}

/// Groups in any order, each once, up to the bracket that closes the node.
bool floor_node(Cursor &text, u32 protocol, Node &out)
{
    while (*text.at == '[') {
        ++text.at;
        bool taken = false;
        switch (*text.at) {
        case 'a':
            taken = word(text, "as") && (*text.at == ']' || (once(out.seen, has_as) && floor_as(text.at, out.as))) &&
                    close(text.at);
            break;
        case 'b':
            taken =
                text.at[4] == 'l'
                    ? word(text, "bgp-ls-identifier") && once(out.seen, has_ls_id) && address_group(text.at, out.ls_id)
                    : word(text, "bgp-router-id") && once(out.seen, has_bgp) && address_group(text.at, out.bgp_router);
            break;
        case 'i':
            if (text.at[1] == 'g') {
                taken = word(text, "igp-router-id") && once(out.seen, has_igp) &&
                        igp_router(text.at, protocol, out.igp_router) && close(text.at);
            } else if (text.at[3] == '4') {
                taken =
                    word(text, "ipv4-router-id") && once(out.seen, has_v4) && address_group(text.at, out.ipv4_router);
            } else {
                taken = word(text, "ipv6-router-id") && once(out.seen, has_v6) && ipv6(text.at, out.ipv6_router) &&
                        close(text.at);
            }
            break;
        case 'o':
            taken = word(text, "ospf-area-id") && once(out.seen, has_area) && address_group(text.at, out.area);
            break;
        case 'm':
            taken = word(text, "member-as") && once(out.seen, has_member) && floor_as(text.at, out.member) &&
                    close(text.at);
            break;
        default: break;
        }
        if (!taken)
            return false;
    }
    return close(text.at);
}

/// IPv6 if there is a colon.
bool either_address(const char *&at, u32 &v4, u8 *v6, bool &is_v6)
{
    const char *const start = at;
    is_v6 = !ipv4(at, v4);
    at = is_v6 ? start : at;
    return !is_v6 || ipv6(at, v6);
}

bool link_address(const char *&at, u32 &v4, u8 *v6)
{
    u32 number;
    bool is_v6;
    if (!either_address(at, number, v6, is_v6))
        return false;
    v4 = is_v6 ? v4 : number;
    return close(at);
}

bool floor_link(Cursor &text, u32 protocol, SYSDT_LsLink &out)
{
    u32 seen = 0;
    u32 local_id = 0;
    u32 remote_id = 0;
    u32 interface = 0;
    u32 neighbor = 0;
    u32 mt_id = protocol == SYSDT_LS_BGP ? 0 : SYSDT_LS_NO_MT_ID;
    while (*text.at == '[') {
        ++text.at;
        bool taken = false;
        switch (*text.at) {
        case 'i':
            taken = text.at[1] == 'f' ? word(text, "if-address") && link_address(text.at, interface, out.ipv6Interface)
                                      : word(text, "identifier") && once(seen, 1) && ipv4(text.at, local_id) &&
                                            skip(text.at, '.') && address_group(text.at, remote_id);
            break;
        case 'p': taken = word(text, "peer-address") && link_address(text.at, neighbor, out.ipv6Neighbor); break;
        case 'l':
            if (text.at[1] == 'o') {
                taken = word(text, "local") && once(seen, 2) && link_address(text.at, interface, out.ipv6Interface);
            } else {
                taken = text.at[5] == 'l'
                            ? word(text, "link-local-id") && once(seen, 8) && address_group(text.at, local_id)
                            : word(text, "link-remote-id") && once(seen, 16) && address_group(text.at, remote_id);
            }
            break;
        case 'r':
            taken = word(text, "remote") && once(seen, 4) && link_address(text.at, neighbor, out.ipv6Neighbor);
            break;
        case 'm': taken = word(text, "mt-id") && once(seen, 32) && number_group(text.at, mt_id); break;
        default: break;
        }
        if (!taken)
            return false;
    }
    out.linkLocalId = local_id;
    out.linkRemoteId = remote_id;
    out.ipv4Interface = interface;
    out.ipv4Neighbor = neighbor;
    out.mtId = mt_id;
    return close(text.at) && (protocol != SYSDT_LS_BGP || (seen & 7) == 7);
}

/// Of IPv4 or IPv6, which have the same head.
bool floor_prefix(Cursor &text, u32 type, u32 protocol, SYSDT_LsPrefix &out)
{
    u32 seen = 0;
    u32 mt_id = SYSDT_LS_NO_MT_ID;
    u32 ospf_type = 0;
    while (*text.at == '[') {
        ++text.at;
        bool taken = false;
        u32 length;
        switch (*text.at) {
        case 'm': taken = word(text, "mt-id") && once(seen, 1) && number_group(text.at, mt_id); break;
        case 'o': taken = word(text, "ospf-route-type") && once(seen, 2) && number_group(text.at, ospf_type); break;
        case 'p':
            if (!word(text, "prefix") || !once(seen, 4))
                return false;
            if (type == SYSDT_LS_IPV4_PREFIX) {
                u32 prefix = 0;
                taken = ipv4(text.at, prefix) && skip(text.at, '/') && number_group(text.at, length);
                out.ipv4Prefix.prefix = prefix;
                out.ipv4Prefix.prefixLength = taken ? static_cast<u8>(length) : u8{0};
            } else {
                taken = ipv6(text.at, out.ipv6Prefix.prefix) && skip(text.at, '/') && number_group(text.at, length);
                out.ipv6Prefix.prefixLength = taken ? static_cast<u8>(length) : u8{0};
            }
            break;
        default: break;
        }
        if (!taken)
            return false;
    }
    out.ipv4Prefix.mtId = mt_id;
    out.ipv4Prefix.ospfRouteType = ospf_type;
    const u32 needed = type == SYSDT_LS_IPV4_PREFIX || protocol == SYSDT_LS_OSPFV3 ? 6 : 7;
    return close(text.at) && (seen & needed) == needed;
}

bool te_address(const char *&at, LsIpAddr &out)
{
    u32 number;
    bool is_v6;
    if (!either_address(at, number, out.ipv6, is_v6))
        return false;
    out.family = is_v6;
    out.ipv4 = is_v6 ? ipv4_zero : number;
    return close(at);
}

bool floor_te(Cursor &text, SYSDT_LsTePolicy &out)
{
    u32 seen = 0;
    while (*text.at == '[') {
        ++text.at;
        bool taken = false;
        u32 number = 0;
        switch (*text.at) {
        case 'p':
            taken = word(text, "protocol-origin") && once(seen, 1) && number_group(text.at, number, 255);
            out.protocolOrigin = static_cast<u8>(number);
            break;
        case 'F':
            taken = word(text, "Flag") && once(seen, 2) && number_group(text.at, number, 255);
            out.flags = static_cast<u8>(number);
            break;
        case 'e': taken = word(text, "endpoint") && once(seen, 4) && te_address(text.at, out.endpoint); break;
        case 'c':
            taken = word(text, "color") && once(seen, 8) && number_group(text.at, number);
            out.color = number;
            break;
        case 'o':
            taken =
                text.at[12] == 's'
                    ? word(text, "originator-as") && once(seen, 16) &&
                          (floor_as(text.at, out.originatorAs) || text.at[-1] == '0') && close(text.at)
                    : word(text, "originator-address") && once(seen, 32) && te_address(text.at, out.originatorAddress);
            break;
        case 'd':
            taken = word(text, "discriminator") && once(seen, 64) && number_group(text.at, number);
            out.discriminator = number;
            break;
        default: break;
        }
        if (!taken)
            return false;
    }
    return close(text.at) && seen == 127;
}

bool floor_sid(Cursor &text, SYSDT_LsSrv6Sid &out)
{
    u32 seen = 0;
    u32 mt_id = SYSDT_LS_NO_MT_ID;
    while (*text.at == '[') {
        ++text.at;
        const bool taken = *text.at == 'm'
                               ? word(text, "mt-id") && once(seen, 1) && number_group(text.at, mt_id)
                               : word(text, "sid") && once(seen, 2) && ipv6(text.at, out.sid) && close(text.at);
        if (!taken)
            return false;
    }
    out.mtId = mt_id;
    return close(text.at) && (seen & 2) != 0;
}

u32 floor_type(Cursor &text)
{
    switch (*text.at) {
    case 'N': return word(text, "NODE]") ? SYSDT_LS_NODE : 0;
    case 'L': return word(text, "LINK]") ? SYSDT_LS_LINK : 0;
    case 'I':
        return text.at[3] == '4' ? (word(text, "IPV4-PREFIX]") ? SYSDT_LS_IPV4_PREFIX : 0)
                                 : (word(text, "IPV6-PREFIX]") ? SYSDT_LS_IPV6_PREFIX : 0);
    case 'T': return word(text, "TEPOLICY]") ? SYSDT_LS_TE_POLICY : 0;
    default: return word(text, "SRV6-SID]") ? SYSDT_LS_SRV6_SID : 0;
    }
}

u32 floor_protocol(Cursor &text)
{
    switch (*text.at) {
    case 'I': {
        const bool known = word(text, "ISIS-LEVEL-");
        const u32 level = known ? static_cast<u32>(static_cast<u8>(*text.at++)) - '0' : 0;
        return (level == 1 || level == 2) && close(text.at) ? level : 0;
    }
    case 'O':
        return text.at[5] == '2' ? (word(text, "OSPFv2]") ? SYSDT_LS_OSPFV2 : 0)
                                 : (word(text, "OSPFv3]") ? SYSDT_LS_OSPFV3 : 0);
    case 'D': return word(text, "DIRECT]") ? SYSDT_LS_DIRECT : 0;
    case 'B': return word(text, "BGP]") ? SYSDT_LS_BGP : 0;
    case 'S':
        return text.at[1] == 'T' ? (word(text, "STATIC]") ? SYSDT_LS_STATIC : 0)
                                 : (word(text, "SEGMENT-ROUTING]") ? SYSDT_LS_SEGMENT_ROUTING : 0);
    default: return 0;
    }
}

bool floor_groups(Cursor text, SYSDT_LsPrefix &out)
{
    if (!skip(text.at, '['))
        return false;
    const u32 type = floor_type(text);
    if (type == 0 || !skip(text.at, '['))
        return false;
    const u32 protocol = floor_protocol(text);
    u32 identifier;
    Node local;
    if (protocol == 0 || !word(text, "[IDENTIFIER") || !number_group(text.at, identifier) || !word(text, "[LOCAL") ||
        !floor_node(text, protocol, local) || !fits(local, type, protocol))
        return false;
    out.head = {type, protocol, identifier};
    store_local(local, type, out);
    bool taken = true;
    switch (type) {
    case SYSDT_LS_LINK: {
        Node remote;
        taken = word(text, "[REMOTE") && floor_node(text, protocol, remote) && (remote.seen & has_ls_id) != 0 &&
                word(text, "[LINK") && floor_link(text, protocol, out.link);
        store_member(remote, out.link.remote);
        out.link.remoteBgpRouterId = remote.bgp_router;
        break;
    }
    case SYSDT_LS_IPV4_PREFIX:
    case SYSDT_LS_IPV6_PREFIX: taken = word(text, "[PREFIX") && floor_prefix(text, type, protocol, out); break;
    case SYSDT_LS_TE_POLICY: taken = word(text, "[TE") && floor_te(text, out.tePolicy); break;
    case SYSDT_LS_SRV6_SID: taken = word(text, "[SID") && floor_sid(text, out.srv6Sid); break;
    default: break;
    }
    return taken && *text.at == '\0';
}

bool floor_parse(char *text, SYSDT_LsPrefix &out)
{
    const char *const at = SYSDT_BTrim(text);
    const Context context;
    return floor_groups({at, at + std::strlen(at)}, out);
}

char *put_name(char *out, const char *name) { return stpcpy(out, name); }
char *put_optional_as(char *out, const SYSDT_AsNum &as)
{
    return as.asNumValue == 0 ? out : put_as(out, as.asNumValue, as.asType);
}

template <class Descriptor>
char *put_igp(char *out, const Descriptor &node)
{
    out = put_ipv4(put(put_optional_as(put(out, "[as"), node.as), "][bgp-ls-identifier"), node.bgpLsId);
    out = put(put_ipv4(put(out, "][ospf-area-id"), node.ospfArea), "][igp-router-id");
    for (int i = 0; i < SYSDT_LS_ROUTER_ID_SIZE - 1 && node.igpRouterId[i] != 0; ++i)
        out = put(out, static_cast<char>(node.igpRouterId[i]));
    return put(out, "]]");
}

char *put_bgp(char *out, const SYSDT_LsMemberNodeDesc &node, u32 router)
{
    out = put_ipv4(put(put_optional_as(put(out, "[as"), node.as), "][bgp-ls-identifier"), node.bgpLsId);
    out = put(put_ipv4(put(out, "][bgp-router-id"), router), ']');
    if (node.memberAs.asNumValue != 0)
        out = put(put_optional_as(put(out, "[member-as"), node.memberAs), ']');
    return put(out, ']');
}

char *put_member(char *out, const SYSDT_LsMemberNodeDesc &node, u32 router, u32 protocol)
{
    return protocol == SYSDT_LS_BGP ? put_bgp(out, node, router) : put_igp(out, node);
}

char *put_link(char *out, const SYSDT_LsLink &link, u32 protocol)
{
    if (protocol == SYSDT_LS_BGP) {
        out = put_ipv4(put(put_ipv4(put(out, "[LINK[identifier"), link.linkLocalId), '.'), link.linkRemoteId);
        if ((link.ipv4Interface | link.ipv4Neighbor) == 0) {
            out = put_ipv6(put(out, "][local"), link.ipv6Interface);
            return put(put_ipv6(put(out, "][remote"), link.ipv6Neighbor), "]]");
        }
        out = put_ipv4(put(out, "][local"), link.ipv4Interface);
        return put(put_ipv4(put(out, "][remote"), link.ipv4Neighbor), "]]");
    }
    if ((link.linkLocalId | link.linkRemoteId) == 0) {
        out = put_ipv4(put(out, "[LINK[if-address"), link.ipv4Interface);
        out = put_ipv4(put(out, "][peer-address"), link.ipv4Neighbor);
        out = put_ipv6(put(out, "][if-address"), link.ipv6Interface);
        out = put_ipv6(put(out, "][peer-address"), link.ipv6Neighbor);
    } else {
        out = put_ipv4(put(out, "[LINK[link-local-id"), link.linkLocalId);
        out = put_ipv4(put(out, "][link-remote-id"), link.linkRemoteId);
    }
    if (link.mtId != SYSDT_LS_NO_MT_ID)
        out = put(put(out, "][mt-id"), u32{link.mtId});
    return put(out, "]]");
}

char *put_prefix(char *out, const SYSDT_LsPrefix &key, u32 type)
{
    const SYSDT_LsIpv4Prefix &prefix = key.ipv4Prefix;
    out = put(out, "[PREFIX[");
    if (prefix.mtId != SYSDT_LS_NO_MT_ID)
        out = put(put(put(out, "mt-id"), u32{prefix.mtId}), "][");
    out = put(put(put(out, "ospf-route-type"), u32{prefix.ospfRouteType}), "][prefix");
    out = type == SYSDT_LS_IPV4_PREFIX ? put_ipv4(out, prefix.prefix) : put_ipv6(out, key.ipv6Prefix.prefix);
    const u8 length = type == SYSDT_LS_IPV4_PREFIX ? prefix.prefixLength : key.ipv6Prefix.prefixLength;
    return put(put_octet(put(out, '/'), length), "]]");
}

char *put_te_address(char *out, const LsIpAddr &address)
{
    return address.family == 0 ? put_ipv4(out, address.ipv4) : put_ipv6(out, address.ipv6);
}

char *put_te(char *out, const SYSDT_LsTePolicy &te)
{
    out = put_octet(put(out, "[TE[protocol-origin"), te.protocolOrigin);
    out = put_te_address(put(put_octet(put(out, "][Flag"), te.flags), "][endpoint"), te.endpoint);
    out = put(put(put(out, "][color"), u32{te.color}), "][originator-as");
    out = put_as(out, te.originatorAs.asNumValue, te.originatorAs.asNumValue == 0 ? 0 : te.originatorAs.asType);
    out = put_te_address(put(out, "][originator-address"), te.originatorAddress);
    return put(put(put(out, "][discriminator"), u32{te.discriminator}), "]]");
}

char *put_te_node(char *out, const SYSDT_LsTePolicy &te)
{
    out = put_ipv4(put(put_optional_as(put(out, "[as"), te.as), "][bgp-ls-identifier"), te.bgpLsId);
    out = put_ipv4(put(out, "][bgp-router-id"), te.bgpRouterId);
    out = put_ipv4(put(out, "][ipv4-router-id"), te.ipv4RouterId);
    return put(put_ipv6(put(out, "][ipv6-router-id"), te.ipv6RouterId), "]]");
}

/// No key of the corpus needs more than the 512 characters that there are.
char *floor_print(const SYSDT_LsPrefix &key, char *out)
{
    const u32 type = key.head.routeType;
    const u32 protocol = key.head.protocolId;
    out = put(put_name(put(out, '['), type_names[type]), "][");
    out = put(put_name(out, protocol_names[protocol]), "][IDENTIFIER");
    out = put(put(out, static_cast<u32>(key.head.identifier)), "][LOCAL");
    switch (type) {
    case SYSDT_LS_LINK:
        out = put_member(out, key.link.local, key.link.localBgpRouterId, protocol);
        out = put_member(put(out, "[REMOTE"), key.link.remote, key.link.remoteBgpRouterId, protocol);
        return put_link(out, key.link, protocol);
    case SYSDT_LS_TE_POLICY: return put_te(put_te_node(out, key.tePolicy), key.tePolicy);
    case SYSDT_LS_SRV6_SID:
        out = put(put_member(out, key.srv6Sid.local, key.srv6Sid.bgpRouterId, protocol), "[SID[");
        if (protocol != SYSDT_LS_BGP && key.srv6Sid.mtId != SYSDT_LS_NO_MT_ID)
            out = put(put(put(out, "mt-id"), u32{key.srv6Sid.mtId}), "][");
        return put(put_ipv6(put(out, "sid"), key.srv6Sid.sid), "]]");
    case SYSDT_LS_NODE: return put_igp(out, key.node.local);
    default: return put_prefix(put_igp(out, key.node.local), key, type);
    }
}

// ------------------------------------------------------------------------------------------------ plain port

/// Cuts the text into groups and hands each over, without its brackets.
template <class Take>
bool for_groups(const char *text, Take take)
{
    while (*text != '\0') {
        char group[500];
        int depth = 0;
        std::size_t length = 0;
        if (*text != '[')
            return false;
        do {
            depth += text[length] == '[' ? 1 : text[length] == ']' ? -1 : 0;
            if (text[length++] == '\0')
                return false;
        } while (depth != 0);
        if (length - 2 >= sizeof group - 1)
            return false;
        std::memcpy(group, text + 1, length - 2);
        group[length - 2] = '\0';
        if (!take(group))
            return false;
        text += length;
    }
    return true;
}

/// What stands behind the keyword, or null.
char *after(char *group, const char *keyword)
{
    return std::strstr(group, keyword) == group ? group + std::strlen(keyword) : nullptr;
}

bool port_number(const char *text, u32 &out, u32 max = UINT32_MAX)
{
    return PAL_StrToUint32(text, &out) == SYSDT_OK && out <= max;
}

bool port_quad(const char *text, u32 &out) { return PAL_StrToIpAddr(text, &out) == SYSDT_OK; }
bool port_ipv6(const char *text, u8 *out) { return SMP_InetAToN6(text, out) == SYSDT_OK; }

bool port_igp_router(char *value, u32 protocol, u8 *out)
{
    if (is_isis(protocol)) {
        unsigned b[7];
        if (std::strlen(value) < 17 ||
            std::sscanf(value, "%2x%2x%*c%2x%2x%*c%2x%2x%*c%2x", &b[0], &b[1], &b[2], &b[3], &b[4], &b[5], &b[6]) != 7)
            return false;
        for (int i = 0; i < 7; ++i)
            out[i] = static_cast<u8>(b[i]);
        return true;
    }
    u32 address = 0;
    const auto store = [&address](u8 *at) {
        for (int i = 0; i < 4; ++i)
            at[i] = static_cast<u8>(address >> (24 - 8 * i));
    };
    if (char *const slash = std::strchr(value, '/'); slash != nullptr) {
        if (!port_quad(slash + 1, address))
            return false;
        store(out + 4);
        *slash = '\0';
    }
    if (!is_ospf(protocol) || !port_quad(value, address))
        return false;
    store(out);
    return true;
}

bool port_node(const char *text, u32 type, u32 protocol, Node &out)
{
    return for_groups(text, [&](char *group) {
        char *value = nullptr;
        if ((value = after(group, "as")) != nullptr) {
            value = SYSDT_BTrim(value);
            return *value == '\0' || (once(out.seen, has_as) && port_parse_as(value, out.as));
        }
        if ((value = after(group, "bgp-ls-identifier")) != nullptr)
            return once(out.seen, has_ls_id) && port_quad(value, out.ls_id);
        if ((value = after(group, "bgp-router-id")) != nullptr)
            return once(out.seen, has_bgp) && (port_quad(value, out.bgp_router) ||
                                               (type != SYSDT_LS_TE_POLICY && port_number(value, out.bgp_router)));
        if ((value = after(group, "ospf-area-id")) != nullptr)
            return once(out.seen, has_area) && port_quad(value, out.area);
        if ((value = after(group, "igp-router-id")) != nullptr)
            return once(out.seen, has_igp) && port_igp_router(value, protocol, out.igp_router);
        if ((value = after(group, "member-as")) != nullptr)
            return once(out.seen, has_member) && port_parse_as(value, out.member);
        if ((value = after(group, "ipv4-router-id")) != nullptr)
            return once(out.seen, has_v4) && port_quad(value, out.ipv4_router);
        if ((value = after(group, "ipv6-router-id")) != nullptr)
            return once(out.seen, has_v6) && port_ipv6(value, out.ipv6_router);
        return false;
    });
}

bool port_link_address(const char *value, u32 &v4, u8 *v6)
{
    return std::strchr(value, ':') != nullptr ? port_ipv6(value, v6) : port_quad(value, v4);
}

bool port_link(const char *text, u32 protocol, SYSDT_LsLink &out)
{
    u32 seen = 0;
    u32 local_id = 0;
    u32 remote_id = 0;
    u32 interface = 0;
    u32 neighbor = 0;
    u32 mt_id = protocol == SYSDT_LS_BGP ? 0 : SYSDT_LS_NO_MT_ID;
    const bool taken = for_groups(text, [&](char *group) {
        char *value = nullptr;
        if ((value = after(group, "identifier")) != nullptr) {
            char *dot = value;
            for (int dots = 0; *dot != '\0' && (dots += *dot == '.') < 4; ++dot) {
            }
            if (*dot == '\0')
                return false;
            *dot = '\0';
            return once(seen, 1) && port_quad(value, local_id) && port_quad(dot + 1, remote_id);
        }
        if ((value = after(group, "local")) != nullptr)
            return once(seen, 2) && port_link_address(value, interface, out.ipv6Interface);
        if ((value = after(group, "remote")) != nullptr)
            return once(seen, 4) && port_link_address(value, neighbor, out.ipv6Neighbor);
        if ((value = after(group, "link-local-id")) != nullptr)
            return once(seen, 8) && port_quad(value, local_id);
        if ((value = after(group, "link-remote-id")) != nullptr)
            return once(seen, 16) && port_quad(value, remote_id);
        if ((value = after(group, "if-address")) != nullptr)
            return port_link_address(value, interface, out.ipv6Interface);
        if ((value = after(group, "peer-address")) != nullptr)
            return port_link_address(value, neighbor, out.ipv6Neighbor);
        value = after(group, "mt-id");
        return value != nullptr && once(seen, 32) && port_number(value, mt_id);
    });
    out.linkLocalId = local_id;
    out.linkRemoteId = remote_id;
    out.ipv4Interface = interface;
    out.ipv4Neighbor = neighbor;
    out.mtId = mt_id;
    return taken && (protocol != SYSDT_LS_BGP || (seen & 7) == 7);
}

bool port_prefix(const char *text, u32 type, u32 protocol, SYSDT_LsPrefix &out)
{
    u32 seen = 0;
    u32 mt_id = SYSDT_LS_NO_MT_ID;
    u32 ospf_type = 0;
    const bool taken = for_groups(text, [&](char *group) {
        char *value = nullptr;
        if ((value = after(group, "mt-id")) != nullptr)
            return once(seen, 1) && port_number(value, mt_id);
        if ((value = after(group, "ospf-route-type")) != nullptr)
            return once(seen, 2) && port_number(value, ospf_type);
        value = after(group, "prefix");
        char *const slash = value == nullptr ? nullptr : std::strchr(value, '/');
        u32 length = 0;
        u32 address = 0;
        if (slash == nullptr || !once(seen, 4) || !port_number(slash + 1, length))
            return false;
        *slash = '\0';
        if (type == SYSDT_LS_IPV6_PREFIX) {
            out.ipv6Prefix.prefixLength = static_cast<u8>(length);
            return port_ipv6(value, out.ipv6Prefix.prefix);
        }
        const bool read = port_quad(value, address);
        out.ipv4Prefix.prefix = address;
        out.ipv4Prefix.prefixLength = static_cast<u8>(length);
        return read;
    });
    out.ipv4Prefix.mtId = mt_id;
    out.ipv4Prefix.ospfRouteType = ospf_type;
    const u32 needed = type == SYSDT_LS_IPV4_PREFIX || protocol == SYSDT_LS_OSPFV3 ? 6 : 7;
    return taken && (seen & needed) == needed;
}

bool port_te_address(const char *value, LsIpAddr &out)
{
    if (std::strchr(value, ':') != nullptr) {
        out.family = 1;
        return port_ipv6(value, out.ipv6);
    }
    u32 address = 0;
    const bool read = port_quad(value, address);
    out.ipv4 = address;
    return read;
}

bool port_te(const char *text, SYSDT_LsTePolicy &out)
{
    u32 seen = 0;
    return for_groups(text,
                      [&](char *group) {
                          char *value = nullptr;
                          u32 number = 0;
                          if ((value = after(group, "protocol-origin")) != nullptr) {
                              const bool read = once(seen, 1) && port_number(value, number, 255);
                              out.protocolOrigin = static_cast<u8>(number);
                              return read;
                          }
                          if ((value = after(group, "Flag")) != nullptr) {
                              const bool read = once(seen, 2) && port_number(value, number, 255);
                              out.flags = static_cast<u8>(number);
                              return read;
                          }
                          if ((value = after(group, "endpoint")) != nullptr)
                              return once(seen, 4) && port_te_address(value, out.endpoint);
                          if ((value = after(group, "color")) != nullptr) {
                              const bool read = once(seen, 8) && port_number(value, number);
                              out.color = number;
                              return read;
                          }
                          if ((value = after(group, "originator-as")) != nullptr) {
                              SYSDT_AsNum as{};
                              const bool read = once(seen, 16) && (port_parse_as(value, as) ||
                                                                   (port_number(value, number) && number == 0));
                              out.originatorAs = as;
                              return read;
                          }
                          if ((value = after(group, "originator-address")) != nullptr)
                              return once(seen, 32) && port_te_address(value, out.originatorAddress);
                          value = after(group, "discriminator");
                          const bool read = value != nullptr && once(seen, 64) && port_number(value, number);
                          out.discriminator = number;
                          return read;
                      }) &&
           seen == 127;
}

bool port_sid(const char *text, u32 protocol, SYSDT_LsSrv6Sid &out)
{
    u32 seen = 0;
    u32 mt_id = SYSDT_LS_NO_MT_ID;
    const bool taken = for_groups(text, [&](char *group) {
        char *value = after(group, "mt-id");
        if (value != nullptr)
            return protocol == SYSDT_LS_BGP || (once(seen, 1) && port_number(value, mt_id));
        value = after(group, "sid");
        return value != nullptr && once(seen, 2) && port_ipv6(value, out.sid);
    });
    out.mtId = mt_id;
    return taken && (seen & 2) != 0;
}

bool port_parse(char *text, SYSDT_LsPrefix &out)
{
    text = port::look(text, 1, 500);
    if (text == nullptr)
        return false;
    const Context context;
    u32 type = 0;
    u32 protocol = 0;
    u32 seen = 0;
    const bool taken = for_groups(text, [&](char *group) {
        for (u32 i = 1; i < std::size(type_names); ++i) {
            if (std::strcmp(group, type_names[i]) == 0) {
                type = i;
                return once(seen, 1);
            }
        }
        for (u32 i = 1; i < std::size(protocol_names); ++i) {
            if (std::strcmp(group, protocol_names[i]) == 0) {
                protocol = i;
                return type != 0 && once(seen, 2);
            }
        }
        char *value = nullptr;
        u64 identifier = 0;
        if (type == 0)
            return false;
        if ((value = after(group, "IDENTIFIER")) != nullptr) {
            const bool read = once(seen, 4) && PAL_StrToUint64(value, &identifier) == SYSDT_OK;
            out.head.identifier = static_cast<u32>(identifier);
            return read;
        }
        if ((value = after(group, "LOCAL")) != nullptr) {
            Node node;
            const bool read = once(seen, 8) && port_node(value, type, protocol, node) && fits(node, type, protocol);
            store_local(node, type, out);
            return read;
        }
        if ((value = after(group, "REMOTE")) != nullptr) {
            Node node;
            const bool read = type == SYSDT_LS_LINK && once(seen, 16) && port_node(value, type, protocol, node) &&
                              (node.seen & has_ls_id) != 0;
            store_member(node, out.link.remote);
            out.link.remoteBgpRouterId = node.bgp_router;
            return read;
        }
        if ((value = after(group, "LINK")) != nullptr)
            return type == SYSDT_LS_LINK && once(seen, 32) && port_link(value, protocol, out.link);
        if ((value = after(group, "PREFIX")) != nullptr)
            return (type == SYSDT_LS_IPV4_PREFIX || type == SYSDT_LS_IPV6_PREFIX) && once(seen, 0x100) &&
                   port_prefix(value, type, protocol, out);
        if ((value = after(group, "TE")) != nullptr)
            return type == SYSDT_LS_TE_POLICY && once(seen, 0x200) && port_te(value, out.tePolicy);
        value = after(group, "SID");
        return value != nullptr && type == SYSDT_LS_SRV6_SID && once(seen, 0x400) &&
               port_sid(value, protocol, out.srv6Sid);
    });
    out.head.routeType = type;
    out.head.protocolId = protocol;
    constexpr u32 required[] = {0, 0xF, 0x3F, 0x10F, 0x10F, 0x20F, 0x40F};
    return taken && (seen & required[type]) == required[type];
}

/// snprintf piece by piece, and short-lived texts of fields.
struct Printer {
    char *out;
    std::size_t size;
    int length = 0;
    char fields[8][50]{};
    int used = 0;

    template <class... Arguments>
    void put(const char *format, Arguments... arguments)
    {
        length += std::snprintf(out + length, size - static_cast<std::size_t>(length), format, arguments...);
        used = 0;
    }
    char *field() { return fields[used++]; }
    const char *as(const SYSDT_AsNum &number)
    {
        char *const text = field();
        *text = '\0';
        if (number.asNumValue != 0)
            port_as(number.asNumValue, number.asType, text, 32);
        return text;
    }
    const char *member(const SYSDT_AsNum &number)
    {
        char inner[32];
        char *const text = field();
        *text = '\0';
        if (number.asNumValue != 0) {
            port_as(number.asNumValue, number.asType, inner, sizeof inner);
            (void)std::snprintf(text, 50, "[member-as%s]", inner);
        }
        return text;
    }
    const char *quad(u32 address) { return PAL_IpAddrToStr(address, field()); }
    const char *ipv6(const u8 *address) { return inet_ntop6(address, field(), 50); }
    const char *either(const LsIpAddr &address)
    {
        return address.family == 0 ? quad(address.ipv4) : ipv6(address.ipv6);
    }
    const char *igp(const u8 *id)
    {
        char *const text = field();
        (void)std::snprintf(text, 50, "%s", reinterpret_cast<const char *>(id));
        return text;
    }

    template <class Descriptor>
    void igp_node(const char *name, const Descriptor &node)
    {
        put("[%s[as%s][bgp-ls-identifier%s][ospf-area-id%s][igp-router-id%s]]", name, as(node.as), quad(node.bgpLsId),
            quad(node.ospfArea), igp(node.igpRouterId));
    }
    void member_node(const char *name, const SYSDT_LsMemberNodeDesc &node, u32 router, u32 protocol)
    {
        if (protocol == SYSDT_LS_BGP) {
            put("[%s[as%s][bgp-ls-identifier%s][bgp-router-id%s]%s]", name, as(node.as), quad(node.bgpLsId),
                quad(router), member(node.memberAs));
        } else {
            igp_node(name, node);
        }
    }
};

void port_print_link(Printer &to, const SYSDT_LsLink &link, u32 protocol)
{
    if (protocol == SYSDT_LS_BGP) {
        const bool v4 = link.ipv4Interface != 0 || link.ipv4Neighbor != 0;
        to.put("[LINK[identifier%s.%s][local%s][remote%s]]", to.quad(link.linkLocalId), to.quad(link.linkRemoteId),
               v4 ? to.quad(link.ipv4Interface) : to.ipv6(link.ipv6Interface),
               v4 ? to.quad(link.ipv4Neighbor) : to.ipv6(link.ipv6Neighbor));
        return;
    }
    if (link.linkLocalId == 0 && link.linkRemoteId == 0) {
        to.put("[LINK[if-address%s][peer-address%s][if-address%s][peer-address%s]", to.quad(link.ipv4Interface),
               to.quad(link.ipv4Neighbor), to.ipv6(link.ipv6Interface), to.ipv6(link.ipv6Neighbor));
    } else {
        to.put("[LINK[link-local-id%s][link-remote-id%s]", to.quad(link.linkLocalId), to.quad(link.linkRemoteId));
    }
    if (link.mtId != SYSDT_LS_NO_MT_ID)
        to.put("[mt-id%u]]", u32{link.mtId});
    else
        to.put("%s", "]");
}

int port_print(const SYSDT_LsPrefix &key, char *out, std::size_t size)
{
    Printer to{out, size};
    const u32 type = key.head.routeType;
    const u32 protocol = key.head.protocolId;
    to.put("[%s][%s][IDENTIFIER%llu]", type_names[type], protocol_names[protocol],
           static_cast<unsigned long long>(key.head.identifier));
    switch (type) {
    case SYSDT_LS_LINK:
        to.member_node("LOCAL", key.link.local, key.link.localBgpRouterId, protocol);
        to.member_node("REMOTE", key.link.remote, key.link.remoteBgpRouterId, protocol);
        port_print_link(to, key.link, protocol);
        break;
    case SYSDT_LS_TE_POLICY: {
        const SYSDT_LsTePolicy &te = key.tePolicy;
        to.put("[LOCAL[as%s][bgp-ls-identifier%s][bgp-router-id%s][ipv4-router-id%s][ipv6-router-id%s]]", to.as(te.as),
               to.quad(te.bgpLsId), to.quad(te.bgpRouterId), to.quad(te.ipv4RouterId), to.ipv6(te.ipv6RouterId));
        const char *const as = te.originatorAs.asNumValue == 0 ? "0" : to.as(te.originatorAs);
        to.put("[TE[protocol-origin%u][Flag%u][endpoint%s][color%u][originator-as%s][originator-address%s]"
               "[discriminator%u]]",
               te.protocolOrigin, te.flags, to.either(te.endpoint), u32{te.color}, as, to.either(te.originatorAddress),
               u32{te.discriminator});
        break;
    }
    case SYSDT_LS_SRV6_SID:
        to.member_node("LOCAL", key.srv6Sid.local, key.srv6Sid.bgpRouterId, protocol);
        if (protocol == SYSDT_LS_BGP || key.srv6Sid.mtId == SYSDT_LS_NO_MT_ID)
            to.put("[SID[sid%s]]", to.ipv6(key.srv6Sid.sid));
        else
            to.put("[SID[mt-id%u][sid%s]]", u32{key.srv6Sid.mtId}, to.ipv6(key.srv6Sid.sid));
        break;
    case SYSDT_LS_NODE: to.igp_node("LOCAL", key.node.local); break;
    default: {
        to.igp_node("LOCAL", key.node.local);
        const SYSDT_LsIpv4Prefix &prefix = key.ipv4Prefix;
        const bool v4 = type == SYSDT_LS_IPV4_PREFIX;
        const char *const text = v4 ? to.quad(prefix.prefix) : to.ipv6(key.ipv6Prefix.prefix);
        const unsigned length = v4 ? prefix.prefixLength : key.ipv6Prefix.prefixLength;
        if (prefix.mtId == SYSDT_LS_NO_MT_ID) {
            to.put("[PREFIX[ospf-route-type%u][prefix%s/%u]]", u32{prefix.ospfRouteType}, text, length);
        } else {
            to.put("[PREFIX[mt-id%u][ospf-route-type%u][prefix%s/%u]]", u32{prefix.mtId}, u32{prefix.ospfRouteType},
                   text, length);
        }
    }
    }
    return to.length;
}

// ------------------------------------------------------------------------------------------------ corpora

std::string group(const std::string &name, const std::string &value) { return '[' + name + value + ']'; }

std::string isis_id(Random &r) { return r.hex(4) + '.' + r.hex(4) + '.' + r.hex(4) + ".00"; }
std::string ospf_id(Random &r) { return r.ipv4() + (r.percent(20) ? '/' + r.ipv4() : ""); }

std::string head(u32 type, u32 protocol, Random &r)
{
    return group(type_names[type], "") + group(protocol_names[protocol], "") + group("IDENTIFIER", r.decimal(0, 65535));
}

std::string igp_node(const char *name, u32 protocol, Random &r)
{
    return group(name, group("as", r.percent(50) ? r.as2() : r.as4()) + group("bgp-ls-identifier", r.ipv4()) +
                           group("ospf-area-id", "0.0.0." + r.decimal(0, 255)) +
                           group("igp-router-id", is_isis(protocol) ? isis_id(r) : ospf_id(r)));
}

std::string bgp_node(const char *name, Random &r)
{
    return group(name, group("as", r.percent(50) ? r.as2() : r.as4()) + group("bgp-ls-identifier", r.ipv4()) +
                           group("bgp-router-id", r.ipv4()) + (r.percent(50) ? group("member-as", r.as2()) : ""));
}

u32 igp_protocol(Random &r)
{
    constexpr u32 protocols[] = {SYSDT_LS_ISIS_LEVEL_1, SYSDT_LS_ISIS_LEVEL_2, SYSDT_LS_OSPFV2, SYSDT_LS_OSPFV3};
    return protocols[r.below(4)];
}

std::string mt_id(Random &r, u32 chance = 30) { return r.percent(chance) ? group("mt-id", r.decimal(0, 4095)) : ""; }

std::string igp_link(Random &r)
{
    const u32 protocol = igp_protocol(r);
    const std::string descriptor = r.percent(50) ? group("if-address", r.ipv4()) + group("peer-address", r.ipv4()) +
                                                       group("if-address", r.ipv6()) + group("peer-address", r.ipv6())
                                                 : group("link-local-id", r.ipv4()) + group("link-remote-id", r.ipv4());
    return head(SYSDT_LS_LINK, protocol, r) + igp_node("LOCAL", protocol, r) + igp_node("REMOTE", protocol, r) +
           group("LINK", descriptor + mt_id(r));
}

std::string bgp_link(Random &r)
{
    const bool v6 = r.percent(50);
    const std::string descriptor = group("identifier", r.ipv4() + '.' + r.ipv4()) +
                                   group("local", v6 ? r.ipv6() : r.ipv4()) + group("remote", v6 ? r.ipv6() : r.ipv4());
    return head(SYSDT_LS_LINK, SYSDT_LS_BGP, r) + bgp_node("LOCAL", r) + bgp_node("REMOTE", r) +
           group("LINK", descriptor);
}

std::string prefix(u32 type, Random &r)
{
    const u32 protocol = igp_protocol(r);
    const bool v4 = type == SYSDT_LS_IPV4_PREFIX;
    return head(type, protocol, r) + igp_node("LOCAL", protocol, r) +
           group("PREFIX",
                 mt_id(r, v4 || protocol == SYSDT_LS_OSPFV3 ? 30 : 100) + group("ospf-route-type", r.decimal(0, 6)) +
                     group("prefix", v4 ? r.ipv4() + '/' + r.decimal(8, 32) : r.ipv6() + '/' + r.decimal(16, 128)));
}

std::string te_policy(Random &r)
{
    const bool v6 = r.percent(50);
    const std::string node = group("as", r.as4()) + group("bgp-ls-identifier", r.ipv4()) +
                             group("bgp-router-id", r.ipv4()) + group("ipv4-router-id", r.ipv4()) +
                             group("ipv6-router-id", r.ipv6());
    const std::string te = group("protocol-origin", r.decimal(1, 3)) + group("Flag", r.decimal(0, 255)) +
                           group("endpoint", v6 ? r.ipv6() : r.ipv4()) + group("color", r.decimal()) +
                           group("originator-as", r.as4()) + group("originator-address", v6 ? r.ipv6() : r.ipv4()) +
                           group("discriminator", r.decimal());
    return head(SYSDT_LS_TE_POLICY, SYSDT_LS_SEGMENT_ROUTING, r) + group("LOCAL", node) + group("TE", te);
}

std::string sid(Random &r)
{
    const bool bgp = r.percent(30);
    const u32 protocol = bgp ? SYSDT_LS_BGP : igp_protocol(r);
    return head(SYSDT_LS_SRV6_SID, protocol, r) + (bgp ? bgp_node("LOCAL", r) : igp_node("LOCAL", protocol, r)) +
           group("SID", (bgp ? "" : mt_id(r)) + group("sid", r.ipv6()));
}

struct Sample {
    const char *name;
    std::string (*text)(Random &);
};
constexpr Sample samples[] = {
    {"BGP-LS node",
     [](Random &r) {
         const u32 protocol = igp_protocol(r);
         return head(SYSDT_LS_NODE, protocol, r) + igp_node("LOCAL", protocol, r);
     }},
    {"BGP-LS link IGP", igp_link},
    {"BGP-LS link BGP", bgp_link},
    {"BGP-LS IPv4 prefix", [](Random &r) { return prefix(SYSDT_LS_IPV4_PREFIX, r); }},
    {"BGP-LS IPv6 prefix", [](Random &r) { return prefix(SYSDT_LS_IPV6_PREFIX, r); }},
    {"BGP-LS TE policy", te_policy},
    {"BGP-LS SRv6 SID", sid},
};

} // namespace

void add_bgpls(Kinds &kinds)
{
    constexpr u32 block = 513;
    constexpr Converter floor{format_in<floor_parse, SYSDT_LsPrefix, SYSDT_TYPE_BGPLSPREFIX, true>,
                              floor_out<floor_print, SYSDT_LsPrefix, block, true>};
    constexpr Converter port{format_in<port_parse, SYSDT_LsPrefix, SYSDT_TYPE_BGPLSPREFIX, true>,
                             port_out<port_print, SYSDT_LsPrefix, block, true>};
    for (const auto &[name, text] : samples)
        kinds.push_back({name, "BGPLSPREFIX", text, floor, port, Shape::structured});
}

} // namespace bgpdt::bench
