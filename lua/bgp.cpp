// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The module `bgp` for the stock interpreter: `require "bgp"`.
#include <dlfcn.h>

#include <cstring>
#include <mutex>
#include <span>

#include <lua.hpp>

#include "bgpdt/bgpdt.h"
#include "library/lua_module.hpp"

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

/// Open until the process is gone, whatever still runs at the exit. Null, with the reason in the room, if it cannot be.
bgpdt_library *library_or(std::span<char> reason)
{
    static std::mutex mutex;
    static bgpdt_library *library = nullptr;
    const std::lock_guard lock(mutex);
    bgpdt_error *error = nullptr;
    if (library == nullptr && bgpdt_open(nullptr, &library, &error) != BGPDT_OK) {
        std::strncpy(reason.data(), error->message.data, reason.size() - 1);
        bgpdt_error_free(error);
    }
    return library;
}

} // namespace
} // namespace bgpdt

extern "C" __attribute__((visibility("default"))) int luaopen_bgp(lua_State *lua)
{
    luaL_checkversion(lua);
    bgpdt::require_one_engine(lua);
    char reason[1024] = {};
    bgpdt_library *library = bgpdt::library_or(reason);
    if (library == nullptr)
        return luaL_error(lua, "%s", reason);
    bgpdt::library::push_lua_module(lua, library);
    return 1;
}
