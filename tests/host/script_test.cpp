// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <lua.hpp>
#include <string>

#include "host/host.hpp"
#include "script_engine.hpp"

namespace {

class Script : public testing::Test {
protected:
    Script() { luaL_openlibs(lua); }

    /// Leaves the script's results on the stack, the only values there.
    void run(const char *script)
    {
        lua_settop(lua, 0);
        ASSERT_EQ(luaL_dostring(lua, script), LUA_OK) << lua_tostring(lua, -1);
    }

    /// Runs a function that misuses the stack; returns the error's text, empty without one.
    std::string error_of(lua_CFunction function)
    {
        lua_pushcfunction(lua, function);
        if (lua_pcall(lua, 0, 0, 0) == LUA_OK)
            return {};
        std::string text = lua_tostring(lua, -1);
        lua_pop(lua, 1);
        return text;
    }

    const Engine owner{luaL_newstate()};
    lua_State *const lua = owner.get();
};

TEST_F(Script, PushesValuesOfTheirType)
{
    SYSDT_SPTI_PushUInt(lua, 4294967295);
    SYSDT_SPTI_PushInt64(lua, std::numeric_limits<std::int64_t>::min());
    SYSDT_SPTI_PushString(lua, "vpn1");
    SYSDT_SPTI_PushLString(lua, "a\0b", 3);
    SYSDT_SPTI_PushLString(lua, "", 0);
    SYSDT_SPTI_CreateTable(lua, 2, 3);
    SYSDT_SPTI_CreateTable(lua, -1, -1);
    ASSERT_EQ(SYSDT_SPTI_GetTop(lua), 7);
    EXPECT_EQ(lua_tointeger(lua, 1), 4294967295);
    EXPECT_EQ(lua_tointeger(lua, 2), std::numeric_limits<std::int64_t>::min());
    EXPECT_STREQ(lua_tostring(lua, 3), "vpn1");
    std::size_t length = 0;
    const char *const text = lua_tolstring(lua, 4, &length);
    EXPECT_EQ(std::string(text, length), std::string("a\0b", 3));
    EXPECT_STREQ(lua_tostring(lua, 5), "");
    EXPECT_TRUE(lua_istable(lua, 6));
    EXPECT_TRUE(lua_istable(lua, 7));
    SYSDT_SPTI_Pop(lua, 0);
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 7);
    SYSDT_SPTI_Pop(lua, 3);
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 4);
}

TEST_F(Script, StoresFields)
{
    SYSDT_SPTI_CreateTable(lua, 0, 2);
    SYSDT_SPTI_PushUInt(lua, 100);
    SYSDT_SPTI_SetField(lua, 1, "positive");
    SYSDT_SPTI_PushUInt(lua, 200);
    SYSDT_SPTI_SetField(lua, -2, "negative"); // the value is on top
    SYSDT_SPTI_PushUInt(lua, 1);
    SYSDT_SPTI_PushUInt(lua, 300);
    SYSDT_SPTI_SetTable(lua, -3);
    ASSERT_EQ(SYSDT_SPTI_GetTop(lua), 1);
    lua_setglobal(lua, "t");
    run("return t.positive, t.negative, t[1], next(t, next(t, next(t, next(t))))");
    ASSERT_EQ(SYSDT_SPTI_GetTop(lua), 4);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, 1), 100u);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, 2), 200u);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, 3), 300u);
    EXPECT_TRUE(lua_isnil(lua, 4)); // three fields and no more
}

TEST_F(Script, FetchesFields)
{
    run("return {a = 1, b = 'x', [1] = 5, [2] = {}}");
    SYSDT_SPTI_GetField(lua, 1, "a");
    EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, -1), 1u);
    SYSDT_SPTI_GetField(lua, -2, "b");
    EXPECT_STREQ(SYSDT_SPTI_ToString(lua, -1), "x");
    SYSDT_SPTI_GetField(lua, 1, "c");
    EXPECT_TRUE(lua_isnil(lua, -1));
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 4);
    SYSDT_SPTI_PushUInt(lua, 1);
    SYSDT_SPTI_GetTable(lua, 1);
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 5); // in the key's place
    EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, -1), 5u);
    SYSDT_SPTI_PushUInt(lua, 2);
    SYSDT_SPTI_GetTable(lua, -6);
    EXPECT_EQ(SYSDT_SPTI_IsTable(lua, -1), 1u);
    SYSDT_SPTI_PushUInt(lua, 3);
    SYSDT_SPTI_GetTable(lua, 1);
    EXPECT_TRUE(lua_isnil(lua, -1));
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 7);
}

TEST_F(Script, AskingWhatIsNoTableGivesNil)
{
    // Strings have methods in Lua, but are no tables.
    run("return 'text', 7, nil, true, print");
    ASSERT_EQ(SYSDT_SPTI_GetTop(lua), 5);
    for (const int index : {1, 2, 3, 4, 5, 6, 100, -5, -6, -100, 0}) {
        SYSDT_SPTI_GetField(lua, index, "len");
        EXPECT_TRUE(lua_isnil(lua, -1)) << index;
        lua_settop(lua, 5);
        SYSDT_SPTI_PushString(lua, "len");
        SYSDT_SPTI_GetTable(lua, index);
        EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 6) << index;
        EXPECT_TRUE(lua_isnil(lua, -1)) << index;
        lua_settop(lua, 5);
    }
}

TEST_F(Script, TypesAreNotCoerced)
{
    run("return {}, 7, 7.5, '7', nil, true, print");
    const struct {
        bool table, number, string;
    } types[] = {{true, false, false},  {false, true, false},  {false, true, false}, {false, false, true},
                 {false, false, false}, {false, false, false}, {false, false, false}};
    for (int index = 1; index <= 7; ++index) {
        for (const int place : {index, index - 8}) {
            const auto &expected = types[index - 1];
            EXPECT_EQ(SYSDT_SPTI_IsTable(lua, place), expected.table ? 1u : 0u) << place;
            EXPECT_EQ(SYSDT_SPTI_IsNumber(lua, place), expected.number ? 1u : 0u) << place;
            EXPECT_EQ(SYSDT_SPTI_IsString(lua, place), expected.string ? 1u : 0u) << place;
        }
    }
    for (const int place : {0, 8, -8, 1000, -1000}) {
        EXPECT_EQ(SYSDT_SPTI_IsTable(lua, place), 0u) << place;
        EXPECT_EQ(SYSDT_SPTI_IsNumber(lua, place), 0u) << place;
        EXPECT_EQ(SYSDT_SPTI_IsString(lua, place), 0u) << place;
    }
    EXPECT_EQ(SYSDT_SPTI_ToString(lua, 2), nullptr);
    EXPECT_EQ(SYSDT_SPTI_ToString(lua, 5), nullptr);
    EXPECT_EQ(SYSDT_SPTI_ToString(lua, 100), nullptr);
    EXPECT_STREQ(SYSDT_SPTI_ToString(lua, 4), "7");
    EXPECT_EQ(lua_type(lua, 2), LUA_TNUMBER); // still
}

TEST_F(Script, NothingIsSeenBelowTheStack)
{
    const auto look = [](lua_State *l) {
        for (int index = -1; index > -10; --index) { // over the caller's values, too
            EXPECT_EQ(SYSDT_SPTI_IsTable(l, index), 0u) << index;
            EXPECT_EQ(SYSDT_SPTI_ObjLen(l, index), 0u) << index;
        }
        return 0;
    };
    run("return {1}, {1}");
    EXPECT_EQ(error_of(look), "");
}

TEST_F(Script, NumbersAreTakenModulo2To32)
{
    const struct {
        const char *script;
        std::uint32_t number;
        std::int64_t wide;
    } samples[] = {
        {"return 7", 7, 7},
        {"return 4294967295", 4294967295, 4294967295},
        {"return 4294967296", 0, 4294967296},
        {"return -1", 4294967295, -1},
        {"return math.mininteger", 0, std::numeric_limits<std::int64_t>::min()},
        {"return 7.0", 7, 7},
        {"return -1.0", 4294967295, -1},
        {"return 4294967297.0", 1, 4294967297},
        {"return 7.5", 0, 0},
        {"return 1e300", 0, 0},
        {"return 0/0", 0, 0},
        {"return 1/0", 0, 0},
        {"return '7'", 0, 0},
        {"return nil", 0, 0},
        {"return true", 0, 0},
        {"return {7}", 0, 0},
    };
    for (const auto &[script, number, wide] : samples) {
        run(script);
        EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, -1), number) << script;
        EXPECT_EQ(SYSDT_SPTI_ToInt64(lua, 1), wide) << script;
    }
    EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, 100), 0u);
    EXPECT_EQ(SYSDT_SPTI_ToInt64(lua, -100), 0);
}

TEST_F(Script, Lengths)
{
    run("return {1, 2, 3, x = 4}, 'a\\0b', {}, 7, nil");
    EXPECT_EQ(SYSDT_SPTI_ObjLen(lua, 1), 3u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(lua, -4), 3u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(lua, 3), 0u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(lua, 4), 0u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(lua, 5), 0u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(lua, 100), 0u);
}

TEST_F(Script, TheStackGrowsAsNeeded)
{
    const int deep = 5000; // far above the room that Lua guarantees a C function
    for (int i = 0; i < deep; ++i)
        SYSDT_SPTI_PushUInt(lua, static_cast<std::uint32_t>(i));
    for (int i = 0; i < deep; ++i)
        SYSDT_SPTI_GetField(lua, 1, "x");
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 2 * deep);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, deep), deep - 1u);
}

TEST_F(Script, NothingIsStoredBesideTheStack)
{
    lua_newtable(lua); // right below the function
    EXPECT_NE(error_of([](lua_State *l) {
                  SYSDT_SPTI_PushUInt(l, 1);
                  SYSDT_SPTI_PushUInt(l, 2);
                  SYSDT_SPTI_SetField(l, -4, "x");
                  return 0;
              }),
              "");
    EXPECT_NE(error_of([](lua_State *l) {
                  SYSDT_SPTI_PushUInt(l, 1);
                  SYSDT_SPTI_PushUInt(l, 2);
                  SYSDT_SPTI_PushUInt(l, 3);
                  SYSDT_SPTI_CreateTable(l, 0, 0);
                  SYSDT_SPTI_Pop(l, 1); // still there above the top
                  SYSDT_SPTI_SetTable(l, 0);
                  return 0;
              }),
              "");
}

TEST_F(Script, MisuseIsAnErrorOfTheEngine)
{
    EXPECT_NE(error_of([](lua_State *l) { return SYSDT_SPTI_Pop(l, 1), 0; }), "");
    EXPECT_NE(error_of([](lua_State *l) { return SYSDT_SPTI_Pop(l, -1), 0; }), "");
    EXPECT_NE(error_of([](lua_State *l) { return SYSDT_SPTI_SetField(l, 1, "x"), 0; }), "");
    EXPECT_NE(error_of([](lua_State *l) { return SYSDT_SPTI_GetTable(l, 1), 0; }), "");
    EXPECT_NE(error_of([](lua_State *l) {
                  SYSDT_SPTI_PushUInt(l, 1);
                  SYSDT_SPTI_PushUInt(l, 2);
                  SYSDT_SPTI_SetField(l, 1, "x"); // in a number
                  return 0;
              }),
              "");
    EXPECT_NE(error_of([](lua_State *l) {
                  SYSDT_SPTI_CreateTable(l, 0, 0);
                  SYSDT_SPTI_SetField(l, 1, "x"); // no value
                  return 0;
              }),
              "");
    EXPECT_NE(error_of([](lua_State *l) {
                  SYSDT_SPTI_CreateTable(l, 0, 0);
                  SYSDT_SPTI_PushUInt(l, 1);
                  SYSDT_SPTI_SetTable(l, 1); // no key
                  return 0;
              }),
              "");
    EXPECT_NE(error_of([](lua_State *l) {
                  for (;;) {
                      SYSDT_SPTI_PushUInt(l, 1);
                  }
                  return 0;
              }),
              "");
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 0);
    EXPECT_EQ(error_of([](lua_State *l) { return SYSDT_SPTI_Pop(l, 0), 0; }), "");
}

} // namespace
