// SPDX-License-Identifier: Apache-2.0
/// @file
/// The engine of the BGP-LS texts: it cuts groups in brackets and hands each to the first row of a pattern table whose
/// keyword it begins with. What a keyword means is told in key_groups.cpp, and one level deeper in descriptors.cpp.
#include <array>
#include <cstring>
#include <iterator>

#include "bgp_datatype/bgp_datatype.h"
#include "common/trimmed.hpp"

using namespace bgpdt;

namespace {

constexpr std::size_t longest_text = 500;
constexpr u32 group_buffer = 500;

bool matches(const LsPrefixPattern &pattern, const char *group)
{
    for (const char *keyword = pattern.keyword; *keyword != '\0'; ++keyword, ++group)
        if (*group != *keyword)
            return false;
    return pattern.exact == 0 || *group == '\0';
}

/// Brackets, and the end of a text.
constexpr auto is_structure = [] {
    std::array<bool, 256> table{};
    for (const char character : {'[', ']', '\0'})
        table[static_cast<u8>(character)] = true;
    return table;
}();

/// The bracket that closes the one the text begins with; null without either.
const char *closing_bracket(const char *text)
{
    if (*text != '[')
        return nullptr;
    u32 depth = 0;
    for (;; ++text) {
        while (!is_structure[static_cast<u8>(*text)])
            ++text;
        if (*text == '[')
            ++depth;
        else if (*text == '\0')
            return nullptr;
        else if (--depth == 0)
            return text;
    }
}

} // namespace

u32 SYSDT_GetLsPrefixSubString(const char *text, char *buffer, u32 bufferSize, u32 *outLength)
{
    if (text == nullptr || buffer == nullptr || outLength == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const char *const end = closing_bracket(text);
    if (end == nullptr)
        return SYSDT_ERR_FAIL;
    const std::size_t length = static_cast<std::size_t>(end - text) - 1;
    if (length + 1 >= bufferSize)
        return SYSDT_ERR_FAIL;
    std::memcpy(buffer, text + 1, length);
    buffer[length] = '\0';
    *outLength = static_cast<u32>(length);
    return SYSDT_OK;
}

const LsPrefixPattern *SYSDT_ParseLsPrefixFindPattern(const char *group, const LsPrefixPattern *patterns,
                                                      u32 patternCount)
{
    if (group == nullptr || patterns == nullptr)
        return nullptr;
    for (u32 i = 0; i < patternCount; ++i)
        if (matches(patterns[i], group))
            return &patterns[i];
    return nullptr;
}

u32 SYSDT_ParseLsPrefixStr(const char *text, const LsPrefixPattern *patterns, u32 patternCount, void *target,
                           LsPrefixParseContext *context)
{
    if (text == nullptr || patterns == nullptr || target == nullptr || context == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char group[group_buffer];
    do {
        u32 length = 0;
        if (SYSDT_GetLsPrefixSubString(text, group, sizeof group, &length) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
        const auto *const pattern = SYSDT_ParseLsPrefixFindPattern(group, patterns, patternCount);
        if (pattern == nullptr || pattern->handler == nullptr)
            return SYSDT_ERR_FAIL;
        char *const value = group + std::strlen(pattern->keyword);
        if (const u32 status = pattern->handler(pattern->bit, value, target, context); status != SYSDT_OK)
            return status;
        text += length + 2;
    } while (*text != '\0');
    return SYSDT_OK;
}

LsPrefixParseContext *SYSDT_CreateLsPrefixParseContext(char *text, SYSDT_LsPrefix *record,
                                                       const LsPrefixNlriParser *parserTable, u32 rowCount)
{
    if (text == nullptr || record == nullptr || parserTable == nullptr)
        return nullptr;
    text = trimmed(text, 1, longest_text);
    if (text == nullptr)
        return nullptr;
    auto *const context = static_cast<LsPrefixParseContext *>(SYS_DataTypeMalloc(sizeof(LsPrefixParseContext)));
    if (context == nullptr)
        return nullptr;
    *context = {};
    context->text = text;
    context->length = static_cast<u32>(std::strlen(text));
    context->output = record;
    context->parsers = parserTable;
    context->rowCount = rowCount;
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
    u32 status = BgpLsParseLsPrefixEntry(context->text, record, context);
    if (status == SYSDT_OK)
        status = SYSDT_Str2LsPrefixPostCheck(record, context);
    SYS_DataTypeFree(context);
    return status;
}
