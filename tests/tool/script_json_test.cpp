// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Script tables that are written without an engine are those that an engine has, for every value of the vectors.
#include <memory>
#include <optional>
#include <string>

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

/// A type whose LuaSet is the work.
template <class Work>
std::optional<std::uint32_t> recorded(host::ScriptRecord &record, Work)
{
    SYSDT_Record type{};
    type.luaSet = [](void *state, std::int32_t table, const char *name, std::uint32_t, std::uint32_t, const void *) {
        return Work()(state, table, name);
    };
    return session().host().record_script_value(record, type, Bytes{0});
}

constexpr std::uint32_t done = SYSDT_OK;

TEST(ScriptRecord, HoldsWhatIsStored)
{
    host::ScriptRecord record;
    const auto status = recorded(record, [](void *state, std::int32_t table, const char *name) {
        SYSDT_SPTI_PushLString(state, "a\0b", 3);
        SYSDT_SPTI_PushUInt(state, 7);
        SYSDT_SPTI_Pop(state, 1);
        SYSDT_SPTI_SetField(state, table, name);
        return done;
    });
    ASSERT_EQ(status, done);
    EXPECT_EQ(record.value().kind, host::ScriptRecord::Kind::text);
    EXPECT_EQ(record.text(record.value()), std::string_view("a\0b", 3));
}

TEST(ScriptRecord, AnswersTheTypesStatus)
{
    host::ScriptRecord record;
    const auto refuse = [](void *, std::int32_t, const char *) { return std::uint32_t{SYSDT_ERR_FAIL}; };
    EXPECT_EQ(recorded(record, refuse), std::uint32_t{SYSDT_ERR_FAIL});
}

/// What an engine may take, or raise an error for.
TEST(ScriptRecord, LeavesTheRestToAnEngine)
{
    host::ScriptRecord record;
    const auto left = [&record](auto work) { return !recorded(record, work).has_value(); };
    using Name = const char *;
    EXPECT_TRUE(left([](void *, std::int32_t, Name) { return done; })) << "no value";
    EXPECT_TRUE(left([](void *state, std::int32_t, Name) {
        SYSDT_SPTI_Pop(state, 2);
        return done;
    })) << "more popped than there is";
    EXPECT_TRUE(left([](void *state, std::int32_t table, Name name) {
        SYSDT_SPTI_SetField(state, table, name);
        return done;
    })) << "a field without a value";
    EXPECT_TRUE(left([](void *state, std::int32_t table, Name name) {
        SYSDT_SPTI_PushUInt(state, 1);
        SYSDT_SPTI_SetField(state, table, name);
        SYSDT_SPTI_PushUInt(state, 2);
        SYSDT_SPTI_SetField(state, table, name);
        return done;
    })) << "a field twice";
    EXPECT_TRUE(left([](void *state, std::int32_t table, Name name) {
        SYSDT_SPTI_CreateTable(state, 1, 0);
        SYSDT_SPTI_PushUInt(state, 2);
        SYSDT_SPTI_PushUInt(state, 2);
        SYSDT_SPTI_SetTable(state, -3);
        SYSDT_SPTI_SetField(state, table, name);
        return done;
    })) << "an array that begins at 2";
    EXPECT_TRUE(left([](void *state, std::int32_t table, Name name) {
        SYSDT_SPTI_GetField(state, table, name);
        return SYSDT_SPTI_IsTable(state, -1) != 0 ? done : std::uint32_t{SYSDT_ERR_PARAM};
    })) << "what is read";
}

} // namespace
