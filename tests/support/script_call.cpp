// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "script_call.hpp"

#include <cstdlib>
#include <lua.hpp>
#include <stdexcept>

#include "bgp_datatype/host.h"

namespace bgpdt::test {

namespace {

constexpr const char *witness = "witness";

/// What crosses the protected call.
struct Entry {
    bool *watched;
    const std::function<std::uint32_t(void *, std::int32_t)> *callback;
    std::int32_t index;
    int before;
    int after;
    std::uint32_t status;
};

bool is_witness(lua_State *lua, int index)
{
    return lua_type(lua, index) == LUA_TSTRING && std::string(lua_tostring(lua, index)) == witness;
}

} // namespace

Script::Script() : target_(LUA_NOREF)
{
    lua_ = lua_newstate(allocate, this);
    if (lua_ == nullptr)
        throw std::runtime_error("no Lua state");
    lua_gc(lua_, LUA_GCSTOP);
    put_target({ScriptTable{}});
}

Script::~Script() { lua_close(lua_); }

void *Script::allocate(void *self, void *block, std::size_t old_size, std::size_t new_size)
{
    auto *script = static_cast<Script *>(self);
    if (new_size == 0) {
        std::free(block);
        return nullptr;
    }
    // The engine counts on getting a smaller block.
    const bool grows = block == nullptr || new_size > old_size;
    if (grows && script->watched_ && script->failing_.hits(++script->requests_))
        return nullptr;
    return std::realloc(block, new_size);
}

int Script::enter(lua_State *lua)
{
    auto *entry = static_cast<Entry *>(lua_touserdata(lua, lua_upvalueindex(1)));
    entry->before = lua_gettop(lua);
    *entry->watched = true;
    entry->status = (*entry->callback)(lua, entry->index);
    *entry->watched = false;
    entry->after = lua_gettop(lua);
    return entry->after;
}

std::uint32_t Script::call(Index index, const std::function<std::uint32_t(void *, std::int32_t)> &callback,
                           Report &report)
{
    Entry entry{&watched_, &callback, index == Index::absolute ? 2 : -1, 0, 0, SYSDT_ERR_FAIL};
    requests_ = 0;
    lua_settop(lua_, 0);
    lua_pushlightuserdata(lua_, &entry);
    lua_pushcclosure(lua_, enter, 1);
    lua_pushstring(lua_, witness);
    lua_rawgeti(lua_, LUA_REGISTRYINDEX, target_);
    if (index != Index::relative)
        lua_pushstring(lua_, witness);
    const int failed = lua_pcall(lua_, lua_gettop(lua_) - 1, LUA_MULTRET, 0);
    watched_ = false;
    left_ = failed != LUA_OK;
    before_ = entry.before;
    after_ = entry.after;
    if (left_) {
        const char *message = lua_tostring(lua_, -1);
        report.require(failing_.first != 0 || errors_permitted_,
                       std::string("a script error left the callback: ") + (message ? message : "?"));
        return SYSDT_ERR_FAIL;
    }
    lua_rawgeti(lua_, LUA_REGISTRYINDEX, target_);
    const bool undisturbed = after_ >= before_ && is_witness(lua_, 1) && lua_rawequal(lua_, 2, -1) != 0 &&
                             (index == Index::relative || is_witness(lua_, 3));
    lua_pop(lua_, 1);
    report.require(undisturbed, "the script stack below the call's own values was changed");
    top_ = after_ > before_ ? read(lua_, -1) : ScriptValue{};
    return entry.status;
}

void Script::put_target(const ScriptValue &value)
{
    luaL_unref(lua_, LUA_REGISTRYINDEX, target_);
    push(lua_, value);
    target_ = luaL_ref(lua_, LUA_REGISTRYINDEX);
}

ScriptValue Script::target() const
{
    lua_rawgeti(lua_, LUA_REGISTRYINDEX, target_);
    ScriptValue value = read(lua_, -1);
    lua_pop(lua_, 1);
    return value;
}

std::uint32_t set_field(const Subject &subject, Script &script, const Guarded &value, const Access &access,
                        Report &report)
{
    const auto callback = [&](void *state, std::int32_t at) {
        return subject.lua_set(access.null_state ? nullptr : state, at, access.name, 0,
                               access.length.value_or(static_cast<std::uint32_t>(value.size())),
                               access.null_value ? nullptr : value.constant());
    };
    return script.call(access.index, callback, report);
}

std::uint32_t get_field(const Subject &subject, Script &script, Guarded &value, const Access &access, Report &report)
{
    const auto callback = [&](void *state, std::int32_t at) {
        return subject.lua_get(access.null_state ? nullptr : state, at, access.name, 0,
                               access.length.value_or(static_cast<std::uint32_t>(value.size())),
                               access.null_value ? nullptr : value.data());
    };
    const std::uint32_t status = script.call(access.index, callback, report);
    report.require(value.intact(), "the value was written beyond its ends");
    return status;
}

ScriptValue parent_with(const ScriptValue &value) { return {ScriptTable{{Access{}.name, 0, value}}}; }

} // namespace bgpdt::test
