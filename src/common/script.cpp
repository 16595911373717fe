// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "common/script.hpp"

#include "common/bytes.hpp"

namespace bgpdt::script {

namespace {

void push_number(void *state, const u8 *at, u32 width)
{
    switch (width) {
    case 1: SYSDT_SPTI_PushUInt(state, *at); break;
    case 2: SYSDT_SPTI_PushUInt(state, load<u16>(at)); break;
    case 4: SYSDT_SPTI_PushUInt(state, load<u32>(at)); break;
    default: SYSDT_SPTI_PushInt64(state, static_cast<i64>(load<u64>(at))); break;
    }
}

/// So many bytes, as a field.
constexpr Field octet_array(std::size_t count)
{
    return {.width = 1, .count = static_cast<u8>(count), .form = Form::bytes, .script_bits = 8};
}

void push_array(void *state, const Field &field, const u8 *at)
{
    SYSDT_SPTI_CreateTable(state, field.count, 0);
    const i32 array = SYSDT_SPTI_GetTop(state);
    for (u32 i = 1; i <= field.count; ++i, at += field.width) {
        SYSDT_SPTI_PushUInt(state, i);
        push_number(state, at, field.width);
        SYSDT_SPTI_SetTable(state, array);
    }
}

/// Stores the number on top of the stack; what is no number reads as 0.
inline void read_number(void *state, const Field &field, u8 *at)
{
    if (field.width == 8) {
        store(at, static_cast<u64>(SYSDT_SPTI_ToInt64(state, -1)));
        return;
    }
    const u32 number = SYSDT_SPTI_ToUInt(state, -1) & (~0U >> (32 - field.script_bits));
    switch (field.width) {
    case 1: *at = static_cast<u8>(number); break;
    case 2: store(at, static_cast<u16>(number)); break;
    default: store(at, number); break;
    }
}

inline u32 require_number(void *state, const Field &field, u8 *at)
{
    if (SYSDT_SPTI_IsNumber(state, -1) == 0) [[unlikely]]
        return SYSDT_ERR_PARAM;
    read_number(state, field, at);
    return SYSDT_OK;
}

/// Reads an array, each element stored as it is read. Its elements are popped together.
u32 require_array(const Table &array, void *state, const Field &field, u8 *at)
{
    if (!array.is_table())
        return SYSDT_ERR_PARAM;
    for (u32 i = 1; i <= field.count; ++i, at += field.width) {
        array.push_entry(i);
        if (const u32 status = require_number(state, field, at); status != SYSDT_OK)
            return status;
    }
    SYSDT_SPTI_Pop(state, field.count);
    return SYSDT_OK;
}

/// Copies the string on top of the stack. SYSDT_ERR_PARAM if there is none, SYSDT_ERR_TOO_LONG if it does not fit.
u32 copy_string(void *state, void *to, std::size_t size)
{
    if (SYSDT_SPTI_IsString(state, -1) == 0)
        return SYSDT_ERR_PARAM;
    const u32 length = SYSDT_SPTI_ObjLen(state, -1);
    if (length > size)
        return SYSDT_ERR_TOO_LONG;
    std::memcpy(to, SYSDT_SPTI_ToString(state, -1), length);
    return SYSDT_OK;
}

} // namespace

u32 check_call(const void *state, const char *name, const void *value, u32 length, std::size_t size)
{
    if (state == nullptr || name == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return length < size ? SYSDT_ERR_PARAM : SYSDT_OK;
}

Table Table::create(void *state, i32 array_slots, i32 record_slots)
{
    SYSDT_SPTI_CreateTable(state, array_slots, record_slots);
    return top(state);
}

Table Table::field(void *state, i32 parent, const char *key)
{
    SYSDT_SPTI_GetField(state, parent, key);
    return top(state);
}

void Table::push_entry(u32 position) const
{
    SYSDT_SPTI_PushUInt(state_, position);
    SYSDT_SPTI_GetTable(state_, index_);
}

void Table::set_fields(std::span<const Field> fields, const u8 *value) const
{
    for (const Field &field : fields) {
        if (field.count > 1)
            push_array(state_, field, value + field.offset);
        else
            push_number(state_, value + field.offset, field.width);
        set(field.key);
    }
}

u32 Table::get_fields(std::span<const Field> fields, u8 *value) const
{
    for (const Field &field : fields) {
        SYSDT_SPTI_GetField(state_, index_, field.key);
        u8 *const at = value + field.offset;
        const u32 status =
            field.count > 1 ? require_array(top(state_), state_, field, at) : require_number(state_, field, at);
        if (status != SYSDT_OK)
            return status;
    }
    return SYSDT_OK;
}

u32 Table::get_entry(u32 position, const Field &field, u8 *value) const
{
    push_entry(position);
    const u32 status = require_number(state_, field, value);
    if (status == SYSDT_OK)
        SYSDT_SPTI_Pop(state_, 1);
    return status;
}

u32 Table::get_bytes(std::span<u8> bytes) const
{
    return require_array(*this, state_, octet_array(bytes.size()), bytes.data());
}

bool Table::get_number(const char *key, u32 &number) const
{
    SYSDT_SPTI_GetField(state_, index_, key);
    const bool found = SYSDT_SPTI_IsNumber(state_, -1) != 0;
    if (found)
        number = SYSDT_SPTI_ToUInt(state_, -1);
    SYSDT_SPTI_Pop(state_, 1);
    return found;
}

u32 Table::get_text(const char *key, std::span<char> text) const
{
    return get_octets(key, {reinterpret_cast<u8 *>(text.data()), text.size() - 1});
}

u32 Table::get_octets(const char *key, std::span<u8> octets) const
{
    push(key);
    return copy_string(state_, octets.data(), octets.size());
}

void Table::set_text(const char *key, const char *text) const
{
    SYSDT_SPTI_PushString(state_, text);
    set(key);
}

void Table::set_octets(const char *key, std::span<const u8> octets) const
{
    const auto *const text = reinterpret_cast<const char *>(octets.data());
    SYSDT_SPTI_PushLString(state_, text, static_cast<u32>(octets.size()));
    set(key);
}

void Table::set_number(const char *key, u32 number) const
{
    SYSDT_SPTI_PushUInt(state_, number);
    set(key);
}

void Table::set_list(const Layout &layout, const u8 *value) const
{
    const Table array = create(state_, layout.repeat, 0);
    for (u32 i = 1; i <= layout.repeat; ++i, value += layout.stride) {
        SYSDT_SPTI_PushUInt(state_, i);
        create(state_, 0, static_cast<i32>(layout.fields.size())).set_fields(layout.fields, value);
        SYSDT_SPTI_SetTable(state_, array.index_);
    }
    set(layout.key);
}

u32 Table::get_list(const Layout &layout, u8 *value) const
{
    const Table array = field(layout.key);
    if (!array.is_table())
        return SYSDT_ERR_PARAM;
    for (u32 i = 1; i <= layout.repeat; ++i, value += layout.stride) {
        array.push_entry(i);
        const i32 entry = SYSDT_SPTI_GetTop(state_);
        for (const Field &field : layout.fields) {
            SYSDT_SPTI_GetField(state_, entry, field.key);
            read_number(state_, field, value + field.offset);
        }
        SYSDT_SPTI_Pop(state_, static_cast<i32>(layout.fields.size()) + 1);
    }
    SYSDT_SPTI_Pop(state_, 1);
    return SYSDT_OK;
}

void push_bytes(void *state, std::span<const u8> bytes) { push_array(state, octet_array(bytes.size()), bytes.data()); }

void set_value(void *state, i32 parent, const char *name, const Layout &layout, const u8 *value)
{
    parent = absolute(state, parent);
    if (layout.key != nullptr)
        Table::create(state, 0, 1).set_list(layout, value);
    else
        Table::create(state, 0, static_cast<i32>(layout.fields.size())).set_fields(layout.fields, value);
    SYSDT_SPTI_SetField(state, parent, name);
}

u32 get_value(void *state, i32 parent, const char *name, const Layout &layout, u8 *value)
{
    const Table table = Table::field(state, parent, name);
    if (!table.is_table())
        return SYSDT_ERR_PARAM;
    if (layout.key != nullptr)
        return table.get_list(layout, value);
    const u32 status = table.get_fields(layout.fields, value);
    if (status == SYSDT_OK)
        pop_to(state, table.index());
    return status;
}

} // namespace bgpdt::script
