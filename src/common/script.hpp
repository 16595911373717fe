// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Script tables: the typed face of the host's script-table services, SYSDT_SPTI.
///
/// The engine may leave any of these services by longjmp, so nothing here owns anything.
#pragma once

#include <span>

#include "bgp_datatype/fields.hpp"
#include "common/types.hpp"

namespace bgpdt::script {

/// The index counted from the bottom, as the stack stands now.
inline i32 absolute(void *state, i32 index) { return index < 0 ? SYSDT_SPTI_GetTop(state) + index + 1 : index; }

/// Pops all above the value of that index.
inline void pop_to(void *state, i32 index) { SYSDT_SPTI_Pop(state, SYSDT_SPTI_GetTop(state) - index); }

/// What a LuaSet or a LuaGet asks of its arguments: SYSDT_ERR_NULL_PTR if a pointer is null, SYSDT_ERR_PARAM if the
/// value has less than so many bytes.
u32 check_call(const void *state, const char *name, const void *value, u32 length, std::size_t size);

/// A table on the script stack, by its absolute index.
class Table {
public:
    /// Pushes a new table.
    static Table create(void *state, i32 array_slots, i32 record_slots);
    /// The value on top of the stack, which need not be a table.
    static Table top(void *state) { return {state, SYSDT_SPTI_GetTop(state)}; }
    /// Pushes what stands under the key in the table at the index.
    static Table field(void *state, i32 parent, const char *key);

    /// The table at an index.
    static Table at(void *state, i32 index) { return {state, absolute(state, index)}; }

    i32 index() const { return index_; }
    bool is_table() const { return SYSDT_SPTI_IsTable(state_, index_) != 0; }
    Table field(const char *key) const { return field(state_, index_, key); }
    /// Pushes what stands under the key.
    void push(const char *key) const { SYSDT_SPTI_GetField(state_, index_, key); }
    /// Pushes the array's entry at the position, counted from 1.
    void push_entry(u32 position) const;

    /// Writes the value's fields, in their order.
    void set_fields(std::span<const Field> fields, const u8 *value) const;
    /// Reads the fields in their order, each stored as it is read. SYSDT_ERR_PARAM at the first that is missing or of
    /// another kind. What is pushed stays on the stack, for the caller to pop when all is read.
    u32 get_fields(std::span<const Field> fields, u8 *value) const;

    /// One field under a key of the host's. Reading it leaves the stack as it was, but for a failure.
    void set_field(const char *key, Field field, const u8 *value) const
    {
        field.key = key;
        set_fields({&field, 1}, value);
    }
    u32 get_field(const char *key, Field field, u8 *value) const
    {
        field.key = key;
        const u32 status = get_fields({&field, 1}, value);
        if (status == SYSDT_OK)
            SYSDT_SPTI_Pop(state_, 1);
        return status;
    }

    /// Reads a number of an array and leaves the stack as it was, but for a failure.
    u32 get_entry(u32 position, const Field &field, u8 *value) const;
    /// Reads the entries of an array as bytes; SYSDT_ERR_PARAM if this is no table or an entry no number.
    u32 get_bytes(std::span<u8> bytes) const;
    /// Reads a number and leaves the stack as it was; false if there is none under the key.
    bool get_number(const char *key, u32 &number) const;
    /// Pushes and reads a string. SYSDT_ERR_PARAM if there is none under the key, SYSDT_ERR_TOO_LONG if it does not fit;
    /// nothing is copied then.
    u32 get_octets(const char *key, std::span<u8> octets) const;
    /// The same into cleared space, where its NUL must fit too.
    u32 get_text(const char *key, std::span<char> text) const;

    /// Pushes an array with a table for each entry, and stores it under the layout's key.
    void set_list(const Layout &layout, const u8 *value) const;
    /// Reads the array under the layout's key. SYSDT_ERR_PARAM if it is no table; what is missing in it reads as 0.
    u32 get_list(const Layout &layout, u8 *value) const;

    /// Stores a string under the key.
    void set_text(const char *key, const char *text) const;
    /// Stores the bytes as a string under the key.
    void set_octets(const char *key, std::span<const u8> octets) const;
    void set_number(const char *key, u32 number) const;
    /// Pops the value on top of the stack and stores it under the key.
    void set(const char *key) const { SYSDT_SPTI_SetField(state_, index_, key); }

private:
    Table(void *state, i32 index) : state_(state), index_(index) {}

    void *state_;
    i32 index_;
};

/// Pushes an array of the bytes as numbers.
void push_bytes(void *state, std::span<const u8> bytes);

/// Stores the value as a table under the name in the table at the index.
void set_value(void *state, i32 parent, const char *name, const Layout &layout, const u8 *value);

/// Reads the value from the table under the name, which then stays alone on the stack. After a failure
/// (SYSDT_ERR_PARAM) what was read until then is stored, and what was pushed until then stays.
u32 get_value(void *state, i32 parent, const char *name, const Layout &layout, u8 *value);

} // namespace bgpdt::script
