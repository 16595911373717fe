// SPDX-License-Identifier: Apache-2.0
#include "lua_module.hpp"

#include <algorithm>
#include <exception>
#include <span>
#include <string_view>

#include <lua.hpp>

#include "conversions.hpp"
#include "display_record.hpp"
#include "errors.hpp"
#include "script_table.hpp"

namespace bgpdt::tool {
namespace {

constexpr const char *value_name = "bgp.value";

/// The userdata behind a value; its bytes follow it.
struct Head {
    const SYSDT_Record *type;
    std::size_t size;
};

struct Value {
    const SYSDT_Record &type;
    std::span<const std::uint8_t> bytes;
};

std::string_view view(std::span<const std::uint8_t> bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

void push(lua_State *lua, std::string_view text) { lua_pushlstring(lua, text.data(), text.size()); }

void push_value(lua_State *lua, const SYSDT_Record &type, std::span<const std::uint8_t> bytes)
{
    auto *head = static_cast<Head *>(lua_newuserdatauv(lua, sizeof(Head) + bytes.size(), 0));
    *head = {&type, bytes.size()};
    std::ranges::copy(bytes, reinterpret_cast<std::uint8_t *>(head + 1));
    luaL_setmetatable(lua, value_name);
}

Value value_at(lua_State *lua, int index)
{
    const auto *head = static_cast<const Head *>(luaL_checkudata(lua, index, value_name));
    return {*head->type, {reinterpret_cast<const std::uint8_t *>(head + 1), head->size}};
}

std::string_view string_at(lua_State *lua, int index)
{
    std::size_t length = 0;
    const char *text = luaL_checklstring(lua, index, &length);
    return {text, length};
}

std::uint8_t mode_at(lua_State *lua, int index, std::uint8_t otherwise)
{
    const lua_Integer mode = luaL_optinteger(lua, index, otherwise);
    luaL_argcheck(lua, mode >= 0 && mode <= 255, index, "a mode is 0 to 255");
    return static_cast<std::uint8_t>(mode);
}

std::string hex_of(const Value &value)
{
    Bytes bytes(value.bytes.begin(), value.bytes.end());
    turn_to_target(value.type, bytes);
    return to_hex(bytes);
}

/// A function of the module: what it throws is nil, a message and, if there is one, a place. The engine leaves by
/// longjmp when an argument is of another kind, so that arguments are read before anything that has a destructor.
template <int (*function)(lua_State *, Session &)>
int entry(lua_State *lua)
{
    auto *session = static_cast<Session *>(lua_touserdata(lua, lua_upvalueindex(1)));
    try {
        return function(lua, *session);
    } catch (const Refusal &refusal) {
        lua_pushnil(lua);
        lua_pushstring(lua, refusal.what());
        if (!refusal.diagnosis()) {
            return 2;
        }
        lua_pushinteger(lua, static_cast<lua_Integer>(refusal.diagnosis()->at) + 1);
        return 3;
    } catch (const std::exception &error) {
        lua_pushnil(lua);
        lua_pushstring(lua, error.what());
        return 2;
    }
}

int parse(lua_State *lua, Session &session)
{
    const std::string_view name = string_at(lua, 1);
    const std::string_view text = string_at(lua, 2);
    const std::uint8_t given = mode_at(lua, 3, 0);
    const SYSDT_Record &type = session.type(name);
    const std::uint8_t mode = lua_isnoneornil(lua, 3) ? session.mode_for(type) : given;
    push_value(lua, type, parse_text(session, type, text, mode).data);
    return 1;
}

int from_hex(lua_State *lua, Session &session)
{
    const std::string_view name = string_at(lua, 1);
    const std::string_view hex = string_at(lua, 2);
    const SYSDT_Record &type = session.type(name);
    Bytes bytes = tool::from_hex(hex);
    require_size(type, bytes, value_size(type));
    turn_to_native(type, bytes);
    push_value(lua, type, bytes);
    return 1;
}

int value(lua_State *lua, Session &session)
{
    const std::string_view name = string_at(lua, 1);
    luaL_checkany(lua, 2);
    lua_settop(lua, 2);
    const SYSDT_Record &type = session.type(name);
    push_value(lua, type, read_table(session, lua, type));
    return 1;
}

int table(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    push_table(session, lua, value.type, value.bytes);
    return 1;
}

int print(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    const std::uint8_t mode = mode_at(lua, 2, session.mode_for(value.type));
    const Printed printed = print_value(session, value.type, printable(value.type, value.bytes), mode);
    push(lua, printed.text ? std::string_view(*printed.text) : view(printed.bytes));
    return 1;
}

int check(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    check_value(session, value.type, value.bytes);
    lua_pushboolean(lua, 1);
    return 1;
}

int compare(lua_State *lua, Session &session)
{
    const Value first = value_at(lua, 1);
    const Value second = value_at(lua, 2);
    luaL_argcheck(lua, &first.type == &second.type, 2, "the values are of different types");
    lua_pushinteger(lua, compare_values(session, first.type, first.bytes, second.bytes));
    return 1;
}

int types(lua_State *lua, Session &session)
{
    lua_newtable(lua);
    lua_Integer index = 0;
    for (const SYSDT_Record *type : session.host().types()) {
        lua_newtable(lua);
        push(lua, name_of(*type));
        lua_setfield(lua, -2, "name");
        lua_pushinteger(lua, type->typeId);
        lua_setfield(lua, -2, "id");
        lua_pushinteger(lua, static_cast<lua_Integer>(value_size(*type)));
        lua_setfield(lua, -2, "size");
        lua_newtable(lua);
        lua_Integer place = 0;
        for (const std::string &word : operations(*type)) {
            push(lua, word);
            lua_rawseti(lua, -2, ++place);
        }
        lua_setfield(lua, -2, "operations");
        lua_rawseti(lua, -2, ++index);
    }
    return 1;
}

int value_index(lua_State *lua, Session &)
{
    const Value value = value_at(lua, 1);
    const std::string_view key = string_at(lua, 2);
    if (key == "type") {
        push(lua, name_of(value.type));
    } else if (key == "size") {
        lua_pushinteger(lua, static_cast<lua_Integer>(value.bytes.size()));
    } else if (key == "hex") {
        push(lua, hex_of(value));
    } else if (key == "bytes") {
        push(lua, view(value.bytes));
    } else {
        lua_pushnil(lua);
    }
    return 1;
}

int value_equal(lua_State *lua, Session &)
{
    bool equal = luaL_testudata(lua, 1, value_name) != nullptr && luaL_testudata(lua, 2, value_name) != nullptr;
    if (equal) {
        const Value first = value_at(lua, 1);
        const Value second = value_at(lua, 2);
        equal = &first.type == &second.type && std::ranges::equal(first.bytes, second.bytes);
    }
    lua_pushboolean(lua, equal ? 1 : 0);
    return 1;
}

int value_text(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    try {
        const Printed printed =
            print_value(session, value.type, printable(value.type, value.bytes), session.mode_for(value.type));
        push(lua, printed.text ? *printed.text : "0x" + hex_of(value));
    } catch (const Refusal &) {
        push(lua, "0x" + hex_of(value));
    }
    return 1;
}

constexpr luaL_Reg functions[] = {
    {"check", entry<check>}, {"compare", entry<compare>}, {"from_hex", entry<from_hex>},
    {"parse", entry<parse>}, {"print", entry<print>},     {"table", entry<table>},
    {"types", entry<types>}, {"value", entry<value>},     {nullptr, nullptr},
};

constexpr luaL_Reg methods[] = {
    {"__eq", entry<value_equal>},
    {"__index", entry<value_index>},
    {"__tostring", entry<value_text>},
    {nullptr, nullptr},
};

/// Opens the module; the session is on top of the stack.
int open_module(lua_State *lua)
{
    luaL_newmetatable(lua, value_name);
    lua_pushvalue(lua, lua_upvalueindex(1));
    luaL_setfuncs(lua, methods, 1);
    lua_pop(lua, 1);
    luaL_newlibtable(lua, functions);
    lua_pushvalue(lua, lua_upvalueindex(1));
    luaL_setfuncs(lua, functions, 1);
    return 1;
}

int traceback(lua_State *lua)
{
    luaL_traceback(lua, lua, luaL_tolstring(lua, 1, nullptr), 1);
    return 1;
}

/// Makes `bgp` a loaded module and a global, as the libraries of Lua are.
void install(lua_State *lua, Session &session)
{
    luaL_openlibs(lua);
    push_module(lua, session);
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
    push(lua, file);
    lua_rawseti(lua, -2, 0);
    lua_Integer index = 0;
    for (const std::string &argument : arguments) {
        push(lua, argument);
        lua_rawseti(lua, -2, ++index);
    }
    lua_setglobal(lua, "arg");
    for (const std::string &argument : arguments) {
        push(lua, argument);
    }
}

} // namespace

void push_module(lua_State *lua, Session &session)
{
    lua_pushlightuserdata(lua, &session);
    lua_pushcclosure(lua, open_module, 1);
    lua_call(lua, 0, 1);
}

void run_script(Session &session, const std::string &file, std::span<const std::string> arguments)
{
    const LuaState owner = new_lua_state();
    lua_State *lua = owner.get();
    install(lua, session);
    lua_pushcfunction(lua, traceback);
    if (luaL_loadfile(lua, file.c_str()) != LUA_OK) {
        throw UsageError(lua_tostring(lua, -1));
    }
    pass_arguments(lua, file, arguments);
    if (lua_pcall(lua, static_cast<int>(arguments.size()), 0, 1) != LUA_OK) {
        throw ScriptError(lua_tostring(lua, -1));
    }
}

} // namespace bgpdt::tool
