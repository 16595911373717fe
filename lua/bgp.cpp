// SPDX-License-Identifier: Apache-2.0
/// @file
/// The module `bgp` for the stock interpreter: `require "bgp"`.
#include <dlfcn.h>

#include <cstring>
#include <exception>
#include <new>
#include <span>

#include <lua.hpp>

#include "toolkit/lua_module.hpp"
#include "toolkit/module_session.hpp"

namespace bgpdt {
namespace {

const void *module_of(lua_CFunction function)
{
    Dl_info info;
    return dladdr(reinterpret_cast<const void *>(function), &info) != 0 ? info.dli_fbase : nullptr;
}

/// An interpreter that has the engine in itself and keeps it to itself leaves this module to a second copy, which must
/// not touch the first one's state. The interpreter's string library tells where its copy is.
void require_one_engine(lua_State *lua)
{
    lua_getglobal(lua, "string");
    const bool has_strings = lua_istable(lua, -1) && lua_getfield(lua, -1, "byte") == LUA_TFUNCTION;
    lua_CFunction theirs = has_strings ? lua_tocfunction(lua, -1) : nullptr;
    if (theirs != nullptr && module_of(theirs) != module_of(luaopen_string))
        luaL_error(lua, "the interpreter does not export its engine (link it with -Wl,-E, or to liblua5.4.so)");
    lua_settop(lua, 0);
}

/// Null, with the reason in the room, if there is none: errors of the engine must not cross a handler.
toolkit::Session *session_or(std::span<char> reason)
{
    try {
        return &toolkit::module_session();
    } catch (const std::bad_alloc &) {
        std::strncpy(reason.data(), "not enough memory", reason.size() - 1);
        return nullptr;
    } catch (const std::exception &error) {
        std::strncpy(reason.data(), error.what(), reason.size() - 1);
        return nullptr;
    }
}

} // namespace
} // namespace bgpdt

extern "C" __attribute__((visibility("default"))) int luaopen_bgp(lua_State *lua)
{
    luaL_checkversion(lua);
    bgpdt::require_one_engine(lua);
    char reason[1024] = {};
    bgpdt::toolkit::Session *session = bgpdt::session_or(reason);
    if (session == nullptr)
        return luaL_error(lua, "%s", reason);
    bgpdt::toolkit::push_module(lua, *session);
    return 1;
}
