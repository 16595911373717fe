// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "script_value.hpp"

#include <algorithm>
#include <lua.hpp>
#include <stdexcept>

namespace bgpdt::test {

namespace {

using Nil = std::monostate;

constexpr const char *opaque_words[] = {"function", "userdata"};

template <class... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

bool is_nil(const ScriptValue &value) { return std::holds_alternative<Nil>(value.value); }

bool in_order(const ScriptField *a, const ScriptField *b)
{
    return a->index != b->index ? a->index < b->index : a->name < b->name;
}

/// The fields that are there, in the order of their keys.
std::vector<const ScriptField *> sorted_fields(const ScriptTable &table)
{
    std::vector<const ScriptField *> fields;
    for (const ScriptField &field : table)
        if (!is_nil(field.value))
            fields.push_back(&field);
    std::sort(fields.begin(), fields.end(), in_order);
    return fields;
}

bool same_fields(const ScriptTable &first, const ScriptTable &second)
{
    const auto a = sorted_fields(first);
    const auto b = sorted_fields(second);
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const ScriptField *x, const ScriptField *y) {
        return x->index == y->index && x->name == y->name && same_content(x->value, y->value);
    });
}

void append_keys(std::vector<std::string> &keys, const ScriptValue &value)
{
    const ScriptTable *table = std::get_if<ScriptTable>(&value.value);
    if (table == nullptr)
        return;
    for (const ScriptField &field : *table) {
        if (!is_nil(field.value)) {
            append_keys(keys, field.value);
            keys.push_back(field.key());
        }
    }
}

std::string table_text(const ScriptTable &table)
{
    std::string text = "{";
    for (const ScriptField &field : table) {
        text += text.size() > 1 ? ", " : " ";
        text += field.index != 0 ? to_text(field.value) : field.name + " = " + to_text(field.value);
    }
    return text + " }";
}

std::string quoted(const std::string &text)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string result = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte > 0x7e)
            result += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
        else
            result += (character == '"' || character == '\\') ? std::string{'\\', character} : std::string{character};
    }
    return result + '"';
}

void push_table(lua_State *lua, const ScriptTable &table)
{
    lua_newtable(lua);
    for (const ScriptField &field : table) {
        push(lua, field.value);
        if (field.index != 0)
            lua_rawseti(lua, -2, static_cast<lua_Integer>(field.index));
        else
            lua_setfield(lua, -2, field.name.c_str());
    }
}

void push_opaque(lua_State *lua, Opaque opaque)
{
    if (opaque == Opaque::function)
        lua_pushcfunction(lua, [](lua_State *) { return 0; });
    else
        lua_newuserdatauv(lua, 1, 0);
}

ScriptField read_field(lua_State *lua)
{
    ScriptField field{{}, 0, read(lua, -1)};
    if (lua_isinteger(lua, -2) != 0)
        field.index = lua_tointeger(lua, -2);
    else if (lua_type(lua, -2) == LUA_TSTRING)
        field.name = lua_tostring(lua, -2);
    else
        throw std::runtime_error("a script table has a key that is neither a string nor an integer");
    return field;
}

ScriptTable read_table(lua_State *lua, int index)
{
    ScriptTable table;
    index = lua_absindex(lua, index);
    luaL_checkstack(lua, 8, "reading a script table");
    for (lua_pushnil(lua); lua_next(lua, index) != 0; lua_pop(lua, 1))
        table.push_back(read_field(lua));
    // Lua keeps named fields in the order of their hashes; array entries read better in their own.
    std::sort(table.begin(), table.end(), [](const ScriptField &a, const ScriptField &b) { return in_order(&a, &b); });
    return table;
}

} // namespace

std::string ScriptField::key() const { return index != 0 ? "[" + std::to_string(index) + "]" : name; }

bool same_content(const ScriptValue &first, const ScriptValue &second)
{
    const ScriptTable *a = std::get_if<ScriptTable>(&first.value);
    const ScriptTable *b = std::get_if<ScriptTable>(&second.value);
    if (a != nullptr && b != nullptr)
        return same_fields(*a, *b);
    if (a != nullptr || b != nullptr || first.value.index() != second.value.index())
        return false;
    return std::visit(
        Overloaded{[](const ScriptTable &) { return true; }, // both are none
                   [&](const auto &value) { return value == std::get<std::decay_t<decltype(value)>>(second.value); }},
        first.value);
}

std::vector<std::string> storing_order(const ScriptValue &value)
{
    std::vector<std::string> keys;
    append_keys(keys, value);
    return keys;
}

std::string room_text(std::int64_t array_slots, std::int64_t record_slots)
{
    return "(" + std::to_string(array_slots) + "," + std::to_string(record_slots) + ")";
}

std::string to_text(const ScriptValue &value)
{
    return std::visit(Overloaded{[](Nil) { return std::string("nil"); },
                                 [](bool flag) { return std::string(flag ? "true" : "false"); },
                                 [](const std::string &text) { return quoted(text); },
                                 [](const ScriptTable &table) { return table_text(table); },
                                 [](Opaque opaque) { return std::string(opaque_words[static_cast<int>(opaque)]); },
                                 [](auto number) { return std::to_string(number); }},
                      value.value);
}

void push(lua_State *lua, const ScriptValue &value)
{
    luaL_checkstack(lua, 8, "pushing a script value");
    std::visit(Overloaded{[&](Nil) { lua_pushnil(lua); }, [&](bool flag) { lua_pushboolean(lua, flag); },
                          [&](std::int64_t number) { lua_pushinteger(lua, static_cast<lua_Integer>(number)); },
                          [&](double number) { lua_pushnumber(lua, number); },
                          [&](const std::string &text) { lua_pushlstring(lua, text.data(), text.size()); },
                          [&](const ScriptTable &table) { push_table(lua, table); },
                          [&](Opaque opaque) { push_opaque(lua, opaque); }},
               value.value);
}

ScriptValue read(lua_State *lua, int index)
{
    switch (lua_type(lua, index)) {
    case LUA_TNIL: return {};
    case LUA_TBOOLEAN: return {lua_toboolean(lua, index) != 0};
    case LUA_TNUMBER:
        if (lua_isinteger(lua, index) != 0)
            return {std::int64_t{lua_tointeger(lua, index)}};
        return {double{lua_tonumber(lua, index)}};
    case LUA_TSTRING: {
        std::size_t length = 0;
        const char *text = lua_tolstring(lua, index, &length);
        return {std::string(text, length)};
    }
    case LUA_TTABLE: return {read_table(lua, index)};
    case LUA_TFUNCTION: return {Opaque::function};
    case LUA_TUSERDATA: return {Opaque::userdata};
    default: throw std::runtime_error(std::string("a script value is a ") + luaL_typename(lua, index));
    }
}

} // namespace bgpdt::test
