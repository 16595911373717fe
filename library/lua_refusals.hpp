// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the module `bgp` answers where the library does nothing.
///
/// The engine takes memory for what it is given, which may raise an error: it then leaves by longjmp. So nothing in the
/// module has a destructor, and an error of the library's is pushed in a protected call.
#pragma once

#include <lua.hpp>

#include "bgpdt/bgpdt.h"

namespace bgpdt::library {

inline void push(lua_State *lua, bgpdt_text text) { lua_pushlstring(lua, text.data, text.size); }

/// Raises the engine's own error, by its own words.
int raise_no_memory(lua_State *lua);

/// Answers a call with an error, which is released: nil, a message and, of a text, a place.
int refuse(lua_State *lua, bgpdt_error *error);

} // namespace bgpdt::library
