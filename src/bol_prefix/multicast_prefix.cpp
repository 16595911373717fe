// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// VPNV4MCPREFIX, kind 10 of the route keys: a VPNv4 multicast prefix; MDTPREFIX, kind 11: a multicast distribution
/// tree (RFC 6037).
///
///      0    4        8             12                 0    4        8       12            16
///     +----+--------+-------------+---- zero ----     +----+--------+-------+-------------+---- zero ----
///     | 10 | prefix | mask length |                   | 11 | prefix | group | mask length |   all u32 in host order
///     +----+--------+-------------+---- zero ----     +----+--------+-------+-------------+---- zero ----
///
/// Text: "192.0.2.0/24", 9 to 18 characters for VPNv4 multicast, 7 to 35 for MDT, the mask length at most 32. White
/// space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) Printing gives the prefix address alone, without mask length and group, and does not look at the sub-kind.
///  (2) An MDT text has no group, which stays 0.
///  (3) Help tells a form without mask length, which does not parse.
///  (4) The VPNv4 multicast LuaGet keeps the low 16 bits of both numbers; the reader behind BOLPREFIX keeps all.
///  (5) Endian works on the short registered form, everything else on 89 bytes. The MDT group is not swapped.
///  (6) MDT takes its memory from the plain allocator.
///  (7) What follows the mask length is not looked at; a sign may stand before each number: a negative one counts modulo
///      2^32.
#include "common/bol_row.hpp"
#include "common/bytes.hpp"
#include "common/print.hpp"
#include "common/scan.hpp"
#include "common/trimmed.hpp"

using namespace bgpdt;

namespace {

u32 parse_prefix(char *text, std::size_t shortest, std::size_t longest, u32 &address, u32 &mask_length)
{
    text = trimmed(text, shortest, longest).text;
    u32 prefix = 0;
    if (text == nullptr || scan<"%q/%u">(text, prefix, mask_length) != 2 || mask_length > 32) // (7)
        return SYSDT_ERR_FAIL;
    address = prefix;
    return SYSDT_OK;
}

u32 parse_vpnv4(u32, char *text, SYSDT_BolVpnv4Mcast &value)
{
    value.subKind = SYSDT_BOL_VPNV4MCAST;
    return SYSDT_Str2Vpnv4McastPrefix(text, &value.prefix);
}

u32 parse_mdt(u32, char *text, SYSDT_BolMdt &value)
{
    value.subKind = SYSDT_BOL_MDT;
    return SYSDT_Str2MdtPrefix(text, &value.prefix);
}

template <class Value>
u32 print_prefix(const Value &value, u8, Writer &out)
{
    print<"%q">(out, u32{value.prefix.prefix}); // (1)
    return SYSDT_OK;
}

constexpr auto &SYSDT_Vpnv4McastPrefix2Str = print_prefix<SYSDT_BolVpnv4Mcast>;
constexpr auto &SYSDT_MdtPrefix2Str = print_prefix<SYSDT_BolMdt>;

constexpr std::string_view help_text = "X.X.X.X/M or X.X.X.X"; // (3)

constexpr auto vpnv4_multicast = [] {
    auto type = bol_row<SYSDT_BolVpnv4Mcast>();
    type.parse = parse_vpnv4;
    type.print = SYSDT_Vpnv4McastPrefix2Str;
    type.help.text = help_text;
    type.layout = bol_vpnv4_mcast_layout;
    return type;
}();

constexpr auto mdt = [] {
    auto type = bol_row<SYSDT_BolMdt>();
    type.parse = parse_mdt;
    type.print = SYSDT_MdtPrefix2Str;
    type.allocator = Allocator::plain; // (6)
    type.help = {.text = help_text, .allocator = Allocator::plain};
    type.layout = bol_mdt_layout;
    return type;
}();

constexpr auto low_16_bits = [](Field field) {
    field.script_bits = 16;
    return field;
};

/// What the VPNv4 multicast LuaGet reads. (4)
constexpr Field vpnv4_row_fields[] = {bol_vpnv4_mcast_fields[0], low_16_bits(bol_vpnv4_mcast_fields[1]),
                                      low_16_bits(bol_vpnv4_mcast_fields[2])};
constexpr Layout vpnv4_row_layout{vpnv4_row_fields, SYSDT_BOL_SIZE};

} // namespace

u32 SYSDT_Str2Vpnv4McastPrefix(char *text, SYSDT_Vpnv4Mcast *output)
{
    if (text == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    u32 address = 0;
    u32 mask_length = 0;
    const u32 status = parse_prefix(text, 9, 18, address, mask_length);
    *output = {address, mask_length};
    return status;
}

u32 SYSDT_Str2MdtPrefix(char *text, SYSDT_Mdt *output)
{
    if (text == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    u32 address = 0;
    u32 mask_length = 0;
    const u32 status = parse_prefix(text, 7, 35, address, mask_length);
    *output = {address, 0, mask_length}; // (2)
    return status;
}

BGPDT_FORMAT_IN(SYSDT_VPNV4MCASTPrefixFormatIn, vpnv4_multicast)
BGPDT_FORMAT_OUT(SYSDT_VPNV4MCASTPrefixFormatOut, vpnv4_multicast)
BGPDT_CHECK(SYSDT_VPNV4MCASTPrefixCheck, vpnv4_multicast)
BGPDT_HELP(SYSDT_VPNV4MCASTPrefixHelp, vpnv4_multicast)
BGPDT_COMPARE_BYTES(SYSDT_VPNV4MCASTPrefixCompare)
BGPDT_LUA_SET(SYSDT_VPNV4MCASTPrefixLuaSet, vpnv4_multicast)
BGPDT_BOL_LUA_GET(SYSDT_VPNV4MCASTPrefixLuaGet, vpnv4_row_layout, SYSDT_BOL_VPNV4MCAST)
BGPDT_SCRIPT_READER(SYSDT_VPNV4MCASTPrefixNewLuaGet, key_fields(bol_vpnv4_mcast_layout))

u32 SYSDT_VPNV4MCASTLuaEndian(void *, u32, u32, void *data) // (5)
{
    reverse_numbers(vpnv4_mcast_layout, {static_cast<u8 *>(data), sizeof(SYSDT_Vpnv4Mcast)});
    return SYSDT_OK;
}

BGPDT_FORMAT_IN(SYSDT_MdtPrefixFormatIn, mdt)
BGPDT_FORMAT_OUT(SYSDT_MdtPrefixFormatOut, mdt)
BGPDT_CHECK(SYSDT_MdtPrefixCheck, mdt)
BGPDT_HELP(SYSDT_MdtPrefixHelp, mdt)
BGPDT_COMPARE_BYTES(SYSDT_MdtPrefixCompare)
BGPDT_LUA_SET(SYSDT_MdtPrefixLuaSet, mdt)
BGPDT_BOL_LUA_GET(SYSDT_MdtPrefixLuaGet, bol_mdt_layout, SYSDT_BOL_MDT)
BGPDT_SCRIPT_READER(SYSDT_MdtPrefixNewLuaGet, key_fields(bol_mdt_layout))

u32 SYSDT_MdtLuaEndian(void *, u32, u32, void *data) // (5)
{
    u8 *const prefix = static_cast<u8 *>(data);
    swap_in_place<u32>(prefix + offsetof(SYSDT_Mdt, prefix));
    swap_in_place<u32>(prefix + offsetof(SYSDT_Mdt, maskLength));
    return SYSDT_OK;
}
