// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "script.hpp"

#include <lua.hpp>

#include "errors.hpp"
#include "library/library.hpp"
#include "library/lua_module.hpp"
#include "toolkit/script_table.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

int traceback(lua_State *lua)
{
    luaL_traceback(lua, lua, luaL_tolstring(lua, 1, nullptr), 1);
    return 1;
}

/// Makes `bgp` a loaded module and a global, as the libraries of Lua are.
void install(lua_State *lua, bgpdt_library *library)
{
    luaL_openlibs(lua);
    library::push_lua_module(lua, library);
    luaL_getsubtable(lua, LUA_REGISTRYINDEX, LUA_LOADED_TABLE);
    lua_pushvalue(lua, -2);
    lua_setfield(lua, -2, "bgp");
    lua_pop(lua, 1);
    lua_setglobal(lua, "bgp");
}

/// Sets `arg` and pushes the arguments behind the loaded script.
void pass_arguments(lua_State *lua, const std::string &file, std::span<const std::string> arguments)
{
    luaL_checkstack(lua, static_cast<int>(arguments.size()) + 3, "too many arguments");
    lua_newtable(lua);
    lua_pushlstring(lua, file.data(), file.size());
    lua_rawseti(lua, -2, 0);
    lua_Integer index = 0;
    for (const std::string &argument : arguments) {
        lua_pushlstring(lua, argument.data(), argument.size());
        lua_rawseti(lua, -2, ++index);
    }
    lua_setglobal(lua, "arg");
    for (const std::string &argument : arguments)
        lua_pushlstring(lua, argument.data(), argument.size());
}

} // namespace

void run_script(Session &session, const std::string &file, std::span<const std::string> arguments)
{
    bgpdt_library library(session);
    const LuaState owner = new_lua_state();
    lua_State *lua = owner.get();
    install(lua, &library);
    lua_pushcfunction(lua, traceback);
    if (luaL_loadfile(lua, file.c_str()) != LUA_OK)
        throw UsageError(lua_tostring(lua, -1));
    pass_arguments(lua, file, arguments);
    if (lua_pcall(lua, static_cast<int>(arguments.size()), 0, 1) != LUA_OK)
        throw ScriptError(lua_tostring(lua, -1));
}

} // namespace bgpdt::tool
