// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A script engine that is closed at its owner's end.
#pragma once

#include <lua.hpp>
#include <memory>

struct CloseEngine {
    void operator()(lua_State *lua) const { lua_close(lua); }
};

using Engine = std::unique_ptr<lua_State, CloseEngine>;
