// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "faulty_type.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bgp_datatype/values.h"
#include "guarded.hpp"

namespace bgpdt::test {

namespace {

Fault fault = Fault::none;

bool has(Fault one) { return fault == one; }

constexpr std::uint32_t size = sizeof(SYSDT_AsNum);
constexpr std::uint32_t text_size = 33;
constexpr const char *help_text = "STRING<1-11>";

std::uint32_t screen(std::uint8_t mode, bool copies)
{
    if ((mode > 6 || mode == 4) && !(has(Fault::takes_mode_7) && mode == 7))
        return SYSDT_ERR_UNSUPPORTED;
    const bool refused = (mode == 0 && !has(Fault::takes_mode_0)) || mode == 5 || (mode == 3 && !copies);
    return refused ? SYSDT_ERR_FAIL : SYSDT_OK;
}

/// Does what using a null pointer does.
std::uint32_t misuse() { return *static_cast<volatile std::uint32_t *>(forbidden_address()); }

/// "1" to "9".
bool parse_digit(const char *text, SYSDT_AsNum &value)
{
    const bool fits = text[0] >= '1' && text[0] <= '9' && (text[1] == '\0' || has(Fault::takes_what_it_must_refuse));
    value = {fits ? static_cast<std::uint32_t>(text[0] - '0') : 0, 0};
    return fits;
}

void *take_value(SYSDT_Context *context)
{
    const bool other = has(Fault::other_owner);
    if (has(Fault::leaks) || has(Fault::released_twice) || has(Fault::written_after_release)) {
        void *block = SYS_DataTypeMallocByHandle(context->handle, 4);
        if (!has(Fault::leaks))
            SYS_DataTypeFree(block);
        if (has(Fault::released_twice))
            SYS_DataTypeFree(block);
        if (has(Fault::written_after_release) && block != nullptr)
            static_cast<volatile char *>(block)[0] = 1;
    }
    return has(Fault::plain_block) ? SYS_DataTypeMalloc(size)
                                   : SYS_DataTypeMallocByHandle(context->handle + (other ? 1 : 0), size);
}

void misbehave_in_text(char *text)
{
    if (has(Fault::reads_behind_text))
        static_cast<void>(*static_cast<volatile char *>(text + std::strlen(text) + 1));
    if (has(Fault::writes_before_text))
        text[-1] = ' ';
}

std::uint32_t format_in(SYSDT_Context *context, std::uint32_t, std::uint32_t, char *text, std::uint16_t *kind,
                        std::uint16_t *length, void **data)
{
    const bool null = context == nullptr || text == nullptr || kind == nullptr || length == nullptr || data == nullptr;
    if (null)
        return has(Fault::no_null_test) ? misuse() : SYSDT_ERR_NULL_PTR;
    if (const std::uint32_t status = screen(context->mode, false); status != SYSDT_OK)
        return status;
    misbehave_in_text(text);
    SYSDT_AsNum value{};
    if (!parse_digit(text, value)) {
        *kind = has(Fault::touches_outputs_on_refusal) ? 0 : *kind;
        return SYSDT_ERR_INVALID_VALUE;
    }
    value.asType = has(Fault::other_value) ? 1 : 0;
    context->variant = has(Fault::changes_context) ? 1 : context->variant;
    *kind = SYSDT_TYPE_ASNUM - (has(Fault::other_kind) ? 1 : 0);
    *length = has(Fault::other_length) ? size + 1 : size;
    void *block = take_value(context);
    if (block == nullptr) {
        *length = has(Fault::keeps_length_without_memory) ? *length : std::uint16_t{0};
        return has(Fault::fails_without_status) ? SYSDT_OK : SYSDT_ERR_NO_MEMORY;
    }
    std::memcpy(block, &value, size);
    if (has(Fault::writes_behind_block))
        static_cast<volatile char *>(block)[size] = 0;
    *data = block;
    return SYSDT_OK;
}

std::uint32_t copy_out(SYSDT_Context *context, std::uint32_t length, const void *data, std::uint16_t *kind,
                       std::uint16_t *out_length, void **out)
{
    void *block = *out != nullptr ? *out : SYS_DataTypeMallocByHandle(context->handle, length);
    if (block == nullptr) {
        *out_length = 0;
        *out = nullptr;
        return SYSDT_ERR_FAIL;
    }
    std::memcpy(block, data, length);
    *kind = has(Fault::no_copy_kind) ? SYSDT_KIND_STRING : SYSDT_KIND_BINARY;
    *out_length = static_cast<std::uint16_t>(length);
    *out = block;
    return SYSDT_OK;
}

void misbehave_in_print(const void *data, void *block, bool lent)
{
    if (has(Fault::writes_to_input))
        *static_cast<volatile char *>(const_cast<void *>(data)) = 0;
    if (has(Fault::reads_behind_input))
        static_cast<void>(*(static_cast<const volatile char *>(data) + size));
    if (has(Fault::writes_behind_lent_block) && lent)
        static_cast<volatile char *>(block)[text_size] = 0;
    if (has(Fault::releases_lent_block) && lent)
        SYS_DataTypeFree(block);
}

std::uint32_t format_out(SYSDT_Context *context, std::uint32_t, std::uint32_t data_length, const void *data,
                         std::uint16_t *kind, std::uint16_t *length, void **out)
{
    if (context == nullptr || data == nullptr || kind == nullptr || length == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (const std::uint32_t status = screen(context->mode, true); status != SYSDT_OK)
        return status;
    if (context->mode == 3)
        return copy_out(context, data_length, data, kind, length, out);
    const bool lent = *out != nullptr && !has(Fault::ignores_lent_block);
    void *block =
        lent ? *out : SYS_DataTypeMallocByHandle(context->handle, text_size - (has(Fault::small_block) ? 1 : 0));
    if (block == nullptr) {
        *kind = 0;
        *length = 0;
        *out = nullptr;
        return SYSDT_ERR_NO_MEMORY;
    }
    SYSDT_AsNum value{};
    std::memcpy(&value, data, has(Fault::believes_length) ? std::min(data_length, size) : size);
    const int written = std::snprintf(static_cast<char *>(block), text_size, has(Fault::other_text) ? "%u " : "%u",
                                      static_cast<unsigned>(value.asNumValue));
    *kind = SYSDT_KIND_STRING;
    *length = static_cast<std::uint16_t>(written + (has(Fault::no_terminator_counted) ? 0 : 1));
    *out = block;
    misbehave_in_print(data, block, lent);
    return SYSDT_OK;
}

std::uint32_t check(const void *, std::uint32_t, std::uint32_t length, const void *data)
{
    if (data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return length == size || has(Fault::check_ignores_length) ? SYSDT_OK : SYSDT_ERR_LENGTH;
}

std::uint32_t help(SYSDT_Context *context, std::uint32_t, std::uint32_t, const void *, const SYSDT_HelpRequest *request,
                   SYSDT_HelpInfo *info)
{
    if (context == nullptr || request == nullptr || info == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (context->mode != 1 && context->mode != 6 && !(has(Fault::help_in_mode_2) && context->mode == 2))
        return SYSDT_OK;
    if (request->first == 0 || request->second == 0)
        return SYSDT_ERR_PARAM;
    if (const std::uint32_t status = SYSDT_InitHelpInfo(context->handle, info, 1); status != SYSDT_OK)
        return status;
    const auto needed = static_cast<std::uint32_t>(std::strlen(help_text) + 1);
    auto *text = static_cast<char *>(
        SYS_DataTypeMallocByHandle(context->handle, needed + (has(Fault::help_short_block) ? 1 : 0)));
    if (text == nullptr) {
        if (!has(Fault::help_without_clear))
            SYSDT_ClearHelpInfo(info);
        return SYSDT_ERR_NO_MEMORY;
    }
    std::memcpy(text, help_text, needed);
    info->entries[0] = text;
    return SYSDT_OK;
}

std::int32_t compare(const void *, std::uint32_t, const void *first, const void *second)
{
    SYSDT_AsNum a{};
    SYSDT_AsNum b{};
    std::memcpy(&a, first, size);
    std::memcpy(&b, second, size);
    if (a.asNumValue > b.asNumValue)
        return has(Fault::compare_one_way) ? -1 : 1;
    return a.asNumValue < b.asNumValue ? -1 : 0;
}

std::uint32_t lua_set(void *state, std::int32_t index, const char *name, std::uint32_t, std::uint32_t length,
                      const void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < size && !has(Fault::set_short))
        return SYSDT_ERR_PARAM;
    SYSDT_AsNum value{};
    std::memcpy(&value, data, size);
    const std::int32_t parent = index < 0 ? SYSDT_SPTI_GetTop(state) + 1 + index : index;
    if (has(Fault::set_half_done)) {
        SYSDT_SPTI_PushUInt(state, 0);
        SYSDT_SPTI_SetField(state, parent, name);
    }
    void *held = has(Fault::set_holds_block) ? SYS_DataTypeMalloc(size) : nullptr;
    SYSDT_SPTI_CreateTable(state, 0, has(Fault::set_other_room) ? 3 : 2);
    const std::int32_t table = SYSDT_SPTI_GetTop(state);
    const bool reversed = has(Fault::set_other_order);
    const char *keys[] = {reversed ? "asType" : "asNumValue", reversed ? "asNumValue" : "asType"};
    const std::uint32_t numbers[] = {reversed ? value.asType : value.asNumValue,
                                     reversed ? value.asNumValue : value.asType};
    for (int i = 0; i < 2; ++i) {
        SYSDT_SPTI_PushUInt(state, numbers[i] + (has(Fault::set_other_value) ? 1 : 0));
        SYSDT_SPTI_SetField(state, table, keys[i]);
    }
    SYSDT_SPTI_SetField(state, parent, name);
    SYS_DataTypeFree(held);
    if (has(Fault::set_leaves_value))
        SYSDT_SPTI_PushUInt(state, 0);
    return SYSDT_OK;
}

std::uint32_t lua_get(void *state, std::int32_t index, const char *name, std::uint32_t, std::uint32_t length,
                      void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < size && !has(Fault::get_short))
        return SYSDT_ERR_PARAM;
    SYSDT_SPTI_GetField(state, index, name);
    const std::int32_t table = SYSDT_SPTI_GetTop(state);
    if (SYSDT_SPTI_IsTable(state, table) == 0)
        return SYSDT_ERR_PARAM;
    std::uint32_t numbers[2] = {};
    for (int i = 0; i < 2; ++i) {
        SYSDT_SPTI_GetField(state, table, i == 0 ? "asNumValue" : "asType");
        if (SYSDT_SPTI_IsNumber(state, -1) == 0)
            return SYSDT_ERR_PARAM;
        numbers[i] = SYSDT_SPTI_ToUInt(state, -1) + (has(Fault::get_other_value) ? 1 : 0);
    }
    std::memcpy(data, numbers, size);
    SYSDT_SPTI_Pop(state, has(Fault::get_leaves_more) ? 1 : 2);
    return SYSDT_OK;
}

std::uint32_t endian(void *, std::uint32_t, std::uint32_t, void *data)
{
    static int calls = 0;
    auto *bytes = static_cast<std::uint8_t *>(data);
    if (has(Fault::swaps_once) && ++calls % 2 == 0)
        return SYSDT_OK;
    std::reverse(bytes, bytes + 4);
    if (!has(Fault::swaps_half))
        std::reverse(bytes + 4, bytes + 8);
    return SYSDT_OK;
}

} // namespace

Subject faulty_type(Fault which)
{
    fault = which;
    Subject subject;
    subject.name = "ASNUM";
    subject.kind = SYSDT_TYPE_ASNUM;
    subject.length = size;
    subject.expect = *expectation_of("ASNUM");
    subject.format_in = format_in;
    subject.format_out = format_out;
    subject.check = check;
    subject.help = help;
    subject.compare = compare;
    subject.lua_set = lua_set;
    subject.lua_get = lua_get;
    subject.endian = endian;
    return subject;
}

} // namespace bgpdt::test
