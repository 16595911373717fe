// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the vectors cannot say of the multicast-VPN keys: builders of one kind, printed lengths, and script routines
/// that stand in no table.
#include <array>
#include <cstdint>
#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <lua.hpp>

#include "bgp_datatype/bgp_datatype.h"
#include "support/plugin_test.hpp"

namespace bgpdt::test::mvpn {

namespace {

class MvpnTest : public PluginTest {
protected:
    ~MvpnTest() override { lua_close(lua_); }

    lua_State *lua_ = luaL_newstate();
};

SYSDT_EvpnAddress ipv4(std::uint32_t address) { return {address, {}, 0}; }

SYSDT_EvpnAddress ipv6(std::uint8_t first, std::uint8_t last)
{
    SYSDT_EvpnAddress field{};
    field.ipv6[0] = first;
    field.ipv6[15] = last;
    field.family = 1;
    return field;
}

template <class Key>
SYSDT_BolValue value_of(const Key &key)
{
    SYSDT_BolValue value;
    static_assert(sizeof key == sizeof value);
    std::memcpy(&value, &key, sizeof value);
    return value;
}

struct Printed {
    std::uint32_t status;
    std::string text; ///< as many bytes as reported

    bool operator==(const Printed &) const = default;
};

Printed print(decltype(SYSDT_NGPrefix2Str) *printer, const SYSDT_BolValue &value)
{
    char buffer[256];
    std::memset(buffer, '#', sizeof buffer);
    std::uint32_t length = 0xA5A5;
    const std::uint32_t status = printer(&value, buffer, &length);
    return {status, std::string(buffer, length)};
}

TEST_F(MvpnTest, OriginatorsThatDoNotPrintReportAnIpv4GroupsLengthOverZeros)
{
    auto *printer = exported<decltype(SYSDT_NGPrefix2Str)>("SYSDT_NGPrefix2Str");
    const std::string zeros(std::strlen("233.252.0.1"), '\0');

    SYSDT_BolNg43 mixed{SYSDT_BOL_NG_TYPE_4_3, ipv4(0xC0000201), ipv4(0xE9FC0001), ipv4(0xC0000209), ipv6(0x20, 1), {}};
    EXPECT_EQ((Printed{SYSDT_OK, zeros}), print(printer, value_of(mixed)));
    mixed.originator1 = mixed.originator2;
    mixed.originator1.family = mixed.originator2.family = 7;
    EXPECT_EQ((Printed{SYSDT_OK, zeros}), print(printer, value_of(mixed)));

    SYSDT_BolNg3 unknown{SYSDT_BOL_NG_TYPE_3, ipv4(0xC0000201), ipv4(0xE9FC0001), ipv4(0xC0000209), {}};
    unknown.originator.family = 2;
    EXPECT_EQ((Printed{SYSDT_OK, zeros}), print(printer, value_of(unknown)));
}

TEST_F(MvpnTest, OriginatorsThatDoNotPrintBehindAnIpv6GroupReportNothing)
{
    auto *printer = exported<decltype(SYSDT_NGPrefix2Str)>("SYSDT_NGPrefix2Str");
    const SYSDT_BolNg43 mixed{SYSDT_BOL_NG_TYPE_4_3, ipv6(0x20, 1), ipv6(0xFF, 1), ipv4(0xC0000209), ipv6(0x20, 2), {}};
    EXPECT_EQ((Printed{SYSDT_OK, ""}), print(printer, value_of(mixed)));
}

TEST_F(MvpnTest, APrinterRefusesOtherKindsAndNullPointers)
{
    auto *printer = exported<decltype(SYSDT_NGPrefix2Str)>("SYSDT_NGPrefix2Str");
    SYSDT_BolValue value{};
    char buffer[256];
    std::uint32_t length = 0;
    for (const std::uint32_t kind : {0U, 1U, 8U, 12U, 14U, 15U, 16U, 17U, 0xFFFFFFFFU}) {
        value.subKind = kind;
        EXPECT_EQ(SYSDT_ERR_FAIL, printer(&value, buffer, &length)) << kind;
    }
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, printer(nullptr, buffer, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, printer(&value, nullptr, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, printer(&value, buffer, nullptr));
}

/// Each builder on sections that are already cut.
TEST_F(MvpnTest, BuildersReadCutSections)
{
    struct Case {
        const char *name;
        std::string text; ///< '|' stands for the cuts
        std::uint32_t status;
        std::uint32_t kind;
    };
    for (const Case &sample : {
             Case{"SYSDT_Str2NGIpv6Prefix_Type3", "2001:db8::1|ff0e::1|192.0.2.9", SYSDT_OK, SYSDT_BOL_NG_TYPE_3},
             Case{"SYSDT_Str2NGIpv6Prefix_Type43", "2001:db8::1|ff0e::1|192.0.2.9|2001:db8::9", SYSDT_OK,
                  SYSDT_BOL_NG_TYPE_4_3},
             Case{"SYSDT_Str2NGIpv6Prefix_Type5", "192.0.2.1|ff0e::1", SYSDT_OK, SYSDT_BOL_NG_TYPE_5},
             Case{"SYSDT_Str2NGIpv6Prefix_Type41", "2001:db8::1|2001:db8::2", SYSDT_OK, SYSDT_BOL_NG_TYPE_4_1},
             Case{"SYSDT_Str2NGIpv6Prefix_Type42", "64496|192.0.2.9", SYSDT_OK, SYSDT_BOL_NG_TYPE_4_2},
             Case{"SYSDT_Str2NGIpv6Prefix_Type6_7", "64496|2001:db8::1|ff0e::1", SYSDT_OK, SYSDT_BOL_NG_TYPE_6},
             Case{"SYSDT_Str2NGIpv6Prefix_Type6_7", "64496|192.0.2.1|ff0e::1", SYSDT_ERR_FAIL, 0},
             Case{"SYSDT_Str2NGIpv6Prefix_Type5_41_42", "64496|2001:db8::1", SYSDT_OK, SYSDT_BOL_NG_TYPE_4_2},
             Case{"SYSDT_Str2NGIpv6Prefix_Type5_41_42", "2001:db8::1|2001:db8::2", SYSDT_OK, SYSDT_BOL_NG_TYPE_4_1},
             Case{"SYSDT_Str2NGIpv6Prefix_Type5_41_42", "64496|192.0.2.1", SYSDT_ERR_FAIL, 0},
             Case{"SYSDT_Str2NGIpv6Prefix_Type42", "0|2001:db8::1", SYSDT_ERR_FAIL, 0},
         }) {
        SCOPED_TRACE(std::string(sample.name) + " " + sample.text);
        auto *build = exported<decltype(SYSDT_Str2NGIpv6Prefix_Type3)>(sample.name);
        std::string text = sample.text;
        std::array<std::uint32_t, 3> positions{};
        for (std::size_t at = 0, section = 0; (at = text.find('|', at)) != std::string::npos; ++section) {
            text[at] = '\0';
            positions[section] = static_cast<std::uint32_t>(at + 1);
        }
        SYSDT_BolValue value{};
        EXPECT_EQ(sample.status, build(text.data(), &value, positions.data()));
        if (sample.status == SYSDT_OK) {
            EXPECT_EQ(sample.kind, value.subKind);
        }
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(nullptr, &value, positions.data()));
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(text.data(), nullptr, positions.data()));
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(text.data(), &value, nullptr));
    }
}

TEST_F(MvpnTest, APairOfIpv4AddressesIsNeverRefused)
{
    auto *build = exported<decltype(SYSDT_Str2NGPrefix_Type5_41)>("SYSDT_Str2NGPrefix_Type5_41");
    const auto kind_of = [&](std::string text) {
        const auto cut = text.find('|');
        text[cut] = '\0';
        SYSDT_BolValue value{};
        EXPECT_EQ(SYSDT_OK, build(text.data(), &value, static_cast<std::uint32_t>(cut + 1)));
        return std::uint32_t{value.subKind};
    };
    EXPECT_EQ(SYSDT_BOL_NG_TYPE_5, kind_of("192.0.2.1|224.0.0.0"));
    EXPECT_EQ(SYSDT_BOL_NG_TYPE_5, kind_of("192.0.2.1|239.255.255.255"));
    EXPECT_EQ(SYSDT_BOL_NG_TYPE_4_1, kind_of("192.0.2.1|223.255.255.255"));
    EXPECT_EQ(SYSDT_BOL_NG_TYPE_4_1, kind_of("192.0.2.1|240.0.0.0"));
    EXPECT_EQ(0U, kind_of("192.0.2.1|300.0.0.0"));
    EXPECT_EQ(0U, kind_of("x|224.0.0.1"));
}

TEST_F(MvpnTest, Addresses)
{
    auto *read = exported<decltype(SYSDT_Str2IPv4IPv6)>("SYSDT_Str2IPv4IPv6");
    SYSDT_EvpnAddress field{};
    EXPECT_EQ(SYSDT_OK, read("192.0.2.1", &field));
    EXPECT_EQ(0, std::memcmp(&field, &static_cast<const SYSDT_EvpnAddress &>(ipv4(0xC0000201)), sizeof field));
    field = {};
    EXPECT_EQ(SYSDT_OK, read("2000::1", &field));
    EXPECT_EQ(0, std::memcmp(&field, &static_cast<const SYSDT_EvpnAddress &>(ipv6(0x20, 1)), sizeof field));
    EXPECT_EQ(SYSDT_ERR_FAIL, read("2000::g", &field));
    EXPECT_EQ(SYSDT_ERR_FAIL, read("192.0.2", &field));

    auto *multicast = exported<decltype(SYSDT_IsIpv6MultiCastAddr)>("SYSDT_IsIpv6MultiCastAddr");
    EXPECT_EQ(1U, multicast("ff00::"));
    EXPECT_EQ(0U, multicast("fe00::"));
    EXPECT_EQ(SYSDT_ERR_FAIL, multicast("224.0.0.1"));

    auto *alone = exported<decltype(SYSDT_Str2NGIpv6Prefix_Type1)>("SYSDT_Str2NGIpv6Prefix_Type1");
    SYSDT_BolIpv6 value{};
    EXPECT_EQ(SYSDT_OK, alone("2001:db8::1", &value));
    EXPECT_EQ(SYSDT_BOL_IPV6, std::uint32_t{value.subKind});
    EXPECT_EQ(0x20, value.address[0]);
    EXPECT_EQ(SYSDT_ERR_FAIL, alone("192.0.2.1", &value));
}

TEST_F(MvpnTest, ReadsTheAsNumberOfASubTableWhateverItsKind)
{
    auto *get = exported<SYSDT_LuaGet>("SYSDT_NGPrefix2LuaGet");
    const auto read = [&](const char *table, SYSDT_BolNg2 &value) {
        EXPECT_EQ(LUA_OK, luaL_dostring(lua_, table));
        const std::uint32_t status = get(lua_, -1, "key", 0, sizeof value, &value);
        lua_settop(lua_, 0);
        return status;
    };
    SYSDT_BolNg2 value{};
    EXPECT_EQ(SYSDT_OK, read("return {key = {bolType = 9, bolNgAsNumValue = 65536, bolNgAsNumType = 1}}", value));
    EXPECT_EQ(0U, std::uint32_t{value.subKind});
    EXPECT_EQ(65536U, std::uint32_t{value.as.asNumValue});
    EXPECT_EQ(1U, std::uint32_t{value.as.asType});
    EXPECT_EQ(SYSDT_ERR_PARAM, read("return {key = {bolNgAsNumValue = 65536}}", value));
    EXPECT_EQ(SYSDT_ERR_PARAM, read("return {key = 7}", value));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, get(nullptr, -1, "key", 0, sizeof value, &value));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, get(lua_, -1, nullptr, 0, sizeof value, &value));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, get(lua_, -1, "key", 0, sizeof value, nullptr));
    EXPECT_EQ(SYSDT_ERR_PARAM, get(lua_, -1, "key", 0, sizeof value - 1, &value));
}

TEST_F(MvpnTest, AddressesOnTheScriptStack)
{
    auto *push = exported<decltype(SYSDT_BolPrefixLuaSetToIPv6)>("SYSDT_BolPrefixLuaSetToIPv6");
    auto *parse = exported<decltype(SYSDT_BolPrefixLuaParseToIPv4IPv6)>("SYSDT_BolPrefixLuaParseToIPv4IPv6");
    const SYSDT_EvpnAddress field = ipv6(0x20, 9);
    SYSDT_ScriptAddress address{};

    EXPECT_EQ(SYSDT_OK, push(lua_, &field));
    ASSERT_EQ(1, lua_gettop(lua_));
    EXPECT_EQ(SYSDT_ERR_PARAM, parse(lua_, 0, &address)); // a table is no number
    EXPECT_EQ(SYSDT_OK, parse(lua_, 2, &address));        // any other type reads nothing
    EXPECT_EQ(1, lua_gettop(lua_));
    EXPECT_EQ(SYSDT_OK, parse(lua_, 1, &address));
    EXPECT_EQ(0, lua_gettop(lua_)); // the table is popped
    EXPECT_EQ(1U, address.family);
    EXPECT_EQ(0, std::memcmp(address.ipv6, field.ipv6, sizeof address.ipv6));

    lua_pushinteger(lua_, 0xC0000201);
    EXPECT_EQ(SYSDT_OK, parse(lua_, 0, &address));
    EXPECT_EQ(1, lua_gettop(lua_)); // the number is not
    EXPECT_EQ(0xC0000201U, address.ipv4);
    EXPECT_EQ(0U, address.family);
    EXPECT_EQ(SYSDT_ERR_PARAM, parse(lua_, 1, &address));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(nullptr, 0, &address));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(lua_, 0, nullptr));
}

} // namespace

} // namespace bgpdt::test::mvpn
