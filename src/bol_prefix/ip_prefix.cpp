// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The two plain addresses among the route keys: kind 0, "IPV4", whose callbacks bear the names of VPLS auto-discovery
/// (RFC 6074), and kind 15, "IPV6".
///
///      0    4      8                                     0    4                 20
///     +----+------+---- zero ----                       +----+-----------------+---- zero ----
///     |  0 | IPv4 |   u32 in host order                 | 15 | IPv6            |   network order
///     +----+------+---- zero ----                       +----+-----------------+---- zero ----
///
/// Text: what the host takes for an IPv4 or an IPv6 address. There is no prefix length, despite the names.
///
/// Irregularities, all deliberate:
///  (1) The IPv4 row clears kind and length before it looks at the mode when it prints, the IPv6 row does not.
///  (2) IPv4 printing does not look at the sub-kind.
///  (3) Compare orders two IPv4 values and answers SYSDT_ERR_FAIL if either is of another kind.
///  (4) Help asks the platform's symbol check first, whose refusal is returned.
///  (5) The IPv4 LuaGet stores the sub-kind before it refuses one that is not 0.
///  (6) The IPv6 row has no LuaGet of its own, and borrows Check, Help and Compare.
#include <cstring>

#include "common/bol_row.hpp"
#include "common/print.hpp"
#include "common/text_offer.hpp"

using namespace bgpdt;

namespace {

u32 parse_ipv4(u32, char *text, SYSDT_BolIpv4 &value)
{
    u32 address = 0;
    const u32 status = SYSDT_Str2Ipv4(text, &address);
    value.address = address;
    return status;
}

u32 print_ipv4(const SYSDT_BolIpv4 &value, u8, Writer &out)
{
    print<"%q">(out, u32{value.address}); // (2)
    return SYSDT_OK;
}

u32 parse_ipv6(u32, char *text, SYSDT_BolIpv6 &value)
{
    value.subKind = SYSDT_BOL_IPV6;
    return SYSDT_Str2Ipv6(text, value.address);
}

u32 print_ipv6(const SYSDT_BolIpv6 &value, u8, Writer &out)
{
    char address[256];
    if (inet_ntop6(value.address, address, sizeof address) == nullptr)
        return SYSDT_ERR_FAIL;
    out.put(address);
    return SYSDT_OK;
}

constexpr auto ipv4_prefix = [] {
    auto type = bol_row<SYSDT_BolIpv4>();
    type.parse = parse_ipv4;
    type.print = print_ipv4;
    type.help.text = "X.X.X.X";
    type.layout = bol_ipv4_layout;
    return type;
}();

constexpr auto ipv6_prefix = [] {
    auto type = bol_row<SYSDT_BolIpv6>();
    type.clears_before_output = false; // (1)
    type.parse = parse_ipv6;
    type.print = print_ipv6;
    type.layout = bol_ipv6_layout;
    return type;
}();

} // namespace

/// It does not trim: of blanks it refuses the text.
BGPDT_MAY_READ(SYSDT_VplsAdPrefixFormatIn, shape.dots() == 3 && shape.colons() == 0 && shape.hyphens() == 0 &&
                                               shape.others == 0 && !offer.had_blanks)
BGPDT_FORMAT_IN(SYSDT_VplsAdPrefixFormatIn, ipv4_prefix)
BGPDT_FORMAT_OUT(SYSDT_VplsAdPrefixFormatOut, ipv4_prefix)
BGPDT_CHECK(SYSDT_VplsAdPrefixCheck, ipv4_prefix)
BGPDT_LUA_SET(SYSDT_VplsAdPrefixLuaSet, ipv4_prefix)
BGPDT_BOL_LUA_GET(SYSDT_VplsAdPrefixLuaGet, bol_ipv4_layout, SYSDT_BOL_IPV4) // (5)
BGPDT_SCRIPT_READER(SYSDT_VplsAdPrefixNewLuaGet, key_fields(bol_ipv4_layout))

u32 SYSDT_VplsAdPrefixHelp(Context *context, u32, u32, const void *, const HelpRequest *request, HelpInfo *info)
{
    u32 status = SYSDT_OK;
    if (!help_is_due(ipv4_prefix.help, context, request, info, status))
        return status;
    status = KPL_CheckBySymbolForIPV4(context, request, info); // (4)
    return status == SYSDT_OK ? store_help(ipv4_prefix.help, *context, *info) : status;
}

i32 SYSDT_VplsAdPrefixCompare(const void *, u32 length, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const auto a = OutputOf<ipv4_prefix>::read_value(length, first);
    const auto b = OutputOf<ipv4_prefix>::read_value(length, second);
    if (a.subKind != SYSDT_BOL_IPV4 || b.subKind != SYSDT_BOL_IPV4)
        return SYSDT_ERR_FAIL; // (3)
    return (a.address > b.address) - (a.address < b.address);
}

u32 SYSDT_Ipv6Prefix2Str(const SYSDT_BolIpv6 *value, char *buffer, u32 *outputLength)
{
    return print_to_buffer<ipv6_prefix.limit>(
        value, buffer, outputLength, [](const SYSDT_BolIpv6 &key, Writer &out) { return print_ipv6(key, 0, out); });
}

BGPDT_MAY_READ(SYSDT_Ipv6BolPrefixFormatIn, shape.colons() >= 2 && shape.hyphens() == 0 && shape.others == 0)
BGPDT_FORMAT_IN(SYSDT_Ipv6BolPrefixFormatIn, ipv6_prefix)
BGPDT_FORMAT_OUT(SYSDT_Ipv6BolPrefixFormatOut, ipv6_prefix)
BGPDT_LUA_SET(SYSDT_Ipv6BolPrefixLuaSet, ipv6_prefix)
BGPDT_SCRIPT_READER(SYSDT_Ipv6BolPrefixNewLuaGet, key_fields(bol_ipv6_layout)) // (6)
