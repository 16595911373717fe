// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Script tables as JSON and as text, in an order that does not change: arrays by index, fields by name.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "host/host.hpp"
#include "json_text.hpp"

struct lua_State;

namespace bgpdt::toolkit {

using LuaState = std::unique_ptr<lua_State, void (*)(lua_State *)>;

/// A fresh engine without libraries.
LuaState new_lua_state();

/// The value at the index; the stack is left as it was. Numbers are integers, as types push no others.
JsonText script_json(lua_State *lua, int index);

/// Writes the script tables of values as JSON, one thread's own.
class ScriptJson {
public:
    /// Appends the value's table; false, with nothing appended, if the type makes none of it.
    /// @throws std::bad_alloc
    bool append(Buffer &out, host::Host &host, const SYSDT_Record &type, std::span<const std::uint8_t> value);

private:
    host::ScriptRecord record_;
    LuaState lua_{nullptr, nullptr}; ///< for the first table that no record can hold
};

/// As Lua reads it, "{ asNumValue = 100, asType = 0 }"; what does not fit a line stands one entry a line.
std::string script_text(lua_State *lua, int index);

} // namespace bgpdt::toolkit
