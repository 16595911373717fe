// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// COMMUNITY: one community (RFC 1997) that prints back in the notation it was written in.
///
///      0           4           8
///     +-----------+-----------+
///     | community | notation  |   both u32 in host order
///     +-----------+-----------+
///
/// Text: "no-export" and the other well-known names in any case; "4226809956"; "64496:100", two 16-bit numbers. White
/// space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) A well-known community prints by its name, however it was written, and loses its notation.
///  (2) Community 0 is "internet", also when written as a number or a pair; in an empty list entry (notation 2) it
///      prints as nothing.
///  (3) A notation that cannot be shown is a failure that hands the block back.
///  (4) The help text promises less than the parser takes.
///  (5) A name is looked up in a copy of the text taken from the host, so that a text with letters in it may fail for
///      want of memory.
#include "asn_community/community.hpp"

#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/census.hpp"
#include "common/scan.hpp"

using namespace bgpdt;

namespace {

u32 parse_number(const char *text, SYSDT_Community &out)
{
    u64 number = 0;
    if (scan<"%llu">(text, number) != 1 || number > UINT32_MAX)
        return SYSDT_ERR_FAIL;
    out = {static_cast<u32>(number), SYSDT_COMMUNITY_NUMBER};
    return SYSDT_OK;
}

u32 parse_pair(const char *text, SYSDT_Community &out)
{
    u32 high = 0;
    u32 low = 0;
    if (scan<"%u:%u">(text, high, low) != 2 || high > UINT16_MAX || low > UINT16_MAX)
        return SYSDT_ERR_FAIL;
    out = {high << 16 | low, SYSDT_COMMUNITY_PAIR};
    return SYSDT_OK;
}

u32 print_value(const SYSDT_Community &value, u8, Writer &out)
{
    if (value.community == 0 && value.type == SYSDT_COMMUNITY_EMPTY) // (2)
        return SYSDT_OK;
    return SYSDT_CmntyEnhanceToStr(value.community, value.type, out) ? SYSDT_OK : SYSDT_ERR_INVALID_VALUE; // (1) (3)
}

constexpr u32 text_limit = 32;

constexpr Type<SYSDT_Community> community{
    .kind = SYSDT_TYPE_COMMUNITY,
    .parse = [](u32 handle, char *text, SYSDT_Community &value) { return SYSDT_Str2Community(handle, text, &value); },
    .output = text_only_screen,
    .block = 33,
    .limit = text_limit,
    .print = print_value,
    .help = {"STRING<3-11>"}, // (4)
    .layout = community_layout,
};

} // namespace

u32 BRM_GetWellKnownCmyVal(u32 handle, u32 textLength, SYSDT_Community *out, const char *text)
{
    if (out == nullptr || text == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (std::strlen(text) > textLength)
        return SYSDT_ERR_FAIL;
    char *const lowered = static_cast<char *>(SYS_DataTypeMallocByHandle(handle, textLength + 1)); // (5)
    if (lowered == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    SMP_ToLowerString(text, lowered);
    u32 status = SYSDT_ERR_FAIL;
    for (const auto &known : well_known_communities) {
        if (known.name == lowered) {
            out->community = known.community;
            status = SYSDT_OK;
            break;
        }
    }
    SYS_DataTypeFree(lowered);
    return status;
}

u32 bgpdt::SYSDT_CmntyStrToEnhValue(u32 handle, const char *text, std::size_t length, SYSDT_Community &out)
{
    const u32 status = BRM_GetWellKnownCmyVal(handle, static_cast<u32>(length), &out, text);
    if (status == SYSDT_OK)
        out.type = SYSDT_COMMUNITY_NUMBER;
    return status;
}

u32 SYSDT_Str2CommunitySetCmty(u32 colons, const char *text, SYSDT_Community *out)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    switch (colons) {
    case 0: return parse_number(text, *out);
    case 1: return parse_pair(text, *out);
    default: return SYSDT_ERR_FAIL;
    }
}

u32 SYSDT_Str2Community(u32 handle, char *text, SYSDT_Community *out)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = SYSDT_BTrim(text);
    const auto census = Census::of<"0123456789:">(text);
    if (census.admits(1, 19))
        return SYSDT_Str2CommunitySetCmty(census.colons(), text, out);
    const std::size_t length = std::strlen(text);
    if (length < 1 || length > 19 || NCF_IsSpaceInString(text) != 0)
        return SYSDT_ERR_FAIL;
    return SYSDT_CmntyStrToEnhValue(handle, text, length, *out);
}

u32 SYSDT_FormatNoWellKnowCmy(u32 *characters, char *buffer, void **outData, const SYSDT_Community *value)
{
    if (characters == nullptr || buffer == nullptr || outData == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Writer out(buffer, text_limit);
    if (!SYSDT_NoWellKnownCmntyEnhanceToStr(value->community, value->type, out)) {
        *outData = buffer;
        return SYSDT_ERR_INVALID_VALUE;
    }
    *characters = out.finish();
    return SYSDT_OK;
}

BGPDT_FORMAT_IN(SYSDT_CommunityFormatIn, community)
BGPDT_FORMAT_OUT(SYSDT_CommunityFormatOut, community)
BGPDT_CHECK(SYSDT_CommunityCheck, community)
BGPDT_HELP(SYSDT_CommunityHelp, community)
BGPDT_COMPARE_BYTES(SYSDT_CommunityCompare)
BGPDT_LUA_SET(SYSDT_CommunityLuaSet, community)
BGPDT_LUA_GET(SYSDT_CommunityLuaGet, community)
BGPDT_ENDIAN(SYSDT_CommunityEndian, community)
