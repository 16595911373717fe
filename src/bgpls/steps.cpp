// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What only outside callers use, and no path of the plug-in's: the parser for a pattern table of theirs or a text that
/// must not change, which cuts each group as a copy; the printers and the words by themselves.
#include <cstring>
#include <iterator>
#include <span>

#include "bgpls/groups.hpp"
#include "bgpls/key.hpp"

using namespace bgpdt;
using namespace bgpdt::bgpls;

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

u32 BgpLsParseLsPrefixEntry(const char *text, SYSDT_LsPrefix *record, LsPrefixParseContext *context)
{
    return SYSDT_ParseLsPrefixStr(text, g_bgplsPrefixPattern, std::size(g_bgplsPrefixPattern), record, context);
}

u32 BgpLsParseNodeDesc(const char *text, LsNodeDescScratch *scratch, LsPrefixParseContext *context)
{
    return SYSDT_ParseLsPrefixStr(text, g_bgplsPrefixNodeDescPartten, std::size(g_bgplsPrefixNodeDescPartten), scratch,
                                  context);
}

namespace {

[[gnu::noinline]] u32 print_alone(Printer &print, const SYSDT_LsPrefix *key, char *buffer, u32 size, u32 *length)
{
    if (key == nullptr || buffer == nullptr || length == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (size == 0)
        return SYSDT_ERR_FAIL;
    Writer out(buffer, size);
    print(*key, out);
    *length += out.finish();
    return SYSDT_OK;
}

u32 put_word(std::string_view word, char *buffer, u32 size)
{
    if (buffer == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (word.empty() || size == 0)
        return SYSDT_OK;
    Writer out(buffer, size);
    out.put(word);
    out.finish();
    return SYSDT_OK;
}

} // namespace

u32 SYSDT_LsPrefix2Str(const SYSDT_LsPrefix *record, char *buffer, u32 *lengthOut)
{
    if (record == nullptr || buffer == nullptr || lengthOut == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Printer *const print = printer_of(*record);
    if (print == nullptr)
        return SYSDT_ERR_FAIL;
    *lengthOut = 0;
    return print_alone(*print, record, buffer, text_size, lengthOut); // print (15)
}

#define BGPDT_LS_PRINTER(name, print)                                                                                  \
    std::uint32_t name(const SYSDT_LsPrefix *record, char *buffer, std::uint32_t size, std::uint32_t *lengthOut)       \
    {                                                                                                                  \
        return print_alone(print, record, buffer, size, lengthOut);                                                    \
    }

BGPDT_LS_PRINTER(SYSDT_LS_NodeKeyToStr, print_node)
BGPDT_LS_PRINTER(SYSDT_LS_LinkKeyToStr, print_link)
BGPDT_LS_PRINTER(SYSDT_LS_Ipv4PrefixKeyToStr, print_ipv4_prefix)
BGPDT_LS_PRINTER(SYSDT_LS_Ipv6PrefixKeyToStr, print_ipv6_prefix)
BGPDT_LS_PRINTER(SYSDT_LS_TePolicyKeyToStr, print_te_policy)
BGPDT_LS_PRINTER(SYSDT_LS_Srv6SidKeyToStr, print_srv6_sid)
BGPDT_LS_PRINTER(SYSDT_LS_TePolicy_TeKeyToStr, print_te)

u32 SYSDT_LS_RouteTypeEnum2Str(u32 type, char *buffer, u32 size)
{
    return put_word(word_of(route_type_words, type), buffer, size);
}

u32 SYSDT_LS_ProtclTypeEnum2Str(u32 protocol, char *buffer, u32 size)
{
    return put_word(word_of(protocol_words, protocol), buffer, size);
}

u32 SYSDT_ipv6AddrUnSpecified(const u8 address[16])
{
    return std::all_of(address, address + 16, [](u8 byte) { return byte == 0; }) ? 1 : 0;
}
