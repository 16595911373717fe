// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The host's own types: strings, 32-bit numbers, and the indexes behind which names stand.
///
/// All convert text in modes 1, 2 and 6 and copy in mode 3. Their callbacks serve many registered types and so report
/// the base kinds: SYSDT_KIND_STRING for a string, SYSDT_KIND_BINARY for an index.
#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "host/registry.hpp"
#include "host/services.hpp"

using bgpdt::host::Names;
using bgpdt::host::order;
using bgpdt::host::registry;

namespace {

constexpr size_t max_text = 256; // characters of a text block, its NUL not counted
constexpr size_t largest_length = std::numeric_limits<uint16_t>::max();
constexpr uint8_t copy_mode = 3;

static_assert(Names::max_length <= max_text);

/// Where a conversion puts its results.
struct Outputs {
    uint16_t *kind;
    uint16_t *length;
    void **data;

    bool complete() const { return kind != nullptr && length != nullptr && data != nullptr; }
};

/// SYSDT_OK in the modes that convert text.
uint32_t screen_text(uint8_t mode)
{
    if (mode == 4 || mode > 6)
        return SYSDT_ERR_UNSUPPORTED;
    return mode == 1 || mode == 2 || mode == 6 ? SYSDT_OK : SYSDT_ERR_FAIL;
}

/// Hands a parsed value over in a fresh block.
uint32_t deliver_value(const SYSDT_Context &context, const Outputs &out, uint16_t kind, const void *value, size_t size)
{
    *out.kind = kind;
    *out.length = static_cast<uint16_t>(size);
    void *const block = SYS_DataTypeMallocByHandle(context.handle, static_cast<uint32_t>(size));
    if (block == nullptr) {
        *out.length = 0;
        return SYSDT_ERR_NO_MEMORY;
    }
    std::memcpy(block, value, size);
    *out.data = block;
    return SYSDT_OK;
}

/// Writes a text into the caller's block or a fresh one, cut at max_text characters.
uint32_t deliver_text(const SYSDT_Context &context, const Outputs &out, std::string_view text)
{
    void *const block = *out.data != nullptr ? *out.data : SYS_DataTypeMallocByHandle(context.handle, max_text + 1);
    if (block == nullptr) {
        *out.kind = 0;
        *out.length = 0;
        return SYSDT_ERR_NO_MEMORY;
    }
    const size_t length = std::min(text.size(), max_text);
    auto *const characters = static_cast<char *>(block);
    std::memcpy(characters, text.data(), length);
    characters[length] = '\0';
    *out.kind = SYSDT_KIND_STRING;
    *out.length = static_cast<uint16_t>(length + 1);
    *out.data = block;
    return SYSDT_OK;
}

/// Copies the value into the caller's block or a fresh one. Memory out is SYSDT_ERR_FAIL here.
uint32_t deliver_copy(const SYSDT_Context &context, const Outputs &out, const void *value, uint32_t size)
{
    if (size > largest_length)
        return SYSDT_ERR_FAIL;
    void *const block = *out.data != nullptr ? *out.data : SYS_DataTypeMallocByHandle(context.handle, size);
    if (block == nullptr) {
        *out.length = 0;
        return SYSDT_ERR_FAIL;
    }
    std::memcpy(block, value, size);
    *out.kind = SYSDT_KIND_BINARY;
    *out.length = static_cast<uint16_t>(size);
    *out.data = block;
    return SYSDT_OK;
}

uint32_t load_number(const void *data)
{
    uint32_t number;
    std::memcpy(&number, data, sizeof number);
    return number;
}

/// The index behind a name, or behind its own decimal text.
uint32_t read_index(const char *text, uint32_t &index)
{
    if (registry != nullptr) {
        if (const auto known = registry->names.index_of(text)) {
            index = *known;
            return SYSDT_OK;
        }
    }
    return SMP_StrToUint32(text, &index) == SYSDT_OK ? SYSDT_OK : SYSDT_ERR_INVALID_VALUE;
}

constexpr auto null_pointer = static_cast<int32_t>(SYSDT_ERR_NULL_PTR);

/// The table's index that stays the same while values are pushed.
int32_t absolute(void *state, int32_t index) { return index < 0 ? SYSDT_SPTI_GetTop(state) + 1 + index : index; }

} // namespace

int32_t SYSDT_Uint32Compare(const void *, uint32_t, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return null_pointer;
    const uint32_t a = load_number(first);
    const uint32_t b = load_number(second);
    return (a > b) - (a < b);
}

int32_t SYSDT_BlockCompare(const void *, uint32_t dataLength, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return null_pointer;
    return order(std::memcmp(first, second, dataLength));
}

uint32_t SYSDT_StringFormatIn(SYSDT_Context *context, uint32_t, uint32_t, char *text, uint16_t *outKind,
                              uint16_t *outLength, void **outData)
{
    const Outputs out{outKind, outLength, outData};
    if (context == nullptr || text == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (const uint32_t status = screen_text(context->mode); status != SYSDT_OK)
        return status;
    const size_t length = std::strlen(text);
    if (length > max_text)
        return SYSDT_ERR_INVALID_VALUE;
    return deliver_value(*context, out, SYSDT_KIND_STRING, text, length + 1);
}

uint32_t SYSDT_StringFormatOut(SYSDT_Context *context, uint32_t, uint32_t dataLength, const void *data,
                               uint16_t *outKind, uint16_t *outLength, void **outData)
{
    const Outputs out{outKind, outLength, outData};
    if (context == nullptr || data == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (context->mode == copy_mode)
        return deliver_copy(*context, out, data, dataLength);
    if (const uint32_t status = screen_text(context->mode); status != SYSDT_OK)
        return status;
    const auto *const text = static_cast<const char *>(data);
    return deliver_text(*context, out, {text, strnlen(text, dataLength)});
}

uint32_t SYSDT_StringHelp(SYSDT_Context *context, uint32_t, uint32_t, const void *, const SYSDT_HelpRequest *request,
                          SYSDT_HelpInfo *info)
{
    constexpr std::string_view help = "STRING";
    if (context == nullptr || request == nullptr || info == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (context->mode != 1 && context->mode != 6)
        return SYSDT_OK;
    if (request->first == 0 || request->second == 0)
        return SYSDT_ERR_PARAM;
    if (const uint32_t status = SYSDT_InitHelpInfo(context->handle, info, 1); status != SYSDT_OK)
        return status;
    auto *const text = static_cast<char *>(SYS_DataTypeMallocByHandle(context->handle, help.size() + 1));
    if (text == nullptr) {
        SYSDT_ClearHelpInfo(info);
        return SYSDT_ERR_NO_MEMORY;
    }
    std::memcpy(text, help.data(), help.size() + 1);
    info->entries[0] = text;
    return SYSDT_OK;
}

int32_t SYSDT_StringCompare(const void *, uint32_t dataLength, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return null_pointer;
    return order(std::strncmp(static_cast<const char *>(first), static_cast<const char *>(second), dataLength));
}

uint32_t SYSDT_StringLuaSet(void *state, int32_t tableIndex, const char *fieldName, uint32_t, uint32_t bufferLength,
                            const void *data)
{
    if (state == nullptr || fieldName == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const auto *const text = static_cast<const char *>(data);
    tableIndex = absolute(state, tableIndex);
    SYSDT_SPTI_PushLString(state, text, static_cast<uint32_t>(strnlen(text, bufferLength)));
    SYSDT_SPTI_SetField(state, tableIndex, fieldName);
    return SYSDT_OK;
}

uint32_t SYSDT_StringLuaGet(void *state, int32_t tableIndex, const char *fieldName, uint32_t, uint32_t bufferLength,
                            void *data)
{
    if (state == nullptr || fieldName == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    SYSDT_SPTI_GetField(state, tableIndex, fieldName);
    if (SYSDT_SPTI_IsString(state, -1) == 0)
        return SYSDT_ERR_PARAM;
    const uint32_t length = SYSDT_SPTI_ObjLen(state, -1);
    if (length >= bufferLength)
        return SYSDT_ERR_TOO_LONG;
    std::memcpy(data, SYSDT_SPTI_ToString(state, -1), length + 1);
    SYSDT_SPTI_Pop(state, 1);
    return SYSDT_OK;
}

uint32_t SYS_DT_UINT32IndexFormatIn(SYSDT_Context *context, uint32_t, uint32_t, char *text, uint16_t *outKind,
                                    uint16_t *outLength, void **outData)
{
    const Outputs out{outKind, outLength, outData};
    if (context == nullptr || text == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (const uint32_t status = screen_text(context->mode); status != SYSDT_OK)
        return status;
    uint32_t index = 0;
    if (const uint32_t status = read_index(SYSDT_BTrim(text), index); status != SYSDT_OK)
        return status;
    return deliver_value(*context, out, SYSDT_KIND_BINARY, &index, sizeof index);
}

uint32_t SYS_DT_IndexFormatOut(SYSDT_Context *context, uint32_t, uint32_t dataLength, const void *data,
                               uint16_t *outKind, uint16_t *outLength, void **outData)
{
    const Outputs out{outKind, outLength, outData};
    if (context == nullptr || data == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (context->mode == copy_mode)
        return deliver_copy(*context, out, data, dataLength);
    if (const uint32_t status = screen_text(context->mode); status != SYSDT_OK)
        return status;
    const uint32_t index = load_number(data);
    if (registry != nullptr) {
        if (const std::string *const name = registry->names.name_of(index))
            return deliver_text(*context, out, *name);
    }
    char digits[std::numeric_limits<uint32_t>::digits10 + 2];
    PAL_Uint32ToStr(index, digits, 10);
    return deliver_text(*context, out, digits);
}

uint32_t SYSDT_Uint32LuaSet(void *state, int32_t tableIndex, const char *fieldName, uint32_t, uint32_t bufferLength,
                            const void *data)
{
    if (state == nullptr || fieldName == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (bufferLength < sizeof(uint32_t))
        return SYSDT_ERR_PARAM;
    tableIndex = absolute(state, tableIndex);
    SYSDT_SPTI_PushUInt(state, load_number(data));
    SYSDT_SPTI_SetField(state, tableIndex, fieldName);
    return SYSDT_OK;
}

uint32_t SYSDT_Uint32LuaGet(void *state, int32_t tableIndex, const char *fieldName, uint32_t, uint32_t bufferLength,
                            void *data)
{
    if (state == nullptr || fieldName == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (bufferLength < sizeof(uint32_t))
        return SYSDT_ERR_PARAM;
    SYSDT_SPTI_GetField(state, tableIndex, fieldName);
    if (SYSDT_SPTI_IsNumber(state, -1) == 0)
        return SYSDT_ERR_PARAM;
    const uint32_t number = SYSDT_SPTI_ToUInt(state, -1);
    std::memcpy(data, &number, sizeof number);
    SYSDT_SPTI_Pop(state, 1);
    return SYSDT_OK;
}
