// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values as the module `bgp` hands them to scripts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <lua.hpp>

#include "bgpdt/bgpdt.h"

namespace bgpdt::library {

/// The userdata of a value; its bytes follow it.
struct LuaValue {
    const bgpdt_type *type;
    std::size_t size;

    std::uint8_t *bytes() { return reinterpret_cast<std::uint8_t *>(this + 1); }
};

/// Pushes one whose bytes are still to be written.
LuaValue &new_value(lua_State *lua, const bgpdt_type *type);
/// The value at the index; the engine raises an error for anything else.
LuaValue &value_at(lua_State *lua, int index);
/// The same of a value that must be of the first one's type.
LuaValue &value_of_same_type(lua_State *lua, int index, const LuaValue &first);
/// The string there likewise.
std::string_view string_at(lua_State *lua, int index);

/// Pushes what the value prints as; or answers why it does not, with nothing pushed.
int push_printed(lua_State *lua, const bgpdt_type *type, LuaValue &value, bgpdt_error **error);

/// Makes values known to the engine.
void open_values(lua_State *lua);

} // namespace bgpdt::library
