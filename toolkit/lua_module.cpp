// SPDX-License-Identifier: Apache-2.0
#include "lua_module.hpp"

#include <algorithm>
#include <cstring>
#include <exception>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <lua.hpp>

#include "conversions.hpp"
#include "display_record.hpp"
#include "errors.hpp"
#include "operations.hpp"

namespace bgpdt::toolkit {
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

// ------------------------------------------------------------------------------------------------ answers

// The engine takes memory for what it is given, which may raise an error: it then leaves by longjmp. So a function
// first reads its arguments and keeps them as plain data; its work is C++ that calls nothing of the engine that may
// raise an error; what the work gives goes to the engine when nothing with a destructor is left, or else in a
// protected call.

/// A value of the type, or a string if there is none, wherever its bytes stand.
struct Content {
    const SYSDT_Record *type;
    std::span<const std::uint8_t> bytes;
};

/// Of an error that lives until it is pushed.
struct Refused {
    std::string_view front;
    std::string_view hint = {}; ///< the module's own words
    std::string_view rest = {};
    const Diagnosis *diagnosis = nullptr; ///< null: there is none
};

std::string_view words_for(Hint hint)
{
    switch (hint) {
    case Hint::types: return "; bgp.types() lists the types";
    case Hint::bytes: return "; bgp.from_hex() takes its values";
    default: return "";
    }
}

Refused refused(const Error &error) { return {error.front(), words_for(error.hint()), error.rest()}; }

void push(lua_State *lua, const Content &content)
{
    if (content.type == nullptr) {
        push(lua, view(content.bytes));
        return;
    }
    auto *head = static_cast<Head *>(lua_newuserdatauv(lua, sizeof(Head) + content.bytes.size(), 0));
    *head = {content.type, content.bytes.size()};
    std::copy_n(content.bytes.data(), content.bytes.size(), reinterpret_cast<std::uint8_t *>(head + 1));
    luaL_setmetatable(lua, value_name);
}

void push(lua_State *lua, const Refused &refused)
{
    lua_pushnil(lua);
    push(lua, refused.front);
    push(lua, refused.hint);
    push(lua, refused.rest);
    lua_concat(lua, 3);
    if (refused.diagnosis != nullptr)
        lua_pushinteger(lua, static_cast<lua_Integer>(refused.diagnosis->at) + 1);
}

// What the work of a function may give; work that gives nothing has pushed its one result.

struct Fresh {
    const SYSDT_Record &type;
    Bytes bytes;
};

/// What types() says of one type.
struct About {
    std::string name;
    lua_Integer id;
    lua_Integer size;
    std::vector<std::string> operations;
};

Content content_of(const Fresh &value) { return {&value.type, value.bytes}; }

Content content_of(std::string_view text)
{
    return {nullptr, {reinterpret_cast<const std::uint8_t *>(text.data()), text.size()}};
}

Content content_of(const Printed &printed)
{
    return printed.text ? content_of(*printed.text) : Content{nullptr, printed.bytes};
}

void push(lua_State *lua, const std::vector<About> &types)
{
    lua_newtable(lua);
    lua_Integer index = 0;
    for (const About &type : types) {
        lua_newtable(lua);
        push(lua, type.name);
        lua_setfield(lua, -2, "name");
        lua_pushinteger(lua, type.id);
        lua_setfield(lua, -2, "id");
        lua_pushinteger(lua, type.size);
        lua_setfield(lua, -2, "size");
        lua_newtable(lua);
        lua_Integer place = 0;
        for (const std::string &word : type.operations) {
            push(lua, word);
            lua_rawseti(lua, -2, ++place);
        }
        lua_setfield(lua, -2, "operations");
        lua_rawseti(lua, -2, ++index);
    }
}

// How many results are pushed; or one of these.
constexpr int failed = -1; ///< an error is to be raised, which is on top
constexpr int kept = 0;    ///< the result is still to be pushed

/// Pushes in a protected call.
template <class What>
int pushed(lua_State *lua, const What &what)
{
    const int before = lua_gettop(lua);
    lua_pushcfunction(lua, [](lua_State *inner) {
        push(inner, *static_cast<const What *>(lua_touserdata(inner, 1)));
        return lua_gettop(inner) - 1;
    });
    lua_pushlightuserdata(lua, const_cast<What *>(&what));
    return lua_pcall(lua, 1, LUA_MULTRET, 0) == LUA_OK ? lua_gettop(lua) - before : failed;
}

/// Content that is small; keeping it costs less than a protected call.
struct Small {
    Content content;
    std::uint8_t room[1024];
};

int kept_or_pushed(lua_State *lua, const Content &content, Small &small)
{
    if (content.bytes.size() > sizeof small.room)
        return pushed(lua, content);
    std::copy_n(content.bytes.data(), content.bytes.size(), small.room);
    small.content = {content.type, {small.room, content.bytes.size()}};
    return kept;
}

template <class Work>
int result_of(lua_State *lua, const Work &work, Small &small)
{
    if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
        work();
        return 1;
    } else {
        const auto result = work();
        if constexpr (requires { content_of(result); })
            return kept_or_pushed(lua, content_of(result), small);
        else
            return pushed(lua, result);
    }
}

/// What is thrown becomes nil, a message and, if there is one, a place; but memory that is out an engine's error.
template <class Work>
int caught_result_of(lua_State *lua, const Work &work, Small &small) noexcept
{
    try {
        return result_of(lua, work, small);
    } catch (const Refusal &refusal) {
        Refused result = refused(refusal);
        result.diagnosis = refusal.diagnosis() ? &*refusal.diagnosis() : nullptr;
        return pushed(lua, result);
    } catch (const Error &error) {
        return pushed(lua, refused(error));
    } catch (const std::bad_alloc &) {
        static_cast<void>(pushed(lua, content_of("not enough memory"))); // the engine's own words
        return failed;
    } catch (const std::exception &error) {
        return pushed(lua, Refused{.front = error.what()});
    }
}

/// Has a function's work answer the call.
template <class Work>
int answer(lua_State *lua, const Work &work)
{
    Small small;
    const int results = caught_result_of(lua, work, small);
    if (results == kept) {
        push(lua, small.content);
        return 1;
    }
    return results == failed ? lua_error(lua) : results;
}

// ------------------------------------------------------------------------------------------------ the module

int parse(lua_State *lua, Session &session)
{
    const std::string_view name = string_at(lua, 1);
    const std::string_view text = string_at(lua, 2);
    const std::uint8_t given = mode_at(lua, 3, 0);
    const bool usual = lua_isnoneornil(lua, 3);
    return answer(lua, [&] {
        const SYSDT_Record &type = session.type(name);
        return Fresh{type, parse_text(session, type, text, usual ? session.mode_for(type) : given).data};
    });
}

int from_hex(lua_State *lua, Session &session)
{
    const std::string_view name = string_at(lua, 1);
    const std::string_view hex = string_at(lua, 2);
    return answer(lua, [&] {
        const SYSDT_Record &type = session.type(name);
        Bytes bytes = toolkit::from_hex(hex);
        require_size(type, bytes, value_size(type));
        turn_to_native(type, bytes);
        return Fresh{type, std::move(bytes)};
    });
}

int value(lua_State *lua, Session &session)
{
    const std::string_view name = string_at(lua, 1);
    luaL_checkany(lua, 2);
    lua_settop(lua, 2);
    return answer(lua, [&] {
        const SYSDT_Record &type = session.type(name);
        return Fresh{type, read_table(session, lua, type)};
    });
}

int table(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    return answer(lua, [&] { push_table(session, lua, value.type, value.bytes); });
}

int print(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    const std::uint8_t mode = mode_at(lua, 2, session.mode_for(value.type));
    return answer(lua, [&] { return print_value(session, value.type, printable(value.type, value.bytes), mode); });
}

int check(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    return answer(lua, [&] {
        check_value(session, value.type, value.bytes);
        lua_pushboolean(lua, 1);
    });
}

int compare(lua_State *lua, Session &session)
{
    const Value first = value_at(lua, 1);
    const Value second = value_at(lua, 2);
    luaL_argcheck(lua, &first.type == &second.type, 2, "the values are of different types");
    return answer(lua, [&] {
        const int order = compare_values(session, first.type, first.bytes, second.bytes);
        lua_pushinteger(lua, order);
    });
}

int types(lua_State *lua, Session &session)
{
    return answer(lua, [&] {
        std::vector<About> types;
        for (const SYSDT_Record *type : session.host().types())
            types.push_back(
                {name_of(*type), type->typeId, static_cast<lua_Integer>(value_size(*type)), operations(*type)});
        return types;
    });
}

int value_index(lua_State *lua, Session &)
{
    const Value value = value_at(lua, 1);
    const std::string_view key = string_at(lua, 2);
    if (key == "type")
        push(lua, {value.type.name, strnlen(value.type.name, sizeof value.type.name)});
    else if (key == "hex")
        return answer(lua, [&] { return hex_of(value); });
    else if (key == "size")
        lua_pushinteger(lua, static_cast<lua_Integer>(value.bytes.size()));
    else if (key == "bytes")
        push(lua, view(value.bytes));
    else
        lua_pushnil(lua);
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

/// Hex behind 0x where the type prints no text.
std::string shown(Session &session, const Value &value)
{
    try {
        Printed printed =
            print_value(session, value.type, printable(value.type, value.bytes), session.mode_for(value.type));
        if (printed.text)
            return *std::move(printed.text);
    } catch (const Refusal &) { // its bytes are shown
    }
    return "0x" + hex_of(value);
}

int value_text(lua_State *lua, Session &session)
{
    const Value value = value_at(lua, 1);
    return answer(lua, [&] { return shown(session, value); });
}

template <int (*function)(lua_State *, Session &)>
int entry(lua_State *lua)
{
    return function(lua, *static_cast<Session *>(lua_touserdata(lua, lua_upvalueindex(1))));
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

} // namespace

void push_module(lua_State *lua, Session &session)
{
    lua_pushlightuserdata(lua, &session);
    lua_pushcclosure(lua, open_module, 1);
    lua_call(lua, 0, 1);
}

} // namespace bgpdt::toolkit
