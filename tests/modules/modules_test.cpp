// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The modules for Lua and SQLite in one program: several threads, connections and engines, which come and go.
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <lua.hpp>
#include <sqlite3.h>

namespace {

/// A connection with the extension; what fails is told by ask().
class Database {
public:
    Database()
    {
        sqlite3_open_v2(":memory:", &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
                        nullptr);
        sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 1, nullptr);
        char *message = nullptr;
        sqlite3_load_extension(handle_, BGPDT_INSTALLED_SQLITE, nullptr, &message);
        failure_ = message == nullptr ? "" : message;
        sqlite3_free(message);
    }
    ~Database() { sqlite3_close(handle_); }
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// The columns of all rows, a blank between two.
    std::string ask(const std::string &statements)
    {
        if (!failure_.empty())
            return failure_;
        std::string answer;
        const auto row = [](void *to, int count, char **columns, char **) {
            auto &text = *static_cast<std::string *>(to);
            for (int i = 0; i < count; ++i)
                text.append(text.empty() ? "" : " ").append(columns[i] == nullptr ? "NULL" : columns[i]);
            return 0;
        };
        const int result = sqlite3_exec(handle_, statements.c_str(), row, &answer, nullptr);
        return result == SQLITE_OK ? answer : sqlite3_errmsg(handle_);
    }

private:
    sqlite3 *handle_ = nullptr;
    std::string failure_;
};

/// What the script returns, in an engine of its own that can require the module.
std::string run_lua(const std::string &script)
{
    const std::unique_ptr<lua_State, void (*)(lua_State *)> lua(luaL_newstate(), lua_close);
    luaL_openlibs(lua.get());
    const std::string whole = std::string("package.cpath = '" BGPDT_INSTALLED_LUA "/?.so'\n") + script;
    static_cast<void>(luaL_dostring(lua.get(), whole.c_str()));
    const char *answer = lua_tostring(lua.get(), -1);
    return answer == nullptr ? "" : answer;
}

constexpr const char *script = R"(
    local bgp = require "bgp"
    local key = assert(bgp.parse("VRFRT", "64496:1"))
    assert(bgp.value("VRFRT", bgp.table(key)) == key)
    return tostring(key) .. " " .. select(3, bgp.parse("VRFRT", "64496:1x"))
)";
constexpr const char *query = R"(
    CREATE TABLE t(k TEXT COLLATE bgp_ASNUM UNIQUE);
    INSERT INTO t VALUES ('100'), ('20'), ('3'), ('1.10');
    SELECT k FROM t WHERE bgp_valid('ASNUM', k) ORDER BY k;
)";
constexpr const char *in_order = "3 20 100 1.10";

void in_threads(unsigned count, const std::function<void()> &work)
{
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < count; ++i)
        threads.emplace_back(work);
    for (std::thread &thread : threads)
        thread.join();
}

TEST(Modules, ComeAndGoInThreads)
{
    in_threads(8, [] {
        for (int i = 0; i < 25; ++i) {
            EXPECT_EQ(run_lua(script), "64496:1 8");
            EXPECT_EQ(Database().ask(query), in_order);
        }
    });
}

TEST(Modules, ConnectionsDoNotMeet)
{
    Database first;
    auto second = std::make_unique<Database>();
    EXPECT_EQ(first.ask(query), in_order);
    EXPECT_EQ(second->ask(query), in_order);
    second.reset();
    EXPECT_EQ(first.ask("SELECT k FROM t ORDER BY k DESC"), "1.10 100 20 3");
}

TEST(Modules, ThreadsShareAConnection)
{
    Database database;
    EXPECT_EQ(database.ask(query), in_order);
    in_threads(4, [&] {
        for (int i = 0; i < 500; ++i)
            EXPECT_EQ(database.ask("SELECT k FROM t ORDER BY k"), in_order);
    });
}

TEST(Modules, SqliteSortsInThreads)
{
    Database database;
    EXPECT_EQ(database.ask(R"(
        PRAGMA threads = 4;
        CREATE TABLE t(k TEXT COLLATE bgp_VRFRD, n INTEGER);
        WITH RECURSIVE i(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM i WHERE n < 199999)
        INSERT INTO t SELECT printf('%d:%d', 1 + n * 7919 % 200000 / 1000, n * 7919 % 1000), n * 7919 % 200000 FROM i;
        CREATE INDEX by_key ON t(k);
        PRAGMA integrity_check;
        SELECT count(*) FROM (SELECT n, lag(n) OVER (ORDER BY k) AS before FROM t) WHERE n < before;
    )"),
              "4 ok 0");
}

std::unique_ptr<Database> last; // is gone only after what loading the extension set up for the exit

TEST(ModulesDeathTest, QueriesAtTheExit)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto leave = [] {
        static_cast<void>(std::atexit([] {
            const bool right = last->ask("SELECT k FROM t ORDER BY k") == in_order;
            last.reset();
            std::_Exit(right && run_lua(script) == "64496:1 8" ? 0 : 1);
        }));
        last = std::make_unique<Database>();
        static_cast<void>(last->ask(query));
        std::exit(2); // NOLINT(concurrency-mt-unsafe)
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "");
}

TEST(Modules, TextsOfAnotherEncoding)
{
    Database database;
    EXPECT_EQ(database.ask(std::string("PRAGMA encoding = 'UTF-16le';") + query), in_order);
}

} // namespace
