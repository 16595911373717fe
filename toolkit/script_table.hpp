// SPDX-License-Identifier: Apache-2.0
/// @file
/// Script tables as JSON and as text, in an order that does not change: arrays by index, fields by name.
#pragma once

#include <memory>
#include <string>

#include <nlohmann/json_fwd.hpp>

struct lua_State;

namespace bgpdt::toolkit {

using LuaState = std::unique_ptr<lua_State, void (*)(lua_State *)>;

/// A fresh engine without libraries.
LuaState new_lua_state();

/// The value at the index; the stack is left as it was.
nlohmann::ordered_json script_json(lua_State *lua, int index);

/// On one line; bytes that are no UTF-8 become U+FFFD.
std::string json_text(const nlohmann::ordered_json &value);

/// The text of script_json's value, without making that: to destroy it takes memory, and where that is out it ends the
/// program.
std::string script_json_text(lua_State *lua, int index);

/// Pushes a key as JSON has it: digits alone are an index.
void push_script_key(lua_State *lua, const std::string &key);

/// Pushes what script_json made, or what read_json read.
void push_script_json(lua_State *lua, const nlohmann::ordered_json &value);

/// As Lua reads it, "{ asNumValue = 100, asType = 0 }"; what does not fit a line stands one entry a line.
std::string script_text(const nlohmann::ordered_json &value);

} // namespace bgpdt::toolkit
