// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the kinds of route key behind the BOL prefix have in common.
#pragma once

#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"

namespace bgpdt {

/// The declaration that a kind of route key starts from: every mode but 4 is served, a refused text is SYSDT_ERR_PARAM,
/// a value is reported as a BOL prefix, printed as text in every mode, and read as far as it reaches.
template <class Value>
constexpr Type<Value> bol_row()
{
    static_assert(sizeof(Value) == SYSDT_BOL_SIZE);
    return {
        .kind = SYSDT_TYPE_BOLPREFIX,
        .input = open_screen,
        .refusal = SYSDT_ERR_PARAM,
        .output = open_screen,
        .mode3 = Mode3::text,
        .clears_before_output = true,
        .reads = Input::passed,
        .on_print_failure = OnPrintFailure::release_own,
    };
}

/// LuaGet of a kind: "bolType", its first field, is stored and must then be the kind's own (SYSDT_ERR_FAIL).
u32 get_bol_row(void *state, i32 table, const char *name, u32 length, void *data, const Layout &layout, u32 kind);

/// Reads fields from the table at the index itself.
u32 read_bol_fields(void *state, void *value, i32 table, std::span<const Field> fields);

/// The fields behind "bolType".
constexpr std::span<const Field> key_fields(const Layout &layout) { return layout.fields.subspan(1); }

} // namespace bgpdt

#define BGPDT_BOL_LUA_GET(name, layout, kind)                                                                          \
    std::uint32_t name(void *state, std::int32_t table, const char *field, std::uint32_t, std::uint32_t length,        \
                       void *data)                                                                                     \
    {                                                                                                                  \
        return ::bgpdt::get_bol_row(state, table, field, length, data, layout, kind);                                  \
    }

/// A reader of the script-read table.
#define BGPDT_SCRIPT_READER(name, fields)                                                                              \
    std::uint32_t name(void *state, void *value, std::int32_t table)                                                   \
    {                                                                                                                  \
        return ::bgpdt::read_bol_fields(state, value, table, fields);                                                  \
    }
