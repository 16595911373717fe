// SPDX-License-Identifier: Apache-2.0
/// @file
/// What no record leads to: the tables of the BGP-LS grammar, the engine that walks them, and the printers by themselves.
#include <cstring>
#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "host/host.hpp"
#include "support/guarded.hpp"
#include "support/setting.hpp"

namespace bgpdt::test {

namespace {

class BgpLsTest : public testing::Test {
protected:
    host::Host host_{plugin_path()};

    template <class Symbol>
    Symbol *exported(const char *name) const
    {
        auto *symbol = reinterpret_cast<Symbol *>(host_.symbol(name));
        EXPECT_NE(nullptr, symbol) << name;
        return symbol;
    }

    struct Row {
        const char *keyword;
        std::uint32_t bit;
        std::uint32_t exact;
        const char *handler; ///< null: none
    };
    void expect_patterns(const char *table, std::initializer_list<Row> expected) const
    {
        const auto *row = exported<const LsPrefixPattern>(table);
        for (const Row &wanted : expected) {
            EXPECT_STREQ(wanted.keyword, row->keyword) << table;
            EXPECT_EQ(wanted.bit, row->bit) << table << " " << wanted.keyword;
            EXPECT_EQ(wanted.exact, row->exact) << table << " " << wanted.keyword;
            EXPECT_EQ(wanted.handler == nullptr ? nullptr : host_.symbol(wanted.handler),
                      reinterpret_cast<void *>(row->handler))
                << table << " " << wanted.keyword;
            ++row;
        }
    }

    using Printer = std::uint32_t(const SYSDT_LsPrefix *, char *, std::uint32_t, std::uint32_t *);
    /// Prints into exactly `size` bytes; the length is added to 1000.
    std::string printed(const char *name, const SYSDT_LsPrefix &key, std::size_t size) const
    {
        Guarded buffer(size);
        auto *text = reinterpret_cast<char *>(buffer.data());
        std::uint32_t length = 1000;
        EXPECT_EQ(SYSDT_OK, exported<Printer>(name)(&key, text, static_cast<std::uint32_t>(size), &length)) << name;
        EXPECT_TRUE(buffer.intact()) << name;
        EXPECT_EQ(1000 + std::strlen(text), length) << name;
        return text;
    }
};

TEST_F(BgpLsTest, TheGroupsOfAKey)
{
    expect_patterns("g_bgplsPrefixPattern", {
                                                {"NODE", 0x001, 1, "BgpLsParseTypeNode"},
                                                {"LINK", 0x001, 1, "BgpLsParseTypeLink"},
                                                {"IPV4-PREFIX", 0x001, 1, "BgpLsParseTypeIpv4Prefix"},
                                                {"IPV6-PREFIX", 0x001, 1, "BgpLsParseTypeIpv6Prefix"},
                                                {"TEPOLICY", 0x001, 1, "BgpLsParseTypeTePolicy"},
                                                {"SRV6-SID", 0x001, 1, "BgpLsParseTypeSrv6Sid"},
                                                {"ISIS-LEVEL-1", 0x002, 1, "BgpLsParseProtoIsis1"},
                                                {"ISIS-LEVEL-2", 0x002, 1, "BgpLsParseProtoIsis2"},
                                                {"OSPFv2", 0x002, 1, "BgpLsParseProtoOspf2"},
                                                {"DIRECT", 0x002, 1, "BgpLsParseProtoDirect"},
                                                {"STATIC", 0x002, 1, "BgpLsParseProtoStatic"},
                                                {"OSPFv3", 0x002, 1, "BgpLsParseProtoOspf3"},
                                                {"BGP", 0x002, 1, "BgpLsParseProtoBgp"},
                                                {"RSVP-TE", 0x002, 1, nullptr},
                                                {"SEGMENT-ROUTING", 0x002, 1, "BgpLsParseProtoSR"},
                                                {"IDENTIFIER", 0x004, 0, "BgpLsParseIdentifier"},
                                                {"LOCAL", 0x008, 0, "BgpLsParseLocalNode"},
                                                {"REMOTE", 0x010, 0, "BgpLsParseRemoteNode"},
                                                {"LINK", 0x020, 0, "BgpLsParseLink"},
                                                {"UNKNOWN", 0x040, 0, "BgpLsParseDiscard"},
                                                {"index", 0x080, 0, "BgpLsParseDiscard"},
                                                {"PREFIX", 0x100, 0, "BgpLsParsePrefix"},
                                                {"TE", 0x200, 0, "BgpLsParseTe"},
                                                {"SID", 0x400, 0, "BgpLsParseSid"},
                                            });
}

TEST_F(BgpLsTest, TheGroupsWithin)
{
    expect_patterns("g_bgplsPrefixNodeDescPartten", {
                                                        {"as", 0x01, 0, "BgpLsParseNodeDescAs"},
                                                        {"bgp-ls-identifier", 0x02, 0, "BgpLsParseNodeDescLsId"},
                                                        {"bgp-router-id", 0x10, 0, "BgpLsParseNodeDescBgpRouterId"},
                                                        {"ospf-area-id", 0x04, 0, "BgpLsParseNodeDescOspfAreaId"},
                                                        {"igp-router-id", 0x08, 0, "BgpLsParseNodeDescIgpRouterId"},
                                                        {"member-as", 0x20, 0, "BgpLsParseNodeDescMemberAs"},
                                                        {"ipv4-router-id", 0x40, 0, "BgpLsParseNodeDescIpv4RouteId"},
                                                        {"ipv6-router-id", 0x80, 0, "BgpLsParseNodeDescIpv6RouteId"},
                                                    });
    expect_patterns("g_bgplsPrefixLinkPartten", {
                                                    {"identifier", 0x01, 0, "BgpLsParseLinkIdentifier"},
                                                    {"local", 0x02, 0, "BgpLsParseLinkLocal"},
                                                    {"remote", 0x04, 0, "BgpLsParseLinkRemote"},
                                                    {"link-local-id", 0x08, 0, "BgpLsParseLinkLinkLocalId"},
                                                    {"link-remote-id", 0x10, 0, "BgpLsParseLinkLinkRemoteId"},
                                                    {"if-address", 0x20, 0, "BgpLsParseLinkIfAddress"},
                                                    {"peer-address", 0x40, 0, "BgpLsParseLinkPeerAddress"},
                                                    {"mt-id", 0x80, 0, "BgpLsParseLinkMtId"},
                                                });
    expect_patterns("g_bgplsPrefixPrefixPartten", {
                                                      {"mt-id", 0x1, 0, "BgpLsParsePrefixMtId"},
                                                      {"ospf-route-type", 0x2, 0, "BgpLsParsePrefixOspfRouteType"},
                                                      {"prefix", 0x4, 0, "BgpLsParsePrefixPrefix"},
                                                  });
    expect_patterns("g_bgplsPrefixTePartten", {
                                                  {"protocol-origin", 0x01, 0, "BgpLsParseTeProtocolOrigin"},
                                                  {"Flag", 0x02, 0, "BgpLsParseTeFlag"},
                                                  {"endpoint", 0x04, 0, "BgpLsParseTeEndpoint"},
                                                  {"color", 0x08, 0, "BgpLsParseTeColor"},
                                                  {"originator-as", 0x10, 0, "BgpLsParseTeOriginatorAs"},
                                                  {"originator-address", 0x20, 0, "BgpLsParseTeOriginatorAddress"},
                                                  {"discriminator", 0x40, 0, "BgpLsParseTeDiscriminator"},
                                              });
    expect_patterns("g_bgplsPrefixSidPartten",
                    {{"mt-id", 0x1, 0, "BgpLsParseSidMtId"}, {"sid", 0x2, 0, "BgpLsParseSidSid"}});
}

TEST_F(BgpLsTest, TheRouteTypes)
{
    struct Expected {
        std::uint32_t required;
        const char *slots[8];
    };
    constexpr const char *none = nullptr;
    const Expected expected[] = {
        {0, {}},
        {0x00F,
         {"BgpLsNodeParseProtocol", "BgpLsNodeParseIdentifier", "BgpLsNodeParseLocalNode", none, none, none, none,
          none}},
        {0x03F,
         {"BgpLsLinkParseProtocol", "BgpLsLinkParseIdentifier", "BgpLsLinkParseLocalNode", "BgpLsLinkParseRemoteNode",
          "BgpLsLinkParseLink", none, none, none}},
        {0x10F,
         {"BgpLsIpv4PrefixParseProtocol", "BgpLsIpv4PrefixParseIdentifier", "BgpLsIpv4PrefixParseLocalNode", none, none,
          "BgpLsIPv4PrefixParsePrefix", none, none}},
        {0x10F,
         {"BgpLsIpv6PrefixParseProtocol", "BgpLsIpv6PrefixParseIdentifier", "BgpLsIpv6PrefixParseLocalNode", none, none,
          "BgpLsIPv6PrefixParsePrefix", none, none}},
        {0x20F,
         {"BgpLsTePolicyParseProtocol", "BgpLsTePolicyParseIdentifier", "BgpLsTePolicyParseLocalNode", none, none, none,
          "BgpLsTePolicyParseTe", none}},
        {0x40F,
         {"BgpLsSrv6SidParseProtocol", "BgpLsSrv6SidParseIdentifier", "BgpLsSrv6SidParseLocalNode", none, none, none,
          none, "BgpLsSrv6SidParseSid"}},
    };
    const auto *row = exported<const LsPrefixNlriParser>("g_bgplsPrefixParsers");
    for (std::uint32_t type = 0; type < std::size(expected); ++type, ++row) {
        EXPECT_EQ(type, row->routeType);
        EXPECT_EQ(expected[type].required, row->required) << type;
        BgpLsSlot *const slots[] = {row->protocol, row->identifier, row->localNode, row->remoteNode,
                                    row->link,     row->prefix,     row->te,        row->sid};
        for (std::size_t i = 0; i < std::size(slots); ++i) {
            const char *name = expected[type].slots[i];
            EXPECT_EQ(name == nullptr ? nullptr : host_.symbol(name), reinterpret_cast<void *>(slots[i]))
                << type << " slot " << i;
        }
    }
}

TEST_F(BgpLsTest, WhatALocalNodeNeeds)
{
    auto *must = exported<std::uint32_t(std::uint32_t)>("BgpLsNodeDescMandentoryFields");
    auto *must_not = exported<std::uint32_t(std::uint32_t)>("BgpLsNodeDescUnsupportFields");
    for (std::uint32_t protocol = 0; protocol < 12; ++protocol) {
        EXPECT_EQ(protocol == 7 ? 0x12u : 0x06u, must(protocol)) << protocol;
        EXPECT_EQ(protocol == 7 ? 0x04u : 0x10u, must_not(protocol)) << protocol;
    }
}

TEST_F(BgpLsTest, SlotsTakeTheirNumberByAddress)
{
    SYSDT_LsPrefix key{};
    key.head.identifier = 0xFFFFFFFFFFFFFFFF;
    LsPrefixParseContext context{};
    const std::uint32_t number = 0x01020304;
    EXPECT_EQ(SYSDT_OK, exported<BgpLsSlot>("BgpLsSrv6SidParseProtocol")(&number, &key, &context));
    EXPECT_EQ(SYSDT_OK, exported<BgpLsSlot>("BgpLsTePolicyParseIdentifier")(&number, &key, &context));
    EXPECT_EQ(number, key.head.protocolId);
    EXPECT_EQ(number, key.head.identifier);
}

TEST_F(BgpLsTest, AGroupIsCutOutOfItsBrackets)
{
    auto *cut =
        exported<std::uint32_t(const char *, char *, std::uint32_t, std::uint32_t *)>("SYSDT_GetLsPrefixSubString");
    const auto expect = [&](const char *text, std::uint32_t size, const char *group) {
        Guarded buffer(size);
        auto *out = reinterpret_cast<char *>(buffer.data());
        std::uint32_t length = 77;
        EXPECT_EQ(group == nullptr ? SYSDT_ERR_FAIL : SYSDT_OK, cut(text, out, size, &length)) << text;
        EXPECT_TRUE(buffer.intact());
        if (group != nullptr) {
            EXPECT_STREQ(group, out);
            EXPECT_EQ(std::strlen(group), length);
        }
    };
    expect("[abc]", 8, "abc");
    expect("[abc][def]", 8, "abc");
    expect("[a[b]c]d", 8, "a[b]c");
    expect("[]", 2, "");
    expect("[abc]", 5, "abc");
    expect("[abc]", 4, nullptr);
    expect("[]", 1, nullptr);
    expect("", 8, nullptr);
    expect("abc]", 8, nullptr);
    expect("[abc", 8, nullptr);
    expect("[a[b]", 8, nullptr);
}

TEST_F(BgpLsTest, TheFirstRowThatMatchesWins)
{
    auto *find = exported<const LsPrefixPattern *(const char *, const LsPrefixPattern *, std::uint32_t)>(
        "SYSDT_ParseLsPrefixFindPattern");
    const auto *patterns = exported<const LsPrefixPattern>("g_bgplsPrefixPattern");
    EXPECT_EQ(patterns + 1, find("LINK", patterns, 24));
    EXPECT_EQ(patterns + 18, find("LINK[", patterns, 24));
    EXPECT_EQ(nullptr, find("LINK[", patterns, 18));
    EXPECT_EQ(nullptr, find("xLINK[", patterns, 24));
    EXPECT_EQ(nullptr, find("LIN", patterns, 24));
    EXPECT_EQ(nullptr, find("", patterns, 24));
    EXPECT_EQ(patterns + 22, find("TEPOLICY1", patterns, 24));
}

TEST_F(BgpLsTest, PrintersStayInTheirBuffer)
{
    SYSDT_LsPrefix key{};
    key.head.routeType = SYSDT_LS_TE_POLICY;
    const std::string te = "[TE[protocol-origin0][Flag0][endpoint0.0.0.0][color0][originator-as0]"
                           "[originator-address0.0.0.0][discriminator0]]";
    EXPECT_EQ(te, printed("SYSDT_LS_TePolicy_TeKeyToStr", key, 768));
    const std::string whole = "[TEPOLICY][][IDENTIFIER0][LOCAL[as][bgp-ls-identifier0.0.0.0][bgp-router-id0.0.0.0]"
                              "[ipv4-router-id0.0.0.0][ipv6-router-id::]]" +
                              te;
    for (const std::size_t size : {1, 2, 13, 100, 768}) {
        EXPECT_EQ(whole.substr(0, size - 1), printed("SYSDT_LS_TePolicyKeyToStr", key, size));
    }
    for (const char *name : {"SYSDT_LS_NodeKeyToStr", "SYSDT_LS_LinkKeyToStr", "SYSDT_LS_Ipv4PrefixKeyToStr",
                             "SYSDT_LS_Ipv6PrefixKeyToStr", "SYSDT_LS_Srv6SidKeyToStr"}) {
        EXPECT_TRUE(printed(name, key, 768).starts_with("[TEPOLICY][][IDENTIFIER0][LOCAL[as]")) << name;
        std::uint32_t length = 0;
        char text[8] = "x";
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, exported<Printer>(name)(nullptr, text, 8, &length)) << name;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, exported<Printer>(name)(&key, nullptr, 8, &length)) << name;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, exported<Printer>(name)(&key, text, 8, nullptr)) << name;
        EXPECT_EQ(SYSDT_ERR_FAIL, exported<Printer>(name)(&key, text, 0, &length)) << name;
        EXPECT_STREQ("x", text) << name;
    }
}

TEST_F(BgpLsTest, WholeKeysArePrintedByTheirRouteType)
{
    auto *print = exported<std::uint32_t(const SYSDT_LsPrefix *, char *, std::uint32_t *)>("SYSDT_LsPrefix2Str");
    SYSDT_LsPrefix key{};
    key.head.routeType = 9;
    char text[513] = "x";
    std::uint32_t length = 77;
    EXPECT_EQ(SYSDT_ERR_FAIL, print(&key, text, &length));
    EXPECT_STREQ("x", text);
    key.head.routeType = SYSDT_LS_NODE;
    EXPECT_EQ(SYSDT_OK, print(&key, text, &length));
    EXPECT_STREQ("[NODE][][IDENTIFIER0][LOCAL[as][bgp-ls-identifier0.0.0.0][ospf-area-id0.0.0.0][igp-router-id]]",
                 text);
    EXPECT_EQ(std::strlen(text), length);
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(nullptr, text, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&key, nullptr, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&key, text, nullptr));
}

TEST_F(BgpLsTest, NamesAreCutToTheirBuffer)
{
    using Name = std::uint32_t(std::uint32_t, char *, std::uint32_t);
    auto *protocol = exported<Name>("SYSDT_LS_ProtclTypeEnum2Str");
    auto *route_type = exported<Name>("SYSDT_LS_RouteTypeEnum2Str");
    const auto expect = [](Name *name, std::uint32_t value, std::uint32_t size, const char *wanted) {
        char text[32] = "unchanged";
        EXPECT_EQ(SYSDT_OK, name(value, text, size));
        EXPECT_STREQ(wanted, text) << value;
    };
    const char *const types[] = {"unchanged",   "NODE",     "LINK",     "IPV4-PREFIX",
                                 "IPV6-PREFIX", "TEPOLICY", "SRV6-SID", "unchanged"};
    for (std::uint32_t i = 0; i < std::size(types); ++i) {
        expect(route_type, i, 32, types[i]);
    }
    const char *const protocols[] = {"unchanged", "ISIS-LEVEL-1",    "ISIS-LEVEL-2", "OSPFv2",
                                     "DIRECT",    "STATIC",          "OSPFv3",       "BGP",
                                     "unchanged", "SEGMENT-ROUTING", "unchanged"};
    for (std::uint32_t i = 0; i < std::size(protocols); ++i) {
        expect(protocol, i, 32, protocols[i]);
    }
    expect(protocol, 9, 8, "SEGMENT");
    expect(route_type, 5, 1, "");
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, protocol(1, nullptr, 32));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, route_type(9, nullptr, 32));
}

TEST_F(BgpLsTest, TheUnspecifiedAddressIsAllZero)
{
    auto *unspecified = exported<std::uint32_t(const std::uint8_t *)>("SYSDT_ipv6AddrUnSpecified");
    std::uint8_t address[16]{};
    EXPECT_EQ(1u, unspecified(address));
    for (std::uint8_t &byte : address) {
        byte = 0x80;
        EXPECT_EQ(0u, unspecified(address));
        byte = 0;
    }
}

} // namespace

} // namespace bgpdt::test
