// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// LARGECOMMUNITY: one large community (RFC 8092).
///
///      0               4               8               12      16
///     +---------------+---------------+---------------+-------+
///     | administrator | local data 1  | local data 2  | type  |   all u32 in host order
///     +---------------+---------------+---------------+-------+
///
/// Text: "64496:1:2", three 32-bit numbers, 5 to 32 characters. White space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) Texts are read in modes 1 and 2 only, but printed in every mode but 4; there is no binary copy.
///  (2) Help is given in mode 1 only.
///  (3) The type word is 0 after parsing, never printed, never checked; scripts carry it through.
///  (4) Leading zeros are read, as long as the whole text has 5 to 32 characters.
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/census.hpp"
#include "common/print.hpp"
#include "common/scan.hpp"

using namespace bgpdt;

namespace {

u32 print_value(const SYSDT_LargeCommunity &value, u8, Writer &out)
{
    // By value: wherever it stands, nothing refers to a number of it.
    const u32 part[] = {value.largeCommunity[0], value.largeCommunity[1], value.largeCommunity[2]};
    print<"%u:%u:%u">(out, part[0], part[1], part[2]);
    return SYSDT_OK;
}

constexpr Type<SYSDT_LargeCommunity> large_community{
    .kind = SYSDT_TYPE_LARGECOMMUNITY,
    .input = narrow_screen, // (1)
    .parse = [](u32 handle, char *text,
                SYSDT_LargeCommunity &value) { return SYSDT_Str2LargeCommunity(handle, text, &value); },
    .output = open_screen,
    .mode3 = Mode3::text,
    .print = print_value,
    .help = {.text = "STRING<5-32>", .served = modes(1)}, // (2)
    .layout = large_community_layout,
};

} // namespace

u32 SYSDT_Str2LargeCommunityForTwoColonType(const char *text, SYSDT_LargeCommunity *out)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    u64 part[3]{};
    if (scan<"%llu:%llu:%llu">(text, part[0], part[1], part[2]) != 3)
        return SYSDT_ERR_FAIL;
    if (part[0] > UINT32_MAX || part[1] > UINT32_MAX || part[2] > UINT32_MAX)
        return SYSDT_ERR_FAIL;
    *out = {{static_cast<u32>(part[0]), static_cast<u32>(part[1]), static_cast<u32>(part[2])}, 0};
    return SYSDT_OK;
}

u32 SYSDT_Str2LargeCommunity(u32, char *text, SYSDT_LargeCommunity *out)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = SYSDT_BTrim(text);
    const auto census = Census::of<"0123456789:">(text);
    if (!census.admits(5, 32) || census.colons() != 2)
        return SYSDT_ERR_FAIL;
    return SYSDT_Str2LargeCommunityForTwoColonType(text, out);
}

BGPDT_FORMAT_IN(SYSDT_LargeCommunityFormatIn, large_community)
BGPDT_FORMAT_OUT(SYSDT_LargeCommunityFormatOut, large_community)
BGPDT_CHECK(SYSDT_LargeCommunityCheck, large_community)
BGPDT_HELP(SYSDT_LargeCommunityHelp, large_community)
BGPDT_COMPARE_BYTES(SYSDT_LargeCommunityCompare)
BGPDT_LUA_SET(SYSDT_LargeCommunityLuaSet, large_community)
BGPDT_LUA_GET(SYSDT_LargeCommunityLuaGet, large_community)
BGPDT_ENDIAN(SYSDT_LargeCommunityEndian, large_community)
