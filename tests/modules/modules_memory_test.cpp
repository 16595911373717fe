// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The modules where memory is out: each request of theirs refused in turn, by the program or by the engine. Lua and
// SQLite have memory of their own here, so that what is refused and counted is the modules'.
#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <lua.hpp>
#include <sqlite3.h>

#include "support/lacking_memory.hpp"
#include "support/vector_file.hpp"

using bgpdt::test::Fault;
using bgpdt::test::Memory;
using bgpdt::test::refuse_in_turn;

namespace {

Memory &modules = bgpdt::test::program_memory;
Memory engine; // what Lua asks for, or SQLite

// ------------------------------------------------------------------------------------------------ SQLite

void *sqlite_allocate(int size) { return engine.grants() ? __libc_malloc(static_cast<std::size_t>(size)) : nullptr; }
void *sqlite_reallocate(void *block, int size)
{
    return engine.grants() ? __libc_realloc(block, static_cast<std::size_t>(size)) : nullptr;
}
int sqlite_size(void *block) { return static_cast<int>(malloc_usable_size(block)); }
int sqlite_round_up(int size) { return (size + 7) & ~7; }
int sqlite_begin(void *) { return SQLITE_OK; }
void sqlite_end(void *) {}

/// A connection, and what it answers without taking memory of the program's.
class Connection {
public:
    Connection()
    {
        sqlite3_open(":memory:", &handle_);
        sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 1, nullptr);
    }
    ~Connection() { sqlite3_close(handle_); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    int load() { return sqlite3_load_extension(handle_, BGPDT_INSTALLED_SQLITE, nullptr, nullptr); }

    /// Keeps the columns of all rows, a blank between two, or why there are none.
    int run(const char *statement)
    {
        size_ = 0;
        const auto row = [](void *self, int count, char **columns, char **) {
            for (int i = 0; i < count; ++i)
                static_cast<Connection *>(self)->append(columns[i] == nullptr ? "NULL" : columns[i]);
            return 0;
        };
        const int status = sqlite3_exec(handle_, statement, row, this, nullptr);
        if (status != SQLITE_OK) {
            size_ = 0;
            append(sqlite3_errmsg(handle_));
        }
        return status;
    }
    std::string answer() const { return {text_, size_}; }

    std::string ask(const char *statement)
    {
        run(statement);
        return answer();
    }

private:
    void append(const char *word)
    {
        const int size = std::snprintf(text_ + size_, sizeof text_ - size_, size_ == 0 ? "%s" : " %s", word);
        size_ = std::min(size_ + static_cast<std::size_t>(size), sizeof text_ - 1);
    }

    sqlite3 *handle_ = nullptr;
    char text_[1024];
    std::size_t size_ = 0;
};

/// A statement of SQL, as sqlite3_mprintf writes it.
template <class... Words>
auto print(const char *form, Words... words)
{
    return std::unique_ptr<char, void (*)(void *)>(sqlite3_mprintf(form, words...), sqlite3_free);
}

class SqlWithoutMemory : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        static const sqlite3_mem_methods methods = {sqlite_allocate, __libc_free,  sqlite_reallocate, sqlite_size,
                                                    sqlite_round_up, sqlite_begin, sqlite_end,        nullptr};
        ASSERT_EQ(sqlite3_config(SQLITE_CONFIG_MALLOC, &methods), SQLITE_OK);
    }
};

constexpr const char *table = R"(
    CREATE TABLE t(type, k);
    INSERT INTO t VALUES
        ('ASNUM', '100'), ('ASNUM', '1.10'), ('ASNUM', 'x'), ('ASNUM', '20'),
        ('COMMUNITY', '64496:1'), ('COMMUNITY', 'no-export'), ('COMMUNITY', '1:1'), ('COMMUNITY', 'no-way'),
        ('CVRFNAME', 'b'), ('CVRFNAME', 'a'), ('CVRFNAME', printf('%.32c', 'a')),
        ('EVNPREFIX', '100:192.0.2.0:24'), ('EVNPREFIX', '99:192.0.2.0:24'), ('EVNPREFIX', '100:32:192.0.2.1'),
        ('BGPLSPREFIX', '[NODE][OSPFv2][IDENTIFIER5][LOCAL[as64496][bgp-ls-identifier192.0.2.1][ospf-area-id0.0.0.0]' ||
            '[igp-router-id192.0.2.2]]'),
        ('BGPLSPREFIX', '[NODE][OSPFv2][IDENTIFIER0][LOCAL[as64496][bgp-ls-identifier192.0.2.1][ospf-area-id0.0.0.0]' ||
            '[igp-router-id192.0.2.2]]');
)";

const struct {
    const char *statement;
    const char *gives;
} statements[] = {
    {"SELECT k FROM t WHERE type = 'ASNUM' ORDER BY k COLLATE bgp_ASNUM", "20 100 1.10 x"},
    {"SELECT k FROM t WHERE type = 'COMMUNITY' ORDER BY k COLLATE bgp_COMMUNITY", "1:1 64496:1 no-export no-way"},
    {"SELECT length(k) FROM t WHERE type = 'CVRFNAME' ORDER BY k COLLATE bgp_CVRFNAME", "1 1 32"},
    {"SELECT k FROM t WHERE type = 'EVNPREFIX' ORDER BY k COLLATE bgp_EVNPREFIX",
     "100:32:192.0.2.1 99:192.0.2.0:24 100:192.0.2.0:24"},
    {"SELECT substr(k, 26, 1) FROM t WHERE type = 'BGPLSPREFIX' ORDER BY k COLLATE bgp_BGPLSPREFIX", "0 5"},
    {"SELECT sum(bgp_valid(type, k)) FROM t", "13"},
    {"SELECT hex(bgp_value('ASNUM', '1.10'))", "0001000A00000001"},
    {"SELECT bgp_text('ASNUM', x'0001000a00000001')", "1.10"},
    {"SELECT bgp_canon('ASNUM', '01.10')", "1.10"},
    {"SELECT bgp_field('VRFRD', bgp_value('VRFRD', '64496:7'), 'administrator')", "64496"},
    {"SELECT bgp_field('EVNPREFIX', bgp_value('EVNPREFIX', '100:32:192.0.2.1'), 'originator')", "192.0.2.1"},
    {"SELECT bgp_json('ASNUM', x'0001000a00000001')", R"({"asNumValue":65546,"asType":1})"},
    {"SELECT bgp_why('ASNUM', '1'), bgp_why('ASNUM', '1x') LIKE 'ASNUM refuses \"1x\"%'", "NULL 1"},
    {"SELECT count(*), size, operations LIKE 'parse print%' FROM bgp_types WHERE name = 'ASNUM'", "1 8 1"},
    {"SELECT about, id FROM bgp_types WHERE name = 'VRFRD'", "route distinguisher 259"},
};

/// What is refused while a statement runs is told, and never to a comparison.
bool meets(Connection &connection, Memory &memory, Fault fault, const char *statement, const std::string &gives,
           bool compares)
{
    memory.refuse(fault);
    const int status = connection.run(statement);
    const bool refused = memory.relent();
    EXPECT_EQ(connection.answer(), status == SQLITE_OK ? gives : "out of memory");
    EXPECT_TRUE(status == SQLITE_OK || (refused && !compares)) << status;
    EXPECT_EQ(connection.ask(statement), gives);
    return refused;
}

TEST_F(SqlWithoutMemory, FirstLoading)
{
    Connection connection;
    EXPECT_GT(refuse_in_turn([&connection](Fault fault) {
                  modules.refuse(fault);
                  const int status = connection.load();
                  const bool refused = modules.relent();
                  EXPECT_TRUE(status == SQLITE_OK || refused);
                  return refused;
              }),
              50);
    EXPECT_EQ(connection.ask(table), "");
    EXPECT_EQ(connection.ask(statements[0].statement), statements[0].gives);
}

/// A connection more where others are. Returns how many requests were refused.
int refuse_in_loading(Memory &memory)
{
    Connection other;
    EXPECT_EQ(other.load(), SQLITE_OK);
    EXPECT_EQ(other.ask(table), "");
    EXPECT_EQ(other.ask(statements[0].statement), statements[0].gives);
    return refuse_in_turn([&](Fault fault) {
        const long before = modules.blocks;
        bool refused = false;
        {
            Connection connection;
            memory.refuse(fault);
            const int status = connection.load();
            refused = memory.relent();
            EXPECT_TRUE(status == SQLITE_OK || refused);
            EXPECT_EQ(other.ask(statements[0].statement), statements[0].gives);
            EXPECT_EQ(connection.load(), SQLITE_OK);
            EXPECT_EQ(connection.ask(table), "");
            EXPECT_EQ(connection.ask(statements[0].statement), statements[0].gives);
        }
        EXPECT_EQ(modules.blocks, before);
        return refused;
    });
}

TEST_F(SqlWithoutMemory, FurtherLoading) { EXPECT_GT(refuse_in_loading(modules), 30); }

TEST_F(SqlWithoutMemory, FurtherLoadingRefusedByTheEngine) { EXPECT_GT(refuse_in_loading(engine), 30); }

/// Every statement. Returns how many requests were refused.
int refuse_in_statements(Memory &memory)
{
    Connection first; // keeps the libraries
    EXPECT_EQ(first.load(), SQLITE_OK);
    int met = 0;
    for (const auto &row : statements) {
        SCOPED_TRACE(row.statement);
        const bool compares = &memory == &modules && std::string(row.statement).find("COLLATE") != std::string::npos;
        met += refuse_in_turn([&](Fault fault) {
            const long before = modules.blocks;
            bool refused = false;
            {
                Connection connection;
                EXPECT_EQ(connection.load(), SQLITE_OK);
                EXPECT_EQ(connection.ask(table), "");
                refused = meets(connection, memory, fault, row.statement, row.gives, compares);
            }
            EXPECT_EQ(modules.blocks, before);
            return refused;
        });
    }
    return met;
}

TEST_F(SqlWithoutMemory, Statements) { EXPECT_GT(refuse_in_statements(modules), 50); }

TEST_F(SqlWithoutMemory, StatementsRefusedByTheEngine) { EXPECT_GT(refuse_in_statements(engine), 500); }

/// Keeps the places of all texts in the order of their type, as comparisons with memory or without find them.
void keep_places(Connection &connection, const std::set<std::string> &types, const char *table_name)
{
    EXPECT_EQ(connection.ask(print("CREATE TABLE %w(place, text)", table_name).get()), "");
    for (const std::string &type : types) {
        const auto statement =
            print("INSERT INTO %w SELECT row_number() OVER (ORDER BY k COLLATE bgp_%w, rowid), rowid "
                  "FROM t WHERE type = %Q",
                  table_name, type.c_str(), type.c_str());
        EXPECT_EQ(connection.ask(statement.get()), "");
    }
}

TEST_F(SqlWithoutMemory, OrdersTheVectorsAlike)
{
    Connection connection;
    ASSERT_EQ(connection.load(), SQLITE_OK);
    ASSERT_EQ(connection.ask("CREATE TABLE t(type, k)"), "");
    std::set<std::string> types;
    for (const bgpdt::test::Line &line : bgpdt::test::read_vector_folder(BGPDT_SOURCE_VECTORS).lines) {
        const bool of_text = line.verb == bgpdt::test::Verb::in || line.verb == bgpdt::test::Verb::bad;
        if (line.row || !of_text)
            continue;
        const auto insert = print("INSERT INTO t VALUES (%Q, %Q)", line.subject.c_str(), line.text.c_str());
        ASSERT_EQ(connection.ask(insert.get()), "");
        types.insert(line.subject);
    }
    modules.refuse({1, false});
    keep_places(connection, types, "anew");
    EXPECT_TRUE(modules.relent()); // every comparison asked for a cache
    const long before = modules.blocks;
    keep_places(connection, types, "known");
    EXPECT_EQ(modules.blocks, before + static_cast<long>(types.size())); // which stay, one a type
    EXPECT_EQ(connection.ask("SELECT count(*) FROM (SELECT * FROM anew EXCEPT SELECT * FROM known)"), "0");
    EXPECT_EQ(connection.ask("SELECT count(*) > 2000 AND count(*) = (SELECT count(*) FROM t) FROM known"), "1");
}

using SqlWithoutMemoryDeathTest = SqlWithoutMemory;

TEST_F(SqlWithoutMemoryDeathTest, HugeTexts)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto compare = [] {
        Connection connection;
        const rlimit limit{rlim_t{350} << 20, rlim_t{350} << 20};
        const bool ready =
            connection.load() == SQLITE_OK && connection.run(table) == SQLITE_OK &&
            connection.run("CREATE TABLE huge(k); INSERT INTO huge VALUES (hex(zeroblob(30 << 20)))") == SQLITE_OK &&
            setrlimit(RLIMIT_AS, &limit) == 0;
        const bool right = connection.ask("SELECT k = k || '1' COLLATE bgp_ASNUM FROM huge") == "0" &&
                           connection.ask(statements[0].statement) == statements[0].gives;
        std::_Exit(ready && right ? 0 : 1);
    };
    EXPECT_EXIT(compare(), testing::ExitedWithCode(0), "");
}

// ------------------------------------------------------------------------------------------------ Lua

void *allocate(void *, void *block, std::size_t old_size, std::size_t size)
{
    if (size == 0) {
        engine.blocks -= block != nullptr ? 1 : 0;
        __libc_free(block);
        return nullptr;
    }
    const bool grows = block == nullptr || size > old_size; // Lua relies on getting less
    if (grows && !engine.grants())
        return nullptr;
    engine.blocks += block == nullptr ? 1 : 0;
    return __libc_realloc(block, size);
}

using Lua = std::unique_ptr<lua_State, void (*)(lua_State *)>;

Lua new_lua()
{
    Lua lua(lua_newstate(allocate, nullptr), lua_close);
    luaL_openlibs(lua.get());
    static_cast<void>(luaL_dostring(lua.get(), "package.cpath = '" BGPDT_INSTALLED_LUA "/?.so'"));
    return lua;
}

struct Result {
    int status;
    bool refused;
    std::string text;
};

/// Calls the function on top of the stack, which stays there, with the fault in the memory.
Result call(lua_State *lua, Memory &memory, Fault fault)
{
    lua_pushvalue(lua, -1);
    memory.refuse(fault);
    const int status = lua_pcall(lua, 0, 1, 0);
    const bool refused = memory.relent();
    Result result{status, refused, luaL_tolstring(lua, -1, nullptr)};
    lua_settop(lua, -3);
    lua_gc(lua, LUA_GCCOLLECT);
    return result;
}

/// Whether the call on top of the stack meets the fault: it then gives what it must, or tells that memory is out; it
/// keeps no block, and gives what it must the next time.
bool meets(lua_State *lua, Memory &memory, Fault fault, const std::string &gives)
{
    const long before = modules.blocks;
    bool refused = false;
    {
        const Result result = call(lua, memory, fault);
        refused = result.refused;
        EXPECT_EQ(result.text, result.status == LUA_OK ? gives : "not enough memory");
        EXPECT_TRUE(result.status == LUA_OK || (refused && result.status == LUA_ERRMEM)) << result.status;
    }
    EXPECT_EQ(modules.blocks, before);
    EXPECT_EQ(call(lua, memory, {}).text, gives);
    return refused;
}

constexpr const char *given = R"(
    local bgp = require "bgp"
    local as = assert(bgp.from_hex("ASNUM", "0001000a00000001"))
    local rd = assert(bgp.parse("VRFRD", "64496:1"))
    local fields = bgp.table(rd)
    local long = assert(bgp.parse("ASNUM_ENHANCE", ("64496 "):rep(255) .. "64497"))
    local blank = setmetatable({}, { __index = function(_, key) return nil, key .. "x" end })
)";

const struct {
    const char *work;
    const char *gives;
} calls[] = {
    {"bgp.parse('VRFRD', '64496:1')", "64496:1"},
    {"bgp.parse('ASNUM', '1.10', 2)", "1.10"},
    {"select(3, bgp.parse('VRFRD', '64496:1x'))", "8"},
    {"select('#', bgp.parse('NONE', '1'))", "2"},
    {"bgp.try_parse('VRFRD', '64496:1')", "64496:1"},
    {"bgp.try_parse('ASNUM', '1.10', 6)", "1.10"},
    {"select('#', bgp.try_parse('VRFRD', '64496:1x'))", "1"},
    {"select('#', bgp.try_parse('NONE', '1'))", "2"},
    {"rd < bgp.parse('VRFRD', '64496:2')", "true"},
    {"rd <= bgp.parse('VRFRD', '64495:2')", "false"},
    {"bgp.from_hex('ASNUM', '0001000a00000001')", "1.10"},
    {"select('#', bgp.from_hex('ASNUM', '00'))", "2"},
    {"bgp.value('VRFRD', fields)", "64496:1"},
    {"select('#', bgp.value('VRFRD', blank))", "2"},
    {"#bgp.table(rd).RdValue", "8"},
    {"bgp.print(rd)", "64496:1"},
    {"#bgp.print(long)", "1535"},
    {"select('#', bgp.print(rd, 0))", "2"},
    {"bgp.check(rd)", "true"},
    {"bgp.compare(rd, bgp.parse('VRFRD', '64496:2'))", "-1"},
    {"#bgp.types() > 8", "true"},
    {"as.type .. as.size .. as.hex .. #as.bytes", "ASNUM80001000a000000018"},
    {"#long.hex", "2560"},
    {"tostring(rd)", "64496:1"},
    {"rd == bgp.parse('VRFRD', '64496:1')", "true"},
};

void refuse_in_calls(Memory &memory)
{
    int met = 0;
    const Lua lua = new_lua();
    for (const auto &[work, gives] : calls) {
        SCOPED_TRACE(work);
        const std::string code = std::string(given) + "return function() return (" + work + ") end";
        ASSERT_EQ(luaL_dostring(lua.get(), code.c_str()), LUA_OK) << lua_tostring(lua.get(), -1);
        ASSERT_EQ(call(lua.get(), memory, {}).text, gives);
        met += refuse_in_turn(
            [&, must = std::string(gives)](Fault fault) { return meets(lua.get(), memory, fault, must); });
        lua_settop(lua.get(), 0);
    }
    EXPECT_GT(met, 50);
}

TEST(LuaWithoutMemory, RefusedByTheEngine) { refuse_in_calls(engine); }

TEST(LuaWithoutMemory, RefusedByTheProgram) { refuse_in_calls(modules); }

TEST(LuaWithoutMemory, Loading)
{
    const Lua other = new_lua(); // keeps the libraries
    ASSERT_EQ(luaL_dostring(other.get(), "bgp = require 'bgp'"), LUA_OK);
    const int met = refuse_in_turn([](Fault fault) {
        const long before = modules.blocks;
        bool refused = false;
        {
            const Lua lua = new_lua();
            EXPECT_EQ(luaL_loadstring(lua.get(), "return #require('bgp').types() > 8"), LUA_OK);
            const Result result = call(lua.get(), engine, fault);
            refused = result.refused;
            EXPECT_EQ(result.text, result.status == LUA_OK ? "true" : "not enough memory");
            EXPECT_EQ(call(lua.get(), engine, {}).text, "true");
        }
        EXPECT_EQ(modules.blocks, before);
        return refused;
    });
    EXPECT_GT(met, 20);
}

} // namespace
