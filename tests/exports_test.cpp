// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The exported parsers and printers called by themselves: what no callback hands them, and the pointers they need.
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <lua.hpp>

#include "bgp_datatype/bgp_datatype.h"
#include "support/attack_host.hpp"
#include "support/guarded.hpp"
#include "support/plugin_test.hpp"

namespace bgpdt::test {

namespace {

constexpr std::uint32_t untouched = 0xA5A5A5A5;

std::string_view unanswered; ///< the service that answers null

class ExportsTest : public PluginTest {
protected:
    ~ExportsTest() override
    {
        unanswered = {};
        lua_close(lua_);
    }

    struct Printed {
        std::uint32_t status;
        std::uint32_t length;
        std::string text;
        bool operator==(const Printed &) const = default;
    };
    /// A sound text.
    static Printed sound(const std::string &text) { return {SYSDT_OK, static_cast<std::uint32_t>(text.size()), text}; }
    /// What `print(buffer, length)` prints into the promised 256 characters.
    template <class Print>
    static Printed printed(Print print)
    {
        Guarded buffer(256);
        char *const text = reinterpret_cast<char *>(buffer.data());
        std::uint32_t length = untouched;
        const std::uint32_t status = print(text, &length);
        EXPECT_TRUE(buffer.intact());
        return {status, length, text};
    }

    AttackHost &services_ = AttackHost::instance();
    lua_State *lua_ = luaL_newstate();
};

// ------------------------------------------------------------------------------------------------ communities

TEST_F(ExportsTest, WellKnownCommunitiesAreLookedUpInAnyCase)
{
    auto *look_up = exported<decltype(BRM_GetWellKnownCmyVal)>("BRM_GetWellKnownCmyVal");
    const auto looked_up = [&](const std::string &name, std::uint32_t status) {
        SYSDT_Community value{untouched, untouched};
        services_.begin();
        EXPECT_EQ(status, look_up(7, static_cast<std::uint32_t>(name.size()), &value, name.c_str())) << name;
        EXPECT_EQ(0U, services_.live()) << name;
        EXPECT_EQ(1U, services_.requests()) << name;
        EXPECT_EQ(std::vector<std::string>{}, services_.settle()) << name;
        EXPECT_EQ(untouched, std::uint32_t{value.type}) << name;
        return std::uint32_t{value.community};
    };
    EXPECT_EQ(0U, looked_up("internet", SYSDT_OK));
    EXPECT_EQ(0xFFFFFF01U, looked_up("No-Export", SYSDT_OK));
    EXPECT_EQ(0xFFFFFF02U, looked_up("NO-ADVERTISE", SYSDT_OK));
    EXPECT_EQ(0xFFFFFF03U, looked_up("no-export-subconfed", SYSDT_OK));
    for (const char *name : {"", "no-exp", "no-export-subconfedx", "internet1", " internet"})
        EXPECT_EQ(untouched, looked_up(name, SYSDT_ERR_FAIL)) << name;
}

TEST_F(ExportsTest, AWellKnownNameIsNoLongerThanTold)
{
    auto *look_up = exported<decltype(BRM_GetWellKnownCmyVal)>("BRM_GetWellKnownCmyVal");
    SYSDT_Community value{};
    services_.begin();
    EXPECT_EQ(SYSDT_ERR_FAIL, look_up(7, 7, &value, "internet"));
    EXPECT_EQ(std::vector<std::string>{}, services_.settle());
    services_.begin({1, true});
    EXPECT_EQ(SYSDT_ERR_NO_MEMORY, look_up(7, 8, &value, "internet"));
}

TEST_F(ExportsTest, ACommunitysNotationIsToldByItsColons)
{
    auto *parse = exported<decltype(SYSDT_Str2CommunitySetCmty)>("SYSDT_Str2CommunitySetCmty");
    const auto expect = [&](std::uint32_t colons, const char *text, std::uint32_t community) {
        SYSDT_Community value{untouched, untouched};
        EXPECT_EQ(SYSDT_OK, parse(colons, text, &value)) << text;
        EXPECT_EQ(community, std::uint32_t{value.community}) << text;
        EXPECT_EQ(colons, std::uint32_t{value.type}) << text;
    };
    expect(0, "0", 0);
    expect(0, "4294967295", 4294967295);
    expect(1, "65535:1", 0xFFFF0001);
    expect(1, "1:65535", 0x0001FFFF);
    for (const auto &[colons, text] : {std::pair{0U, "4294967296"},
                                       {0U, ""},
                                       {0U, "x"},
                                       {1U, "65536:1"},
                                       {1U, "1:65536"},
                                       {1U, "1"},
                                       {1U, "1:"},
                                       {1U, ":1"},
                                       {2U, "1:2:3"}}) {
        SYSDT_Community value{};
        EXPECT_EQ(SYSDT_ERR_FAIL, parse(colons, text, &value)) << text;
    }
}

TEST_F(ExportsTest, ACommunityIsPrintedWithoutItsName)
{
    auto *print = exported<decltype(SYSDT_FormatNoWellKnowCmy)>("SYSDT_FormatNoWellKnowCmy");
    void *out_data = nullptr;
    const auto text_of = [&](const SYSDT_Community &value) {
        Guarded buffer(32);
        char *const text = reinterpret_cast<char *>(buffer.data());
        std::uint32_t characters = untouched;
        const std::uint32_t status = print(&characters, text, &out_data, &value);
        EXPECT_EQ(status == SYSDT_OK ? nullptr : text, out_data);
        EXPECT_TRUE(buffer.intact());
        return status == SYSDT_OK ? sound(text) : Printed{status, characters, ""};
    };
    EXPECT_EQ(sound("4294967041"), text_of({0xFFFFFF01, 0}));
    EXPECT_EQ(sound("65535:65281"), text_of({0xFFFFFF01, 1}));
    EXPECT_EQ(sound("0"), text_of({0, 0}));
    EXPECT_EQ((Printed{SYSDT_ERR_INVALID_VALUE, untouched, ""}), text_of({0xFFFFFF01, 2}));
}

TEST_F(ExportsTest, TheNumbersOfALargeCommunity)
{
    auto *parse =
        exported<decltype(SYSDT_Str2LargeCommunityForTwoColonType)>("SYSDT_Str2LargeCommunityForTwoColonType");
    SYSDT_LargeCommunity value{{untouched, untouched, untouched}, untouched};
    EXPECT_EQ(SYSDT_OK, parse("64496:4294967295:0", &value));
    EXPECT_EQ(64496U, std::uint32_t{value.largeCommunity[0]});
    EXPECT_EQ(4294967295U, std::uint32_t{value.largeCommunity[1]});
    EXPECT_EQ(0U, std::uint32_t{value.largeCommunity[2]});
    EXPECT_EQ(0U, std::uint32_t{value.type});
    for (const char *text : {"", "1", "1:2", "1:2:", "1:2:x", "4294967296:0:0", "0:4294967296:0", "0:0:4294967296"})
        EXPECT_EQ(SYSDT_ERR_FAIL, parse(text, &value)) << text;
}

TEST_F(ExportsTest, PrintersOfExtendedCommunities)
{
    const auto text_of = [&](const char *name, const SYSDT_Octets &value) {
        auto *print = exported<decltype(SYSDT_ExtCommunity2StrRT4AS)>(name);
        return printed([&](char *buffer, std::uint32_t *length) { return print(&value, length, buffer); });
    };
    const char *const route_target = "SYSDT_ExtCommunity2StrRT4AS";
    SYSDT_Octets value{{0x02, 0x02, 0, 1, 0, 2, 0, 3}, VRF_RD_FORM_AS4DOT};
    EXPECT_EQ(sound("1.2:3"), text_of(route_target, value));
    value.form = VRF_RD_FORM_AS4;
    EXPECT_EQ(sound("65538:3"), text_of(route_target, value));
    value.form = VRF_RD_FORM_AS2;
    EXPECT_EQ(sound(""), text_of(route_target, value));

    const char *const bandwidth = "SYSDT_ExtCommunity2StrBW";
    EXPECT_EQ(sound("64496:65538"), text_of(bandwidth, {{0x03, 0x0E, 0xFB, 0xF0, 0, 1, 0, 2}, 0}));
    EXPECT_EQ(sound("as-trans:65538"), text_of(bandwidth, {{0x03, 0x0E, 0x5B, 0xA0, 0, 1, 0, 2}, 0}));
}

// ------------------------------------------------------------------------------------------------ VPN identifiers

TEST_F(ExportsTest, PrinterOfARouteDistinguisher)
{
    auto *print = exported<decltype(SYSDT_VrfRd2Str)>("SYSDT_VrfRd2Str");
    const auto text_of = [&](const SYSDT_Octets &value) {
        return printed([&](char *buffer, std::uint32_t *length) { return print(&value, length, buffer); });
    };
    EXPECT_EQ(sound("192.0.2.1:100"), text_of({{0, 1, 192, 0, 2, 1, 0, 100}, 9}));
    EXPECT_EQ(sound("64496:65538"), text_of({{0, 0, 0xFB, 0xF0, 0, 1, 0, 2}, VRF_RD_FORM_AS2}));
    EXPECT_EQ(sound("65538:3"), text_of({{0, 2, 0, 1, 0, 2, 0, 3}, VRF_RD_FORM_AS4}));
    EXPECT_EQ(sound("1.2:3"), text_of({{0, 2, 0, 1, 0, 2, 0, 3}, VRF_RD_FORM_AS4DOT}));
    EXPECT_EQ(sound("0:0"), text_of({{}, VRF_RD_FORM_AS2}));
    EXPECT_EQ(sound(""), text_of({{}, VRF_RD_FORM_IPV4}));
    EXPECT_EQ(SYSDT_ERR_FAIL, text_of({{0, 3, 0, 1, 0, 2, 0, 3}, VRF_RD_FORM_AS2}).status);
}

TEST_F(ExportsTest, PrinterOfARouteDistinguisherWithWildcards)
{
    auto *print = exported<decltype(SYSDT_RtpRd2Str)>("SYSDT_RtpRd2Str");
    for (std::uint32_t mode = 0; mode < 8; ++mode) {
        const auto text_of = [&](const SYSDT_RtpRd &value) {
            return printed([&](char *buffer, std::uint32_t *length) { return print(&value, length, buffer, mode); });
        };
        EXPECT_EQ(sound("192.0.2.1:100"), text_of({{0, 1, 192, 0, 2, 1, 0, 100}, 1, 0}));
        EXPECT_EQ(sound("64496:*"), text_of({{0, 0, 0xFB, 0xF0}, 2, 1}));
        EXPECT_EQ(sound("65538:3"), text_of({{0, 2, 0, 1, 0, 2, 0, 3}, 3, 0}));
        EXPECT_EQ(sound("1.2:*"), text_of({{0, 2, 0, 1, 0, 2, 0, 3}, 4, 1}));
        EXPECT_EQ(sound(""), text_of({{}, 0, 0}));
        EXPECT_EQ(SYSDT_ERR_FAIL, text_of({{0, 3}, 2, 0}).status);
    }
}

TEST_F(ExportsTest, PrinterOfAVpnIdentifier)
{
    auto *print = exported<decltype(SYSDT_VpnId2Str)>("SYSDT_VpnId2Str");
    const auto text_of = [&](const SYSDT_VpnId &value) {
        return printed([&](char *buffer, std::uint32_t *length) { return print(&value, length, buffer); });
    };
    EXPECT_EQ(sound("1a2b:ff"), text_of({0x1A2B, 0xFF}));
    EXPECT_EQ(sound("0:ffffffff"), text_of({0, 0xFFFFFFFF}));
}

TEST_F(ExportsTest, AnIpv6RouteTargetIsStoredWhole)
{
    auto *parse = exported<decltype(SYSDT_Str2VrfRtV6)>("SYSDT_Str2VrfRtV6");
    Guarded value(sizeof(SYSDT_VrfRtV6));
    char text[] = "2001:db8::1.1";
    EXPECT_EQ(SYSDT_OK, parse(text, reinterpret_cast<SYSDT_VrfRtV6 *>(value.data())));
    EXPECT_EQ((Bytes{0, 0x0C, 0x20, 1, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0}),
              value.bytes());
    EXPECT_TRUE(value.intact());
}

TEST_F(ExportsTest, AnySetOctetMakesADistinguisherOrTargetSet)
{
    auto *is_set = exported<decltype(SYSDT_IsInValidRdOrRt)>("SYSDT_IsInValidRdOrRt");
    EXPECT_EQ(0U, is_set(Guarded(8, Place::end, 0).constant()));
    for (std::size_t at = 0; at < 8; ++at) {
        Bytes octets(8);
        octets[at] = 1;
        EXPECT_EQ(1U, is_set(Guarded(octets).constant())) << at;
    }
}

TEST_F(ExportsTest, PrinterOfAnIpv6Key)
{
    auto *print = exported<decltype(SYSDT_Ipv6Prefix2Str)>("SYSDT_Ipv6Prefix2Str");
    SYSDT_BolIpv6 key{};
    key.address[0] = 0x20;
    key.address[1] = 0x01;
    key.address[2] = 0x0D;
    key.address[3] = 0xB8;
    key.address[15] = 1;
    const auto text_of = [&] {
        return printed([&](char *buffer, std::uint32_t *length) { return print(&key, buffer, length); });
    };
    EXPECT_EQ(sound("2001:db8::1"), text_of());
    unanswered = "inet_ntop6";
    EXPECT_EQ(SYSDT_ERR_FAIL, text_of().status);
}

// ------------------------------------------------------------------------------------------------ services that fail

TEST_F(ExportsTest, AnAddressThatTheHostCannotPrintFailsAMulticastKey)
{
    auto *print = exported<decltype(SYSDT_NGPrefix2Str)>("SYSDT_NGPrefix2Str");
    SYSDT_BolNg5 key{};
    key.subKind = SYSDT_BOL_NG_TYPE_5;
    key.source.family = key.group.family = 1;
    SYSDT_BolValue value{};
    static_assert(sizeof value == sizeof key);
    std::memcpy(&value, &key, sizeof value);
    const auto text_of = [&] {
        return printed([&](char *buffer, std::uint32_t *length) { return print(&value, buffer, length); });
    };
    EXPECT_EQ(sound("::-::"), text_of());
    unanswered = "inet_ntop6";
    EXPECT_EQ(SYSDT_ERR_FAIL, text_of().status);
}

TEST_F(ExportsTest, AnAddressThatTheHostCannotPrintIsLeftOutOfALinkStateKey)
{
    auto *print = exported<decltype(SYSDT_LsPrefix2Str)>("SYSDT_LsPrefix2Str");
    SYSDT_LsPrefix key{};
    key.head = {SYSDT_LS_SRV6_SID, SYSDT_LS_ISIS_LEVEL_1, 0};
    const auto text_of = [&] {
        char text[513];
        std::uint32_t length = 0;
        EXPECT_EQ(SYSDT_OK, print(&key, text, &length));
        return std::string(text);
    };
    EXPECT_NE(std::string::npos, text_of().find("[sid::]"));
    unanswered = "inet_ntop6";
    EXPECT_NE(std::string::npos, text_of().find("[sid]"));
}

TEST_F(ExportsTest, ATimeRangeThatTheHostDoesNotTrimIsNone)
{
    auto *parse = exported<decltype(SYSDT_Str2TimeRange)>("SYSDT_Str2TimeRange");
    char text[] = "1d2h3m4s";
    std::uint32_t seconds = untouched;
    unanswered = "PAL_StrTrim";
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(text, &seconds));
    EXPECT_EQ(0U, seconds);
}

// ------------------------------------------------------------------------------------------------ null pointers

TEST_F(ExportsTest, ParsersNeedTheirPointers)
{
    char text[] = "1:2:3";
    char refused[] = "no export";
    char unknown[] = "no-such-name";
    const char *const constant = text;
    SYSDT_Community community{};
    SYSDT_LargeCommunity large{};
    expect_pointers_needed<decltype(SYSDT_Str2Community)>("SYSDT_Str2Community", SYSDT_ERR_NULL_PTR, 7U, text,
                                                          &community);
    for (char *none : {refused, unknown}) // whatever else is wrong
        expect_pointers_needed<decltype(SYSDT_Str2Community)>("SYSDT_Str2Community", SYSDT_ERR_NULL_PTR, 7U, none,
                                                              &community);
    expect_pointers_needed<decltype(SYSDT_Str2CommunitySetCmty)>("SYSDT_Str2CommunitySetCmty", SYSDT_ERR_NULL_PTR, 1U,
                                                                 constant, &community);
    expect_pointers_needed<decltype(BRM_GetWellKnownCmyVal)>("BRM_GetWellKnownCmyVal", SYSDT_ERR_NULL_PTR, 7U, 5U,
                                                             &community, constant);
    expect_pointers_needed<decltype(SYSDT_Str2LargeCommunity)>("SYSDT_Str2LargeCommunity", SYSDT_ERR_NULL_PTR, 7U, text,
                                                               &large);
    expect_pointers_needed<decltype(SYSDT_Str2LargeCommunityForTwoColonType)>("SYSDT_Str2LargeCommunityForTwoColonType",
                                                                              SYSDT_ERR_NULL_PTR, constant, &large);

    SYSDT_EvpnAddress address{};
    SYSDT_BolIpv6 ipv6{};
    SYSDT_BolValue key{};
    expect_pointers_needed<decltype(SYSDT_Str2IPv4IPv6)>("SYSDT_Str2IPv4IPv6", SYSDT_ERR_NULL_PTR, constant, &address);
    expect_pointers_needed<decltype(SYSDT_IsIpv6MultiCastAddr)>("SYSDT_IsIpv6MultiCastAddr", SYSDT_ERR_FAIL, constant);
    expect_pointers_needed<decltype(SYSDT_Str2NGIpv6Prefix_Type1)>("SYSDT_Str2NGIpv6Prefix_Type1", SYSDT_ERR_NULL_PTR,
                                                                   constant, &ipv6);
    expect_pointers_needed<decltype(SYSDT_Str2NGPrefix_Type5_41)>("SYSDT_Str2NGPrefix_Type5_41", SYSDT_ERR_NULL_PTR,
                                                                  text, &key, 0U);
}

TEST_F(ExportsTest, PrintersNeedTheirPointers)
{
    char buffer[256];
    std::uint32_t length = 0;
    void *out_data = nullptr;
    const SYSDT_Community community{};
    const SYSDT_Octets octets{};
    const SYSDT_RtpRd rtp_rd{};
    const SYSDT_VpnId vpn_id{};
    const SYSDT_BolIpv6 ipv6{};
    expect_pointers_needed<decltype(SYSDT_FormatNoWellKnowCmy)>("SYSDT_FormatNoWellKnowCmy", SYSDT_ERR_NULL_PTR,
                                                                &length, buffer, &out_data, &community);
    for (const char *name : {"SYSDT_ExtCommunity2StrRT4AS", "SYSDT_ExtCommunity2StrBW", "SYSDT_VrfRd2Str"})
        expect_pointers_needed<decltype(SYSDT_VrfRd2Str)>(name, SYSDT_ERR_NULL_PTR, &octets, &length, buffer);
    expect_pointers_needed<decltype(SYSDT_RtpRd2Str)>("SYSDT_RtpRd2Str", SYSDT_ERR_NULL_PTR, &rtp_rd, &length, buffer,
                                                      2U);
    expect_pointers_needed<decltype(SYSDT_VpnId2Str)>("SYSDT_VpnId2Str", SYSDT_ERR_NULL_PTR, &vpn_id, &length, buffer);
    expect_pointers_needed<decltype(SYSDT_Ipv6Prefix2Str)>("SYSDT_Ipv6Prefix2Str", SYSDT_ERR_NULL_PTR, &ipv6, buffer,
                                                           &length);
}

TEST_F(ExportsTest, OrdersOfKeysNeedBothKeys)
{
    const SYSDT_BolValue key{};
    const void *const at = &key;
    for (const char *name : {"SYSDT_VplsAdPrefixCompare", "SYSDT_EVNPrefixCompare"}) {
        auto *compare = exported<SYSDT_Compare>(name);
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, static_cast<std::uint32_t>(compare(at, 89, nullptr, at))) << name;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, static_cast<std::uint32_t>(compare(at, 89, at, nullptr))) << name;
    }
}

/// The first kind without a row; the vectors have others.
TEST_F(ExportsTest, BehindTheLastRowIsNone)
{
    SYSDT_BolValue value{SYSDT_BOL_KINDS, {}};
    SYSDT_Context context{};
    context.mode = 2;
    std::uint16_t kind = 0;
    std::uint16_t length = 0;
    void *data = nullptr;
    auto *print = exported<SYSDT_FormatOut>("SYSDT_BolPrefixFormatOut");
    EXPECT_EQ(SYSDT_ERR_INVALID_VALUE, print(&context, 0, sizeof value, &value, &kind, &length, &data));
    EXPECT_EQ(nullptr, data);

    lua_settop(lua_, 0);
    lua_newtable(lua_);
    auto *set = exported<SYSDT_LuaSet>("SYSDT_BolPrefixLuaSet");
    EXPECT_EQ(SYSDT_ERR_INVALID_VALUE, set(lua_, 1, "field", 0, sizeof value, &value));
    lua_newtable(lua_);
    lua_pushinteger(lua_, SYSDT_BOL_KINDS);
    lua_setfield(lua_, -2, "bolType");
    lua_setfield(lua_, 1, "field");
    auto *get = exported<SYSDT_LuaGet>("SYSDT_BolPrefixLuaGet");
    EXPECT_EQ(SYSDT_ERR_INVALID_VALUE, get(lua_, 1, "field", 0, sizeof value, &value));
}

TEST_F(ExportsTest, ScriptReadersNeedStateAndValue)
{
    const auto *rows = exported<const SYSDT_ScriptReadRow>("g_astBOL_PREFIX_LuaGetTable");
    SYSDT_BolValue value{};
    lua_newtable(lua_);
    for (std::uint32_t kind = 0; kind < SYSDT_BOL_KINDS; ++kind) {
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, rows[kind].reader(nullptr, &value, 1)) << kind;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, rows[kind].reader(lua_, nullptr, 1)) << kind;
    }
    const SYSDT_EvpnAddress field{};
    expect_pointers_needed<decltype(SYSDT_BolPrefixLuaSetToIPv6)>("SYSDT_BolPrefixLuaSetToIPv6", SYSDT_ERR_NULL_PTR,
                                                                  static_cast<void *>(lua_),
                                                                  static_cast<const void *>(&field));
}

} // namespace

} // namespace bgpdt::test

namespace {

/// The host's own service behind the one defined here.
template <class Function>
Function *forward(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

const char *inet_ntop6(const uint8_t address[16], char *buffer, uint32_t size)
{
    static auto *const next = forward<decltype(inet_ntop6)>("inet_ntop6");
    return bgpdt::test::unanswered == "inet_ntop6" ? nullptr : next(address, buffer, size);
}

char *PAL_StrTrim(char *text)
{
    static auto *const next = forward<decltype(PAL_StrTrim)>("PAL_StrTrim");
    return bgpdt::test::unanswered == "PAL_StrTrim" ? nullptr : next(text);
}

} // extern "C"
#pragma GCC visibility pop
