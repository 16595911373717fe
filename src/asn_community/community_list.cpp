// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// CMNTY_ENHANCE: up to 32 communities (RFC 1997), each in its own notation.
///
///      0           4          5           9          10                         160
///     +-----------+----------+-----------+----------+-- ... 32 entries ... --+
///     | community | notation | community | notation |
///     +-----------+----------+-----------+----------+-- ... -----------------+
///       u32         u8         u32, host order, unaligned
///
/// Text: "no-export 64496:100 7", 1 to 392 characters: communities as COMMUNITY takes them, in the order of the text.
/// Only the blank separates, any number of them.
///
/// Irregularities, all deliberate:
///  (1) Input is parsed in every mode but 4, output printed in modes 1, 2 and 6 alone.
///  (2) Only the blank separates; other white space is just cut at the ends.
///  (3) A well-known community prints by its name and 0 as "internet", whatever the notation.
///  (4) A list may print longer than its text can be; it is cut at 392 characters.
///  (5) An empty entry is one of notation 2, whatever its community.
///  (6) An entry of unknown notation prints nothing, but keeps the blank before it; it does not fail the list.
///  (7) Scripts see all 32 entries. Reading takes what is missing or no number for 0, so never for an empty entry.
///  (8) The help text promises 3 characters where the parser takes 1.
///  (9) A host that prepares no help entry is not an error.
#include <cstring>

#include "asn_community/community.hpp"
#include "asn_community/tokens.hpp"
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"

using namespace bgpdt;

namespace {

/// What tells a name from a number is marked.
using CommunityTokens = Tokens<"0123456789:-ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz",
                               "-ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz">;
constexpr std::size_t longest_token = 19;

/// Finds the tokens of a text that is made of as many as fit, and of nothing else.
bool SYSDT_Str2ArrayForCmnty(char *text, Token (&found)[SYSDT_COMMUNITY_LIST_ENTRIES], std::size_t &count)
{
    CommunityTokens tokens(text, longest_token);
    for (count = 0; count < SYSDT_COMMUNITY_LIST_ENTRIES && tokens.next(found[count]);)
        ++count;
    return tokens.exhausted();
}

u32 SYSDT_Str2Cmntysub(u32 handle, const Token &token, SYSDT_CommunityEntry &out)
{
    const Cut text = token.text();
    if (token.census.colons() > 1)
        return SYSDT_ERR_FAIL;
    SYSDT_Community community{};
    const bool is_number = token.census.marks() == 0;
    const u32 status = is_number ? SYSDT_Str2CommunitySetCmty(token.census.colons(), text.get(), &community)
                                 : SYSDT_CmntyStrToEnhValue(handle, text.get(), token.census.length(), community);
    out = {community.community, static_cast<u8>(community.type)};
    return status;
}

constexpr auto empty_list = [] {
    SYSDT_CommunityList list{};
    for (auto &entry : list.entry)
        entry.type = SYSDT_COMMUNITY_EMPTY;
    return list;
}();

u32 SYSDT_Str2CmntyEnhance(u32 handle, char *text, SYSDT_CommunityList &value)
{
    text = SYSDT_BTrim(text);
    const std::size_t length = std::strlen(text);
    Token tokens[SYSDT_COMMUNITY_LIST_ENTRIES];
    std::size_t count = 0;
    if (length < 1 || length > 392 || !SYSDT_Str2ArrayForCmnty(text, tokens, count)) // first: a name takes memory
        return SYSDT_ERR_FAIL;
    value = empty_list;
    for (std::size_t i = 0; i < count; ++i)
        if (const u32 status = SYSDT_Str2Cmntysub(handle, tokens[i], value.entry[i]); status != SYSDT_OK)
            return status;
    return SYSDT_OK;
}

u32 SYSDT_CmntyEnhanceFormatOutEx(const SYSDT_CommunityList &value, u8, Writer &out)
{
    bool first = true;
    for (const auto &entry : value.entry) {
        if (entry.type == SYSDT_COMMUNITY_EMPTY) // (5)
            continue;
        if (!first)
            out.put(' ');
        first = false;
        SYSDT_CmntyEnhanceToStr(entry.community, entry.type, out); // (3) (6)
    }
    return SYSDT_OK;
}

constexpr Type<SYSDT_CommunityList> community_list{
    .kind = SYSDT_TYPE_CMNTY_ENHANCE,
    .input = open_screen, // (1)
    .parse = SYSDT_Str2CmntyEnhance,
    .output = text_only_screen,
    .block = 393,
    .limit = 393, // (4)
    .print = SYSDT_CmntyEnhanceFormatOutEx,
    .help = {.text = "STRING<3-392>", .silent = true}, // (8) (9)
    .layout = community_list_layout,                   // (7)
};

} // namespace

BGPDT_FORMAT_IN(SYSDT_CMNTYEnhanceFormatIn, community_list)
BGPDT_FORMAT_OUT(SYSDT_CMNTYEnhanceFormatOut, community_list)
BGPDT_CHECK(SYSDT_CMNTYEnhanceCheck, community_list)
BGPDT_HELP(SYSDT_CMNTYEnhanceHelp, community_list)
BGPDT_LUA_SET(SYSDT_CmntyEnLuaSet, community_list)
BGPDT_LUA_GET(SYSDT_CmntyEnLuaGet, community_list)
BGPDT_ENDIAN(SYSDT_CmntyEnhanceLuaEndian, community_list)
