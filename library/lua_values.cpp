// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "lua_values.hpp"

#include <cstring>

#include "lua_refusals.hpp"

namespace bgpdt::library {
namespace {

constexpr const char *value_name = "bgp.value";

void push_hex(lua_State *lua, const char *front, LuaValue &value)
{
    constexpr std::string_view digits = "0123456789abcdef";
    luaL_Buffer hex;
    luaL_buffinit(lua, &hex);
    luaL_addstring(&hex, front);
    for (std::size_t i = 0; i < value.size; ++i) {
        luaL_addchar(&hex, digits[value.bytes()[i] >> 4]);
        luaL_addchar(&hex, digits[value.bytes()[i] & 0x0f]);
    }
    luaL_pushresult(&hex);
}

/// As they stand in memory elsewhere.
void push_bytes(lua_State *lua, LuaValue &value)
{
    auto *native = static_cast<std::uint8_t *>(lua_newuserdatauv(lua, value.size, 0));
    std::memcpy(native, value.bytes(), value.size);
    static_cast<void>(bgpdt_to_native(value.type, native, value.size));
    lua_pushlstring(lua, reinterpret_cast<const char *>(native), value.size);
}

int value_index(lua_State *lua)
{
    LuaValue &value = value_at(lua, 1);
    const std::string_view key = string_at(lua, 2);
    if (key == "type")
        push(lua, bgpdt_about(value.type)->name);
    else if (key == "hex")
        push_hex(lua, "", value);
    else if (key == "size")
        lua_pushinteger(lua, static_cast<lua_Integer>(value.size));
    else if (key == "bytes")
        push_bytes(lua, value);
    else
        lua_pushnil(lua);
    return 1;
}

int value_equal(lua_State *lua)
{
    auto *first = static_cast<LuaValue *>(luaL_testudata(lua, 1, value_name));
    auto *second = static_cast<LuaValue *>(luaL_testudata(lua, 2, value_name));
    const bool equal = first != nullptr && second != nullptr && first->type == second->type &&
                       std::memcmp(first->bytes(), second->bytes(), first->size) == 0;
    lua_pushboolean(lua, equal ? 1 : 0);
    return 1;
}

/// How the first value stands to the second in the order in which all values of their type stand.
int order_of_two(lua_State *lua)
{
    LuaValue &first = value_at(lua, 1);
    LuaValue &second = value_of_same_type(lua, 2, first);
    int order = 0;
    if (bgpdt_order(first.type, first.bytes(), first.size, second.bytes(), second.size, &order) == BGPDT_NO_MEMORY)
        raise_no_memory(lua);
    return order;
}

int value_less(lua_State *lua)
{
    lua_pushboolean(lua, order_of_two(lua) < 0 ? 1 : 0);
    return 1;
}

int value_not_greater(lua_State *lua)
{
    lua_pushboolean(lua, order_of_two(lua) <= 0 ? 1 : 0);
    return 1;
}

/// Its hex where the type prints no text.
int value_text(lua_State *lua)
{
    LuaValue &value = value_at(lua, 1);
    const int code = push_printed(lua, value.type, value, nullptr);
    if (code == BGPDT_NO_MEMORY)
        return raise_no_memory(lua);
    if (code != BGPDT_OK)
        push_hex(lua, "0x", value);
    return 1;
}

constexpr luaL_Reg methods[] = {
    {"__eq", value_equal}, {"__index", value_index},   {"__le", value_not_greater},
    {"__lt", value_less},  {"__tostring", value_text}, {nullptr, nullptr},
};

} // namespace

LuaValue &new_value(lua_State *lua, const bgpdt_type *type)
{
    const std::size_t size = bgpdt_about(type)->value_size;
    auto &value = *static_cast<LuaValue *>(lua_newuserdatauv(lua, sizeof(LuaValue) + size, 0));
    value = {type, size};
    luaL_setmetatable(lua, value_name);
    return value;
}

LuaValue &value_at(lua_State *lua, int index)
{
    return *static_cast<LuaValue *>(luaL_checkudata(lua, index, value_name));
}

LuaValue &value_of_same_type(lua_State *lua, int index, const LuaValue &first)
{
    LuaValue &value = value_at(lua, index);
    luaL_argcheck(lua, value.type == first.type, index, "the values are of different types");
    return value;
}

std::string_view string_at(lua_State *lua, int index)
{
    std::size_t length = 0;
    const char *text = luaL_checklstring(lua, index, &length);
    return {text, length};
}

int push_printed(lua_State *lua, const bgpdt_type *type, LuaValue &value, bgpdt_error **error)
{
    char room[BGPDT_TEXT_ROOM];
    std::size_t size = 0;
    int code = bgpdt_print(type, value.bytes(), value.size, room, sizeof room, &size, error);
    if (code >= BGPDT_OK) {
        lua_pushlstring(lua, room, size);
    } else if (code == BGPDT_NO_ROOM) {
        auto *larger = static_cast<char *>(lua_newuserdatauv(lua, size + 1, 0));
        code = bgpdt_print(type, value.bytes(), value.size, larger, size + 1, &size, error);
        if (code >= BGPDT_OK)
            lua_pushlstring(lua, larger, size);
    }
    return code;
}

void open_values(lua_State *lua)
{
    luaL_newmetatable(lua, value_name);
    luaL_setfuncs(lua, methods, 0);
    lua_pop(lua, 1);
}

} // namespace bgpdt::library
