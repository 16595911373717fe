// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The module `bgp` for Lua scripts.
///
/// | call | gives |
/// |---|---|
/// | `bgp.types()` | array of `{name=, id=, size=, operations={...}}` |
/// | `bgp.parse(type, text [, mode])` | a value |
/// | `bgp.try_parse(type, text [, mode])` | a value, or nil alone: for texts many of which are refused |
/// | `bgp.from_hex(type, hex)` | a value of the bytes, numbers in the target's order |
/// | `bgp.value(type, table)` | a value read from its script table |
/// | `bgp.table(value)` | the script table |
/// | `bgp.print(value [, mode])` | text, or the bytes in modes that give no text |
/// | `bgp.check(value)` | true |
/// | `bgp.compare(value, value)` | -1, 0 or 1 |
///
/// What a type refuses is nil and a message, and of a text the place of the first wrong byte, counted from 1. Where
/// memory is out, that is the engine's error "not enough memory". A value has `type`, `size`, `hex` (numbers in the
/// target's order) and `bytes` (as they stand in memory); tostring gives its text, or its hex behind 0x if it has none;
/// values are equal when type and bytes are. `<` and `<=` order the values of one type, all of them: as `bgp.compare` where
/// that tells an order, else by their bytes.
#pragma once

struct bgpdt_library;
struct lua_State;

namespace bgpdt::library {

/// Pushes the module, a table. Errors of the engine leave it.
/// @param library  which stays open longer than the engine
void push_lua_module(lua_State *lua, bgpdt_library *library);

} // namespace bgpdt::library
