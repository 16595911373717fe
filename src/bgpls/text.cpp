// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The text of a BGP-LS key: groups in brackets, one behind the other.
///
///     [LINK][OSPFv2][IDENTIFIER0][LOCAL[...]][REMOTE[...]][LINK[...]]
///
/// LOCAL and REMOTE, LINK, PREFIX, TE and SID nest others:
///
///     [as64496][bgp-ls-identifier192.0.2.1][ospf-area-id0.0.0.0][igp-router-id192.0.2.2]
///     [identifier192.0.2.1.192.0.2.2][local2001:db8::1][remote192.0.2.2]
///     [mt-id0][ospf-route-type1][prefix192.0.2.0/24]
///     [protocol-origin2][Flag0][endpoint2001:db8::1][color100][originator-as1.0][originator-address192.0.2.1]...
///     [mt-id0][sid2001:db8::1]
///
/// Here stands which keyword is which group, and what the groups of the key do. The values within those that nest
/// others are parsed into a scratch record (descriptors.cpp), from which the route type fills the key
/// (route_types.cpp).
///
/// Irregularities of the three files, all deliberate; (1) is FormatIn's:
///  (2) Only the route type has its place, ahead of all; what depends on the protocol uses the one read by then, or 0.
///  (3) [LINK] is the route type, [LINK[...]] the link descriptor; so a descriptor that says nothing cannot be written.
///  (4) Of an identifier 64 bits are read and the low 32 kept.
///  (5) Of a prefix length 32 bits are read and the low 8 kept.
///  (6) RSVP-TE is a known word without a number: it is refused.
///  (7) UNKNOWN and index groups are dropped whatever they hold; each may come once.
///  (8) An empty AS is none and does not count as given; a member AS may not be empty; only an originator AS may be 0.
///  (9) A BGP router identifier may be a decimal number, but not in a TE policy.
///  (10) An IS-IS router identifier has its digits at fixed places; what stands between and behind them is not looked
///      at, and each two are read as "%2x": one digit is enough, and a sign is one of the two.
///  (11) An OSPF router identifier may name the designated router's interface behind '/'; other protocols have none.
///  (12) What the local descriptor of a link or a SID needs depends on the protocol, what a remote one needs does not.
///  (13) Known descriptors without a place in the key are read and dropped.
///  (14) if-address and peer-address may be repeated, and share their fields with local and remote, as identifier does
///      with link-local-id and link-remote-id: the last one stays.
///  (15) Without mt-id the MT-ID is SYSDT_LS_NO_MT_ID, in a BGP link 0.
///  (16) A BGP link needs identifier, local and remote; any other link is content with one descriptor of any kind.
///  (17) An IPv6 prefix needs mt-id unless it is OSPFv3's; an IPv4 prefix never does.
///  (18) Under BGP the mt-id of a SID is not looked at, however often it comes.
///  (19) A router identifier prints as raw bytes, so only TE policies and the links and SIDs of BGP can be entered as
///      they print; of these, what the printed form has no place for is lost.
#include <cstring>
#include <iterator>
#include <type_traits>

#include "bgpls/groups.hpp"
#include "bgpls/key.hpp"
#include "common/trimmed.hpp"

using namespace bgpdt;
using namespace bgpdt::bgpls;

// Keyword, bit, whether it is the whole group, handler.

constexpr LsPrefixPattern g_bgplsPrefixPattern[24] = {
    {route_type_words[SYSDT_LS_NODE].text, key_bit::route_type, 1, BgpLsParseTypeNode},
    {route_type_words[SYSDT_LS_LINK].text, key_bit::route_type, 1, BgpLsParseTypeLink}, // (3)
    {route_type_words[SYSDT_LS_IPV4_PREFIX].text, key_bit::route_type, 1, BgpLsParseTypeIpv4Prefix},
    {route_type_words[SYSDT_LS_IPV6_PREFIX].text, key_bit::route_type, 1, BgpLsParseTypeIpv6Prefix},
    {route_type_words[SYSDT_LS_TE_POLICY].text, key_bit::route_type, 1, BgpLsParseTypeTePolicy},
    {route_type_words[SYSDT_LS_SRV6_SID].text, key_bit::route_type, 1, BgpLsParseTypeSrv6Sid},
    {protocol_words[SYSDT_LS_ISIS_LEVEL_1].text, key_bit::protocol, 1, BgpLsParseProtoIsis1},
    {protocol_words[SYSDT_LS_ISIS_LEVEL_2].text, key_bit::protocol, 1, BgpLsParseProtoIsis2},
    {protocol_words[SYSDT_LS_OSPFV2].text, key_bit::protocol, 1, BgpLsParseProtoOspf2},
    {protocol_words[SYSDT_LS_DIRECT].text, key_bit::protocol, 1, BgpLsParseProtoDirect},
    {protocol_words[SYSDT_LS_STATIC].text, key_bit::protocol, 1, BgpLsParseProtoStatic},
    {protocol_words[SYSDT_LS_OSPFV3].text, key_bit::protocol, 1, BgpLsParseProtoOspf3},
    {protocol_words[SYSDT_LS_BGP].text, key_bit::protocol, 1, BgpLsParseProtoBgp},
    {"RSVP-TE", key_bit::protocol, 1, nullptr}, // (6)
    {protocol_words[SYSDT_LS_SEGMENT_ROUTING].text, key_bit::protocol, 1, BgpLsParseProtoSR},
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

constexpr LsPrefixPattern g_bgplsPrefixNodeDescPartten[8] = {
    {"as", node_bit::as, 0, BgpLsParseNodeDescAs},
    {"bgp-ls-identifier", node_bit::bgp_ls_id, 0, BgpLsParseNodeDescLsId},
    {"bgp-router-id", node_bit::bgp_router_id, 0, BgpLsParseNodeDescBgpRouterId},
    {"ospf-area-id", node_bit::ospf_area, 0, BgpLsParseNodeDescOspfAreaId},
    {"igp-router-id", node_bit::igp_router_id, 0, BgpLsParseNodeDescIgpRouterId},
    {"member-as", node_bit::member_as, 0, BgpLsParseNodeDescMemberAs},
    {"ipv4-router-id", node_bit::ipv4_router_id, 0, BgpLsParseNodeDescIpv4RouteId},
    {"ipv6-router-id", node_bit::ipv6_router_id, 0, BgpLsParseNodeDescIpv6RouteId},
};

constexpr LsPrefixPattern g_bgplsPrefixLinkPartten[8] = {
    {"identifier", link_bit::identifier, 0, BgpLsParseLinkIdentifier},
    {"local", link_bit::local, 0, BgpLsParseLinkLocal},
    {"remote", link_bit::remote, 0, BgpLsParseLinkRemote},
    {"link-local-id", link_bit::link_local_id, 0, BgpLsParseLinkLinkLocalId},
    {"link-remote-id", link_bit::link_remote_id, 0, BgpLsParseLinkLinkRemoteId},
    {"if-address", link_bit::if_address, 0, BgpLsParseLinkIfAddress},
    {"peer-address", link_bit::peer_address, 0, BgpLsParseLinkPeerAddress},
    {"mt-id", link_bit::mt_id, 0, BgpLsParseLinkMtId},
};

constexpr LsPrefixPattern g_bgplsPrefixPrefixPartten[3] = {
    {"mt-id", prefix_bit::mt_id, 0, BgpLsParsePrefixMtId},
    {"ospf-route-type", prefix_bit::ospf_route_type, 0, BgpLsParsePrefixOspfRouteType},
    {"prefix", prefix_bit::prefix, 0, BgpLsParsePrefixPrefix},
};

constexpr LsPrefixPattern g_bgplsPrefixTePartten[7] = {
    {"protocol-origin", te_bit::protocol_origin, 0, BgpLsParseTeProtocolOrigin},
    {"Flag", te_bit::flag, 0, BgpLsParseTeFlag},
    {"endpoint", te_bit::endpoint, 0, BgpLsParseTeEndpoint},
    {"color", te_bit::color, 0, BgpLsParseTeColor},
    {"originator-as", te_bit::originator_as, 0, BgpLsParseTeOriginatorAs},
    {"originator-address", te_bit::originator_address, 0, BgpLsParseTeOriginatorAddress},
    {"discriminator", te_bit::discriminator, 0, BgpLsParseTeDiscriminator},
};

constexpr LsPrefixPattern g_bgplsPrefixSidPartten[2] = {
    {"mt-id", sid_bit::mt_id, 0, BgpLsParseSidMtId},
    {"sid", sid_bit::sid, 0, BgpLsParseSidSid},
};

namespace bgpdt::bgpls {
namespace {

/// Takes over the group that comes ahead of all and decides what the others mean.
u32 BgpLsParseRouteType(u32 bit, u32 route_type, void *record, ParseContext &context)
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

/// Parses any other group: it comes behind the route type (2), and once.
template <class Parse>
u32 parse_group(u32 bit, ParseContext &context, Parse parse)
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

u32 BgpLsParseProtocol(u32 bit, u32 protocol, void *record, ParseContext &context)
{
    return parse_group(bit, context, [&] {
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

/// Parses the groups within a group into its scratch record. One loop serves all, and all in it is inlined: its cursor
/// then needs no place in memory.
[[gnu::noinline]] BGPDT_FLATTEN u32 parse_within(Cursor &text, char last, Patterns patterns, void *scratch,
                                                 ParseContext &context)
{
    return parse_groups(text, last, patterns, [&](const LsPrefixPattern &row, Cursor &value) {
        return parse_value(row, value, scratch, context);
    });
}

/// Parses a group that nests others.
///
/// @param last  what must stand behind it: the closing bracket, or the NUL of a text of its own
template <auto slot, class Scratch, const auto &rows>
u32 parse_nesting(u32 bit, Cursor &text, char last, void *record, ParseContext &context)
{
    return parse_group(bit, context, [&] {
        auto scratch = fresh<Scratch>(context);
        const u32 status = parse_within(text, last, patterns<rows>(), &scratch, context);
        return status == SYSDT_OK ? fill<slot>(&scratch, record, context) : status;
    });
}

using NestingParser = u32(u32 bit, Cursor &text, char last, void *record, ParseContext &context);

/// A group that nests others, by its handler.
struct Nesting {
    BgpLsHandler *handler;
    NestingParser *parse;
};

constexpr Nesting nestings[] = {
    {BgpLsParseLocalNode,
     parse_nesting<&LsPrefixNlriParser::localNode, LsNodeDescScratch, g_bgplsPrefixNodeDescPartten>},
    {BgpLsParseRemoteNode,
     parse_nesting<&LsPrefixNlriParser::remoteNode, LsNodeDescScratch, g_bgplsPrefixNodeDescPartten>},
    {BgpLsParseLink, parse_nesting<&LsPrefixNlriParser::link, LsLinkScratch, g_bgplsPrefixLinkPartten>},
    {BgpLsParsePrefix, parse_nesting<&LsPrefixNlriParser::prefix, LsPrefixScratch, g_bgplsPrefixPrefixPartten>},
    {BgpLsParseTe, parse_nesting<&LsPrefixNlriParser::te, LsTeScratch, g_bgplsPrefixTePartten>},
    {BgpLsParseSid, parse_nesting<&LsPrefixNlriParser::sid, LsSidScratch, g_bgplsPrefixSidPartten>},
};

/// Null for a handler whose group nests none.
constexpr NestingParser *nesting_parser(BgpLsHandler *handler)
{
    for (const Nesting &nesting : nestings)
        if (nesting.handler == handler)
            return nesting.parse;
    return nullptr;
}

} // namespace
} // namespace bgpdt::bgpls

#define BGPDT_LS_ROUTE_TYPE(name, route_type)                                                                          \
    std::uint32_t name(std::uint32_t bit, char *, void *record, LsPrefixParseContext *context)                         \
    {                                                                                                                  \
        return BgpLsParseRouteType(bit, route_type, record, *context);                                                 \
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
        return BgpLsParseProtocol(bit, protocol, record, *context);                                                    \
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
    return parse_group(bit, *context, [&]() -> u32 {
        u64 number = 0;
        if (PAL_StrToUint64(value, &number) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
        const u32 low = static_cast<u32>(number); // (4)
        return fill<&LsPrefixNlriParser::identifier>(&low, record, *context);
    });
}

/// For callers who have the group's value as a text of its own.
#define BGPDT_LS_NESTING(name)                                                                                         \
    std::uint32_t name(std::uint32_t bit, char *value, void *record, LsPrefixParseContext *context)                    \
    {                                                                                                                  \
        constexpr auto parse = nesting_parser(name);                                                                   \
        Cursor text{value, value + std::strlen(value)};                                                                \
        return parse(bit, text, '\0', record, *context);                                                               \
    }

BGPDT_LS_NESTING(BgpLsParseLocalNode)
BGPDT_LS_NESTING(BgpLsParseRemoteNode)
BGPDT_LS_NESTING(BgpLsParseLink)
BGPDT_LS_NESTING(BgpLsParsePrefix)
BGPDT_LS_NESTING(BgpLsParseTe)
BGPDT_LS_NESTING(BgpLsParseSid)

u32 BgpLsParseDiscard(u32 bit, char *, void *, ParseContext *context)
{
    return parse_group(bit, *context, [] { return SYSDT_OK; }); // (7)
}

namespace bgpdt::bgpls {
namespace {

/// Parses a group whose value begins with a bracket. One that nests others ends where what it nests does.
template <std::size_t number = 0>
u32 parse_bracketed(const LsPrefixPattern &row, Cursor &text, SYSDT_LsPrefix &key, ParseContext &context)
{
    if constexpr (number == std::size(g_bgplsPrefixPattern)) {
        return parse_value(row, text, &key, context);
    } else {
        constexpr auto parse = nesting_parser(g_bgplsPrefixPattern[number].handler);
        if constexpr (parse != nullptr)
            if (&row == &g_bgplsPrefixPattern[number])
                return parse(row.bit, text, ']', &key, context);
        return parse_bracketed<number + 1>(row, text, key, context);
    }
}

/// Parses the groups of a key. All in it is inlined, as in parse_within().
BGPDT_FLATTEN u32 parse_key(Cursor text, SYSDT_LsPrefix &key, ParseContext &context)
{
    const auto parse = [&](const LsPrefixPattern &row, Cursor &value) {
        return *value.at == '[' ? parse_bracketed(row, value, key, context) : parse_value(row, value, &key, context);
    };
    return parse_groups(text, '\0', patterns<g_bgplsPrefixPattern>(), parse);
}

} // namespace
} // namespace bgpdt::bgpls

LsPrefixParseContext *SYSDT_CreateLsPrefixParseContext(char *text, SYSDT_LsPrefix *record,
                                                       const LsPrefixNlriParser *parserTable, u32 rowCount)
{
    if (text == nullptr || record == nullptr || parserTable == nullptr)
        return nullptr;
    constexpr std::size_t longest_text = 500;
    const auto [kept, length] = trimmed(text, 1, longest_text);
    if (kept == nullptr)
        return nullptr;
    auto *const context = static_cast<LsPrefixParseContext *>(SYS_DataTypeMalloc(sizeof(LsPrefixParseContext)));
    if (context == nullptr)
        return nullptr;
    *context = {.text = kept,
                .length = static_cast<u32>(length),
                .seen = 0,
                .output = record,
                .routeType = 0,
                .protocolId = 0,
                .row = nullptr,
                .parsers = parserTable,
                .rowCount = rowCount};
    *record = {};
    return context;
}

u32 SYSDT_Str2LsPrefixPostCheck(const SYSDT_LsPrefix *record, const LsPrefixParseContext *context)
{
    if (record == nullptr || context == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const bool complete = context->row != nullptr && (context->row->required & ~context->seen) == 0;
    return complete ? SYSDT_OK : SYSDT_ERR_FAIL;
}

u32 SYSDT_Str2LSPrefix(char *text, SYSDT_LsPrefix *record)
{
    if (text == nullptr || record == nullptr)
        return SYSDT_ERR_NULL_PTR;
    auto *const context =
        SYSDT_CreateLsPrefixParseContext(text, record, g_bgplsPrefixParsers, std::size(g_bgplsPrefixParsers));
    if (context == nullptr)
        return SYSDT_ERR_FAIL;
    u32 status = parse_key({text + (context->text - text), context->text + context->length}, *record, *context);
    if (status == SYSDT_OK)
        status = SYSDT_Str2LsPrefixPostCheck(record, context);
    SYS_DataTypeFree(context);
    return status;
}
