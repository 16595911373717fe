// SPDX-License-Identifier: Apache-2.0
/// @file
/// The groups of a BGP-LS text: "[LINK][OSPFv2][IDENTIFIER0][LOCAL[...]][REMOTE[...]][LINK[...]]". Those that nest
/// others are parsed into a scratch record (descriptors.cpp), from which the route type fills the key
/// (route_types.cpp).
///
/// Irregularities, all deliberate, numbered through the three files; (1) is FormatIn's:
///  (2) Only the route type has its place, ahead of all; what depends on the protocol uses the one read by then, or 0.
///  (3) [LINK] is the route type, [LINK[...]] the link descriptor; so a descriptor that says nothing cannot be written.
///  (4) Of an identifier 64 bits are read and the low 32 kept.
///  (6) RSVP-TE is a known word without a number: it is refused.
///  (7) UNKNOWN and index groups are dropped whatever they hold; each may come once.
///  (15) Without mt-id the MT-ID is SYSDT_LS_NO_MT_ID, in a BGP link 0.
///  (19) A router identifier prints as raw bytes, so only TE policies and the links and SIDs of BGP can be entered as
///      they print; of these, what the printed form has no place for is lost.
#include <cstring>
#include <iterator>
#include <type_traits>

#include "bgpls/groups.hpp"
#include "bgpls/patterns.hpp"

using namespace bgpdt;
using ParseContext = LsPrefixParseContext;

constexpr LsPrefixPattern g_bgplsPrefixPattern[24] = {
    {"NODE", key_bit::route_type, 1, BgpLsParseTypeNode},
    {"LINK", key_bit::route_type, 1, BgpLsParseTypeLink}, // (3)
    {"IPV4-PREFIX", key_bit::route_type, 1, BgpLsParseTypeIpv4Prefix},
    {"IPV6-PREFIX", key_bit::route_type, 1, BgpLsParseTypeIpv6Prefix},
    {"TEPOLICY", key_bit::route_type, 1, BgpLsParseTypeTePolicy},
    {"SRV6-SID", key_bit::route_type, 1, BgpLsParseTypeSrv6Sid},
    {"ISIS-LEVEL-1", key_bit::protocol, 1, BgpLsParseProtoIsis1},
    {"ISIS-LEVEL-2", key_bit::protocol, 1, BgpLsParseProtoIsis2},
    {"OSPFv2", key_bit::protocol, 1, BgpLsParseProtoOspf2},
    {"DIRECT", key_bit::protocol, 1, BgpLsParseProtoDirect},
    {"STATIC", key_bit::protocol, 1, BgpLsParseProtoStatic},
    {"OSPFv3", key_bit::protocol, 1, BgpLsParseProtoOspf3},
    {"BGP", key_bit::protocol, 1, BgpLsParseProtoBgp},
    {"RSVP-TE", key_bit::protocol, 1, nullptr}, // (6)
    {"SEGMENT-ROUTING", key_bit::protocol, 1, BgpLsParseProtoSR},
    {"IDENTIFIER", key_bit::identifier, 0, BgpLsParseIdentifier},
    {"LOCAL", key_bit::local, 0, BgpLsParseLocalNode},
    {"REMOTE", key_bit::remote, 0, BgpLsParseRemoteNode},
    {"LINK", key_bit::link, 0, BgpLsParseLink}, // (3)
    {"UNKNOWN", key_bit::unknown, 0, BgpLsParseDiscard},
    {"index", key_bit::index, 0, BgpLsParseDiscard},
    {"PREFIX", key_bit::prefix, 0, BgpLsParsePrefix},
    {"TE", key_bit::te, 0, BgpLsParseTe},
    {"SID", key_bit::sid, 0, BgpLsParseSid},
};

namespace {

constexpr Index key_index(g_bgplsPrefixPattern);

/// Takes the group that comes ahead of all and decides what the others mean.
u32 take_route_type(u32 bit, u32 route_type, void *record, ParseContext &context)
{
    if ((context.seen & bit) != 0)
        return SYSDT_ERR_FAIL;
    context.routeType = route_type;
    static_cast<SYSDT_LsPrefix *>(record)->head.routeType = route_type;
    if (route_type >= context.rowCount)
        return SYSDT_ERR_FAIL;
    context.seen |= bit;
    context.row = &context.parsers[route_type];
    return SYSDT_OK;
}

/// Takes any other group: it comes behind the route type (2), and once.
template <class Parse>
u32 take_group(u32 bit, ParseContext &context, Parse parse)
{
    if (context.row == nullptr || (context.seen & bit) != 0)
        return SYSDT_ERR_FAIL;
    const u32 status = parse();
    if (status == SYSDT_OK)
        context.seen |= bit;
    return status;
}

/// Fills the key with what was parsed; a route type without such a group has no slot for it.
template <auto slot>
u32 fill(const void *parsed, void *record, ParseContext &context)
{
    return context.row->*slot != nullptr ? (context.row->*slot)(parsed, record, &context) : SYSDT_ERR_FAIL;
}

u32 take_protocol(u32 bit, u32 protocol, void *record, ParseContext &context)
{
    return take_group(bit, context, [&] {
        context.protocolId = protocol;
        return fill<&LsPrefixNlriParser::protocol>(&protocol, record, context);
    });
}

/// What is known before a group that nests others is read.
template <class Scratch>
Scratch fresh(const ParseContext &context)
{
    Scratch scratch{};
    if constexpr (std::is_same_v<Scratch, LsLinkScratch>)
        scratch.mtId = context.protocolId == SYSDT_LS_BGP ? 0 : SYSDT_LS_NO_MT_ID; // (15)
    else if constexpr (requires { scratch.mtId; })
        scratch.mtId = SYSDT_LS_NO_MT_ID;
    return scratch;
}

/// Takes a group that nests others, behind which `last` must stand.
template <auto slot, class Scratch, const auto &rows, const Index &index>
u32 take_nested(u32 bit, Cursor &text, char last, void *record, ParseContext &context)
{
    return take_group(bit, context, [&] {
        auto scratch = fresh<Scratch>(context);
        const u32 status = parse_values(text, last, {rows, &index}, &scratch, context);
        return status == SYSDT_OK ? fill<slot>(&scratch, record, context) : status;
    });
}

constexpr auto take_local_node =
    take_nested<&LsPrefixNlriParser::localNode, LsNodeDescScratch, g_bgplsPrefixNodeDescPartten, node_index>;
constexpr auto take_remote_node =
    take_nested<&LsPrefixNlriParser::remoteNode, LsNodeDescScratch, g_bgplsPrefixNodeDescPartten, node_index>;
constexpr auto take_link = take_nested<&LsPrefixNlriParser::link, LsLinkScratch, g_bgplsPrefixLinkPartten, link_index>;
constexpr auto take_prefix =
    take_nested<&LsPrefixNlriParser::prefix, LsPrefixScratch, g_bgplsPrefixPrefixPartten, prefix_index>;
constexpr auto take_te = take_nested<&LsPrefixNlriParser::te, LsTeScratch, g_bgplsPrefixTePartten, te_index>;
constexpr auto take_sid = take_nested<&LsPrefixNlriParser::sid, LsSidScratch, g_bgplsPrefixSidPartten, sid_index>;

/// Takes a group of a key. Where those that nest others end, what they nest tells.
u32 take_key_group(const LsPrefixPattern &row, Cursor &text, SYSDT_LsPrefix &key, ParseContext &context)
{
    switch (row.bit) {
    case key_bit::local: return take_local_node(row.bit, text, ']', &key, context);
    case key_bit::remote: return take_remote_node(row.bit, text, ']', &key, context);
    case key_bit::link: return take_link(row.bit, text, ']', &key, context);
    case key_bit::prefix: return take_prefix(row.bit, text, ']', &key, context);
    case key_bit::te: return take_te(row.bit, text, ']', &key, context);
    case key_bit::sid: return take_sid(row.bit, text, ']', &key, context);
    default: return take_value(row, text, &key, context);
    }
}

} // namespace

u32 BgpLsParseLsPrefixEntry(const char *text, SYSDT_LsPrefix *record, ParseContext *context)
{
    return SYSDT_ParseLsPrefixStr(text, g_bgplsPrefixPattern, std::size(g_bgplsPrefixPattern), record, context);
}

u32 bgpdt::parse_key(Cursor text, SYSDT_LsPrefix &key, ParseContext &context)
{
    return parse_groups(text, '\0', {g_bgplsPrefixPattern, &key_index}, [&](const LsPrefixPattern &row, Cursor &value) {
        return *value.at == '[' ? take_key_group(row, value, key, context) : take_value(row, value, &key, context);
    });
}

#define BGPDT_LS_ROUTE_TYPE(name, route_type)                                                                          \
    std::uint32_t name(std::uint32_t bit, char *, void *record, LsPrefixParseContext *context)                         \
    {                                                                                                                  \
        return take_route_type(bit, route_type, record, *context);                                                     \
    }

BGPDT_LS_ROUTE_TYPE(BgpLsParseTypeNode, SYSDT_LS_NODE)
BGPDT_LS_ROUTE_TYPE(BgpLsParseTypeLink, SYSDT_LS_LINK)
BGPDT_LS_ROUTE_TYPE(BgpLsParseTypeIpv4Prefix, SYSDT_LS_IPV4_PREFIX)
BGPDT_LS_ROUTE_TYPE(BgpLsParseTypeIpv6Prefix, SYSDT_LS_IPV6_PREFIX)
BGPDT_LS_ROUTE_TYPE(BgpLsParseTypeTePolicy, SYSDT_LS_TE_POLICY)
BGPDT_LS_ROUTE_TYPE(BgpLsParseTypeSrv6Sid, SYSDT_LS_SRV6_SID)

#define BGPDT_LS_PROTOCOL(name, protocol)                                                                              \
    std::uint32_t name(std::uint32_t bit, char *, void *record, LsPrefixParseContext *context)                         \
    {                                                                                                                  \
        return take_protocol(bit, protocol, record, *context);                                                         \
    }

BGPDT_LS_PROTOCOL(BgpLsParseProtoIsis1, SYSDT_LS_ISIS_LEVEL_1)
BGPDT_LS_PROTOCOL(BgpLsParseProtoIsis2, SYSDT_LS_ISIS_LEVEL_2)
BGPDT_LS_PROTOCOL(BgpLsParseProtoOspf2, SYSDT_LS_OSPFV2)
BGPDT_LS_PROTOCOL(BgpLsParseProtoDirect, SYSDT_LS_DIRECT)
BGPDT_LS_PROTOCOL(BgpLsParseProtoStatic, SYSDT_LS_STATIC)
BGPDT_LS_PROTOCOL(BgpLsParseProtoOspf3, SYSDT_LS_OSPFV3)
BGPDT_LS_PROTOCOL(BgpLsParseProtoBgp, SYSDT_LS_BGP)
BGPDT_LS_PROTOCOL(BgpLsParseProtoSR, SYSDT_LS_SEGMENT_ROUTING)

u32 BgpLsParseIdentifier(u32 bit, char *value, void *record, ParseContext *context)
{
    return take_group(bit, *context, [&]() -> u32 {
        u64 number = 0;
        if (PAL_StrToUint64(value, &number) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
        const u32 low = static_cast<u32>(number); // (4)
        return fill<&LsPrefixNlriParser::identifier>(&low, record, *context);
    });
}

#define BGPDT_LS_NESTED(name, take)                                                                                    \
    std::uint32_t name(std::uint32_t bit, char *value, void *record, LsPrefixParseContext *context)                    \
    {                                                                                                                  \
        Cursor text{value, value + std::strlen(value)};                                                                \
        return take(bit, text, '\0', record, *context);                                                                \
    }

BGPDT_LS_NESTED(BgpLsParseLocalNode, take_local_node)
BGPDT_LS_NESTED(BgpLsParseRemoteNode, take_remote_node)
BGPDT_LS_NESTED(BgpLsParseLink, take_link)
BGPDT_LS_NESTED(BgpLsParsePrefix, take_prefix)
BGPDT_LS_NESTED(BgpLsParseTe, take_te)
BGPDT_LS_NESTED(BgpLsParseSid, take_sid)

u32 BgpLsParseDiscard(u32 bit, char *, void *, ParseContext *context)
{
    return take_group(bit, *context, [] { return SYSDT_OK; }); // (7)
}
