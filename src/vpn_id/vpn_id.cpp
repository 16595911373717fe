// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// VPNID: a global VPN identifier (RFC 2685).
///
///      0      4       8
///     +------+-------+
///     | OUI  | index |   both u32 in host order
///     +------+-------+
///
/// Text: "5e00:1a", both in lower-case hexadecimal, 1 to 21 characters. White space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) Upper-case hexadecimal digits are refused.
///  (2) 0:0 is refused, yet a zero value prints as 0:0 in every mode.
///  (3) Mode 3 gives the text without terminator, no copy of the value.
///  (4) Only the parser holds the OUI to 24 bits: a greater one prints in full, and scripts set it.
///  (5) Compare orders the other way round: the smaller value gives 1.
///  (6) Help tells 15 characters where the parser takes 21.
///  (7) All memory comes from the plain allocator.
#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/callbacks.hpp"
#include "common/census.hpp"
#include "common/print.hpp"
#include "common/scan.hpp"

using namespace bgpdt;

namespace {

constexpr u64 highest_oui = 0xFFFFFF;

u32 print_value(const SYSDT_VpnId &value, u8, Writer &out)
{
    print<"%x:%x">(out, u32{value.oui}, u32{value.index}); // (2) (4)
    return SYSDT_OK;
}

constexpr Type<SYSDT_VpnId> vpn_id{
    .kind = SYSDT_TYPE_VPNID,
    .parse = [](u32, char *text, SYSDT_VpnId &value) { return SYSDT_Str2VpnId(text, &value); },
    .mode3 = Mode3::bare_text, // (3)
    .print = print_value,
    .allocator = Allocator::plain,                                   // (7)
    .help = {.text = "STRING<3-15>", .allocator = Allocator::plain}, // (6) (7)
    .layout = vpn_id_layout,
};

} // namespace

u32 SYSDT_Str2VpnId(char *text, SYSDT_VpnId *output)
{
    if (text == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = SYSDT_BTrim(text);
    const auto census = Census::of<"0123456789abcdef:">(text); // (1)
    if (!census.admits(1, 21) || census.colons() != 1)
        return SYSDT_ERR_FAIL;
    u64 oui = 0;
    u64 index = 0;
    if (scan<"%llx:%llx">(text, oui, index) != 2 || oui > highest_oui || index > UINT32_MAX ||
        (oui | index) == 0) // (2)
        return SYSDT_ERR_FAIL;
    *output = {static_cast<u32>(oui), static_cast<u32>(index)};
    return SYSDT_OK;
}

u32 SYSDT_VpnId2Str(const SYSDT_VpnId *input, u32 *outputLength, char *buffer)
{
    return print_to_buffer<vpn_id.limit>(
        input, buffer, outputLength, [](const SYSDT_VpnId &value, Writer &out) { return print_value(value, 0, out); });
}

i32 SYSDT_VpnIdCompare(const void *, u32, const void *first, const void *second)
{
    const auto &a = *static_cast<const SYSDT_VpnId *>(first);
    const auto &b = *static_cast<const SYSDT_VpnId *>(second);
    const u64 left = u64{a.oui} << 32 | a.index;
    const u64 right = u64{b.oui} << 32 | b.index;
    return (left < right) - (left > right); // (5)
}

BGPDT_FORMAT_IN(SYSDT_VpnIdFormatIn, vpn_id)
BGPDT_FORMAT_OUT(SYSDT_VpnIdFormatOut, vpn_id)
BGPDT_CHECK(SYSDT_VpnIdCheck, vpn_id)
BGPDT_HELP(SYSDT_VpnIdHelp, vpn_id)
BGPDT_LUA_SET(SYSDT_VpnIdLuaSet, vpn_id)
BGPDT_LUA_GET(SYSDT_VpnIdLuaGet, vpn_id)
BGPDT_ENDIAN(SYSDT_VpnIdEndian, vpn_id)
