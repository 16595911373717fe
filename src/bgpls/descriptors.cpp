// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The values of the groups within LOCAL and REMOTE, LINK, PREFIX, TE and SID of a BGP-LS text, each parsed into a
/// member of the scratch record. The groups and the irregularities are told in text.cpp.
#include <cstring>

#include "asn_community/as_number.hpp"
#include "bgpls/key.hpp"
#include "common/bytes.hpp"
#include "common/cut.hpp"
#include "common/scan.hpp"

namespace bgpdt::bgpls {
namespace {

// The texts of one value each; true when it is one.

bool parse_ipv4(char *text, u32 &address) { return PAL_StrToIpAddr(text, &address) == SYSDT_OK; }

bool parse_ipv6(char *text, u8 (&address)[16]) { return SMP_InetAToN6(text, address) == SYSDT_OK; }

bool is_ipv6(const char *text) { return std::strchr(text, ':') != nullptr; }

bool SYSDT_Str2SysIpv4Ipv6(char *text, LsIpAddr &address)
{
    address.family = is_ipv6(text) ? 1 : 0;
    if (address.family != 0)
        return parse_ipv6(text, address.ipv6);
    u32 ipv4 = 0;
    const bool parsed = parse_ipv4(text, ipv4);
    address.ipv4 = ipv4;
    return parsed;
}

bool parse_interface(char *text, LsLinkScratch &link)
{
    return is_ipv6(text) ? parse_ipv6(text, link.ipv6Interface) : parse_ipv4(text, link.ipv4Interface);
}

bool parse_neighbor(char *text, LsLinkScratch &link)
{
    return is_ipv6(text) ? parse_ipv6(text, link.ipv6Neighbor) : parse_ipv4(text, link.ipv4Neighbor);
}

bool parse_number(char *text, u32 &number) { return PAL_StrToUint32(text, &number) == SYSDT_OK; }

bool parse_octet(char *text, u8 &octet)
{
    u32 number = 0;
    if (!parse_number(text, number) || number > UINT8_MAX)
        return false;
    octet = static_cast<u8>(number);
    return true;
}

template <u64 lowest>
bool parse_as_from(char *text, SYSDT_AsNum &as)
{
    return read_as_section<lowest>(text, as) == SYSDT_OK;
}

/// System identifier and pseudonode, "0000.0000.0001.00". (10)
bool parse_isis_router_id(const char *text, u8 *router_id)
{
    constexpr u32 shortest = 17;
    constexpr u8 places[] = {0, 2, 5, 7, 10, 12, 15};
    if (std::strlen(text) < shortest)
        return false;
    for (const u8 place : places) {
        u32 octet = 0;
        if (scan<"%2x">(text + place, octet) != 1)
            return false;
        *router_id++ = static_cast<u8>(octet);
    }
    return true;
}

/// Router, "192.0.2.2", or pseudonode, "192.0.2.2/192.0.2.3". (11)
bool SYSDT_Str2LocIgpRouterId(char *text, u8 *router_id)
{
    u32 address = 0;
    char *const slash = std::strchr(text, '/');
    if (slash != nullptr) {
        if (!parse_ipv4(slash + 1, address))
            return false;
        store_network(router_id + 4, address);
    }
    const Cut router(text, slash);
    if (!parse_ipv4(text, address))
        return false;
    store_network(router_id, address);
    return true;
}

bool parse_igp_router_id(char *text, u8 *router_id, u32 protocol)
{
    switch (protocol) {
    case SYSDT_LS_ISIS_LEVEL_1:
    case SYSDT_LS_ISIS_LEVEL_2: return parse_isis_router_id(text, router_id);
    case SYSDT_LS_OSPFV2:
    case SYSDT_LS_OSPFV3: return SYSDT_Str2LocIgpRouterId(text, router_id);
    default: return false;
    }
}

/// Two IPv4-like identifiers, joined by the fourth of seven dots.
bool parse_link_identifiers(char *text, LsLinkScratch &link)
{
    char *second = text;
    for (int i = 0; i < 4; ++i, ++second) {
        second = std::strchr(second, '.');
        if (second == nullptr)
            return false;
    }
    const Cut first(text, second - 1);
    return parse_ipv4(text, link.linkLocalId) && parse_ipv4(second, link.linkRemoteId);
}

bool parse_prefix(char *text, LsPrefixScratch &prefix, u32 route_type)
{
    char *const slash = std::strchr(text, '/');
    u32 length = 0;
    if (slash == nullptr || !parse_number(slash + 1, length))
        return false;
    const Cut address(text, slash);
    const bool ipv4 = route_type == SYSDT_LS_IPV4_PREFIX;
    (ipv4 ? prefix.ipv4Length : prefix.ipv6Length) = static_cast<u8>(length); // (5)
    return ipv4 ? parse_ipv4(text, prefix.ipv4Prefix) : parse_ipv6(text, prefix.ipv6Prefix);
}

/// Parses a group that may come once.
template <class Scratch, class Parse>
u32 parse_once(u32 bit, void *target, Parse parse)
{
    auto &scratch = *static_cast<Scratch *>(target);
    if ((scratch.seen & bit) != 0 || !parse(scratch))
        return SYSDT_ERR_FAIL;
    scratch.seen |= bit;
    return SYSDT_OK;
}

/// Parses a group that holds the value of one member.
template <class Scratch, class Member>
u32 parse_member(u32 bit, void *target, char *value, Member Scratch::*member, bool (*parse)(char *, Member &))
{
    return parse_once<Scratch>(bit, target, [&](Scratch &scratch) { return parse(value, scratch.*member); });
}

/// Parses a group of a link that tells more than one member.
u32 parse_link(u32 bit, void *target, char *value, bool (*parse)(char *, LsLinkScratch &))
{
    return parse_once<LsLinkScratch>(bit, target, [&](LsLinkScratch &link) { return parse(value, link); });
}

/// The same, however often it comes. (14)
u32 parse_link_again(u32 bit, void *target, char *value, bool (*parse)(char *, LsLinkScratch &))
{
    static_cast<LsLinkScratch *>(target)->seen &= ~bit;
    return parse_link(bit, target, value, parse);
}

} // namespace
} // namespace bgpdt::bgpls

using namespace bgpdt;
using namespace bgpdt::bgpls;

#define BGPDT_LS_MEMBER(name, scratch, member, parse)                                                                  \
    std::uint32_t name(std::uint32_t bit, char *value, void *target, LsPrefixParseContext *)                           \
    {                                                                                                                  \
        return parse_member(bit, target, value, &scratch::member, parse);                                              \
    }

u32 BgpLsParseNodeDescAs(u32 bit, char *value, void *target, ParseContext *)
{
    auto &node = *static_cast<LsNodeDescScratch *>(target);
    if ((node.seen & bit) == 0 && !format::is_digit(*value) && *SYSDT_BTrim(value) == '\0')
        return SYSDT_OK; // (8)
    return parse_member(bit, target, value, &LsNodeDescScratch::as, parse_as_from<1>);
}

u32 BgpLsParseNodeDescBgpRouterId(u32 bit, char *value, void *target, ParseContext *context)
{
    return parse_once<LsNodeDescScratch>(bit, target, [&](LsNodeDescScratch &node) {
        return parse_ipv4(value, node.bgpRouterId) ||
               (context->routeType != SYSDT_LS_TE_POLICY && parse_number(value, node.bgpRouterId)); // (9)
    });
}

u32 BgpLsParseNodeDescIgpRouterId(u32 bit, char *value, void *target, ParseContext *context)
{
    return parse_once<LsNodeDescScratch>(bit, target, [&](LsNodeDescScratch &node) {
        return parse_igp_router_id(value, node.igpRouterId, context->protocolId);
    });
}

BGPDT_LS_MEMBER(BgpLsParseNodeDescLsId, LsNodeDescScratch, bgpLsId, parse_ipv4)
BGPDT_LS_MEMBER(BgpLsParseNodeDescOspfAreaId, LsNodeDescScratch, ospfArea, parse_ipv4)
BGPDT_LS_MEMBER(BgpLsParseNodeDescMemberAs, LsNodeDescScratch, memberAs, parse_as_from<1>) // (8)
BGPDT_LS_MEMBER(BgpLsParseNodeDescIpv4RouteId, LsNodeDescScratch, ipv4RouterId, parse_ipv4)
BGPDT_LS_MEMBER(BgpLsParseNodeDescIpv6RouteId, LsNodeDescScratch, ipv6RouterId, parse_ipv6)

#define BGPDT_LS_LINK(name, parse_group, parse)                                                                        \
    std::uint32_t name(std::uint32_t bit, char *value, void *target, LsPrefixParseContext *)                           \
    {                                                                                                                  \
        return parse_group(bit, target, value, parse);                                                                 \
    }

BGPDT_LS_LINK(BgpLsParseLinkIdentifier, parse_link, parse_link_identifiers)
BGPDT_LS_LINK(BgpLsParseLinkLocal, parse_link, parse_interface)
BGPDT_LS_LINK(BgpLsParseLinkRemote, parse_link, parse_neighbor)
BGPDT_LS_LINK(BgpLsParseLinkIfAddress, parse_link_again, parse_interface)
BGPDT_LS_LINK(BgpLsParseLinkPeerAddress, parse_link_again, parse_neighbor)

BGPDT_LS_MEMBER(BgpLsParseLinkLinkLocalId, LsLinkScratch, linkLocalId, parse_ipv4)
BGPDT_LS_MEMBER(BgpLsParseLinkLinkRemoteId, LsLinkScratch, linkRemoteId, parse_ipv4)
BGPDT_LS_MEMBER(BgpLsParseLinkMtId, LsLinkScratch, mtId, parse_number)

u32 BgpLsParsePrefixPrefix(u32 bit, char *value, void *target, ParseContext *context)
{
    return parse_once<LsPrefixScratch>(
        bit, target, [&](LsPrefixScratch &prefix) { return parse_prefix(value, prefix, context->routeType); });
}

BGPDT_LS_MEMBER(BgpLsParsePrefixMtId, LsPrefixScratch, mtId, parse_number)
BGPDT_LS_MEMBER(BgpLsParsePrefixOspfRouteType, LsPrefixScratch, ospfRouteType, parse_number)

BGPDT_LS_MEMBER(BgpLsParseTeProtocolOrigin, LsTeScratch, protocolOrigin, parse_octet)
BGPDT_LS_MEMBER(BgpLsParseTeFlag, LsTeScratch, flags, parse_octet)
BGPDT_LS_MEMBER(BgpLsParseTeEndpoint, LsTeScratch, endpoint, SYSDT_Str2SysIpv4Ipv6)
BGPDT_LS_MEMBER(BgpLsParseTeColor, LsTeScratch, color, parse_number)
BGPDT_LS_MEMBER(BgpLsParseTeOriginatorAs, LsTeScratch, originatorAs, parse_as_from<0>) // (8)
BGPDT_LS_MEMBER(BgpLsParseTeOriginatorAddress, LsTeScratch, originatorAddress, SYSDT_Str2SysIpv4Ipv6)
BGPDT_LS_MEMBER(BgpLsParseTeDiscriminator, LsTeScratch, discriminator, parse_number)

u32 BgpLsParseSidMtId(u32 bit, char *value, void *target, ParseContext *context)
{
    if (context->protocolId == SYSDT_LS_BGP)
        return SYSDT_OK; // (18)
    return parse_member(bit, target, value, &LsSidScratch::mtId, parse_number);
}

BGPDT_LS_MEMBER(BgpLsParseSidSid, LsSidScratch, sid, parse_ipv6)
