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

struct Script {
    bgpdt_library *library;
    const std::string &file;
    std::span<const std::string> arguments;
};

/// Engine function: the script that is loaded, and its arguments.
int prepare(lua_State *lua)
{
    const auto &script = *static_cast<const Script *>(lua_touserdata(lua, 1));
    install(lua, script.library);
    if (luaL_loadfile(lua, script.file.c_str()) != LUA_OK)
        return lua_error(lua);
    pass_arguments(lua, script.file, script.arguments);
    return static_cast<int>(script.arguments.size()) + 1;
}

} // namespace

void run_script(Session &session, const std::string &file, std::span<const std::string> arguments)
{
    bgpdt_library library(session);
    const LuaState owner = new_lua_state();
    lua_State *lua = owner.get();
    Script script{&library, file, arguments};
    lua_pushcfunction(lua, traceback);
    lua_pushcfunction(lua, prepare);
    lua_pushlightuserdata(lua, &script);
    if (lua_pcall(lua, 1, LUA_MULTRET, 0) != LUA_OK)
        throw UsageError(lua_tostring(lua, -1));
    if (lua_pcall(lua, static_cast<int>(arguments.size()), 0, 1) != LUA_OK)
        throw ScriptError(lua_tostring(lua, -1));
}

} // namespace bgpdt::tool
