// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Script tables: the services' stack is a Lua stack, their state a lua_State; or the state is a record, which takes what
/// is stored.
///
/// Misuse that would corrupt the stack, and memory that is out, raise Lua errors; they leave these functions by
/// longjmp, so none holds an object with a destructor.
#include <algorithm>
#include <lua.hpp>

#include "host/script_record.hpp"
#include "host/services.hpp"

using bgpdt::host::ScriptRecord;

namespace {

/// Null for an engine.
ScriptRecord *record(void *state)
{
    ScriptRecord *const record = bgpdt::host::script_record;
    return state == record ? record : nullptr;
}

/// Whether it is a record, which is not read.
bool is_record(void *state)
{
    ScriptRecord *const read = record(state);
    if (read != nullptr)
        read->give_up();
    return read != nullptr;
}

lua_State *engine(void *state) { return static_cast<lua_State *>(state); }

/// The state with room for one more value. The engine itself guarantees LUA_MINSTACK of them.
lua_State *engine_with_room(void *state)
{
    lua_State *const lua = engine(state);
    if (lua_gettop(lua) >= LUA_MINSTACK && lua_checkstack(lua, 1) == 0) [[unlikely]]
        luaL_error(lua, "the script stack is full");
    return lua;
}

/// The type of the value at the index; LUA_TNONE for what is not on the stack.
int type_at(lua_State *lua, int index)
{
    const bool below = index <= 0 && (index == 0 || index < -lua_gettop(lua));
    return below ? LUA_TNONE : lua_type(lua, index); // which answers LUA_TNONE above the top
}

/// The state with `operands` values above a value at the index, in which they may be stored: the engine itself raises an
/// error if that is no table, or above the top.
lua_State *engine_with_operands(void *state, int operands, int index)
{
    lua_State *const lua = engine(state);
    if (const int top = lua_gettop(lua); top <= operands || index == 0 || index < -top) [[unlikely]]
        luaL_error(lua, "a field is stored in nothing, or without a value");
    return lua;
}

int64_t integer_at(lua_State *lua, int index)
{
    return type_at(lua, index) == LUA_TNUMBER ? lua_tointegerx(lua, index, nullptr) : 0;
}

} // namespace

void SYSDT_SPTI_CreateTable(void *state, int32_t arraySlots, int32_t recordSlots)
{
    if (ScriptRecord *const into = record(state))
        return into->create_table();
    // Some keys have more fields than they ask room for; making a table larger later costs as much as filling it.
    constexpr int usual_record = 8;
    const int records = recordSlots > 2 ? std::max(recordSlots, usual_record) : std::max(recordSlots, 0);
    lua_createtable(engine_with_room(state), std::max(arraySlots, 0), records);
}

int32_t SYSDT_SPTI_GetTop(void *state)
{
    if (const ScriptRecord *const into = record(state))
        return into->top();
    return lua_gettop(engine(state));
}

void SYSDT_SPTI_Pop(void *state, int32_t count)
{
    if (ScriptRecord *const into = record(state))
        return into->pop(count);
    lua_State *const lua = engine(state);
    if (const int top = lua_gettop(lua); count < 0 || count > top) [[unlikely]]
        luaL_error(lua, "%d values are popped off a stack of %d", count, top);
    lua_pop(lua, count);
}

void SYSDT_SPTI_PushUInt(void *state, uint32_t number)
{
    if (ScriptRecord *const into = record(state))
        return into->push(number);
    lua_pushinteger(engine_with_room(state), number);
}

void SYSDT_SPTI_PushInt64(void *state, int64_t number)
{
    if (ScriptRecord *const into = record(state))
        return into->push(number);
    lua_pushinteger(engine_with_room(state), number);
}

void SYSDT_SPTI_PushString(void *state, const char *text)
{
    if (ScriptRecord *const into = record(state))
        return text != nullptr ? into->push(text) : into->give_up();
    lua_pushstring(engine_with_room(state), text);
}

void SYSDT_SPTI_PushLString(void *state, const char *text, uint32_t length)
{
    if (ScriptRecord *const into = record(state))
        return into->push({text, length});
    lua_pushlstring(engine_with_room(state), text, length);
}

void SYSDT_SPTI_SetField(void *state, int32_t index, const char *key)
{
    if (ScriptRecord *const into = record(state))
        return into->set_field(index, key);
    lua_setfield(engine_with_operands(state, 1, index), index, key);
}

void SYSDT_SPTI_SetTable(void *state, int32_t index)
{
    if (ScriptRecord *const into = record(state))
        return into->set_entry(index);
    lua_settable(engine_with_operands(state, 2, index), index);
}

void SYSDT_SPTI_GetField(void *state, int32_t index, const char *key)
{
    if (is_record(state))
        return;
    lua_State *const lua = engine_with_room(state);
    if (type_at(lua, index) == LUA_TTABLE) [[likely]]
        lua_getfield(lua, index, key);
    else
        lua_pushnil(lua);
}

void SYSDT_SPTI_GetTable(void *state, int32_t index)
{
    if (is_record(state))
        return;
    lua_State *const lua = engine(state);
    if (type_at(lua, index) == LUA_TTABLE) [[likely]] {
        lua_gettable(lua, index);
    } else {
        SYSDT_SPTI_Pop(state, 1);
        lua_pushnil(lua);
    }
}

uint32_t SYSDT_SPTI_IsTable(void *state, int32_t index)
{
    return !is_record(state) && type_at(engine(state), index) == LUA_TTABLE;
}

uint32_t SYSDT_SPTI_IsNumber(void *state, int32_t index)
{
    return !is_record(state) && type_at(engine(state), index) == LUA_TNUMBER;
}

uint32_t SYSDT_SPTI_IsString(void *state, int32_t index)
{
    return !is_record(state) && type_at(engine(state), index) == LUA_TSTRING;
}

uint32_t SYSDT_SPTI_ToUInt(void *state, int32_t index)
{
    return is_record(state) ? 0 : static_cast<uint32_t>(integer_at(engine(state), index));
}

int64_t SYSDT_SPTI_ToInt64(void *state, int32_t index)
{
    return is_record(state) ? 0 : integer_at(engine(state), index);
}

const char *SYSDT_SPTI_ToString(void *state, int32_t index)
{
    if (is_record(state))
        return nullptr;
    lua_State *const lua = engine(state);
    return type_at(lua, index) == LUA_TSTRING ? lua_tolstring(lua, index, nullptr) : nullptr;
}

uint32_t SYSDT_SPTI_ObjLen(void *state, int32_t index)
{
    if (is_record(state))
        return 0;
    lua_State *const lua = engine(state);
    const int type = type_at(lua, index);
    return type == LUA_TSTRING || type == LUA_TTABLE ? static_cast<uint32_t>(lua_rawlen(lua, index)) : 0;
}
