// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "json_table.hpp"

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include <lua.hpp>

#include "strict_sax.hpp"

namespace bgpdt::toolkit {
namespace {

/// Digits alone are an index.
void push_key(lua_State *lua, const std::string &key)
{
    if (key.empty() || key.size() > 9 || key.find_first_not_of("0123456789") != std::string::npos)
        lua_pushlstring(lua, key.data(), key.size());
    else
        lua_pushinteger(lua, std::stoi(key));
}

/// Where an engine function finds what it is to do.
constexpr int work_index = 1;

template <class Work>
int run_work(lua_State *lua)
{
    (*static_cast<const Work *>(lua_touserdata(lua, work_index)))(lua);
    return lua_gettop(lua) - work_index;
}

/// Pushes values and stores them, each by a protected call: an error of the engine would cross the parser.
class Pusher final : public StrictSax {
public:
    explicit Pusher(lua_State *lua) : lua_(lua)
    {
        constexpr int slots_of_level = 2; // a table, and the key that comes next
        constexpr int slots_of_call = 8;
        if (lua_checkstack(lua, slots_of_level * static_cast<int>(most_levels) + slots_of_call) == 0)
            throw std::bad_alloc();
    }

    bool null() override
    {
        return put([](lua_State *lua) { lua_pushnil(lua); });
    }
    bool boolean(bool value) override
    {
        return put([value](lua_State *lua) { lua_pushboolean(lua, value ? 1 : 0); });
    }
    bool number_integer(std::int64_t value) override
    {
        return put([value](lua_State *lua) { lua_pushinteger(lua, value); });
    }
    bool number_unsigned(std::uint64_t value) override { return number_integer(static_cast<std::int64_t>(value)); }
    bool number_float(double value, const std::string &) override
    {
        return put([value](lua_State *lua) { lua_pushnumber(lua, value); });
    }
    bool string(std::string &value) override
    {
        return put([&value](lua_State *lua) { lua_pushlstring(lua, value.data(), value.size()); });
    }

protected:
    bool begin_member(std::string &name) override
    {
        std::vector<std::string> &names = open_.back().names;
        if (std::ranges::find(names, name) != names.end())
            return false;
        names.push_back(name);
        push([&name](lua_State *lua) { push_key(lua, name); });
        return true;
    }

    void begin(bool object) override
    {
        push([](lua_State *lua) { lua_newtable(lua); });
        open_.push_back({object, 0, {}});
    }

    void end() override
    {
        open_.pop_back();
        store();
    }

private:
    /// A table on the stack, and what stands in it already.
    struct Open {
        bool object;
        lua_Integer entries;
        std::vector<std::string> names;
    };

    template <class Work>
    bool put(const Work &work)
    {
        push(work);
        store();
        return true;
    }

    template <class Work>
    void push(const Work &work)
    {
        call(work, 0, 1);
    }

    /// Puts what is on top of the stack where it belongs.
    void store()
    {
        if (open_.empty())
            return;
        Open &in = open_.back();
        const lua_Integer entry = ++in.entries;
        const int table = lua_gettop(lua_) - (in.object ? 2 : 1);
        lua_pushvalue(lua_, table);
        lua_insert(lua_, table + 1); // the table, the table, the key if there is one, the value
        if (in.object) {
            call([](lua_State *lua) { lua_rawset(lua, work_index + 1); }, 3, 0);
        } else {
            call([entry](lua_State *lua) { lua_rawseti(lua, work_index + 1, entry); }, 2, 0);
        }
    }

    /// Runs the work as an engine function behind what it is to do, with the arguments on top of the stack.
    template <class Work>
    void call(const Work &work, int arguments, int results)
    {
        lua_pushcfunction(lua_, run_work<Work>);
        lua_insert(lua_, -1 - arguments);
        lua_pushlightuserdata(lua_, const_cast<Work *>(&work));
        lua_insert(lua_, -1 - arguments);
        if (lua_pcall(lua_, arguments + 1, results, 0) != LUA_OK)
            throw std::bad_alloc(); // nothing else goes wrong
    }

    lua_State *lua_;
    std::vector<Open> open_;
};

} // namespace

void push_json(lua_State *lua, std::string_view text)
{
    Pusher pusher(lua);
    if (!nlohmann::ordered_json::sax_parse(text, &pusher))
        throw Refusal("the script table is no JSON");
}

} // namespace bgpdt::toolkit
