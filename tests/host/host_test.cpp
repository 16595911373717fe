// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <lua.hpp>
#include <optional>

#include "host/host.hpp"
#include "script_engine.hpp"
#include "test_memory.hpp"

namespace {

using bgpdt::host::Admission;
using bgpdt::host::Bytes;
using bgpdt::host::Converted;
using bgpdt::host::Host;
using bgpdt::host::HostError;

/// What creating a host complains about; empty when it does not.
std::string complaint(const std::filesystem::path &plugin, Admission admission = {})
{
    try {
        const Host host(plugin, std::move(admission));
    } catch (const HostError &error) {
        return error.what();
    }
    return {};
}

void expect_mention(const std::string &text, const char *part)
{
    EXPECT_NE(text.find(part), std::string::npos) << '"' << text << "\" does not mention " << part;
}

Bytes bytes_of(std::uint32_t number)
{
    Bytes bytes(sizeof number);
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

TEST(Loading, RegistersTheTypesInOrder)
{
    const Host host(HOST_TEST_PLUGIN);
    ASSERT_EQ(host.types().size(), 5u);
    EXPECT_EQ(host.types()[0]->typeId, 0x7001);
    EXPECT_EQ(host.types()[4]->typeId, 0x7005);
    EXPECT_EQ(host.find("NUMBER"), host.types()[0]);
    EXPECT_EQ(host.find("WITHOUT_A_FINALNUL"), host.types()[4]); // a name that fills its field
    EXPECT_EQ(host.find("NUMBE"), nullptr);
    EXPECT_EQ(host.find("NUMBER2"), nullptr);
    EXPECT_EQ(host.find(""), nullptr);
    EXPECT_TRUE(host.diagnostics().empty());
}

TEST(Loading, FailsWithTheReason)
{
    expect_mention(complaint("no/such/plugin.so"), "no/such/plugin.so");
    expect_mention(complaint("libm.so.6"), "cannot load"); // a bare name is a file here, not the loader's to find
    expect_mention(complaint(HOST_TEST_NO_ENTRY), "Bgp_InitDataType");
    expect_mention(complaint(HOST_TEST_NO_ENTRY), "no_entry");
    expect_mention(complaint(HOST_TEST_UNRESOLVED), "SYSDT_NoSuchService");
    expect_mention(complaint(HOST_TEST_REFUSING), "Bgp_InitDataType answered SYSDT_ERR_UNSUPPORTED");
    expect_mention(complaint(__FILE__), "host_test.cpp");
    EXPECT_EQ(complaint(HOST_TEST_PLUGIN), ""); // the failures leave nothing behind
}

TEST(Loading, TakesARelativePath) { EXPECT_EQ(complaint(std::filesystem::relative(HOST_TEST_PLUGIN)), ""); }

TEST(Loading, OneHostAtATime)
{
    std::optional<Host> host(std::in_place, HOST_TEST_PLUGIN);
    expect_mention(complaint(HOST_TEST_PLUGIN), "another host");
    EXPECT_NE(host->find("NUMBER"), nullptr);
    host.reset();
    EXPECT_EQ(complaint(HOST_TEST_PLUGIN), "");
}

TEST(Loading, AdmissionDecides)
{
    const auto admission = [](const SYSDT_Record &record) {
        return record.typeId == 0x7002 ? SYSDT_ERR_INVALID_VALUE : SYSDT_OK;
    };
    const Host host(HOST_TEST_PLUGIN, admission);
    EXPECT_EQ(host.types().size(), 4u);
    EXPECT_EQ(host.find("RAISING"), nullptr);
    ASSERT_EQ(host.diagnostics().size(), 1u);
    EXPECT_EQ(host.diagnostics()[0].source, "plugin");
    EXPECT_EQ(host.diagnostics()[0].line, 7u);
    EXPECT_EQ(host.diagnostics()[0].message, "refused: 8394509"); // 0x80170D
}

TEST(Loading, WhatAdmissionThrowsComesOut)
{
    const auto admission = [](const SYSDT_Record &) -> std::uint32_t { throw HostError("not today"); };
    EXPECT_EQ(complaint(HOST_TEST_PLUGIN, admission), "not today");
    EXPECT_EQ(complaint(HOST_TEST_PLUGIN), "");
}

TEST(Loading, RegistrationNeedsAHostAndItsHandle)
{
    static constexpr SYSDT_Record record{};
    EXPECT_NE(SYS_Drm_RegisterDataType(1, &record), SYSDT_OK);
    const Host host(HOST_TEST_PLUGIN);
    EXPECT_NE(SYS_Drm_RegisterDataType(1, &record), SYSDT_OK);
    EXPECT_EQ(SYS_Drm_RegisterDataType(1, nullptr), SYSDT_ERR_NULL_PTR);
    EXPECT_EQ(host.types().size(), 5u);
}

TEST(Loading, DiagnosticsWithoutAHostGoToTheErrorStream)
{
    testing::internal::CaptureStderr();
    KPL_Assert("source", 12, "message");
    KPL_Assert(nullptr, 0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "source:12: message\n:0: \n");
}

class Loaded : public testing::Test {
protected:
    ~Loaded() override { EXPECT_EQ(test_memory::blocks, blocks_before); }

    const int blocks_before = test_memory::blocks;
    Host host{HOST_TEST_PLUGIN};
    const SYSDT_Record &number = *host.find("NUMBER");
    const SYSDT_Record &raising = *host.find("RAISING");
    const SYSDT_Record &pair = *host.find("PAIR");
};

TEST_F(Loaded, SymbolsAreThePluginsOwn)
{
    const auto *const exported = static_cast<const std::uint32_t *>(host.symbol("host_test_exported"));
    ASSERT_NE(exported, nullptr);
    EXPECT_EQ(*exported, 64496u);
    EXPECT_NE(host.symbol("Bgp_InitDataType"), nullptr);
    EXPECT_EQ(host.symbol("no_such_symbol"), nullptr);
    EXPECT_EQ(host.symbol("malloc"), nullptr); // the C library's
}

TEST_F(Loaded, Parses)
{
    const Converted converted = host.parse(number, " 64496 ", 2);
    EXPECT_TRUE(converted.ok());
    EXPECT_EQ(converted.kind, 0x7001);
    EXPECT_EQ(converted.data, bytes_of(64496));
    EXPECT_NE(test_memory::last_handle, 0u);

    const Converted refused = host.parse(number, "x", 2);
    EXPECT_EQ(refused.status, SYSDT_ERR_INVALID_VALUE);
    EXPECT_FALSE(refused.ok());
    EXPECT_TRUE(refused.data.empty());
    EXPECT_EQ(host.parse(number, "1", 7).status, SYSDT_ERR_UNSUPPORTED); // the mode arrives
    EXPECT_EQ(host.parse(number, "", 2).status, SYSDT_ERR_INVALID_VALUE);
    const test_memory::Shortage shortage(0);
    EXPECT_EQ(host.parse(number, "1", 2).status, SYSDT_ERR_NO_MEMORY);
}

TEST_F(Loaded, Prints)
{
    const Converted converted = host.print(number, bytes_of(4294967295), 2);
    EXPECT_TRUE(converted.ok());
    EXPECT_EQ(converted.kind, SYSDT_KIND_STRING);
    EXPECT_EQ(converted.data.size(), 16u);
    EXPECT_EQ(converted.text(), "4294967295 of 4");
    const test_memory::Shortage shortage(0);
    EXPECT_EQ(host.print(number, bytes_of(1), 2).status, SYSDT_ERR_NO_MEMORY);
}

TEST_F(Loaded, PrintsShortValuesWithTheirOwnLength)
{
    EXPECT_EQ(host.print(number, Bytes{0, 0, 0}, 2).text(), "0 of 3");
    EXPECT_EQ(host.print(number, Bytes{}, 2).text(), "0 of 0");
    Bytes longer = bytes_of(5);
    longer.resize(40);
    EXPECT_EQ(host.print(number, longer, 2).text(), "5 of 40");
}

TEST_F(Loaded, FailuresAndSilenceDeliverNothing)
{
    const Converted failed = host.print(number, bytes_of(1), 0); // with the block handed back
    EXPECT_EQ(failed.status, SYSDT_ERR_OUTPUT);
    EXPECT_TRUE(failed.data.empty());
    const Converted silent = host.print(number, bytes_of(1), 5);
    EXPECT_TRUE(silent.ok());
    EXPECT_EQ(silent.kind, 0);
    EXPECT_TRUE(silent.data.empty());
    EXPECT_EQ(silent.text(), "");
}

TEST_F(Loaded, TextEndsBeforeItsTerminator)
{
    EXPECT_EQ((Converted{0, SYSDT_KIND_STRING, {'a', 'b', 0}}.text()), "ab");
    EXPECT_EQ((Converted{0, SYSDT_KIND_BINARY, {'a', 'b'}}.text()), "ab");
    EXPECT_EQ((Converted{0, SYSDT_KIND_STRING, {0}}.text()), "");
}

TEST_F(Loaded, Checks)
{
    EXPECT_EQ(host.check(number, bytes_of(0)), SYSDT_OK);
    EXPECT_EQ(host.check(number, Bytes{1, 2, 3}), SYSDT_ERR_LENGTH);
    EXPECT_EQ(host.check(number, Bytes{}), SYSDT_ERR_LENGTH); // not a null pointer
}

TEST_F(Loaded, ComparesOverTheShorterLength)
{
    EXPECT_EQ(host.compare(number, bytes_of(1), bytes_of(2)), -4);
    EXPECT_EQ(host.compare(number, bytes_of(2), bytes_of(2)), 0);
    Bytes longer = bytes_of(2);
    longer.resize(9);
    EXPECT_EQ(host.compare(number, longer, bytes_of(1)), 4);
    longer.resize(8);
    EXPECT_EQ(host.compare(number, longer, longer), 0);
}

TEST_F(Loaded, SwapsInPlace)
{
    Bytes value{1, 2, 3, 4, 5};
    EXPECT_EQ(host.swap(number, value), SYSDT_OK);
    EXPECT_EQ(value, (Bytes{4, 3, 2, 1, 5}));
    Bytes short_value{1, 2, 3};
    EXPECT_EQ(host.swap(number, short_value), SYSDT_ERR_LENGTH);
    EXPECT_EQ(short_value, (Bytes{1, 2, 3}));
}

TEST_F(Loaded, Helps)
{
    std::uint32_t status = SYSDT_ERR_FAIL;
    EXPECT_EQ(host.help(number, 1, status), std::vector<std::string>{"INTEGER<0-4294967295>"});
    EXPECT_EQ(status, SYSDT_OK);
    EXPECT_TRUE(host.help(number, 2, status).empty());
    EXPECT_EQ(status, SYSDT_OK);
    EXPECT_TRUE(host.help(number, 3, status).empty());
    EXPECT_EQ(status, SYSDT_ERR_FAIL);
    for (const int allowed : {0, 1}) {
        const test_memory::Shortage shortage(allowed);
        EXPECT_TRUE(host.help(number, 1, status).empty());
        EXPECT_EQ(status, SYSDT_ERR_NO_MEMORY);
    }
}

/// Lua memory with a limit.
struct Limit {
    std::size_t used = 0;
    std::size_t limit = std::size_t{1} << 20;

    static void *allocate(void *self, void *block, std::size_t old_size, std::size_t new_size)
    {
        Limit &limit = *static_cast<Limit *>(self);
        if (block == nullptr)
            old_size = 0; // it tells the kind of object then
        if (limit.used - old_size + new_size > limit.limit)
            return nullptr;
        void *const result = new_size != 0 ? std::realloc(block, new_size) : nullptr;
        if (new_size == 0)
            std::free(block);
        limit.used = limit.used - old_size + new_size;
        return result;
    }
};

class Scripted : public Loaded {
protected:
    Limit memory;
    const Engine owner{lua_newstate(Limit::allocate, &memory)};
    lua_State *const lua = owner.get();
    std::string error = "an old error";
};

TEST_F(Scripted, PushesTheScriptFormOnly)
{
    lua_pushstring(lua, "below");
    EXPECT_EQ(host.push_script_value(lua, number, bytes_of(64496), error), SYSDT_OK);
    EXPECT_EQ(error, "");
    ASSERT_EQ(lua_gettop(lua), 2);
    EXPECT_EQ(lua_tointeger(lua, -1), 64496);
    EXPECT_EQ(host.push_script_value(lua, pair, Bytes{7, 9}, error), SYSDT_OK);
    ASSERT_EQ(lua_gettop(lua), 3);
    EXPECT_EQ(lua_getfield(lua, -1, "second"), LUA_TNUMBER);
    EXPECT_EQ(lua_tointeger(lua, -1), 9);
}

TEST_F(Scripted, AFailurePushesNothing)
{
    EXPECT_EQ(host.push_script_value(lua, pair, Bytes{7}, error), SYSDT_ERR_LENGTH);
    EXPECT_EQ(error, "");
    EXPECT_EQ(lua_gettop(lua), 0);
    EXPECT_EQ(host.push_script_value(lua, number, Bytes{}, error), SYSDT_ERR_PARAM);
    EXPECT_EQ(lua_gettop(lua), 0);
}

TEST_F(Scripted, ReadsTheValueOnTop)
{
    ASSERT_EQ(luaL_dostring(lua, "return 'below', {first = 258, second = 3}"), LUA_OK);
    Bytes value{9, 9, 9};
    EXPECT_EQ(host.read_script_value(lua, pair, 4, value, error), SYSDT_OK);
    EXPECT_EQ(error, "");
    EXPECT_EQ(value, (Bytes{2, 3, 0, 0})); // in a cleared buffer
    ASSERT_EQ(lua_gettop(lua), 2);         // and is left there
    EXPECT_TRUE(lua_istable(lua, -1));
    EXPECT_EQ(host.read_script_value(lua, pair, 1, value, error), SYSDT_ERR_PARAM);
    EXPECT_EQ(value, Bytes{0});
    EXPECT_EQ(host.read_script_value(lua, pair, 0, value, error), SYSDT_ERR_PARAM); // not a null pointer
    EXPECT_EQ(value, Bytes{});
}

TEST_F(Scripted, WhatIsReadBeforeAFailureStays)
{
    ASSERT_EQ(luaL_dostring(lua, "return {first = 5, second = 'x'}"), LUA_OK);
    Bytes value;
    EXPECT_EQ(host.read_script_value(lua, pair, 2, value, error), SYSDT_ERR_PARAM);
    EXPECT_EQ(value, (Bytes{5, 0}));
    EXPECT_EQ(error, "");
    EXPECT_EQ(lua_gettop(lua), 1);
    lua_pushnil(lua);
    EXPECT_EQ(host.read_script_value(lua, pair, 2, value, error), SYSDT_ERR_PARAM);
    lua_pushinteger(lua, 7);
    EXPECT_EQ(host.read_script_value(lua, number, 4, value, error), SYSDT_OK);
    EXPECT_EQ(value, bytes_of(7));
    EXPECT_EQ(lua_gettop(lua), 3);
}

TEST_F(Scripted, MemoryOutInsideACallbackIsCaught)
{
    lua_pushstring(lua, "below");
    for (int i = 0; i < 3; ++i) {
        error.clear();
        EXPECT_EQ(host.push_script_value(lua, raising, bytes_of(1), error), SYSDT_ERR_NO_MEMORY);
        EXPECT_EQ(error, "not enough memory");
        EXPECT_EQ(lua_gettop(lua), 1);
    }
    EXPECT_EQ(host.push_script_value(lua, number, bytes_of(1), error), SYSDT_OK); // the engine lives on
    EXPECT_EQ(error, "");
}

TEST_F(Scripted, MemoryOutAtAnyPointIsCaught)
{
    int caught = 0;
    for (std::size_t room = 0; room < 2000; room += 8) {
        lua_gc(lua, LUA_GCCOLLECT);
        memory.limit = memory.used + room;
        const std::uint32_t status = host.push_script_value(lua, pair, Bytes{7, 9}, error);
        EXPECT_EQ(lua_gettop(lua), status == SYSDT_OK ? 1 : 0);
        EXPECT_EQ(error.empty(), status == SYSDT_OK);
        caught += status != SYSDT_OK ? 1 : 0;
        lua_settop(lua, 0);
        memory.limit = std::size_t{1} << 20;
    }
    EXPECT_GT(caught, 5);
    EXPECT_LT(caught, 250);
}

TEST_F(Scripted, AnErrorWhileReadingIsCaught)
{
    ASSERT_EQ(luaL_dostring(lua, "return {}"), LUA_OK);
    Bytes value;
    EXPECT_EQ(host.read_script_value(lua, raising, 4, value, error), SYSDT_ERR_FAIL);
    expect_mention(error, "1000 values are popped");
    EXPECT_EQ(lua_gettop(lua), 1);
}

TEST_F(Scripted, ErrorsNeedNotBeTexts)
{
    lua_pushcfunction(lua, [](lua_State *l) {
        lua_pushboolean(l, 1);
        return lua_error(l);
    });
    lua_createtable(lua, 0, 0);
    lua_createtable(lua, 0, 1);
    lua_pushvalue(lua, 1);
    lua_setfield(lua, -2, "__index");
    lua_setmetatable(lua, -2);
    Bytes value;
    EXPECT_EQ(host.read_script_value(lua, pair, 2, value, error), SYSDT_ERR_FAIL);
    EXPECT_EQ(error, "an error of type boolean");
}

TEST_F(Scripted, AFullStackIsAFailure)
{
    while (lua_checkstack(lua, 1) != 0)
        lua_pushinteger(lua, 1);
    const int top = lua_gettop(lua);
    Bytes value;
    EXPECT_EQ(host.push_script_value(lua, number, bytes_of(1), error), SYSDT_ERR_FAIL);
    EXPECT_NE(error, "");
    EXPECT_EQ(host.read_script_value(lua, number, 4, value, error), SYSDT_ERR_FAIL);
    EXPECT_NE(error, "");
    EXPECT_EQ(value, bytes_of(0));
    EXPECT_EQ(lua_gettop(lua), top);
}

TEST(StatusNames, AreThoseOfTheBoundary)
{
    using bgpdt::host::status_name;
    EXPECT_EQ(status_name(0), "SYSDT_OK");
    EXPECT_EQ(status_name(0x801701), "SYSDT_ERR_FAIL");
    EXPECT_EQ(status_name(0x801705), "SYSDT_ERR_NULL_PTR");
    EXPECT_EQ(status_name(0x801706), "SYSDT_ERR_NO_MEMORY");
    EXPECT_EQ(status_name(0x801707), "SYSDT_ERR_PARAM");
    EXPECT_EQ(status_name(0x80170A), "SYSDT_ERR_UNSUPPORTED");
    EXPECT_EQ(status_name(0x80170C), "SYSDT_ERR_LENGTH");
    EXPECT_EQ(status_name(0x80170D), "SYSDT_ERR_INVALID_VALUE");
    EXPECT_EQ(status_name(0x80170F), "SYSDT_ERR_MISMATCH");
    EXPECT_EQ(status_name(0x801711), "SYSDT_ERR_OUTPUT");
    EXPECT_EQ(status_name(0x801717), "SYSDT_ERR_TOO_LONG");
    EXPECT_EQ(status_name(0x801799), "0x801799");
    EXPECT_EQ(status_name(1), "0x000001");
    EXPECT_EQ(status_name(0xFFFFFFFF), "0xFFFFFFFF");
}

} // namespace
