// SPDX-License-Identifier: Apache-2.0
/// @file
/// Script tables: the services' stack is a Lua stack, their state a lua_State.
///
/// Misuse that would corrupt the stack, and memory that is out, raise Lua errors; they leave these functions by
/// longjmp, so none holds an object with a destructor.
#include <algorithm>
#include <lua.hpp>

#include "host/services.hpp"

namespace {

lua_State *engine(void *state) { return static_cast<lua_State *>(state); }

/// Makes room for one more value on a stack of so many. The engine itself guarantees LUA_MINSTACK of them.
void require_room(lua_State *lua, int top)
{
    if (top >= LUA_MINSTACK && lua_checkstack(lua, 1) == 0) [[unlikely]] {
        luaL_error(lua, "the script stack is full");
    }
}

/// The state with room for one more value.
lua_State *engine_with_room(void *state)
{
    lua_State *const lua = engine(state);
    require_room(lua, lua_gettop(lua));
    return lua;
}

/// The type of the value at the index; LUA_TNONE for what is not on the stack.
int type_at(lua_State *lua, int index)
{
    const bool below = index <= 0 && (index == 0 || index < -lua_gettop(lua));
    return below ? LUA_TNONE : lua_type(lua, index); // which answers LUA_TNONE above the top
}

[[gnu::cold, gnu::noinline]] void refuse_store(lua_State *lua, int type)
{
    if (type != LUA_TTABLE) {
        luaL_error(lua, "a field is stored in a %s value", lua_typename(lua, type));
    }
    luaL_error(lua, "a field is stored without a value");
}

/// Raises an error unless there is a table at the index and `operands` values above it.
void require_store(lua_State *lua, int index, int operands, int top)
{
    if (const int type = type_at(lua, index); type != LUA_TTABLE || top <= operands) [[unlikely]] {
        refuse_store(lua, type);
    }
}

int64_t integer_at(lua_State *lua, int index)
{
    return type_at(lua, index) == LUA_TNUMBER ? lua_tointegerx(lua, index, nullptr) : 0;
}

} // namespace

void SYSDT_SPTI_CreateTable(void *state, int32_t arraySlots, int32_t recordSlots)
{
    lua_createtable(engine_with_room(state), std::max(arraySlots, 0), std::max(recordSlots, 0));
}

int32_t SYSDT_SPTI_GetTop(void *state) { return lua_gettop(engine(state)); }

void SYSDT_SPTI_Pop(void *state, int32_t count)
{
    lua_State *const lua = engine(state);
    if (const int top = lua_gettop(lua); count < 0 || count > top) [[unlikely]] {
        luaL_error(lua, "%d values are popped off a stack of %d", count, top);
    }
    lua_pop(lua, count);
}

void SYSDT_SPTI_PushUInt(void *state, uint32_t number) { lua_pushinteger(engine_with_room(state), number); }

void SYSDT_SPTI_PushInt64(void *state, int64_t number) { lua_pushinteger(engine_with_room(state), number); }

void SYSDT_SPTI_PushString(void *state, const char *text) { lua_pushstring(engine_with_room(state), text); }

void SYSDT_SPTI_PushLString(void *state, const char *text, uint32_t length)
{
    lua_pushlstring(engine_with_room(state), text, length);
}

void SYSDT_SPTI_SetField(void *state, int32_t index, const char *key)
{
    lua_State *const lua = engine(state);
    const int top = lua_gettop(lua);
    require_store(lua, index, 1, top);
    require_room(lua, top);
    lua_setfield(lua, index, key);
}

void SYSDT_SPTI_SetTable(void *state, int32_t index)
{
    lua_State *const lua = engine(state);
    require_store(lua, index, 2, lua_gettop(lua));
    lua_settable(lua, index);
}

void SYSDT_SPTI_GetField(void *state, int32_t index, const char *key)
{
    lua_State *const lua = engine_with_room(state);
    if (type_at(lua, index) == LUA_TTABLE) [[likely]] {
        lua_getfield(lua, index, key);
    } else {
        lua_pushnil(lua);
    }
}

void SYSDT_SPTI_GetTable(void *state, int32_t index)
{
    lua_State *const lua = engine(state);
    if (type_at(lua, index) == LUA_TTABLE) [[likely]] {
        lua_gettable(lua, index);
    } else {
        SYSDT_SPTI_Pop(state, 1);
        lua_pushnil(lua);
    }
}

uint32_t SYSDT_SPTI_IsTable(void *state, int32_t index) { return type_at(engine(state), index) == LUA_TTABLE; }

uint32_t SYSDT_SPTI_IsNumber(void *state, int32_t index) { return type_at(engine(state), index) == LUA_TNUMBER; }

uint32_t SYSDT_SPTI_IsString(void *state, int32_t index) { return type_at(engine(state), index) == LUA_TSTRING; }

uint32_t SYSDT_SPTI_ToUInt(void *state, int32_t index)
{
    return static_cast<uint32_t>(integer_at(engine(state), index));
}

int64_t SYSDT_SPTI_ToInt64(void *state, int32_t index) { return integer_at(engine(state), index); }

const char *SYSDT_SPTI_ToString(void *state, int32_t index)
{
    lua_State *const lua = engine(state);
    return type_at(lua, index) == LUA_TSTRING ? lua_tolstring(lua, index, nullptr) : nullptr;
}

uint32_t SYSDT_SPTI_ObjLen(void *state, int32_t index)
{
    lua_State *const lua = engine(state);
    const int type = type_at(lua, index);
    return type == LUA_TSTRING || type == LUA_TTABLE ? static_cast<uint32_t>(lua_rawlen(lua, index)) : 0;
}
