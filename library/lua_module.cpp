// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "lua_module.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <lua.hpp>

#include "lua_refusals.hpp"
#include "lua_values.hpp"

namespace bgpdt::library {
namespace {

bgpdt_library *library_of(lua_State *lua)
{
    return static_cast<bgpdt_library *>(lua_touserdata(lua, lua_upvalueindex(1)));
}

/// The type in the mode of an argument, its usual one if there is none.
const bgpdt_type *in_mode(lua_State *lua, int index, const bgpdt_type *type)
{
    if (lua_isnoneornil(lua, index))
        return type;
    const lua_Integer mode = luaL_checkinteger(lua, index);
    luaL_argcheck(lua, mode >= 0 && mode <= UINT8_MAX, index, "a mode is 0 to 255");
    if (bgpdt_in_mode(type, static_cast<unsigned>(mode), &type) != BGPDT_OK)
        raise_no_memory(lua);
    return type;
}

/// Finds the type whose name is the first argument.
int find(lua_State *lua, const bgpdt_type *&type, bgpdt_error *&error)
{
    const std::string_view name = string_at(lua, 1);
    return bgpdt_find(library_of(lua), name.data(), name.size(), &type, &error);
}

/// Pushes a value of the type whose name is the first argument, which the work fills or refuses.
template <class Work>
int push_value(lua_State *lua, const Work &work)
{
    const bgpdt_type *type = nullptr;
    bgpdt_error *error = nullptr;
    if (find(lua, type, error) != BGPDT_OK)
        return refuse(lua, error);
    LuaValue &value = new_value(lua, type);
    return work(type, value.bytes(), value.size, &error) == BGPDT_OK ? 1 : refuse(lua, error);
}

int parse(lua_State *lua)
{
    const std::string_view text = string_at(lua, 2);
    lua_settop(lua, 3);
    return push_value(lua, [&](const bgpdt_type *type, std::uint8_t *bytes, std::size_t size, bgpdt_error **error) {
        return bgpdt_parse(in_mode(lua, 3, type), text.data(), text.size(), bytes, size, error);
    });
}

/// A refused text leaves nothing for the engine to collect, unless values of the type are longer than the router's.
int try_parse(lua_State *lua)
{
    const std::string_view text = string_at(lua, 2);
    lua_settop(lua, 3);
    const bgpdt_type *type = nullptr;
    bgpdt_error *error = nullptr;
    if (find(lua, type, error) != BGPDT_OK)
        return refuse(lua, error);
    std::uint8_t room[BGPDT_VALUE_ROOM];
    const std::size_t size = bgpdt_about(type)->value_size;
    std::uint8_t *const bytes = size <= sizeof room ? room : new_value(lua, type).bytes();
    const int code = bgpdt_parse(in_mode(lua, 3, type), text.data(), text.size(), bytes, size, nullptr);
    if (code == BGPDT_NO_MEMORY)
        return raise_no_memory(lua);
    if (code != BGPDT_OK)
        lua_pushnil(lua);
    else if (bytes == room)
        std::memcpy(new_value(lua, type).bytes(), room, size);
    return 1;
}

int from_hex(lua_State *lua)
{
    const std::string_view hex = string_at(lua, 2);
    return push_value(lua, [&](const bgpdt_type *type, std::uint8_t *bytes, std::size_t size, bgpdt_error **error) {
        return bgpdt_from_hex(type, hex.data(), hex.size(), bytes, size, error);
    });
}

int value(lua_State *lua)
{
    luaL_checkany(lua, 2);
    return push_value(lua, [&](const bgpdt_type *type, std::uint8_t *bytes, std::size_t size, bgpdt_error **error) {
        lua_pushvalue(lua, 2);
        const int code = bgpdt_read_lua(type, lua, bytes, size, error);
        lua_pop(lua, 1);
        return code;
    });
}

int table(lua_State *lua)
{
    LuaValue &value = value_at(lua, 1);
    bgpdt_error *error = nullptr;
    const int code = bgpdt_push_lua(value.type, value.bytes(), value.size, lua, &error);
    return code == BGPDT_OK ? 1 : refuse(lua, error);
}

int print(lua_State *lua)
{
    LuaValue &value = value_at(lua, 1);
    bgpdt_error *error = nullptr;
    const int code = push_printed(lua, in_mode(lua, 2, value.type), value, &error);
    return code >= BGPDT_OK ? 1 : refuse(lua, error);
}

int check(lua_State *lua)
{
    LuaValue &value = value_at(lua, 1);
    bgpdt_error *error = nullptr;
    if (bgpdt_check(value.type, value.bytes(), value.size, &error) != BGPDT_OK)
        return refuse(lua, error);
    lua_pushboolean(lua, 1);
    return 1;
}

int compare(lua_State *lua)
{
    LuaValue &first = value_at(lua, 1);
    LuaValue &second = value_of_same_type(lua, 2, first);
    bgpdt_error *error = nullptr;
    int order = 0;
    if (bgpdt_compare(first.type, first.bytes(), first.size, second.bytes(), second.size, &order, &error) != BGPDT_OK)
        return refuse(lua, error);
    lua_pushinteger(lua, order);
    return 1;
}

/// Pushes the words for the type's operations, an array.
void push_operations(lua_State *lua, unsigned operations)
{
    lua_newtable(lua);
    lua_Integer place = 0;
    for (unsigned bit = 1; const char *word = bgpdt_operation_word(bit); bit <<= 1) {
        if ((operations & bit) != 0) {
            lua_pushstring(lua, word);
            lua_rawseti(lua, -2, ++place);
        }
    }
}

int types(lua_State *lua)
{
    const bgpdt_library *library = library_of(lua);
    lua_newtable(lua);
    for (std::size_t i = 0; i < bgpdt_type_count(library); ++i) {
        const bgpdt_info &info = *bgpdt_about(bgpdt_type_at(library, i));
        lua_newtable(lua);
        push(lua, info.name);
        lua_setfield(lua, -2, "name");
        lua_pushinteger(lua, info.id);
        lua_setfield(lua, -2, "id");
        lua_pushinteger(lua, static_cast<lua_Integer>(info.value_size));
        lua_setfield(lua, -2, "size");
        push_operations(lua, info.operations);
        lua_setfield(lua, -2, "operations");
        lua_rawseti(lua, -2, static_cast<lua_Integer>(i) + 1);
    }
    return 1;
}

constexpr luaL_Reg functions[] = {
    {"check", check}, {"compare", compare},     {"from_hex", from_hex}, {"parse", parse}, {"print", print},
    {"table", table}, {"try_parse", try_parse}, {"types", types},       {"value", value}, {nullptr, nullptr},
};

/// Opens the module.
int open_module(lua_State *lua)
{
    open_values(lua);
    luaL_newlibtable(lua, functions);
    lua_pushvalue(lua, lua_upvalueindex(1));
    luaL_setfuncs(lua, functions, 1);
    return 1;
}

} // namespace

void push_lua_module(lua_State *lua, bgpdt_library *library)
{
    lua_pushlightuserdata(lua, library);
    lua_pushcclosure(lua, open_module, 1);
    lua_call(lua, 0, 1);
}

} // namespace bgpdt::library
