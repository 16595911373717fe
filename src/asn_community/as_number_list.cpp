// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// ASNUM_ENHANCE: up to 256 AS numbers, each in its own notation.
///
///      0        4          5        9          10                         1280
///     +--------+----------+--------+----------+-- ... 256 entries ... --+
///     | number | notation | number | notation |
///     +--------+----------+--------+----------+-- ... ------------------+
///       u32      u8         u32, host order, unaligned
///
/// Text: "64496 1.10 65535.65535", 1 to 3071 characters: AS numbers as ASNUM takes them, in the order of the text. Only
/// the blank separates, any number of them.
///
/// Irregularities, all deliberate:
///  (1) In mode 1 the text must stand in double quotes; the closing one is overwritten in the host's text. The other
///      modes do not know quotes, and nothing is printed with them.
///  (2) Only the blank separates; other white space is just cut at the ends.
///  (3) A number of 0 marks an unused entry: it is not printed, wherever it stands, and no text gives it.
///  (4) Every notation but 0 prints dotted.
///  (5) Scripts see all 256 entries, the notation set before the number.
///  (6) Reading a script takes what is missing or no number for 0.
///  (7) A host that prepares no help entry is not an error.
#include <cstring>

#include "asn_community/as_number.hpp"
#include "asn_community/tokens.hpp"
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"

using namespace bgpdt;

namespace {

using SYSDT_Str2ArrayForAsNum = Tokens<"0123456789.">; // (2)

u32 SYSDT_Str2AsNumsub(const Token &token, SYSDT_AsNumEntry &out)
{
    SYSDT_AsNum number{};
    const u32 status = SYSDT_Str2AsNumSetAsType(token.text().get(), token.census.dots(), number);
    out = {number.asNumValue, static_cast<u8>(number.asType)};
    return status;
}

u32 SYSDT_Str2AsNumEnhance(u32, char *text, SYSDT_AsNumList &value)
{
    text = SYSDT_BTrim(text);
    const std::size_t length = std::strlen(text);
    if (length < 1 || length > 3071)
        return SYSDT_ERR_FAIL;
    SYSDT_Str2ArrayForAsNum tokens(text, 11);
    for (auto &entry : value.entry) {
        Token token;
        if (!tokens.next(token))
            break;
        if (SYSDT_Str2AsNumsub(token, entry) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
    }
    return tokens.exhausted() ? SYSDT_OK : SYSDT_ERR_FAIL;
}

u32 SYSDT_AsNumEnhanceFormatOutEx(const SYSDT_AsNumList &value, u8, Writer &out)
{
    bool first = true;
    for (const auto &entry : value.entry) {
        if (entry.asNumValue == 0) // (3)
            continue;
        if (!first)
            out.put(' ');
        first = false;
        print_as_number(entry.asNumValue, entry.asType, out);
    }
    return SYSDT_OK;
}

constexpr Type<SYSDT_AsNumList> as_number_list{
    .kind = SYSDT_TYPE_ASNUM_ENHANCE,
    .parse = SYSDT_Str2AsNumEnhance,
    .output = text_only_screen,
    .block = 3072,
    .limit = 3072,
    .print = SYSDT_AsNumEnhanceFormatOutEx,
    .help = {.text = "STRING<1-3071>", .silent = true}, // (7)
    .layout = as_list_layout,                           // (5) (6)
};

constexpr auto &SYSDT_AsNumEnhanceFormatIn_ProcInString = parse_and_deliver<OutputOf<as_number_list>>;

/// The text between double quotes, the closing one cut off in place; null if it does not stand in quotes.
///
/// @param length  the text's length with its NUL, as the host tells it: believed only inside the text
char *unquoted(char *text, u32 length)
{
    if (length <= 2 || std::strlen(text) < length - 1 || text[0] != '"' || text[length - 2] != '"')
        return nullptr;
    text[length - 2] = '\0';
    return text + 1;
}

} // namespace

u32 SYSDT_AsNumEnhanceFormatIn(Context *context, u32, u32 textLength, char *text, u16 *kind, u16 *length, void **data)
{
    const Output out{kind, length, data};
    if (context == nullptr || text == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (const u32 refused = as_number_list.input.status(context->mode); refused != SYSDT_OK)
        return refused;
    if (context->mode == 1) { // (1)
        text = unquoted(text, textLength);
        if (text == nullptr)
            return SYSDT_ERR_UNSUPPORTED;
    }
    return SYSDT_AsNumEnhanceFormatIn_ProcInString(*context, text, {out});
}

BGPDT_FORMAT_OUT(SYSDT_AsNumEnhanceFormatOut, as_number_list)
BGPDT_CHECK(SYSDT_AsNumEnhanceCheck, as_number_list)
BGPDT_HELP(SYSDT_AsNumEnhanceHelp, as_number_list)
BGPDT_LUA_SET(SYSDT_AsNumEnLuaSet, as_number_list)
BGPDT_LUA_GET(SYSDT_AsNumEnLuaGet, as_number_list)
BGPDT_ENDIAN(SYSDT_AsNumEnhanceLuaEndian, as_number_list)
