// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Script tables that are written without an engine are those that an engine has, for every value of the vectors.
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <lua.hpp>

#include "host/script_record.hpp"
#include "toolkit/script_table.hpp"
#include "vector_values.hpp"

namespace {

using namespace bgpdt;
using namespace bgpdt::toolkit;
using test::session;
using test::values;

const LuaState &engine()
{
    static const LuaState lua = new_lua_state();
    return lua;
}

std::optional<std::string> by_engine(const SYSDT_Record &type, const Bytes &value)
{
    std::string error;
    if (session().host().push_script_value(engine().get(), type, value, error) != SYSDT_OK)
        return {};
    std::string json = script_json(engine().get(), -1).text;
    lua_pop(engine().get(), 1);
    return json;
}

TEST(ScriptJson, IsTheEngines)
{
    ScriptJson script;
    std::size_t tables = 0;
    for (const auto &[name, list] : values()) {
        const SYSDT_Record &type = session().type(name);
        for (const Bytes &value : list) {
            Buffer json;
            const bool made = script.append(json, session().host(), type, value);
            const auto expected = type.luaSet == nullptr ? std::nullopt : by_engine(type, value);
            ASSERT_EQ(made ? std::optional(std::string(json.text())) : std::nullopt, expected) << name;
            tables += made ? 1 : 0;
        }
    }
    EXPECT_GT(tables, 500U);
}

TEST(ScriptJson, NeedsNoEngineForTheRoutersTypes)
{
    host::ScriptRecord record;
    for (const auto &[name, list] : values()) {
        const SYSDT_Record &type = session().type(name);
        for (const Bytes &value : list)
            if (type.luaSet != nullptr) {
                ASSERT_TRUE(session().host().record_script_value(record, type, value)) << name;
            }
    }
}

/// What the type's LuaSet makes, a table that only an engine can hold among it.
template <class Work>
std::string json_of(ScriptJson &script, Work)
{
    SYSDT_Record type{};
    type.luaSet = [](void *state, std::int32_t table, const char *name, std::uint32_t, std::uint32_t, const void *) {
        return Work()(state, table, name);
    };
    Buffer json;
    return script.append(json, session().host(), type, Bytes{0}) ? std::string(json.text()) : "none";
}

constexpr std::uint32_t done = SYSDT_OK;

TEST(ScriptJson, AsksAnEngineForWhatNoRecordHolds)
{
    ScriptJson script;
    EXPECT_EQ(json_of(script, [](void *, std::int32_t, const char *) { return done; }), "null");
    const auto of_two = [](void *state, std::int32_t table, const char *name) {
        SYSDT_SPTI_CreateTable(state, 0, 2);
        for (const std::uint32_t position : {1U, 3U}) {
            SYSDT_SPTI_PushUInt(state, position);
            SYSDT_SPTI_PushLString(state, "a\0b", 3);
            SYSDT_SPTI_SetTable(state, -3);
        }
        SYSDT_SPTI_SetField(state, table, name);
        return done;
    };
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(json_of(script, of_two), R"({"1":"a\u0000b","3":"a\u0000b"})");
    EXPECT_EQ(json_of(script,
                      [](void *state, std::int32_t table, const char *name) {
                          SYSDT_SPTI_CreateTable(state, 0, 1);
                          SYSDT_SPTI_PushLString(state, "a\0b", 3);
                          SYSDT_SPTI_CreateTable(state, 0, 0);
                          SYSDT_SPTI_SetTable(state, -3);
                          SYSDT_SPTI_SetField(state, table, name);
                          return done;
                      }),
              R"({"a\u0000b":{}})");
    EXPECT_EQ(json_of(script,
                      [](void *state, std::int32_t, const char *) {
                          SYSDT_SPTI_Pop(state, 10);
                          return done;
                      }),
              "none");
}

TEST(ScriptJson, HasNoTableOfWhatIsRefused)
{
    ScriptJson script;
    EXPECT_EQ(json_of(script, [](void *, std::int32_t, const char *) { return std::uint32_t{SYSDT_ERR_FAIL}; }),
              "none");
    const auto refused_by_an_engine = [](void *state, std::int32_t table, const char *name) {
        SYSDT_SPTI_GetField(state, table, name);
        return std::uint32_t{SYSDT_ERR_FAIL};
    };
    EXPECT_EQ(json_of(script, refused_by_an_engine), "none");
    EXPECT_EQ(json_of(script,
                      [](void *state, std::int32_t table, const char *name) {
                          SYSDT_SPTI_CreateTable(state, 0, 0);
                          SYSDT_SPTI_SetField(state, table, name);
                          return done;
                      }),
              "{}");
}

/// Memory that is out says nothing of the value.
TEST(ScriptJson, IsNotMadeWithoutMemory)
{
    ScriptJson script;
    const auto without = [](void *, std::int32_t, const char *) { return std::uint32_t{SYSDT_ERR_NO_MEMORY}; };
    EXPECT_THROW(json_of(script, without), std::bad_alloc);
}

// ------------------------------------------------------------------------------------------------ an engine's values

/// What the script returns, as text and as JSON.
std::pair<std::string, std::string> shown(const std::string &script)
{
    EXPECT_EQ(luaL_dostring(engine().get(), script.c_str()), LUA_OK) << lua_tostring(engine().get(), -1);
    std::pair<std::string, std::string> both{script_text(engine().get(), -1), script_json(engine().get(), -1).text};
    lua_pop(engine().get(), 1);
    return both;
}

using Both = std::pair<std::string, std::string>;

TEST(ScriptValue, IsShownAsLuaReadsIt)
{
    EXPECT_EQ(shown("return 7"), Both("7", "7"));
    EXPECT_EQ(shown("return -9223372036854775807 - 1"), Both("-9223372036854775808", "-9223372036854775808"));
    EXPECT_EQ(shown("return 'a\"b'"), Both(R"("a\"b")", R"("a\"b")"));
    EXPECT_EQ(shown("return true"), Both("true", "true"));
    EXPECT_EQ(shown("return false"), Both("false", "false"));
    EXPECT_EQ(shown("return nil"), Both("nil", "null"));
    EXPECT_EQ(shown("return {}"), Both("{}", "{}"));
    EXPECT_EQ(shown("return {1, {}}"), Both("{1, {}}", "[1,{}]"));
    EXPECT_EQ(shown("return {b = 1, a = {x = 2}}"), Both("{ a = { x = 2 }, b = 1 }", R"({"a":{"x":2},"b":1})"));
}

TEST(ScriptValue, HasKeysOfAnySort)
{
    EXPECT_EQ(shown("return {[0] = 1}"), Both("{ [0] = 1 }", R"({"0":1})"));
    EXPECT_EQ(shown("return {[1] = 1, a_1 = 2}"), Both("{ [1] = 1, a_1 = 2 }", R"({"1":1,"a_1":2})"));
    EXPECT_EQ(shown("return {[''] = 1}"), Both(R"({ [""] = 1 })", R"({"":1})"));
    EXPECT_EQ(shown("return {['1a'] = 1}"), Both(R"({ ["1a"] = 1 })", R"({"1a":1})"));
    EXPECT_EQ(shown("return {['a-b'] = 1}"), Both(R"({ ["a-b"] = 1 })", R"({"a-b":1})"));
}

/// What does not fit a line of 100 characters stands one entry a line.
TEST(ScriptValue, IsBrokenWhereALineEnds)
{
    const std::string fits = '"' + std::string(98, 'x') + '"';
    const std::string longer = '"' + std::string(99, 'x') + '"';
    EXPECT_EQ(shown("return {" + fits + "}").first, "{" + fits + "}");
    EXPECT_EQ(shown("return {" + longer + "}").first, "{\n    " + longer + "\n}");
    EXPECT_EQ(shown("return {" + fits + ", 7}").first, "{\n    " + fits + ",\n    7\n}");
    EXPECT_EQ(shown("return {a = {" + fits + "}, b = 7}").first,
              "{\n    a = {\n        " + fits + "\n    },\n    b = 7\n}");
}

} // namespace
