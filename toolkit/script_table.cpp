// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "script_table.hpp"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include <lua.hpp>

#include "digits.hpp"
#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::size_t table_width = 100;

/// An entry of a table, written.
struct Entry {
    std::string key; ///< empty in an array
    std::string value;
};

struct Entries {
    bool is_array;
    std::vector<Entry> all;
};

std::string_view string_at(lua_State *lua, int index)
{
    std::size_t length = 0;
    const char *text = lua_tolstring(lua, index, &length);
    return {text, length};
}

/// The number of entries if the keys are 1 to n, else 0.
lua_Integer array_length(lua_State *lua, int table)
{
    const auto length = static_cast<lua_Integer>(lua_rawlen(lua, table));
    lua_Integer keys = 0;
    for (lua_pushnil(lua); lua_next(lua, table) != 0; lua_pop(lua, 1))
        ++keys;
    return keys == length ? length : 0;
}

/// The entries in their order, each value as `form` writes what is on top of the stack.
template <class Form>
Entries entries_of(lua_State *lua, int table, const Form &form)
{
    const lua_Integer length = array_length(lua, table);
    Entries entries{length > 0, {}};
    for (lua_Integer i = 1; i <= length; ++i) {
        lua_rawgeti(lua, table, i);
        entries.all.push_back({"", form()});
        lua_pop(lua, 1);
    }
    if (entries.is_array)
        return entries;
    for (lua_pushnil(lua); lua_next(lua, table) != 0; lua_pop(lua, 1)) {
        const bool named = lua_type(lua, -2) == LUA_TSTRING;
        std::string key = named ? std::string(string_at(lua, -2)) : std::to_string(lua_tointeger(lua, -2));
        entries.all.push_back({std::move(key), form()});
    }
    std::ranges::sort(entries.all, {}, &Entry::key);
    return entries;
}

void append_table(Buffer &out, lua_State *lua, int table)
{
    const Entries entries = entries_of(lua, table, [lua] { return script_json(lua, -1).text; });
    const char *const brackets = entries.is_array ? "[]" : "{}";
    out.append(brackets[0]);
    for (const Entry &entry : entries.all) {
        out.append(&entry == entries.all.data() ? "" : ",");
        if (!entries.is_array) {
            append_json(out, entry.key);
            out.append(':');
        }
        out.append(entry.value);
    }
    out.append(brackets[1]);
}

[[gnu::noinline]] void append_record_table(Buffer &out, const host::ScriptRecord &record,
                                           const host::ScriptRecord::Value &table);

void append_record(Buffer &out, const host::ScriptRecord &record, const host::ScriptRecord::Value &value)
{
    using Kind = host::ScriptRecord::Kind;
    switch (value.kind) {
    case Kind::number: return append_json(out, value.number);
    case Kind::text: return append_json(out, record.text(value));
    case Kind::table: return append_record_table(out, record, value);
    }
}

void append_record_table(Buffer &out, const host::ScriptRecord &record, const host::ScriptRecord::Value &table)
{
    const bool is_array = record.is_array(table);
    char before = is_array ? '[' : '{';
    record.each(table, [&](std::string_view key, const host::ScriptRecord::Value &value) {
        out.append(std::exchange(before, ','));
        if (!is_array) {
            append_json(out, key);
            out.append(':');
        }
        append_record(out, record, value);
    });
    out.append(record.is_empty(table) ? "{}" : is_array ? "]" : "}");
}

/// Whether there is a table.
bool is_made(std::uint32_t status)
{
    if (status == SYSDT_ERR_NO_MEMORY)
        throw std::bad_alloc(); // which says nothing of the value
    return status == SYSDT_OK;
}

/// A name as it stands, an index or any other text in brackets.
std::string key_text(const std::string &key)
{
    constexpr std::string_view letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    if (key.find_first_not_of(digits) == std::string::npos && !key.empty())
        return "[" + key + "]";
    const bool name = key.find_first_not_of(letters) == std::string::npos && digits.find(key[0]) == std::string::npos;
    return name && !key.empty() ? key : "[" + lua_quoted(key) + "]";
}

std::string text_at(lua_State *lua, int index, std::size_t indent);

std::string table_text(lua_State *lua, int table, std::size_t indent)
{
    const Entries entries = entries_of(lua, table, [lua, indent] { return text_at(lua, -1, indent + 4); });
    std::vector<std::string> texts;
    for (const Entry &entry : entries.all)
        texts.push_back((entries.is_array ? "" : key_text(entry.key) + " = ") + entry.value);
    const std::string line = joined(texts, ", ");
    if (indent + line.size() > table_width) { // as a line has with a broken table in it
        const std::string margin(indent, ' ');
        return "{\n    " + margin + joined(texts, ",\n    " + margin) + "\n" + margin + "}";
    }
    return entries.is_array || texts.empty() ? "{" + line + "}" : "{ " + line + " }";
}

std::string text_at(lua_State *lua, int index, std::size_t indent)
{
    switch (lua_type(lua, index)) {
    case LUA_TNIL: return "nil";
    case LUA_TSTRING: return lua_quoted(string_at(lua, index));
    case LUA_TTABLE: return table_text(lua, lua_absindex(lua, index), indent);
    default: return script_json(lua, index).text;
    }
}

} // namespace

LuaState new_lua_state()
{
    LuaState lua(luaL_newstate(), lua_close);
    if (!lua)
        throw std::bad_alloc();
    return lua;
}

JsonText script_json(lua_State *lua, int index)
{
    switch (lua_type(lua, index)) {
    case LUA_TBOOLEAN: return {to_json(lua_toboolean(lua, index) != 0)};
    case LUA_TNUMBER: return {to_json(lua_tointeger(lua, index))};
    case LUA_TSTRING: return {to_json(string_at(lua, index))};
    case LUA_TTABLE: break;
    default: return {};
    }
    Buffer text;
    append_table(text, lua, lua_absindex(lua, index));
    return {std::string(text.text())};
}

bool ScriptJson::append(Buffer &out, host::Host &host, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    if (type.luaSet == nullptr)
        return false;
    if (const auto status = host.record_script_value(record_, type, value)) {
        if (is_made(*status))
            append_record(out, record_, record_.value());
        return *status == SYSDT_OK;
    }
    if (!lua_)
        lua_ = new_lua_state();
    std::string error;
    if (!is_made(host.push_script_value(lua_.get(), type, value, error)))
        return false;
    append_json(out, script_json(lua_.get(), -1));
    lua_pop(lua_.get(), 1);
    return true;
}

std::string script_text(lua_State *lua, int index) { return text_at(lua, index, 0); }

} // namespace bgpdt::toolkit
