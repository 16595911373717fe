// SPDX-License-Identifier: Apache-2.0
#include "lua_module.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <lua.hpp>

#include "bgpdt/bgpdt.h"

namespace bgpdt::library {
namespace {

// The engine takes memory for what it is given, which may raise an error: it then leaves by longjmp. So nothing here has
// a destructor, and an error of the library's is pushed in a protected call.

constexpr const char *value_name = "bgp.value";

/// The userdata of a value; its bytes follow it.
struct Value {
    const bgpdt_type *type;
    std::size_t size;

    std::uint8_t *bytes() { return reinterpret_cast<std::uint8_t *>(this + 1); }
};

void push(lua_State *lua, bgpdt_text text) { lua_pushlstring(lua, text.data, text.size); }

Value &value_at(lua_State *lua, int index) { return *static_cast<Value *>(luaL_checkudata(lua, index, value_name)); }

std::string_view string_at(lua_State *lua, int index)
{
    std::size_t length = 0;
    const char *text = luaL_checklstring(lua, index, &length);
    return {text, length};
}

// ------------------------------------------------------------------------------------------------ refusals

/// What there is to do, in the module's own words.
const char *hint_for(int code)
{
    switch (code) {
    case BGPDT_NO_TYPE: return "; bgp.types() lists the types";
    case BGPDT_NO_TEXT: return "; bgp.from_hex() takes its values";
    default: return "";
    }
}

/// Raises the engine's own error, by its own words.
int raise_no_memory(lua_State *lua)
{
    lua_pushliteral(lua, "not enough memory");
    return lua_error(lua);
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

/// Answers a call with an error, which is released.
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

// ------------------------------------------------------------------------------------------------ the module

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

/// Pushes a value of the type whose name is the first argument, which the work fills or refuses.
template <class Work>
int new_value(lua_State *lua, const Work &work)
{
    const std::string_view name = string_at(lua, 1);
    const bgpdt_type *type = nullptr;
    bgpdt_error *error = nullptr;
    if (bgpdt_find(library_of(lua), name.data(), name.size(), &type, &error) != BGPDT_OK)
        return refuse(lua, error);
    const std::size_t size = bgpdt_about(type)->value_size;
    auto *value = static_cast<Value *>(lua_newuserdatauv(lua, sizeof(Value) + size, 0));
    *value = {type, size};
    luaL_setmetatable(lua, value_name);
    return work(type, value->bytes(), size, &error) == BGPDT_OK ? 1 : refuse(lua, error);
}

int parse(lua_State *lua)
{
    const std::string_view text = string_at(lua, 2);
    lua_settop(lua, 3);
    return new_value(lua, [&](const bgpdt_type *type, std::uint8_t *bytes, std::size_t size, bgpdt_error **error) {
        return bgpdt_parse(in_mode(lua, 3, type), text.data(), text.size(), bytes, size, error);
    });
}

int from_hex(lua_State *lua)
{
    const std::string_view hex = string_at(lua, 2);
    return new_value(lua, [&](const bgpdt_type *type, std::uint8_t *bytes, std::size_t size, bgpdt_error **error) {
        return bgpdt_from_hex(type, hex.data(), hex.size(), bytes, size, error);
    });
}

int value(lua_State *lua)
{
    luaL_checkany(lua, 2);
    return new_value(lua, [&](const bgpdt_type *type, std::uint8_t *bytes, std::size_t size, bgpdt_error **error) {
        lua_pushvalue(lua, 2);
        const int code = bgpdt_read_lua(type, lua, bytes, size, error);
        lua_pop(lua, 1);
        return code;
    });
}

int table(lua_State *lua)
{
    Value &value = value_at(lua, 1);
    bgpdt_error *error = nullptr;
    const int code = bgpdt_push_lua(value.type, value.bytes(), value.size, lua, &error);
    return code == BGPDT_OK ? 1 : refuse(lua, error);
}

/// Pushes what the value prints as; or answers why it does not, with nothing pushed.
int push_printed(lua_State *lua, const bgpdt_type *type, Value &value, bgpdt_error **error)
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

int print(lua_State *lua)
{
    Value &value = value_at(lua, 1);
    bgpdt_error *error = nullptr;
    const int code = push_printed(lua, in_mode(lua, 2, value.type), value, &error);
    return code >= BGPDT_OK ? 1 : refuse(lua, error);
}

int check(lua_State *lua)
{
    Value &value = value_at(lua, 1);
    bgpdt_error *error = nullptr;
    if (bgpdt_check(value.type, value.bytes(), value.size, &error) != BGPDT_OK)
        return refuse(lua, error);
    lua_pushboolean(lua, 1);
    return 1;
}

int compare(lua_State *lua)
{
    Value &first = value_at(lua, 1);
    Value &second = value_at(lua, 2);
    luaL_argcheck(lua, first.type == second.type, 2, "the values are of different types");
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

// ------------------------------------------------------------------------------------------------ values

void push_hex(lua_State *lua, const char *front, Value &value)
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
void push_bytes(lua_State *lua, Value &value)
{
    auto *native = static_cast<std::uint8_t *>(lua_newuserdatauv(lua, value.size, 0));
    std::memcpy(native, value.bytes(), value.size);
    static_cast<void>(bgpdt_to_native(value.type, native, value.size));
    lua_pushlstring(lua, reinterpret_cast<const char *>(native), value.size);
}

int value_index(lua_State *lua)
{
    Value &value = value_at(lua, 1);
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
    auto *first = static_cast<Value *>(luaL_testudata(lua, 1, value_name));
    auto *second = static_cast<Value *>(luaL_testudata(lua, 2, value_name));
    const bool equal = first != nullptr && second != nullptr && first->type == second->type &&
                       std::memcmp(first->bytes(), second->bytes(), first->size) == 0;
    lua_pushboolean(lua, equal ? 1 : 0);
    return 1;
}

/// Its hex where the type prints no text.
int value_text(lua_State *lua)
{
    Value &value = value_at(lua, 1);
    const int code = push_printed(lua, value.type, value, nullptr);
    if (code == BGPDT_NO_MEMORY)
        return raise_no_memory(lua);
    if (code != BGPDT_OK)
        push_hex(lua, "0x", value);
    return 1;
}

constexpr luaL_Reg functions[] = {
    {"check", check}, {"compare", compare}, {"from_hex", from_hex}, {"parse", parse},   {"print", print},
    {"table", table}, {"types", types},     {"value", value},       {nullptr, nullptr},
};

constexpr luaL_Reg methods[] = {
    {"__eq", value_equal},
    {"__index", value_index},
    {"__tostring", value_text},
    {nullptr, nullptr},
};

/// Opens the module.
int open_module(lua_State *lua)
{
    luaL_newmetatable(lua, value_name);
    luaL_setfuncs(lua, methods, 0);
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
