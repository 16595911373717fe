// SPDX-License-Identifier: Apache-2.0
/// @file
/// The frame of the BGP-LS parser, and its pieces for callers who bring a pattern table of their own or a text that must
/// not change: for these each group is cut as a copy. The plug-in's own tables and texts: patterns.hpp.
#include <cstring>
#include <iterator>
#include <span>

#include "bgpls/patterns.hpp"

using namespace bgpdt;

u32 SYSDT_GetLsPrefixSubString(const char *text, char *buffer, u32 bufferSize, u32 *outLength)
{
    if (text == nullptr || buffer == nullptr || outLength == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const char *const end = *text == '[' ? closing_bracket(text + 1) : nullptr;
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
    for (const auto &row : std::span(patterns, patternCount)) {
        const std::size_t length = std::strlen(row.keyword);
        if (std::strncmp(group, row.keyword, length) == 0 && (row.exact == 0 || group[length] == '\0'))
            return &row;
    }
    return nullptr;
}

u32 SYSDT_ParseLsPrefixStr(const char *text, const LsPrefixPattern *patterns, u32 patternCount, void *target,
                           LsPrefixParseContext *context)
{
    if (text == nullptr || patterns == nullptr || target == nullptr || context == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char group[longest_group + 2];
    u32 length = 0;
    do {
        if (SYSDT_GetLsPrefixSubString(text, group, sizeof group, &length) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
        const auto *const row = SYSDT_ParseLsPrefixFindPattern(group, patterns, patternCount);
        if (row == nullptr || row->handler == nullptr)
            return SYSDT_ERR_FAIL;
        char *const value = group + std::strlen(row->keyword);
        if (const u32 status = row->handler(row->bit, value, target, context); status != SYSDT_OK)
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
    text = SYSDT_BTrim(text);
    constexpr std::size_t longest_text = 500;
    const std::size_t length = std::strlen(text);
    if (length < 1 || length > longest_text || NCF_IsSpaceInString(text) != 0)
        return nullptr;
    auto *const context = static_cast<LsPrefixParseContext *>(SYS_DataTypeMalloc(sizeof(LsPrefixParseContext)));
    if (context == nullptr)
        return nullptr;
    *context = {.text = text,
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
