// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A plug-in of types that no router has: one for every shape that a caller of arbitrary records must cope with.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bgp_datatype/host.h"

namespace {

std::uint32_t deliver(SYSDT_Context *context, std::uint16_t kind, const void *bytes, std::size_t size,
                      std::uint16_t *out_kind, std::uint16_t *out_length, void **out_data)
{
    void *block = SYS_DataTypeMallocByHandle(context->handle, static_cast<std::uint32_t>(size));
    if (block == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    *out_kind = kind;
    *out_length = static_cast<std::uint16_t>(size);
    *out_data = std::memcpy(block, bytes, size);
    return SYSDT_OK;
}

/// The value is the text's first character and the mode.
std::uint32_t parse_mode(SYSDT_Context *context, std::uint32_t, std::uint32_t, char *text, std::uint16_t *kind,
                         std::uint16_t *length, void **data)
{
    const char value[2] = {text[0], static_cast<char>(context->mode)};
    return deliver(context, 0x7001, value, sizeof value, kind, length, data);
}

std::uint32_t print_mode(SYSDT_Context *context, std::uint32_t, std::uint32_t, const void *, std::uint16_t *kind,
                         std::uint16_t *length, void **data)
{
    char text[16];
    const int characters = std::snprintf(text, sizeof text, "mode %u", context->mode);
    return deliver(context, SYSDT_KIND_STRING, text, static_cast<std::size_t>(characters) + 1, kind, length, data);
}

std::uint32_t print_copy(SYSDT_Context *context, std::uint32_t, std::uint32_t size, const void *value,
                         std::uint16_t *kind, std::uint16_t *length, void **data)
{
    return deliver(context, SYSDT_KIND_BINARY, value, size, kind, length, data);
}

std::uint32_t parse_nothing(SYSDT_Context *, std::uint32_t, std::uint32_t, char *, std::uint16_t *, std::uint16_t *,
                            void **)
{
    return SYSDT_OK;
}

std::uint32_t print_nothing(SYSDT_Context *, std::uint32_t, std::uint32_t, const void *, std::uint16_t *,
                            std::uint16_t *, void **)
{
    return SYSDT_OK;
}

std::uint32_t check_nothing(const void *, std::uint32_t, std::uint32_t, const void *)
{
    return SYSDT_ERR_INVALID_VALUE;
}

std::int32_t compare_nothing(const void *, std::uint32_t, const void *, const void *) { return SYSDT_ERR_FAIL; }

std::uint32_t swap_nothing(void *, std::uint32_t, std::uint32_t, void *) { return SYSDT_ERR_NULL_PTR; }

/// One of the statuses, all of which have its upper bytes; 0 is done.
std::uint32_t status_of(std::uint32_t low) { return low == 0 ? SYSDT_OK : (SYSDT_ERR_FAIL & ~0xffU) | low; }

/// Of an "x" with two digits behind it; any other text is refused as a value.
std::uint32_t refuse_text(SYSDT_Context *, std::uint32_t, std::uint32_t, char *text, std::uint16_t *, std::uint16_t *,
                          void **)
{
    return text[0] == 'x' ? status_of(static_cast<std::uint32_t>(std::strtoul(text + 1, nullptr, 16)))
                          : SYSDT_ERR_INVALID_VALUE;
}

std::uint32_t status_in(const void *value)
{
    std::uint8_t low = 0;
    std::memcpy(&low, value, 1);
    return status_of(low);
}

std::uint32_t refuse_print(SYSDT_Context *, std::uint32_t, std::uint32_t, const void *value, std::uint16_t *,
                           std::uint16_t *, void **)
{
    return status_in(value);
}

std::uint32_t help(SYSDT_Context *context, std::uint32_t, std::uint32_t, const void *, const SYSDT_HelpRequest *,
                   SYSDT_HelpInfo *info)
{
    const char text[] = "x and two digits";
    if (SYSDT_InitHelpInfo(context->handle, info, 1) != SYSDT_OK)
        return SYSDT_ERR_NO_MEMORY;
    void *block = SYS_DataTypeMalloc(sizeof text);
    if (block == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    info->entries[0] = static_cast<char *>(std::memcpy(block, text, sizeof text));
    return SYSDT_OK;
}

std::uint32_t refuse_check(const void *, std::uint32_t, std::uint32_t, const void *value) { return status_in(value); }

/// Some types' statuses are negative.
std::int32_t refuse_compare(const void *, std::uint32_t, const void *first, const void *second)
{
    return static_cast<std::int32_t>(status_in(first)) * (status_in(second) == SYSDT_OK ? 1 : -1);
}

std::uint32_t refuse_set(void *, std::int32_t, const char *, std::uint32_t, std::uint32_t, const void *value)
{
    return status_in(value);
}

/// The whole text, however long.
std::uint32_t parse_word(SYSDT_Context *context, std::uint32_t, std::uint32_t, char *text, std::uint16_t *kind,
                         std::uint16_t *length, void **data)
{
    return deliver(context, SYSDT_KIND_STRING, text, std::strlen(text) + 1, kind, length, data);
}

std::uint32_t print_word(SYSDT_Context *context, std::uint32_t, std::uint32_t, const void *value, std::uint16_t *kind,
                         std::uint16_t *length, void **data)
{
    return deliver(context, SYSDT_KIND_STRING, value, std::strlen(static_cast<const char *>(value)) + 1, kind, length,
                   data);
}

std::int32_t compare_words(const void *, std::uint32_t, const void *, const void *) { return 1; }

/// { [""] = 1, ["1a"] = 2 }: keys that are neither names nor indexes.
std::uint32_t set_odd_keys(void *state, std::int32_t index, const char *field, std::uint32_t, std::uint32_t,
                           const void *)
{
    SYSDT_SPTI_CreateTable(state, 0, 2);
    const std::int32_t table = SYSDT_SPTI_GetTop(state);
    SYSDT_SPTI_PushUInt(state, 1);
    SYSDT_SPTI_SetField(state, table, "");
    SYSDT_SPTI_PushUInt(state, 2);
    SYSDT_SPTI_SetField(state, table, "1a");
    SYSDT_SPTI_SetField(state, index < 0 ? index - 1 : index, field);
    return SYSDT_OK;
}

/// More than any of the router's types prints.
std::uint32_t print_long(SYSDT_Context *context, std::uint32_t, std::uint32_t, const void *, std::uint16_t *kind,
                         std::uint16_t *length, void **data)
{
    char text[5001] = {};
    std::memset(text, 'x', sizeof text - 1);
    return deliver(context, SYSDT_KIND_STRING, text, sizeof text, kind, length, data);
}

/// Swaps the number 258 alone.
std::uint32_t swap_258(void *, std::uint32_t, std::uint32_t, void *data)
{
    std::uint16_t number = 0;
    std::memcpy(&number, data, sizeof number);
    if (number == 258) {
        number = 513;
        std::memcpy(data, &number, sizeof number);
    }
    return SYSDT_OK;
}

/// { empty = {}, list = { { n = 0 }, ... }, name = 'a"b\n', ["odd key"] = 1 } with as many entries as the value says.
std::uint32_t set_table(void *state, std::int32_t index, const char *field, std::uint32_t, std::uint32_t,
                        const void *data)
{
    std::uint8_t count = 0;
    std::memcpy(&count, data, 1);
    SYSDT_SPTI_CreateTable(state, 0, 4);
    const std::int32_t table = SYSDT_SPTI_GetTop(state);
    SYSDT_SPTI_CreateTable(state, count, 0);
    for (std::uint32_t i = 1; i <= count; ++i) {
        SYSDT_SPTI_PushUInt(state, i);
        SYSDT_SPTI_CreateTable(state, 0, 1);
        SYSDT_SPTI_PushUInt(state, 0xffffff00U + i);
        SYSDT_SPTI_SetField(state, table + 3, "n");
        SYSDT_SPTI_SetTable(state, table + 1);
    }
    SYSDT_SPTI_SetField(state, table, "list");
    SYSDT_SPTI_PushUInt(state, 1);
    SYSDT_SPTI_SetField(state, table, "odd key");
    SYSDT_SPTI_CreateTable(state, 0, 0);
    SYSDT_SPTI_SetField(state, table, "empty");
    SYSDT_SPTI_PushLString(state, "a\"b\n", 4);
    SYSDT_SPTI_SetField(state, table, "name");
    SYSDT_SPTI_SetField(state, index < 0 ? index - 1 : index, field);
    return SYSDT_OK;
}

/// { 7, name = "x" }: an entry and a field in one table.
std::uint32_t set_mixed(void *state, std::int32_t index, const char *field, std::uint32_t, std::uint32_t, const void *)
{
    SYSDT_SPTI_CreateTable(state, 1, 1);
    const std::int32_t table = SYSDT_SPTI_GetTop(state);
    SYSDT_SPTI_PushUInt(state, 1);
    SYSDT_SPTI_PushUInt(state, 7);
    SYSDT_SPTI_SetTable(state, table);
    SYSDT_SPTI_PushString(state, "x");
    SYSDT_SPTI_SetField(state, table, "name");
    SYSDT_SPTI_SetField(state, index < 0 ? index - 1 : index, field);
    return SYSDT_OK;
}

std::uint32_t refuse_table(void *, std::int32_t, const char *, std::uint32_t, std::uint32_t, void *)
{
    return SYSDT_ERR_TOO_LONG;
}

const SYSDT_Record records[] = {
    {.typeId = 0x7001,
     .dataLength = 2,
     .baseKind = SYSDT_KIND_EXTEND,
     .name = "MODE",
     .formatIn = parse_mode,
     .formatOut = print_mode,
     .check = {},
     .help = {},
     .compare = {},
     .reserved = {},
     .luaSet = {},
     .luaGet = {},
     .endian = {}},
    {.typeId = 0x7002,
     .dataLength = 8,
     .baseKind = SYSDT_KIND_STRING,
     .name = "STRING",
     .formatIn = parse_mode,
     .formatOut = print_mode,
     .check = {},
     .help = {},
     .compare = {},
     .reserved = {},
     .luaSet = {},
     .luaGet = {},
     .endian = {}},
    {.typeId = 0x7003,
     .dataLength = 2,
     .baseKind = SYSDT_KIND_BINARY,
     .name = "COPY",
     .formatIn = {},
     .formatOut = print_copy,
     .check = {},
     .help = {},
     .compare = {},
     .reserved = {},
     .luaSet = set_mixed,
     .luaGet = refuse_table,
     .endian = swap_258},
    {.typeId = 0x7004,
     .dataLength = 1,
     .baseKind = SYSDT_KIND_EXTEND,
     .name = "SILENT",
     .formatIn = parse_nothing,
     .formatOut = print_nothing,
     .check = check_nothing,
     .help = {},
     .compare = compare_nothing,
     .reserved = {},
     .luaSet = set_table,
     .luaGet = refuse_table,
     .endian = swap_nothing},
    {.typeId = 0x7005,
     .dataLength = 1,
     .baseKind = SYSDT_KIND_EXTEND,
     .name = "SEVENTEEN_LETTERS",
     .formatIn = {},
     .formatOut = {},
     .check = {},
     .help = {},
     .compare = {},
     .reserved = {},
     .luaSet = {},
     .luaGet = {},
     .endian = {}},
    {.typeId = 0x7006,
     .dataLength = 1,
     .baseKind = SYSDT_KIND_EXTEND,
     .name = "PRINTED",
     .formatIn = {},
     .formatOut = print_mode,
     .check = {},
     .help = {},
     .compare = {},
     .reserved = {},
     .luaSet = {},
     .luaGet = {},
     .endian = {}},
    {.typeId = 0x7007,
     .dataLength = 1,
     .baseKind = SYSDT_KIND_EXTEND,
     .name = "STATUS",
     .formatIn = refuse_text,
     .formatOut = refuse_print,
     .check = refuse_check,
     .help = help,
     .compare = refuse_compare,
     .reserved = {},
     .luaSet = refuse_set,
     .luaGet = {},
     .endian = {}},
    {.typeId = 0x7008,
     .dataLength = 4,
     .baseKind = SYSDT_KIND_STRING,
     .name = "WORD",
     .formatIn = parse_word,
     .formatOut = print_word,
     .check = {},
     .help = {},
     .compare = compare_words,
     .reserved = {},
     .luaSet = set_odd_keys,
     .luaGet = {},
     .endian = {}},
    {.typeId = 0x7009,
     .dataLength = 2000,
     .baseKind = SYSDT_KIND_EXTEND,
     .name = "LONG",
     .formatIn = {},
     .formatOut = print_long,
     .check = {},
     .help = {},
     .compare = {},
     .reserved = {},
     .luaSet = {},
     .luaGet = {},
     .endian = {}},
};

} // namespace

extern "C" __attribute__((visibility("default"))) std::uint32_t Bgp_InitDataType(std::uint32_t handle)
{
    for (const SYSDT_Record &record : records)
        SYS_Drm_RegisterDataType(handle, &record);
    return SYSDT_OK;
}
