// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// A plug-in with a few types that show how a host behaves towards them.
#include <cstring>

#include "bgp_datatype/host.h"

namespace {

// ---------------------------------------------------------------------------------------------------- NUMBER

constexpr uint16_t number_type = 0x7001;

uint32_t number_in(SYSDT_Context *context, uint32_t, uint32_t text_length, char *text, uint16_t *kind, uint16_t *length,
                   void **data)
{
    if (context->mode > 6)
        return SYSDT_ERR_UNSUPPORTED;
    if (text_length != std::strlen(text) + 1)
        return SYSDT_ERR_LENGTH;
    uint32_t number = 0;
    if (PAL_StrToUint32(SYSDT_BTrim(text), &number) != SYSDT_OK)
        return SYSDT_ERR_INVALID_VALUE;
    *kind = number_type;
    *length = sizeof number;
    *data = SYS_DataTypeMallocByHandle(context->handle, sizeof number);
    if (*data == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    std::memcpy(*data, &number, sizeof number);
    return SYSDT_OK;
}

// Mode 0 hands the block back with an error, mode 5 delivers nothing at all.
uint32_t number_out(SYSDT_Context *context, uint32_t type, uint32_t data_length, const void *data, uint16_t *kind,
                    uint16_t *length, void **out)
{
    if (type != number_type)
        return SYSDT_ERR_MISMATCH;
    if (context->mode == 5)
        return SYSDT_OK;
    uint32_t number;
    std::memcpy(&number, data, sizeof number);
    *out = SYS_DataTypeMallocByHandle(context->handle, 64);
    if (*out == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    if (context->mode == 0) {
        *length = 64;
        return SYSDT_ERR_OUTPUT;
    }
    const int characters = snprintf_truncated_s(static_cast<char *>(*out), 64, "%u of %u", number, data_length);
    *kind = SYSDT_KIND_STRING;
    *length = static_cast<uint16_t>(characters + 1);
    return SYSDT_OK;
}

uint32_t number_check(const void *first, uint32_t, uint32_t data_length, const void *data)
{
    if (first == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return data_length == sizeof(uint32_t) ? SYSDT_OK : SYSDT_ERR_LENGTH;
}

uint32_t number_help(SYSDT_Context *context, uint32_t, uint32_t, const void *fourth, const SYSDT_HelpRequest *request,
                     SYSDT_HelpInfo *info)
{
    if (fourth == nullptr || request->first == 0 || request->second == 0)
        return SYSDT_ERR_PARAM;
    if (context->mode == 2)
        return SYSDT_OK;
    if (SYSDT_InitHelpInfo(context->handle, info, 2) != SYSDT_OK)
        return SYSDT_ERR_NO_MEMORY;
    const char text[] = "INTEGER<0-4294967295>";
    info->entries[0] = static_cast<char *>(SYS_DataTypeMallocByHandle(context->handle, sizeof text));
    if (info->entries[0] == nullptr)
        return SYSDT_ERR_NO_MEMORY; // what is prepared is left to the host
    std::memcpy(info->entries[0], text, sizeof text);
    return context->mode == 1 ? SYSDT_OK : SYSDT_ERR_FAIL;
}

// Answers the length that it is told, to be looked at.
int32_t number_compare(const void *, uint32_t data_length, const void *first, const void *second)
{
    const int32_t order = SYSDT_Uint32Compare(nullptr, data_length, first, second);
    return order * static_cast<int32_t>(data_length);
}

uint32_t number_swap(void *first, uint32_t, uint32_t, void *data)
{
    if (first == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    auto *const bytes = static_cast<uint8_t *>(data);
    for (int i = 0; i < 2; ++i) {
        const uint8_t byte = bytes[i];
        bytes[i] = bytes[3 - i];
        bytes[3 - i] = byte;
    }
    return SYSDT_OK;
}

// ---------------------------------------------------------------------------------------------------- RAISING

// Takes the engine's memory until it has no more.
uint32_t endless_set(void *state, int32_t, const char *, uint32_t, uint32_t, const void *)
{
    for (;;) {
        SYSDT_SPTI_CreateTable(state, 1000, 0);
        SYSDT_SPTI_PushUInt(state, 1);
        SYSDT_SPTI_Pop(state, 1);
    }
}

// Pops what is not its own.
uint32_t popping_get(void *state, int32_t, const char *, uint32_t, uint32_t, void *)
{
    SYSDT_SPTI_Pop(state, 1000);
    return SYSDT_OK;
}

// ---------------------------------------------------------------------------------------------------- PAIR

// Two bytes as { first = .., second = .. }. Leaves values on the stack, as a failing callback may.
uint32_t pair_set(void *state, int32_t table, const char *name, uint32_t, uint32_t length, const void *data)
{
    const auto *const bytes = static_cast<const uint8_t *>(data);
    SYSDT_SPTI_CreateTable(state, 0, 2);
    const int32_t pair = SYSDT_SPTI_GetTop(state);
    SYSDT_SPTI_PushUInt(state, bytes[0]);
    SYSDT_SPTI_SetField(state, pair, "first");
    if (length != 2) {
        SYSDT_SPTI_PushString(state, "left behind");
        return SYSDT_ERR_LENGTH;
    }
    SYSDT_SPTI_PushUInt(state, bytes[1]);
    SYSDT_SPTI_SetField(state, pair, "second");
    SYSDT_SPTI_SetField(state, table, name);
    return SYSDT_OK;
}

uint32_t pair_get(void *state, int32_t table, const char *name, uint32_t, uint32_t length, void *data)
{
    auto *const bytes = static_cast<uint8_t *>(data);
    if (data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < 2)
        return SYSDT_ERR_PARAM;
    SYSDT_SPTI_GetField(state, table, name);
    const char *const keys[] = {"first", "second"};
    for (int i = 0; i < 2; ++i) {
        SYSDT_SPTI_GetField(state, -1 - i, keys[i]);
        if (SYSDT_SPTI_IsNumber(state, -1) == 0)
            return SYSDT_ERR_PARAM;
        bytes[i] = static_cast<uint8_t>(SYSDT_SPTI_ToUInt(state, -1));
    }
    return SYSDT_OK;
}

constexpr SYSDT_Record records[] = {
    {number_type, 4, SYSDT_KIND_EXTEND, "NUMBER", number_in, number_out, number_check, number_help, number_compare,
     nullptr, SYSDT_Uint32LuaSet, SYSDT_Uint32LuaGet, number_swap},
    {0x7002, 4, SYSDT_KIND_EXTEND, "RAISING", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, endless_set,
     popping_get, nullptr},
    {0x7003, 2, SYSDT_KIND_EXTEND, "PAIR", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, pair_set, pair_get,
     nullptr},
    {0x7004, 4, SYSDT_KIND_BINARY, "INDEX", SYS_DT_UINT32IndexFormatIn, SYS_DT_IndexFormatOut, nullptr, nullptr,
     SYSDT_Uint32Compare, nullptr, SYSDT_Uint32LuaSet, SYSDT_Uint32LuaGet, nullptr},
    {0x7005,
     1,
     SYSDT_KIND_EXTEND,
     {'W', 'I', 'T', 'H', 'O', 'U', 'T', '_', 'A', '_', 'F', 'I', 'N', 'A', 'L', 'N', 'U', 'L'},
     nullptr,
     nullptr,
     nullptr,
     nullptr,
     nullptr,
     nullptr,
     nullptr,
     nullptr,
     nullptr},
};

} // namespace

#pragma GCC visibility push(default)
extern "C" {

extern const uint32_t host_test_exported = 64496;

uint32_t Bgp_InitDataType(uint32_t handle)
{
    for (const SYSDT_Record &record : records) {
        const uint32_t status = SYS_Drm_RegisterDataType(handle, &record);
        if (status != SYSDT_OK) {
            char message[64];
            sprintf_s(message, sizeof message, "refused: %u", status);
            KPL_Assert("plugin", 7, message);
        }
    }
    return SYSDT_OK;
}
}
#pragma GCC visibility pop
