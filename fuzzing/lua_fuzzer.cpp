// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes the module for Lua: calls with whatever values, of which some are what earlier calls gave, with and without
/// memory. A step of an input is a byte for the function, one for which request for memory is refused, then the arguments:
/// a byte for how many, and for each a byte for its kind and what the kind needs, as Pieces has it.

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include <lua.hpp>

#include "bgpdt/bgpdt.hpp"
#include "input.hpp"
#include "pieces.hpp"
#include "property.hpp"

extern "C" int luaopen_bgp(lua_State *lua);

namespace bgpdt::fuzzing {

namespace {

constexpr std::size_t most_steps = 48;
constexpr int kept = 8; ///< results of earlier calls

/// Requests of the engine until one is refused; 0: none is.
struct Memory {
    int left = 0;
    bool refused = false;
};

void *allocate(void *memory, void *block, std::size_t old_size, std::size_t size)
{
    auto &requests = *static_cast<Memory *>(memory);
    if (size == 0) {
        std::free(block);
        return nullptr;
    }
    if ((block == nullptr || size > old_size) && requests.left > 0 && --requests.left == 0) {
        requests.refused = true;
        return nullptr;
    }
    return std::realloc(block, size);
}

constexpr const char *functions[] = {"parse", "from_hex", "value", "table", "print", "check", "compare", "types"};
constexpr const char *members[] = {"type", "size", "hex", "bytes", "none"};

/// The engine; at index 1 the module, at 2 the results of earlier calls.
class Engine {
public:
    explicit Engine(Pieces input) : input_(input), lua_(lua_newstate(allocate, &memory_), lua_close)
    {
        luaL_requiref(lua_.get(), "string", luaopen_string, 0);
        lua_setglobal(lua_.get(), "string");
        luaL_requiref(lua_.get(), "bgp", luaopen_bgp, 0);
        lua_newtable(lua_.get());
    }

    void run()
    {
        for (std::size_t i = 0; i < most_steps && !input_.empty(); ++i)
            step();
    }

private:
    void step()
    {
        const std::uint8_t choice = input_.byte();
        const std::uint8_t request = input_.byte();
        push_function(choice);
        const int arguments = input_.byte() % 4;
        for (int i = 0; i < arguments; ++i)
            push_argument();
        memory_ = {request < 64 ? request : 0, false};
        const int status = lua_pcall(lua_.get(), arguments, LUA_MULTRET, 0);
        memory_.left = 0;
        require_outcome(status);
        if (status == LUA_OK && lua_gettop(lua_.get()) > 2 && !lua_isnil(lua_.get(), 3)) {
            lua_pushvalue(lua_.get(), 3);
            lua_rawseti(lua_.get(), 2, 1 + choice % kept);
        }
        lua_settop(lua_.get(), 2);
    }

    void push_function(std::uint8_t choice)
    {
        constexpr std::size_t more = 3; // what values can do by themselves
        const std::size_t which = choice % (std::size(functions) + more);
        if (which < std::size(functions))
            lua_getfield(lua_.get(), 1, functions[which]);
        else
            lua_pushcfunction(lua_.get(), which % more == 0 ? to_text : which % more == 1 ? equals : member);
    }

    static int to_text(lua_State *lua)
    {
        luaL_tolstring(lua, 1, nullptr);
        return 1;
    }
    static int equals(lua_State *lua)
    {
        lua_settop(lua, 2);
        lua_pushboolean(lua, lua_compare(lua, 1, 2, LUA_OPEQ));
        return 1;
    }
    static int member(lua_State *lua)
    {
        if (!lua_isuserdata(lua, 1))
            return 0;
        for (const char *name : members)
            lua_getfield(lua, 1, name);
        return std::size(members);
    }

    void push_argument()
    {
        switch (input_.byte() % 8) {
        case 0: lua_pushnil(lua_.get()); break;
        case 1: lua_pushinteger(lua_.get(), input_.byte()); break;
        case 2: lua_pushboolean(lua_.get(), input_.byte() % 2); break;
        case 3: push_type(); break;
        case 4: lua_rawgeti(lua_.get(), 2, 1 + input_.byte() % kept); break;
        case 5: push_changed_table(); break;
        default: push_text(input_.piece()); break;
        }
    }
    void push_text(const std::string &text) { lua_pushlstring(lua_.get(), text.data(), text.size()); }
    void push_type()
    {
        const std::size_t count = bgpdt_type_count(library());
        const bgpdt_text name = bgpdt_about(bgpdt_type_at(library(), input_.byte() % count))->name;
        push_text({name.data, name.size});
    }
    /// What an earlier call gave, if it is a table, with a field set.
    void push_changed_table()
    {
        lua_rawgeti(lua_.get(), 2, 1 + input_.byte() % kept);
        if (!lua_istable(lua_.get(), -1)) {
            lua_pop(lua_.get(), 1);
            lua_newtable(lua_.get());
        }
        push_text(input_.piece());
        lua_pushinteger(lua_.get(), input_.byte());
        lua_rawset(lua_.get(), -3);
    }

    /// An error is one of the engine's own: of the arguments, or of its memory. What is refused is nil and a sentence.
    void require_outcome(int status)
    {
        lua_State *const lua = lua_.get();
        require(lua_gettop(lua) >= 2 && lua_istable(lua, 2), "a call leaves the stack as it was, but for its results");
        if (status == LUA_OK)
            return require_results();
        require(lua_gettop(lua) == 3 && lua_type(lua, 3) == LUA_TSTRING, "an error is a sentence");
        const std::string_view message = lua_tostring(lua, 3);
        const bool no_memory = message == "not enough memory";
        require(!no_memory || memory_.refused, "memory is out only where it is refused");
        require(no_memory || message.find("bad argument") != message.npos, "an error is of an argument");
    }
    void require_results()
    {
        lua_State *const lua = lua_.get();
        if (lua_gettop(lua) > 3 && lua_isnil(lua, 3) && lua_type(lua, 4) == LUA_TSTRING)
            require(lua_rawlen(lua, 4) != 0 && lua_gettop(lua) <= 5,
                    "what is refused has a sentence, and perhaps a place");
    }

    static const bgpdt_library *library()
    {
        static const bgpdt_library *const opened = [] {
            bgpdt_library *fresh = nullptr;
            require(bgpdt_open(nullptr, &fresh, nullptr) == BGPDT_OK, "the library opens");
            return fresh;
        }();
        return opened;
    }

    Pieces input_;
    Memory memory_;
    std::unique_ptr<lua_State, void (*)(lua_State *)> lua_;
};

void run(std::span<const std::uint8_t> input)
{
    Engine(Pieces(input)).run(); // modes that are asked for first stay
    require_no_memory_taken([&] { Engine(Pieces(input)).run(); });
}

} // namespace

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt::fuzzing;
    if (size <= most_bytes)
        run({data, size});
    return 0;
}
