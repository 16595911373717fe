// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The printed form of a BGP-LS key: groups in brackets as the parser takes them, apart from what is told below.
///
/// Irregularities, all deliberate; (1) and (14) are FormatOut's:
///  (2) AS 0 prints as nothing, and a member AS 0 takes its group with it; an originator AS 0 prints as 0.
///  (3) An IGP router identifier prints as it stands, raw bytes up to the first zero, at most 49 of 50.
///  (4) Unknown route types and protocols have no name and print as nothing; so has protocol 8, in the middle.
///  (5) The name is that of the whole route type word, the form that of its low 8 bits.
///  (6) A route type without a form prints as empty text.
///  (7) Nodes and prefixes show the IGP form for BGP too.
///  (8) Links and SIDs of BGP show no MT-ID.
///  (9) A link with an identifier shows both and no address; without any it shows all four addresses, zero ones too.
///  (10) A BGP link shows the IPv4 addresses, the IPv6 ones when both IPv4 are zero.
///  (11) An address with a family other than 0 and 1 prints as nothing.
///  (12) The identifier prints with all its 64 bits, though 32 can be entered.
///  (13) The IGP form has no member AS and no BGP router identifier, the BGP form no area and no IGP router identifier.
///  (15) The text ends with its 512th character.
#include <algorithm>
#include <cstring>

#include "bgpls/key.hpp"
#include "common/as_number.hpp"
#include "common/ipv4.hpp"
#include "common/ipv6.hpp"
#include "common/print.hpp"

namespace bgpdt::bgpls {
namespace {

// What a value prints as, for use as "%s".

auto word(const Word &word)
{
    return bounded<sizeof word.text>([&word](char *to) {
        std::memcpy(to, word.text, sizeof word.text);
        return to + word.length;
    });
}

auto SYSDT_AsNumToStr(const SYSDT_AsNum &as)
{
    return bounded<most_as_characters>(
        [&as](char *to) { return as.asNumValue == 0 ? to : write_as_number(to, as.asNumValue, as.asType); }); // (2)
}

auto SYSDT_MemberAsNumToStr(const SYSDT_AsNum &as)
{
    return bounded<11 + most_as_characters>([&as](char *to) {
        return as.asNumValue == 0 ? to : write<"[member-as%s]">(to, SYSDT_AsNumToStr(as)); // (2)
    });
}

auto SYSDT_OriginatorAsNumToStr(const SYSDT_AsNum &as)
{
    return bounded<most_as_characters>([&as](char *to) {
        return write_as_number(to, as.asNumValue, as.asNumValue == 0 ? SYSDT_AS_PLAIN : u32{as.asType}); // (2)
    });
}

auto ipv4(u32 address)
{
    return bounded<most_ipv4_characters>([address](char *to) { return write_ipv4_address(to, address); });
}

auto ipv6(const u8 (&address)[16])
{
    return bounded<ipv6_text_size>([&address](char *to) {
        return inet_ntop6(address, to, ipv6_text_size) == nullptr ? to : to + std::strlen(to);
    });
}

auto SYSDT_LS_Ipv4Ipv6ToStr(const LsIpAddr &address) // (11)
{
    return bounded<ipv6_text_size>([&address](char *to) {
        return address.family == 0   ? ipv4(address.ipv4).write(to)
               : address.family == 1 ? ipv6(address.ipv6).write(to)
                                     : to;
    });
}

auto router_id(const u8 (&octets)[SYSDT_LS_ROUTER_ID_SIZE]) // (3), text (19)
{
    return bounded<sizeof octets - 1>([&octets](char *to) {
        const auto *const text = reinterpret_cast<const char *>(octets);
        return std::copy_n(text, strnlen(text, sizeof octets - 1), to);
    });
}

void print_head(const SYSDT_LsHead &head, Writer &out)
{
    print<"[%s][%s][IDENTIFIER%llu]">(out, word(word_of(route_type_words, head.routeType)),                  // (5)
                                      word(word_of(protocol_words, head.protocolId)), u64{head.identifier}); // (12)
}

constexpr Word local_node{"LOCAL"};
constexpr Word remote_node{"REMOTE"};

/// LOCAL or REMOTE with what an IGP knows of a node. (13)
template <class Desc>
void print_igp_node(const Word &which, const Desc &node, Writer &out)
{
    print<"[%s[as%s][bgp-ls-identifier%s][ospf-area-id%s][igp-router-id%s]]">(
        out, word(which), SYSDT_AsNumToStr(node.as), ipv4(node.bgpLsId), ipv4(node.ospfArea),
        router_id(node.igpRouterId));
}

/// The same with what BGP knows of it. (13)
void print_bgp_node(const Word &which, const SYSDT_LsMemberNodeDesc &node, u32 bgp_router_id, Writer &out)
{
    print<"[%s[as%s][bgp-ls-identifier%s][bgp-router-id%s]%s]">(out, word(which), SYSDT_AsNumToStr(node.as),
                                                                ipv4(node.bgpLsId), ipv4(bgp_router_id),
                                                                SYSDT_MemberAsNumToStr(node.memberAs));
}

void print_mt_id(u32 mt_id, Writer &out)
{
    if (mt_id != SYSDT_LS_NO_MT_ID)
        print<"[mt-id%u]">(out, mt_id);
}

void print_bgp_link(const SYSDT_LsLink &link, Writer &out)
{
    print<"[LINK[identifier%s.%s]">(out, ipv4(link.linkLocalId), ipv4(link.linkRemoteId));
    if (link.ipv4Interface == 0 && link.ipv4Neighbor == 0) // (10)
        print<"[local%s][remote%s]]">(out, ipv6(link.ipv6Interface), ipv6(link.ipv6Neighbor));
    else
        print<"[local%s][remote%s]]">(out, ipv4(link.ipv4Interface), ipv4(link.ipv4Neighbor));
}

void SYSDT_SET_LINK_ADDRSTR(const SYSDT_LsLink &link, Writer &out)
{
    print<"[LINK[if-address%s][peer-address%s]">(out, ipv4(link.ipv4Interface), ipv4(link.ipv4Neighbor));
    print<"[if-address%s][peer-address%s]">(out, ipv6(link.ipv6Interface), ipv6(link.ipv6Neighbor));
}

void SYSDT_SET_LINK_IDSTR(const SYSDT_LsLink &link, Writer &out)
{
    print<"[LINK[link-local-id%s][link-remote-id%s]">(out, ipv4(link.linkLocalId), ipv4(link.linkRemoteId));
}

void print_igp_link(const SYSDT_LsLink &link, Writer &out)
{
    if (link.linkLocalId == 0 && link.linkRemoteId == 0) // (9)
        SYSDT_SET_LINK_ADDRSTR(link, out);
    else
        SYSDT_SET_LINK_IDSTR(link, out);
    print_mt_id(link.mtId, out);
    out.put(']');
}

void SYSDT_LinkKeyToStr_LinkDesc(const SYSDT_LsLink &link, Writer &out)
{
    if (link.head.protocolId == SYSDT_LS_BGP)
        print_bgp_link(link, out); // (8)
    else
        print_igp_link(link, out);
}

template <class Prefix, class Address>
void print_prefix(const Prefix &key, const Address &address, Writer &out)
{
    print_head(key.head, out);
    print_igp_node(local_node, key.local, out); // (7)
    out.put("[PREFIX");
    print_mt_id(key.mtId, out);
    print<"[ospf-route-type%u][prefix%s/%u]]">(out, u32{key.ospfRouteType}, address, key.prefixLength);
}

void SYSDT_LS_TePolicy_LocalKeyToStr(const SYSDT_LsTePolicy &policy, Writer &out)
{
    print_head(policy.head, out);
    print<"[LOCAL[as%s][bgp-ls-identifier%s][bgp-router-id%s][ipv4-router-id%s][ipv6-router-id%s]]">(
        out, SYSDT_AsNumToStr(policy.as), ipv4(policy.bgpLsId), ipv4(policy.bgpRouterId), ipv4(policy.ipv4RouterId),
        ipv6(policy.ipv6RouterId));
}

constexpr Printer *printers[SYSDT_LS_ROUTE_TYPES] = {
    nullptr, print_node, print_link, print_ipv4_prefix, print_ipv6_prefix, print_te_policy, print_srv6_sid,
};

} // namespace

void print_node(const SYSDT_LsPrefix &key, Writer &out)
{
    print_head(key.head, out);
    print_igp_node(local_node, key.node.local, out); // (7)
}

void print_link(const SYSDT_LsPrefix &key, Writer &out)
{
    const auto &link = key.link;
    print_head(link.head, out);
    if (link.head.protocolId == SYSDT_LS_BGP) {
        print_bgp_node(local_node, link.local, link.localBgpRouterId, out);
        print_bgp_node(remote_node, link.remote, link.remoteBgpRouterId, out);
    } else {
        print_igp_node(local_node, link.local, out);
        print_igp_node(remote_node, link.remote, out);
    }
    SYSDT_LinkKeyToStr_LinkDesc(link, out);
}

void print_ipv4_prefix(const SYSDT_LsPrefix &key, Writer &out)
{
    print_prefix(key.ipv4Prefix, ipv4(key.ipv4Prefix.prefix), out);
}

void print_ipv6_prefix(const SYSDT_LsPrefix &key, Writer &out)
{
    print_prefix(key.ipv6Prefix, ipv6(key.ipv6Prefix.prefix), out);
}

void print_te(const SYSDT_LsPrefix &key, Writer &out)
{
    const auto &policy = key.tePolicy;
    print<"[TE[protocol-origin%u][Flag%u][endpoint%s][color%u][originator-as%s][originator-address%s]"
          "[discriminator%u]]">(out, policy.protocolOrigin, policy.flags, SYSDT_LS_Ipv4Ipv6ToStr(policy.endpoint),
                                u32{policy.color}, SYSDT_OriginatorAsNumToStr(policy.originatorAs),
                                SYSDT_LS_Ipv4Ipv6ToStr(policy.originatorAddress), u32{policy.discriminator});
}

void print_te_policy(const SYSDT_LsPrefix &key, Writer &out)
{
    SYSDT_LS_TePolicy_LocalKeyToStr(key.tePolicy, out);
    print_te(key, out);
}

void print_srv6_sid(const SYSDT_LsPrefix &key, Writer &out)
{
    const auto &sid = key.srv6Sid;
    const bool bgp = sid.head.protocolId == SYSDT_LS_BGP;
    print_head(sid.head, out);
    if (bgp)
        print_bgp_node(local_node, sid.local, sid.bgpRouterId, out);
    else
        print_igp_node(local_node, sid.local, out);
    out.put("[SID");
    if (!bgp)
        print_mt_id(sid.mtId, out); // (8)
    print<"[sid%s]]">(out, ipv6(sid.sid));
}

Printer *printer_of(const SYSDT_LsPrefix &key) // (5)
{
    const u32 route_type = key.head.routeType & 0xFF;
    return route_type < SYSDT_LS_ROUTE_TYPES ? printers[route_type] : nullptr; // (6)
}

} // namespace bgpdt::bgpls
