// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "lua_refusals.hpp"

namespace bgpdt::library {
namespace {

/// What there is to do, in the module's own words.
const char *hint_for(int code)
{
    switch (code) {
    case BGPDT_NO_TYPE: return "; bgp.types() lists the types";
    case BGPDT_NO_TEXT: return "; bgp.from_hex() takes its values";
    default: return "";
    }
}

/// Engine function: nil, a message and, of a text, a place.
int push_refusal(lua_State *lua)
{
    const auto &error = *static_cast<const bgpdt_error *>(lua_touserdata(lua, 1));
    lua_pushnil(lua);
    push(lua, error.message);
    lua_pushstring(lua, hint_for(error.code));
    lua_concat(lua, 2);
    if (error.reason.size != 0)
        lua_pushinteger(lua, static_cast<lua_Integer>(error.at) + 1);
    return lua_gettop(lua) - 1;
}

} // namespace

int raise_no_memory(lua_State *lua)
{
    lua_pushliteral(lua, "not enough memory");
    return lua_error(lua);
}

int refuse(lua_State *lua, bgpdt_error *error)
{
    if (error->code == BGPDT_NO_MEMORY)
        return raise_no_memory(lua);
    const int before = lua_gettop(lua);
    lua_pushcfunction(lua, push_refusal);
    lua_pushlightuserdata(lua, error);
    const int outcome = lua_pcall(lua, 1, LUA_MULTRET, 0);
    bgpdt_error_free(error);
    return outcome == LUA_OK ? lua_gettop(lua) - before : lua_error(lua);
}

} // namespace bgpdt::library
