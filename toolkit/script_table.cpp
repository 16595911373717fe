// SPDX-License-Identifier: Apache-2.0
#include "script_table.hpp"

#include <map>
#include <new>
#include <vector>

#include <lua.hpp>
#include <nlohmann/json.hpp>

#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

using nlohmann::ordered_json;

constexpr std::size_t table_width = 100;

/// The number of entries if the keys are 1 to n, else 0.
lua_Integer array_length(lua_State *lua, int table)
{
    const auto length = static_cast<lua_Integer>(lua_rawlen(lua, table));
    lua_Integer keys = 0;
    for (lua_pushnil(lua); lua_next(lua, table) != 0; lua_pop(lua, 1))
        ++keys;
    return keys == length ? length : 0;
}

ordered_json array_json(lua_State *lua, int table, lua_Integer length)
{
    ordered_json array = ordered_json::array();
    for (lua_Integer i = 1; i <= length; ++i) {
        lua_rawgeti(lua, table, i);
        array.push_back(script_json(lua, -1));
        lua_pop(lua, 1);
    }
    return array;
}

/// The fields by name, each as `form` makes it of the value on top of the stack.
template <class Form>
auto fields_of(lua_State *lua, int table, Form form)
{
    std::map<std::string, decltype(form(lua, -1))> fields;
    for (lua_pushnil(lua); lua_next(lua, table) != 0; lua_pop(lua, 1)) {
        const bool named = lua_type(lua, -2) == LUA_TSTRING;
        fields.emplace(named ? lua_tostring(lua, -2) : std::to_string(lua_tointeger(lua, -2)), form(lua, -1));
    }
    return fields;
}

ordered_json object_json(lua_State *lua, int table)
{
    const auto fields = fields_of(lua, table, script_json);
    return fields.empty() ? ordered_json::object() : ordered_json(fields);
}

/// A name as it stands, an index or any other text in brackets.
std::string key_text(const std::string &key)
{
    constexpr std::string_view digits = "0123456789";
    constexpr std::string_view letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    if (key.find_first_not_of(digits) == std::string::npos && !key.empty())
        return "[" + key + "]";
    const bool name = key.find_first_not_of(letters) == std::string::npos && digits.find(key[0]) == std::string::npos;
    return name && !key.empty() ? key : "[" + lua_quoted(key) + "]";
}

std::string text_at(const ordered_json &value, std::size_t indent);

std::vector<std::string> entry_texts(const ordered_json &table, std::size_t indent)
{
    std::vector<std::string> entries;
    for (const auto &[key, entry] : table.items())
        entries.push_back((table.is_object() ? key_text(key) + " = " : "") + text_at(entry, indent));
    return entries;
}

std::string text_at(const ordered_json &value, std::size_t indent)
{
    if (value.is_null())
        return "nil";
    if (value.is_string())
        return lua_quoted(value.get_ref<const std::string &>());
    if (!value.is_structured())
        return value.dump();
    const std::vector<std::string> entries = entry_texts(value, indent + 4);
    const std::string line = joined(entries, ", ");
    if (indent + line.size() > table_width || line.find('\n') != std::string::npos) {
        const std::string margin(indent, ' ');
        return "{\n    " + margin + joined(entries, ",\n    " + margin) + "\n" + margin + "}";
    }
    return value.is_object() && !entries.empty() ? "{ " + line + " }" : "{" + line + "}";
}

void push_table_json(lua_State *lua, const ordered_json &table)
{
    if (lua_checkstack(lua, 4) == 0)
        throw std::bad_alloc();
    lua_newtable(lua);
    lua_Integer index = 0;
    for (const auto &[key, entry] : table.items()) {
        if (table.is_array())
            lua_pushinteger(lua, ++index);
        else
            push_script_key(lua, key);
        push_script_json(lua, entry);
        lua_rawset(lua, -3);
    }
}

} // namespace

void push_script_key(lua_State *lua, const std::string &key)
{
    if (key.empty() || key.size() > 9 || key.find_first_not_of("0123456789") != std::string::npos)
        lua_pushlstring(lua, key.data(), key.size());
    else
        lua_pushinteger(lua, std::stoi(key));
}

void push_script_json(lua_State *lua, const ordered_json &value)
{
    using JsonKind = ordered_json::value_t;
    switch (value.type()) {
    case JsonKind::boolean: lua_pushboolean(lua, value.get<bool>() ? 1 : 0); return;
    case JsonKind::number_integer:
    case JsonKind::number_unsigned: lua_pushinteger(lua, value.get<lua_Integer>()); return;
    case JsonKind::number_float: lua_pushnumber(lua, value.get<lua_Number>()); return;
    case JsonKind::string: {
        const auto &text = value.get_ref<const std::string &>();
        lua_pushlstring(lua, text.data(), text.size());
        return;
    }
    case JsonKind::array:
    case JsonKind::object: push_table_json(lua, value); return;
    default: lua_pushnil(lua);
    }
}

LuaState new_lua_state()
{
    LuaState lua(luaL_newstate(), lua_close);
    if (!lua)
        throw std::bad_alloc();
    return lua;
}

ordered_json script_json(lua_State *lua, int index)
{
    switch (lua_type(lua, index)) {
    case LUA_TBOOLEAN: return lua_toboolean(lua, index) != 0;
    case LUA_TNUMBER:
        return lua_isinteger(lua, index) ? ordered_json(lua_tointeger(lua, index))
                                         : ordered_json(lua_tonumber(lua, index));
    case LUA_TSTRING: {
        std::size_t length = 0;
        const char *text = lua_tolstring(lua, index, &length);
        return std::string(text, length);
    }
    case LUA_TTABLE: {
        const int table = lua_absindex(lua, index);
        const lua_Integer length = array_length(lua, table);
        return length > 0 ? array_json(lua, table, length) : object_json(lua, table);
    }
    default: return nullptr;
    }
}

std::string json_text(const ordered_json &value)
{
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

std::string script_json_text(lua_State *lua, int index)
{
    if (!lua_istable(lua, index))
        return json_text(script_json(lua, index));
    const int table = lua_absindex(lua, index);
    const lua_Integer length = array_length(lua, table);
    std::vector<std::string> entries;
    for (lua_Integer i = 1; i <= length; ++i) {
        lua_rawgeti(lua, table, i);
        entries.push_back(script_json_text(lua, -1));
        lua_pop(lua, 1);
    }
    if (length > 0)
        return "[" + joined(entries, ",") + "]";
    for (const auto &[name, text] : fields_of(lua, table, script_json_text))
        entries.push_back(json_text(name) + ":" + text);
    return "{" + joined(entries, ",") + "}";
}

std::string script_text(const ordered_json &value) { return text_at(value, 0); }

} // namespace bgpdt::toolkit
