// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The host's own services: addresses, memory, script tables.
#include <arpa/inet.h>

#include <cstdio>
#include <cstdlib>
#include <lua.hpp>
#include <set>

#include "benches.hpp"
#include "floor.hpp"

namespace bgpdt::bench {
namespace {

/// Keeps what it points to from being optimised away.
inline void use(const void *data) { asm volatile("" : : "r"(data) : "memory"); }

using Texts = std::shared_ptr<std::vector<std::string>>;
using Addresses = std::shared_ptr<std::vector<Bytes>>;

/// A pass that is made once ahead, so that its inputs are in the caches.
Case warmed(const char *name, std::function<void()> pass, std::size_t conversions)
{
    return {std::string(name) + "/service", pass, conversions, pass};
}

template <class Read>
Case parse_case(const char *name, const Texts &texts, Read read)
{
    return warmed(
        name,
        [texts, read] {
            u8 address[16];
            for (const std::string &text : *texts) {
                read(text.c_str(), address);
                use(address);
            }
        },
        texts->size());
}

template <class Print>
Case print_case(const char *name, const Addresses &addresses, Print print)
{
    return warmed(
        name,
        [addresses, print] {
            char text[INET6_ADDRSTRLEN];
            for (const Bytes &address : *addresses) {
                print(address.data(), text);
                use(text);
            }
        },
        addresses->size());
}

/// The C library reads no addresses of three groups but by a format.
void read_mac(const char *text, u8 *address)
{
    unsigned short group[3];
    (void)std::sscanf(text, "%4hx-%4hx-%4hx", &group[0], &group[1], &group[2]);
    for (const unsigned short each : group) {
        put(address, static_cast<u16>(each));
        address += sizeof each;
    }
}

// ------------------------------------------------------------------------------------------------ scripts
//
// The floor is what a binding of Lua's own does that knows the table: the same keys and kinds of value in tables with
// room for them all, each value's type asked before it is read, since what is no number is to be refused, and what was
// pushed popped together with its table. Its walk over the steps counts, as the plug-in's walk over its fields does.
// It asks for no room on the stack and nothing of the tables that it has made or tested.
//
// Two things count in the plug-in's column alone: the text of a key that scripts see as text (EVN, SID_STRUCTURE), and
// the growth of a table that is made for fewer fields than it gets (NG_TYPE_3, NG_TYPE_4_2, NG_TYPE_5).

/// The text at an address of its own: the engine knows constant keys by their addresses.
const char *constant(const std::string &text)
{
    static std::set<std::string> texts;
    return texts.insert(text).first->c_str();
}

/// One value of a script table and where it stands.
struct Step {
    enum { number, text, open, close } what;
    const char *key; ///< or the index below
    lua_Integer index = 0;
    lua_Integer value = 0;
    std::string string{};
    int arrays = 0; ///< of a table: its slots
    int records = 0;
    int table = 0;  ///< where the table that holds it stands when all is read
    int pushed = 0; ///< where a table ends: what stands there then, with the table
};
using Recipe = std::vector<Step>;

/// How to make the value on top of the stack.
void record(lua_State *lua, const char *key, lua_Integer index, Recipe &recipe)
{
    if (lua_type(lua, -1) == LUA_TNUMBER) {
        recipe.push_back({Step::number, key, index, lua_tointeger(lua, -1)});
        return;
    }
    if (lua_type(lua, -1) == LUA_TSTRING) {
        recipe.push_back({Step::text, key, index, 0, lua_tostring(lua, -1)});
        return;
    }
    const std::size_t opened = recipe.size();
    const int arrays = static_cast<int>(lua_rawlen(lua, -1));
    int records = 0;
    recipe.push_back({Step::open, key, index});
    for (int i = 1; i <= arrays; ++i) {
        lua_rawgeti(lua, -1, i);
        record(lua, "", i, recipe);
        lua_pop(lua, 1);
    }
    lua_pushnil(lua);
    while (lua_next(lua, -2) != 0) {
        if (lua_type(lua, -2) == LUA_TSTRING) {
            record(lua, constant(lua_tostring(lua, -2)), 0, recipe);
            ++records;
        }
        lua_pop(lua, 1);
    }
    recipe[opened].arrays = arrays;
    recipe[opened].records = records;
    recipe.push_back({Step::close, key, index});
}

/// Where everything stands when it is read, the holder of the value being the stack's only one.
void place(Recipe &recipe)
{
    std::vector<int> open{1};
    int top = 1;
    for (Step &step : recipe) {
        if (step.what == Step::close) {
            step.pushed = top - open.back() + 1;
            top = open.back() - 1;
            open.pop_back();
            continue;
        }
        step.table = open.back();
        ++top;
        if (step.what == Step::open)
            open.push_back(top);
    }
}

/// Stores what is on top, with the key below it if it has an index.
void store(lua_State *lua, const Step &step)
{
    if (step.index != 0)
        lua_settable(lua, -3);
    else
        lua_setfield(lua, -2, step.key);
}

__attribute__((noinline)) void make(lua_State *lua, const Recipe &recipe)
{
    for (const Step &step : recipe) {
        if (step.index != 0 && step.what != Step::close)
            lua_pushinteger(lua, step.index);
        switch (step.what) {
        case Step::number: lua_pushinteger(lua, step.value); break;
        case Step::text: lua_pushstring(lua, step.string.c_str()); break;
        case Step::open: lua_createtable(lua, step.arrays, step.records); continue;
        case Step::close: break;
        }
        store(lua, step);
    }
}

__attribute__((noinline)) bool fetch(lua_State *lua, const Recipe &recipe, u8 *out)
{
    for (const Step &step : recipe) {
        if (step.what == Step::close) {
            lua_pop(lua, step.pushed);
            continue;
        }
        if (step.index != 0) {
            lua_pushinteger(lua, step.index);
            lua_gettable(lua, step.table);
        } else {
            lua_getfield(lua, step.table, step.key);
        }
        switch (step.what) {
        case Step::number: {
            if (lua_type(lua, -1) != LUA_TNUMBER)
                return false;
            const auto number = static_cast<u32>(lua_tointegerx(lua, -1, nullptr));
            std::memcpy(out, &number, sizeof number);
            use(out);
            break;
        }
        case Step::text: {
            if (lua_type(lua, -1) != LUA_TSTRING)
                return false;
            std::size_t length;
            const char *const text = lua_tolstring(lua, -1, &length);
            std::memcpy(out, text, length);
            use(out);
            break;
        }
        default:
            if (lua_type(lua, -1) != LUA_TTABLE)
                return false;
        }
    }
    return true;
}

struct Script {
    lua_State *lua = luaL_newstate();
    std::vector<Bytes> values;
    std::vector<Recipe> recipes;

    Script()
    {
        lua_gc(lua, LUA_GCSTOP);
        lua_checkstack(lua, 100);
    }
    ~Script() { lua_close(lua); }
    Script(const Script &) = delete;
    Script &operator=(const Script &) = delete;
};

constexpr const char *field = "value";
constexpr std::size_t scripted = 200; // values; what is collected of them stays small

} // namespace

void add_host_cases(Cases &cases, std::size_t size)
{
    Random random(seed_of("host"));
    const auto v6_texts = std::make_shared<std::vector<std::string>>();
    const auto v4_texts = std::make_shared<std::vector<std::string>>();
    const auto macs = std::make_shared<std::vector<std::string>>();
    const auto v6 = std::make_shared<std::vector<Bytes>>();
    const auto v4 = std::make_shared<std::vector<Bytes>>();
    for (std::size_t i = 0; i < size; ++i) {
        v6_texts->push_back(random.ipv6());
        v4_texts->push_back(random.ipv4());
        macs->push_back(random.mac());
        Bytes address(16);
        SYSDT_Str2Ipv6(v6_texts->back().c_str(), address.data());
        v6->push_back(address);
        u32 number = 0;
        SYSDT_Str2Ipv4(v4_texts->back().c_str(), &number);
        put(address.data(), number);
        v4->push_back(address);
    }
    cases.push_back(parse_case("host IPv6/parse/ours", v6_texts, SYSDT_Str2Ipv6));
    cases.push_back(parse_case("host IPv6/parse/floor", v6_texts,
                               [](const char *text, u8 *address) { inet_pton(AF_INET6, text, address); }));
    cases.push_back(print_case("host IPv6/print/ours", v6,
                               [](const u8 *address, char *text) { PAL_Inet_ntoa_b_ipv6(address, text); }));
    cases.push_back(print_case("host IPv6/print/floor", v6, [](const u8 *address, char *text) {
        inet_ntop(AF_INET6, address, text, INET6_ADDRSTRLEN);
    }));
    cases.push_back(parse_case("host IPv4/parse/ours", v4_texts, [](const char *text, u8 *address) {
        u32 number;
        SYSDT_Str2Ipv4(text, &number);
        std::memcpy(address, &number, sizeof number);
    }));
    cases.push_back(parse_case("host IPv4/parse/floor", v4_texts,
                               [](const char *text, u8 *address) { inet_pton(AF_INET, text, address); }));
    cases.push_back(print_case("host IPv4/print/ours", v4,
                               [](const u8 *address, char *text) { PAL_IpAddrToStr(get<u32>(address), text); }));
    cases.push_back(print_case("host IPv4/print/floor", v4, [](const u8 *address, char *text) {
        inet_ntop(AF_INET, address, text, INET_ADDRSTRLEN);
    }));
    cases.push_back(parse_case("host MAC/parse/ours", macs, SMP_Str2Mac));
    cases.push_back(parse_case("host MAC/parse/floor", macs, read_mac));
    const auto blocks = [](auto take, auto release) {
        return [take, release] {
            for (int i = 0; i < 1000; ++i) {
                for (const u32 block : {8U, 12U, 89U, 224U, 257U, 513U}) {
                    void *const taken = take(block);
                    use(taken);
                    release(taken);
                }
            }
        };
    };
    cases.push_back({"host memory/take/ours/service",
                     blocks([](u32 bytes) { return SYS_DataTypeMallocByHandle(1, bytes); }, SYS_DataTypeFree), 6000});
    cases.push_back(
        {"host memory/take/floor/service", blocks([](u32 bytes) { return std::malloc(bytes); }, std::free), 6000});
}

void add_script_cases(Cases &cases, const Subject &subject, const std::string &name, const std::vector<Bytes> &values)
{
    const auto script = std::make_shared<Script>();
    script->values.assign(values.begin(),
                          values.begin() + static_cast<std::ptrdiff_t>(std::min(values.size(), scripted)));
    lua_State *const lua = script->lua;
    SYSDT_LuaSet *const set = subject.script_set();
    SYSDT_LuaGet *const get = subject.type->luaGet; // of a row too: scripts are read by the dispatching type
    lua_createtable(lua, 0, 1);
    for (const Bytes &value : script->values) {
        if (set(lua, 1, field, 0, static_cast<u32>(value.size()), value.data()) != SYSDT_OK)
            fail(name + ": not set");
        Recipe &recipe = script->recipes.emplace_back();
        lua_getfield(lua, 1, field);
        record(lua, field, 0, recipe);
        place(recipe);
        lua_settop(lua, 1);
        Bytes again(value.size());
        if (get != nullptr && get(lua, 1, field, 0, static_cast<u32>(again.size()), again.data()) != SYSDT_OK)
            fail(name + ": not read back");
        lua_settop(lua, 1);
    }
    const auto collect = [script] { lua_gc(script->lua, LUA_GCCOLLECT); };
    cases.push_back({name + "/set/ours/script",
                     [script, set] {
                         for (const Bytes &value : script->values)
                             set(script->lua, 1, field, 0, static_cast<u32>(value.size()), value.data());
                     },
                     script->values.size(), collect});
    cases.push_back({name + "/set/floor/script",
                     [script] {
                         for (const Recipe &recipe : script->recipes) {
                             make(script->lua, recipe);
                         }
                     },
                     script->values.size(), collect});
    if (get == nullptr)
        return;
    cases.push_back({name + "/get/ours/script",
                     [script, get] {
                         Bytes out(script->values.front().size());
                         for (std::size_t i = 0; i < script->values.size(); ++i) {
                             get(script->lua, 1, field, 0, static_cast<u32>(out.size()), out.data());
                             lua_settop(script->lua, 1);
                         }
                     },
                     script->values.size(), [script] { make(script->lua, script->recipes.front()); }});
    cases.push_back({name + "/get/floor/script",
                     [script] {
                         Bytes out(512);
                         for (std::size_t i = 0; i < script->values.size(); ++i) {
                             fetch(script->lua, script->recipes.front(), out.data());
                             lua_settop(script->lua, 1);
                         }
                     },
                     script->values.size(), [script] { make(script->lua, script->recipes.front()); }});
}

} // namespace bgpdt::bench
