// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The generic callbacks without a living host: no index has a name then.
#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <lua.hpp>
#include <string>
#include <vector>

#include "host/host.hpp"
#include "script_engine.hpp"
#include "test_memory.hpp"

namespace {

using Modes = std::initializer_list<std::uint8_t>;

constexpr std::uint16_t untouched = 0xAAAA;
constexpr auto null_pointer = static_cast<std::int32_t>(SYSDT_ERR_NULL_PTR);

/// Calls a conversion and releases the block that it took.
struct Conversion {
    SYSDT_Context context{};
    std::uint16_t kind = untouched;
    std::uint16_t length = untouched;
    void *data = nullptr;

    explicit Conversion(std::uint8_t mode)
    {
        context.mode = mode;
        context.handle = 21;
    }
    ~Conversion() { SYS_DataTypeFree(data); }
    Conversion(const Conversion &) = delete;
    Conversion &operator=(const Conversion &) = delete;

    std::uint32_t in(SYSDT_FormatIn *callback, std::string text)
    {
        const auto size = static_cast<std::uint32_t>(text.size() + 1);
        return callback(&context, 0, size, text.data(), &kind, &length, &data);
    }
    std::uint32_t out(SYSDT_FormatOut *callback, const void *value, std::uint32_t size)
    {
        return callback(&context, 0x7000, size, value, &kind, &length, &data);
    }
    std::uint32_t number() const
    {
        std::uint32_t number;
        std::memcpy(&number, data, sizeof number);
        return number;
    }
    std::string bytes() const { return {static_cast<const char *>(data), length}; }
};

struct Screened {
    std::uint8_t mode;
    std::uint32_t status;
};

const Screened screened_text[] = {{0, SYSDT_ERR_FAIL},
                                  {5, SYSDT_ERR_FAIL},
                                  {4, SYSDT_ERR_UNSUPPORTED},
                                  {7, SYSDT_ERR_UNSUPPORTED},
                                  {255, SYSDT_ERR_UNSUPPORTED}};

TEST(Uint32, ComparesNumbersInTheProcessorsOrder)
{
    const std::uint32_t low[] = {0x00000100, 9};
    const std::uint32_t high[] = {0x80000001, 1};
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 8, low, high), -1);
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 8, high, low), 1);
    const std::uint32_t same[] = {0x00000100, 10};
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 8, low, same), 0); // the number alone counts
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 8, nullptr, low), null_pointer);
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 8, low, nullptr), null_pointer);
    const std::uint32_t one = 0x01000000; // its first byte in memory differs between processors
    const std::uint32_t two = 2;
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 4, &one, &two), 1);
}

TEST(Uint32, ReadsAtAnyAddress)
{
    const std::uint8_t bytes[9] = {0, 1, 1, 1, 1, 2, 2, 2, 2};
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 4, bytes + 1, bytes + 5), -1);
}

TEST(Block, ComparesBytesOverTheLength)
{
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 3, "ab\x7F", "ab\x80"), -1);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 3, "b\0a", "a\0b"), 1);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 3, "a\0b", "a\0c"), -1);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 2, "a\0b", "a\0c"), 0);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 0, "a", "b"), 0);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 1, nullptr, "b"), null_pointer);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 1, "a", nullptr), null_pointer);
}

TEST(String, ComparesUpToTheTerminator)
{
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 4, "ab\0x", "ab\0y"), 0);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 4, "ab", "abc"), -1);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 4, "\x80", "\x7F"), 1);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 2, "abc", "abd"), 0);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 2, nullptr, "a"), null_pointer);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 2, "a", nullptr), null_pointer);
}

TEST(String, FormatInDeliversTheTextAsItIs)
{
    for (const std::uint8_t mode : Modes{1, 2, 6}) {
        Conversion conversion(mode);
        EXPECT_EQ(conversion.in(SYSDT_StringFormatIn, " vpn1 "), SYSDT_OK);
        EXPECT_EQ(conversion.kind, SYSDT_KIND_STRING);
        EXPECT_EQ(conversion.bytes(), std::string(" vpn1 \0", 7));
        EXPECT_EQ(test_memory::last_handle, conversion.context.handle);
    }
    Conversion longest(2);
    EXPECT_EQ(longest.in(SYSDT_StringFormatIn, std::string(256, 'x')), SYSDT_OK);
    EXPECT_EQ(longest.length, 257);
    Conversion longer(2);
    EXPECT_EQ(longer.in(SYSDT_StringFormatIn, std::string(257, 'x')), SYSDT_ERR_INVALID_VALUE);
    EXPECT_EQ(longer.data, nullptr);
}

TEST(String, FormatOutEndsAtTheTerminatorOrTheLength)
{
    for (const std::uint8_t mode : Modes{1, 2, 6}) {
        Conversion terminated(mode);
        EXPECT_EQ(terminated.out(SYSDT_StringFormatOut, "vpn1\0xyz", 8), SYSDT_OK);
        EXPECT_EQ(terminated.kind, SYSDT_KIND_STRING);
        EXPECT_EQ(terminated.bytes(), std::string("vpn1\0", 5));
        Conversion full(mode);
        EXPECT_EQ(full.out(SYSDT_StringFormatOut, "vpn1", 3), SYSDT_OK);
        EXPECT_EQ(full.bytes(), std::string("vpn\0", 4));
        Conversion empty(mode);
        EXPECT_EQ(empty.out(SYSDT_StringFormatOut, "", 0), SYSDT_OK);
        EXPECT_EQ(empty.bytes(), std::string("\0", 1));
    }
    Conversion cut(2);
    EXPECT_EQ(cut.out(SYSDT_StringFormatOut, std::string(300, 'x').data(), 300), SYSDT_OK);
    EXPECT_EQ(cut.bytes(), std::string(256, 'x') + '\0');
}

TEST(String, Mode3Copies)
{
    Conversion copy(3);
    EXPECT_EQ(copy.out(SYSDT_StringFormatOut, "ab\0cd", 5), SYSDT_OK);
    EXPECT_EQ(copy.kind, SYSDT_KIND_BINARY);
    EXPECT_EQ(copy.bytes(), std::string("ab\0cd", 5));
    const std::string large(65536, 'x');
    Conversion largest(3);
    EXPECT_EQ(largest.out(SYSDT_StringFormatOut, large.data(), 65535), SYSDT_OK);
    EXPECT_EQ(largest.length, 65535);
    Conversion too_large(3);
    EXPECT_EQ(too_large.out(SYSDT_StringFormatOut, large.data(), 65536), SYSDT_ERR_FAIL);
    EXPECT_EQ(too_large.data, nullptr);
}

TEST(Index, IsItsDecimalTextWithoutNames)
{
    for (const std::uint8_t mode : Modes{1, 2, 6}) {
        Conversion in(mode);
        EXPECT_EQ(in.in(SYS_DT_UINT32IndexFormatIn, " 4294967295 "), SYSDT_OK);
        EXPECT_EQ(in.kind, SYSDT_KIND_BINARY);
        ASSERT_EQ(in.length, 4);
        EXPECT_EQ(in.number(), 4294967295u);
        const std::uint32_t index = 4294967295;
        Conversion out(mode);
        EXPECT_EQ(out.out(SYS_DT_IndexFormatOut, &index, 4), SYSDT_OK);
        EXPECT_EQ(out.kind, SYSDT_KIND_STRING);
        EXPECT_EQ(out.bytes(), std::string("4294967295\0", 11));
    }
    for (const char *text : {"", " ", "vpn1", "1x", "-1", "4294967296", "0x1", "1 2"}) {
        Conversion in(2);
        EXPECT_EQ(in.in(SYS_DT_UINT32IndexFormatIn, text), SYSDT_ERR_INVALID_VALUE) << text;
        EXPECT_EQ(in.data, nullptr);
    }
    const std::uint32_t index = 7;
    Conversion copy(3);
    EXPECT_EQ(copy.out(SYS_DT_IndexFormatOut, &index, 4), SYSDT_OK);
    EXPECT_EQ(copy.kind, SYSDT_KIND_BINARY);
    ASSERT_EQ(copy.length, 4);
    EXPECT_EQ(copy.number(), 7u);
}

TEST(Conversions, ScreenTheMode)
{
    const std::uint32_t value = 7;
    for (const auto &[mode, status] : screened_text) {
        for (SYSDT_FormatIn *const callback : {SYSDT_StringFormatIn, SYS_DT_UINT32IndexFormatIn}) {
            Conversion conversion(mode);
            EXPECT_EQ(conversion.in(callback, "7"), status) << int{mode};
            EXPECT_EQ(conversion.kind, untouched);
        }
        for (SYSDT_FormatOut *const callback : {SYSDT_StringFormatOut, SYS_DT_IndexFormatOut}) {
            Conversion conversion(mode);
            EXPECT_EQ(conversion.out(callback, &value, 4), status) << int{mode};
            EXPECT_EQ(conversion.kind, untouched);
        }
    }
    for (SYSDT_FormatIn *const callback : {SYSDT_StringFormatIn, SYS_DT_UINT32IndexFormatIn}) {
        Conversion conversion(3);
        EXPECT_EQ(conversion.in(callback, "7"), SYSDT_ERR_FAIL);
    }
}

TEST(Conversions, UseTheCallersBlock)
{
    const std::uint32_t value = 7;
    for (SYSDT_FormatOut *const callback : {SYSDT_StringFormatOut, SYS_DT_IndexFormatOut}) {
        for (const std::uint8_t mode : Modes{2, 3}) {
            std::vector<char> block(257);
            Conversion conversion(mode);
            conversion.data = block.data();
            const int blocks_before = test_memory::blocks;
            EXPECT_EQ(conversion.out(callback, &value, 4), SYSDT_OK);
            EXPECT_EQ(conversion.data, block.data());
            EXPECT_EQ(test_memory::blocks, blocks_before);
            conversion.data = nullptr;
        }
    }
}

TEST(Conversions, WithoutMemory)
{
    const test_memory::Shortage shortage(0);
    const std::uint32_t value = 7;
    for (SYSDT_FormatIn *const callback : {SYSDT_StringFormatIn, SYS_DT_UINT32IndexFormatIn}) {
        Conversion conversion(2);
        EXPECT_EQ(conversion.in(callback, "7"), SYSDT_ERR_NO_MEMORY);
        EXPECT_NE(conversion.kind, untouched); // the kind is told, the length is 0
        EXPECT_EQ(conversion.length, 0);
        EXPECT_EQ(conversion.data, nullptr);
    }
    for (SYSDT_FormatOut *const callback : {SYSDT_StringFormatOut, SYS_DT_IndexFormatOut}) {
        Conversion text(2);
        EXPECT_EQ(text.out(callback, &value, 4), SYSDT_ERR_NO_MEMORY);
        EXPECT_EQ(text.kind, 0);
        EXPECT_EQ(text.length, 0);
        EXPECT_EQ(text.data, nullptr);
        Conversion copy(3);
        EXPECT_EQ(copy.out(callback, &value, 4), SYSDT_ERR_FAIL);
        EXPECT_EQ(copy.kind, untouched);
        EXPECT_EQ(copy.length, 0);
        EXPECT_EQ(copy.data, nullptr);
    }
}

TEST(Conversions, NeedEveryPointer)
{
    SYSDT_Context context{};
    context.mode = 200; // the pointers come before the mode
    char text[] = "7";
    std::uint16_t kind = 0;
    std::uint16_t length = 0;
    void *data = nullptr;
    for (SYSDT_FormatIn *const in : {SYSDT_StringFormatIn, SYS_DT_UINT32IndexFormatIn}) {
        EXPECT_EQ(in(nullptr, 0, 2, text, &kind, &length, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(in(&context, 0, 2, nullptr, &kind, &length, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(in(&context, 0, 2, text, nullptr, &length, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(in(&context, 0, 2, text, &kind, nullptr, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(in(&context, 0, 2, text, &kind, &length, nullptr), SYSDT_ERR_NULL_PTR);
    }
    for (SYSDT_FormatOut *const out : {SYSDT_StringFormatOut, SYS_DT_IndexFormatOut}) {
        EXPECT_EQ(out(nullptr, 0, 2, text, &kind, &length, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(out(&context, 0, 2, nullptr, &kind, &length, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(out(&context, 0, 2, text, nullptr, &length, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(out(&context, 0, 2, text, &kind, nullptr, &data), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(out(&context, 0, 2, text, &kind, &length, nullptr), SYSDT_ERR_NULL_PTR);
    }
}

/// A help request and what came of it.
struct Help {
    SYSDT_Context context{};
    SYSDT_HelpRequest request{1, 1};
    SYSDT_HelpInfo info{};

    explicit Help(std::uint8_t mode) { context.mode = mode; }
    ~Help() { SYSDT_ClearHelpInfo(&info); }
    Help(const Help &) = delete;
    Help &operator=(const Help &) = delete;

    std::uint32_t ask() { return SYSDT_StringHelp(&context, 0, 0, &request, &request, &info); }
};

TEST(String, HelpFollowsTheContract)
{
    const int blocks_before = test_memory::blocks;
    for (const std::uint8_t mode : Modes{1, 6}) {
        Help help(mode);
        EXPECT_EQ(help.ask(), SYSDT_OK);
        ASSERT_EQ(help.info.count, 1u);
        EXPECT_STREQ(help.info.entries[0], "STRING");
    }
    for (const std::uint8_t mode : Modes{0, 2, 3, 4, 5, 7}) {
        Help help(mode);
        EXPECT_EQ(help.ask(), SYSDT_OK);
        EXPECT_EQ(help.info.entries, nullptr);
    }
    for (const SYSDT_HelpRequest request : {SYSDT_HelpRequest{0, 1}, SYSDT_HelpRequest{1, 0}}) {
        Help help(1);
        help.request = request;
        EXPECT_EQ(help.ask(), SYSDT_ERR_PARAM);
        EXPECT_EQ(help.info.entries, nullptr);
    }
    for (const int allowed : {0, 1}) {
        const test_memory::Shortage shortage(allowed);
        Help help(1);
        EXPECT_EQ(help.ask(), SYSDT_ERR_NO_MEMORY);
        EXPECT_EQ(help.info.entries, nullptr);
    }
    Help help(1);
    EXPECT_EQ(SYSDT_StringHelp(nullptr, 0, 0, nullptr, &help.request, &help.info), SYSDT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_StringHelp(&help.context, 0, 0, nullptr, nullptr, &help.info), SYSDT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_StringHelp(&help.context, 0, 0, nullptr, &help.request, nullptr), SYSDT_ERR_NULL_PTR);
    EXPECT_EQ(test_memory::blocks, blocks_before);
}

class ScriptFields : public testing::Test {
protected:
    ScriptFields() { run("return {}"); }

    /// Leaves the script's result on the stack, the only value there.
    void run(const char *script)
    {
        lua_settop(lua, 0);
        ASSERT_EQ(luaL_dostring(lua, script), LUA_OK);
    }

    const Engine owner{luaL_newstate()};
    lua_State *const lua = owner.get();
};

TEST_F(ScriptFields, StringsAreSetUpToTheirTerminator)
{
    for (const int table : {1, -1}) {
        EXPECT_EQ(SYSDT_StringLuaSet(lua, table, "name", 0, 8, "vpn1\0xyz"), SYSDT_OK);
        EXPECT_EQ(lua_gettop(lua), 1);
        EXPECT_EQ(lua_getfield(lua, 1, "name"), LUA_TSTRING);
        EXPECT_STREQ(lua_tostring(lua, -1), "vpn1");
        lua_settop(lua, 1);
    }
    EXPECT_EQ(SYSDT_StringLuaSet(lua, 1, "name", 0, 2, "vpn1"), SYSDT_OK);
    lua_getfield(lua, 1, "name");
    EXPECT_STREQ(lua_tostring(lua, -1), "vp");
}

TEST_F(ScriptFields, StringsAreReadIntoTheirField)
{
    run("return {name = 'vpn1', number = 7}");
    char buffer[8];
    std::memset(buffer, '#', sizeof buffer);
    for (const int table : {1, -1}) {
        EXPECT_EQ(SYSDT_StringLuaGet(lua, table, "name", 0, 5, buffer), SYSDT_OK);
        EXPECT_EQ(std::string(buffer, 6), std::string("vpn1\0#", 6));
        EXPECT_EQ(lua_gettop(lua), 1);
    }
    EXPECT_EQ(SYSDT_StringLuaGet(lua, 1, "name", 0, 4, buffer), SYSDT_ERR_TOO_LONG);
    EXPECT_EQ(SYSDT_StringLuaGet(lua, 1, "number", 0, 8, buffer), SYSDT_ERR_PARAM);
    EXPECT_EQ(SYSDT_StringLuaGet(lua, 1, "missing", 0, 8, buffer), SYSDT_ERR_PARAM);
    EXPECT_EQ(std::string(buffer, 6), std::string("vpn1\0#", 6));
}

TEST_F(ScriptFields, NumbersGoBothWays)
{
    const std::uint32_t number = 4294967295;
    for (const int table : {1, -1}) {
        EXPECT_EQ(SYSDT_Uint32LuaSet(lua, table, "index", 0, 4, &number), SYSDT_OK);
        EXPECT_EQ(lua_gettop(lua), 1);
        std::uint32_t again = 0;
        EXPECT_EQ(SYSDT_Uint32LuaGet(lua, table, "index", 0, 4, &again), SYSDT_OK);
        EXPECT_EQ(again, number);
        EXPECT_EQ(lua_gettop(lua), 1);
    }
    lua_getfield(lua, 1, "index");
    EXPECT_EQ(lua_tointeger(lua, -1), 4294967295);
    run("return {index = '7'}");
    std::uint32_t again = 5;
    EXPECT_EQ(SYSDT_Uint32LuaGet(lua, 1, "index", 0, 4, &again), SYSDT_ERR_PARAM);
    EXPECT_EQ(again, 5u);
}

TEST_F(ScriptFields, NeedPointersAndRoom)
{
    std::uint32_t number = 7;
    for (SYSDT_LuaSet *const set : {SYSDT_StringLuaSet, SYSDT_Uint32LuaSet}) {
        EXPECT_EQ(set(nullptr, 1, "x", 0, 4, &number), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(set(lua, 1, nullptr, 0, 4, &number), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(set(lua, 1, "x", 0, 4, nullptr), SYSDT_ERR_NULL_PTR);
    }
    for (SYSDT_LuaGet *const get : {SYSDT_StringLuaGet, SYSDT_Uint32LuaGet}) {
        EXPECT_EQ(get(nullptr, 1, "x", 0, 4, &number), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(get(lua, 1, nullptr, 0, 4, &number), SYSDT_ERR_NULL_PTR);
        EXPECT_EQ(get(lua, 1, "x", 0, 4, nullptr), SYSDT_ERR_NULL_PTR);
    }
    EXPECT_EQ(SYSDT_Uint32LuaSet(lua, 1, "x", 0, 3, &number), SYSDT_ERR_PARAM);
    EXPECT_EQ(SYSDT_Uint32LuaGet(lua, 1, "x", 0, 3, &number), SYSDT_ERR_PARAM);
    EXPECT_EQ(lua_gettop(lua), 1);
}

} // namespace
