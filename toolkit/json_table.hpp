// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON as a script value.
#pragma once

#include <string_view>

struct lua_State;

namespace bgpdt::toolkit {

/// Pushes what the text says.
/// @throws Refusal if it is no JSON, is nested deeply or tells a member twice; std::bad_alloc
void push_json(lua_State *lua, std::string_view text);

} // namespace bgpdt::toolkit
