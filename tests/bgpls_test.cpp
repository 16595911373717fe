// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What no record leads to: the tables of the BGP-LS grammar, the engine that walks them, and the printers by themselves.
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/attack_host.hpp"
#include "support/guarded.hpp"
#include "support/plugin_test.hpp"

namespace bgpdt::test::bgpls {

namespace {

/// A text that ends at an inaccessible page.
class Text {
public:
    explicit Text(const std::string &text)
        : page_({reinterpret_cast<const std::uint8_t *>(text.c_str()), text.size() + 1})
    {
    }
    const char *constant() const { return reinterpret_cast<const char *>(page_.constant()); }
    char *get() { return reinterpret_cast<char *>(page_.data()); }

private:
    Guarded page_;
};

class BgpLsTest : public PluginTest {
protected:
    AttackHost &services_ = AttackHost::instance();

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
    auto *cut = exported<decltype(SYSDT_GetLsPrefixSubString)>("SYSDT_GetLsPrefixSubString");
    const auto result = [&](const std::string &text, std::uint32_t size, const std::string &group) {
        const Text page(text);
        Guarded buffer(size);
        auto *out = reinterpret_cast<char *>(buffer.data());
        std::uint32_t length = 777;
        const std::uint32_t status = cut(page.constant(), out, size, &length);
        EXPECT_TRUE(buffer.intact()) << text;
        if (status == SYSDT_OK) {
            EXPECT_STREQ(group.c_str(), out) << text;
            EXPECT_EQ(group.size(), length) << text;
        }
        return status;
    };
    EXPECT_EQ(SYSDT_OK, result("[abc]", 8, "abc"));
    EXPECT_EQ(SYSDT_OK, result("[abc][def]", 8, "abc"));
    EXPECT_EQ(SYSDT_OK, result("[a[b]c]d", 8, "a[b]c"));
    EXPECT_EQ(SYSDT_OK, result("[abc]]", 8, "abc"));
    for (const char *text : {"", "abc]", "a[bc]", "]", "[", "[abc", "[a[b]", "[[abc]", "[a[]"})
        EXPECT_EQ(SYSDT_ERR_FAIL, result(text, 8, "")) << text;
    for (const std::size_t unclosed : {std::size_t{1} << 8, std::size_t{1} << 16})
        EXPECT_EQ(SYSDT_ERR_FAIL, result("[" + std::string(unclosed, '[') + "]", 70000, "")) << unclosed;
    // The group needs its NUL and one byte more.
    EXPECT_EQ(SYSDT_OK, result("[]", 2, ""));
    EXPECT_EQ(SYSDT_ERR_FAIL, result("[]", 1, ""));
    EXPECT_EQ(SYSDT_ERR_FAIL, result("[]", 0, ""));
    EXPECT_EQ(SYSDT_OK, result("[abc]", 5, "abc"));
    EXPECT_EQ(SYSDT_ERR_FAIL, result("[abc]", 4, ""));
    const std::string longest(498, 'a');
    EXPECT_EQ(SYSDT_OK, result("[" + longest + "]", 500, longest));
    EXPECT_EQ(SYSDT_ERR_FAIL, result("[" + longest + "a]", 500, ""));
    EXPECT_EQ(SYSDT_ERR_FAIL, result("[" + longest + "]", 499, ""));
    const std::string deep = std::string(200, '[') + std::string(200, ']');
    EXPECT_EQ(SYSDT_OK, result("[" + deep + "]x", 500, deep));
    EXPECT_EQ(SYSDT_ERR_FAIL, result("[" + deep, 500, ""));

    char buffer[8];
    std::uint32_t length = 0;
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, cut(nullptr, buffer, sizeof buffer, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, cut("[a]", nullptr, sizeof buffer, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, cut("[a]", buffer, sizeof buffer, nullptr));
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

TEST_F(BgpLsTest, KeywordsOfAKey)
{
    auto *find = exported<decltype(SYSDT_ParseLsPrefixFindPattern)>("SYSDT_ParseLsPrefixFindPattern");
    const auto *patterns = exported<const LsPrefixPattern>("g_bgplsPrefixPattern");
    for (std::uint32_t i = 0; i < 24; ++i) {
        const std::string keyword = patterns[i].keyword;
        const bool link_descriptor = i == 18; // begins with LINK, but is not just that
        EXPECT_EQ(patterns + (link_descriptor ? 1 : i), find(Text(keyword).constant(), patterns, 24)) << keyword;
        const LsPrefixPattern *longer = patterns[i].exact == 0 ? patterns + i : nullptr;
        if (keyword == "LINK" || keyword == "TEPOLICY")
            longer = patterns + (keyword == "LINK" ? 18 : 22);
        EXPECT_EQ(longer, find(Text(keyword + "#").constant(), patterns, 24)) << keyword;
        EXPECT_EQ(longer, find(Text(keyword + keyword).constant(), patterns, 24)) << keyword;
        EXPECT_EQ(nullptr, find(Text("#" + keyword).constant(), patterns, 24)) << keyword;
        EXPECT_EQ(nullptr, find(Text(keyword.substr(1)).constant(), patterns, 24)) << keyword;
    }
    for (const char *group : {"node", "Link", "ospfv2", "OSPFV2", "local[", "Index", "IPV4_PREFIX"})
        EXPECT_EQ(nullptr, find(group, patterns, 24)) << group;
}

/// A call of a handler of this file.
struct Call {
    std::uint32_t bit;
    std::string value;
    void *target;
    LsPrefixParseContext *context;

    bool operator==(const Call &) const = default;
};
std::vector<Call> calls;
constexpr std::uint32_t refusing_bit = 4;
constexpr std::uint32_t refusal = 0x12345;

std::uint32_t note(std::uint32_t bit, char *value, void *target, LsPrefixParseContext *context)
{
    calls.push_back({bit, value, target, context});
    return bit == refusing_bit ? refusal : SYSDT_OK;
}

TEST_F(BgpLsTest, GroupsGoToTheHandlersOfTheirRows)
{
    auto *parse = exported<decltype(SYSDT_ParseLsPrefixStr)>("SYSDT_ParseLsPrefixStr");
    const LsPrefixPattern table[] = {
        {"a", 1, 0, note}, {"ab", 2, 0, note},    {"refused", refusing_bit, 0, note},
        {"x", 8, 1, note}, {"n", 16, 0, nullptr},
    };
    int target = 0;
    LsPrefixParseContext context{};
    const auto expect = [&](std::uint32_t status, const std::string &text,
                            std::vector<std::pair<std::uint32_t, std::string>> wanted) {
        calls.clear();
        EXPECT_EQ(status, parse(Text(text).constant(), table, 5, &target, &context)) << text;
        std::vector<Call> all;
        for (const auto &[bit, value] : wanted)
            all.push_back({bit, value, &target, &context});
        EXPECT_TRUE(all == calls) << text;
    };
    expect(SYSDT_OK, "[a]", {{1, ""}});
    expect(SYSDT_OK, "[ab1][x][a[b][c]]", {{1, "b1"}, {8, ""}, {1, "[b][c]"}});
    expect(SYSDT_OK, "[a1][a2][a1]", {{1, "1"}, {1, "2"}, {1, "1"}});
    expect(refusal, "[a][refused!][x]", {{1, ""}, {refusing_bit, "!"}});
    expect(SYSDT_ERR_FAIL, "", {});
    expect(SYSDT_ERR_FAIL, "a", {});
    expect(SYSDT_ERR_FAIL, "[]", {});
    expect(SYSDT_ERR_FAIL, "[n]", {}); // no handler
    expect(SYSDT_ERR_FAIL, "[y]", {});
    expect(SYSDT_ERR_FAIL, "[x1]", {});
    expect(SYSDT_ERR_FAIL, "[a", {});
    expect(SYSDT_ERR_FAIL, "[a]-[a]", {{1, ""}});
    expect(SYSDT_ERR_FAIL, "[a]]", {{1, ""}});
    expect(SYSDT_ERR_FAIL, "[a][", {{1, ""}});
    expect(SYSDT_ERR_FAIL, "[a][y][a]", {{1, ""}});
    const std::string deep = std::string(200, '[') + std::string(200, ']');
    expect(SYSDT_OK, "[a" + deep + "][x]", {{1, deep}, {8, ""}});
    expect(SYSDT_ERR_FAIL, "[a" + deep + "[x]", {});
    const std::string longest(497, 'b');
    expect(SYSDT_OK, "[a" + longest + "][x]", {{1, longest}, {8, ""}});
    expect(SYSDT_ERR_FAIL, "[a" + longest + "b][x]", {});
    expect(SYSDT_ERR_FAIL, std::string(600, '['), {});

    EXPECT_EQ(SYSDT_ERR_FAIL, parse("[a]", table, 0, &target, &context));
    expect_pointers_needed<decltype(SYSDT_ParseLsPrefixStr)>("SYSDT_ParseLsPrefixStr", SYSDT_ERR_NULL_PTR, "[a]",
                                                             &table[0], 5U, static_cast<void *>(&target), &context);
    auto *find = exported<decltype(SYSDT_ParseLsPrefixFindPattern)>("SYSDT_ParseLsPrefixFindPattern");
    EXPECT_EQ(nullptr, find(nullptr, table, 5));
    EXPECT_EQ(nullptr, find("a", nullptr, 5));
}

TEST_F(BgpLsTest, TheEntryParsesTheGroupsOfAKey)
{
    auto *parse = exported<decltype(BgpLsParseLsPrefixEntry)>("BgpLsParseLsPrefixEntry");
    const auto status_of = [&](const char *text, SYSDT_LsPrefix &key, LsPrefixParseContext &context) {
        context.parsers = exported<const LsPrefixNlriParser>("g_bgplsPrefixParsers");
        context.rowCount = SYSDT_LS_ROUTE_TYPES;
        return parse(Text(text).constant(), &key, &context);
    };
    SYSDT_LsPrefix key{};
    LsPrefixParseContext context{};
    EXPECT_EQ(SYSDT_OK, status_of("[NODE][IDENTIFIER7][OSPFv2][LOCAL[bgp-ls-identifier192.0.2.1]]", key, context));
    EXPECT_EQ(0x00FU, context.seen);
    EXPECT_EQ(1U, std::uint32_t{key.head.routeType});
    EXPECT_EQ(std::uint32_t{SYSDT_LS_OSPFV2}, std::uint32_t{key.head.protocolId});
    EXPECT_EQ(0xC0000201U, std::uint32_t{key.node.local.bgpLsId});

    for (const char *text : {"", "NODE", "[NODE", "[NODE]]", "[NODE][y]", "[NODE][RSVP-TE]", "[NODE][NODE]"}) {
        SYSDT_LsPrefix refused{};
        LsPrefixParseContext of_refused{};
        EXPECT_EQ(SYSDT_ERR_FAIL, status_of(text, refused, of_refused)) << text;
    }
    expect_pointers_needed<decltype(BgpLsParseLsPrefixEntry)>("BgpLsParseLsPrefixEntry", SYSDT_ERR_NULL_PTR, "[NODE]",
                                                              &key, &context);
}

TEST_F(BgpLsTest, AGroupWithinOneHasNoMoreCharactersThanAGroup)
{
    const auto status_of = [&](std::size_t zeros) {
        SYSDT_LsPrefix key{};
        LsPrefixParseContext context{};
        context.row = exported<const LsPrefixNlriParser>("g_bgplsPrefixParsers") + SYSDT_LS_LINK;
        context.protocolId = SYSDT_LS_OSPFV2;
        Text value("[mt-id" + std::string(zeros, '0') + "1]");
        return exported<BgpLsHandler>("BgpLsParseLink")(0x020, value.get(), &key, &context);
    };
    EXPECT_EQ(SYSDT_OK, status_of(498 - 5 - 1));
    EXPECT_EQ(SYSDT_ERR_FAIL, status_of(498 - 5));
}

TEST_F(BgpLsTest, ARouteTypeWithoutARowIsRefused)
{
    const auto *rows = exported<const LsPrefixNlriParser>("g_bgplsPrefixParsers");
    const auto status_of = [&](const char *handler, SYSDT_LsPrefix &key, LsPrefixParseContext &context) {
        context.parsers = rows;
        context.rowCount = 2;
        char value[] = "";
        return exported<BgpLsHandler>(handler)(1, value, &key, &context);
    };
    SYSDT_LsPrefix node{};
    LsPrefixParseContext of_node{};
    EXPECT_EQ(SYSDT_OK, status_of("BgpLsParseTypeNode", node, of_node));
    EXPECT_EQ(rows + 1, of_node.row);
    EXPECT_EQ(1U, of_node.seen);
    SYSDT_LsPrefix link{};
    LsPrefixParseContext of_link{};
    EXPECT_EQ(SYSDT_ERR_FAIL, status_of("BgpLsParseTypeLink", link, of_link));
    EXPECT_EQ(nullptr, of_link.row);
    EXPECT_EQ(0U, of_link.seen);
    EXPECT_EQ(2U, of_link.routeType);
    EXPECT_EQ(2U, std::uint32_t{link.head.routeType});
}

TEST_F(BgpLsTest, AllThatARouteTypeRequiresMustHaveBeenSeen)
{
    auto *check = exported<decltype(SYSDT_Str2LsPrefixPostCheck)>("SYSDT_Str2LsPrefixPostCheck");
    const auto *rows = exported<const LsPrefixNlriParser>("g_bgplsPrefixParsers");
    const SYSDT_LsPrefix key{};
    LsPrefixParseContext context{};
    context.seen = 0xFFFFFFFF;
    EXPECT_EQ(SYSDT_ERR_FAIL, check(&key, &context)); // no route type
    expect_pointers_needed<decltype(SYSDT_Str2LsPrefixPostCheck)>(
        "SYSDT_Str2LsPrefixPostCheck", SYSDT_ERR_NULL_PTR, &key, static_cast<const LsPrefixParseContext *>(&context));
    for (std::uint32_t type = 1; type < SYSDT_LS_ROUTE_TYPES; ++type) {
        context.row = rows + type;
        for (const std::uint32_t seen : {context.row->required, context.row->required | 0x0C0, 0xFFFFFFFF}) {
            context.seen = seen;
            EXPECT_EQ(SYSDT_OK, check(&key, &context)) << type;
        }
        for (std::uint32_t bit = 1; bit <= context.row->required; bit <<= 1) {
            context.seen = ~bit;
            EXPECT_EQ((context.row->required & bit) == 0 ? SYSDT_OK : SYSDT_ERR_FAIL, check(&key, &context))
                << type << " without " << bit;
        }
    }
}

TEST_F(BgpLsTest, ContextsAreBlocksOfThePlainAllocator)
{
    auto *create = exported<decltype(SYSDT_CreateLsPrefixParseContext)>("SYSDT_CreateLsPrefixParseContext");
    const auto *rows = exported<const LsPrefixNlriParser>("g_bgplsPrefixParsers");
    SYSDT_LsPrefix key{};
    services_.begin();
    Text text(" \t[NODE] \n");
    LsPrefixParseContext *context = create(text.get(), &key, rows, SYSDT_LS_ROUTE_TYPES);
    ASSERT_NE(nullptr, context);
    const Block *block = services_.find(context);
    ASSERT_NE(nullptr, block);
    EXPECT_FALSE(block->handle.has_value());
    EXPECT_STREQ("[NODE]", context->text);
    EXPECT_EQ(6U, context->length);
    EXPECT_EQ(0U, context->seen);
    EXPECT_EQ(&key, context->output);
    EXPECT_EQ(0U, context->routeType);
    EXPECT_EQ(0U, context->protocolId);
    EXPECT_EQ(nullptr, context->row);
    EXPECT_EQ(rows, context->parsers);
    EXPECT_EQ(7U, context->rowCount);
    services_.release(context);

    const auto is_created = [&](const std::string &content) {
        Text page(content);
        void *created = create(page.get(), &key, rows, SYSDT_LS_ROUTE_TYPES);
        services_.release(created);
        return created != nullptr;
    };
    const std::string longest(500, 'a');
    EXPECT_TRUE(is_created(longest));
    EXPECT_TRUE(is_created("  " + longest + "  "));
    EXPECT_TRUE(is_created("a"));
    EXPECT_FALSE(is_created(longest + "a"));
    EXPECT_FALSE(is_created(""));
    EXPECT_FALSE(is_created(" \t "));
    for (const char blank : std::string(" \t\n\v\f\r"))
        EXPECT_FALSE(is_created(std::string("a") + blank + "b"));
    EXPECT_EQ(nullptr, create(nullptr, &key, rows, SYSDT_LS_ROUTE_TYPES));
    EXPECT_EQ(nullptr, create(text.get(), nullptr, rows, SYSDT_LS_ROUTE_TYPES));
    EXPECT_EQ(nullptr, create(text.get(), &key, nullptr, SYSDT_LS_ROUTE_TYPES));
    EXPECT_EQ(0U, services_.live());
    EXPECT_EQ(std::vector<std::string>{}, services_.settle());
    services_.begin({1, true});
    EXPECT_FALSE(is_created("[NODE]"));
}

TEST_F(BgpLsTest, NoBlockIsLeftBehindWhateverTheText)
{
    auto *parse = exported<decltype(SYSDT_Str2LSPrefix)>("SYSDT_Str2LSPrefix");
    const auto status_of = [&](const std::string &content, Failing failing = {}) {
        Text text(content);
        Guarded key(SYSDT_LS_SIZE);
        services_.begin(failing);
        const std::uint32_t status = parse(text.get(), reinterpret_cast<SYSDT_LsPrefix *>(key.data()));
        EXPECT_TRUE(key.intact()) << content;
        EXPECT_EQ(0U, services_.live()) << content;
        EXPECT_EQ(std::vector<std::string>{}, services_.settle()) << content;
        return status;
    };
    const std::string head = "[OSPFv2][IDENTIFIER0]";
    const std::string local = "[LOCAL[bgp-ls-identifier192.0.2.1]]";
    const std::string deep = std::string(200, '[') + std::string(200, ']');
    EXPECT_EQ(SYSDT_OK, status_of("[NODE]" + head + local));
    EXPECT_EQ(SYSDT_ERR_FAIL, status_of("[NODE]" + head + local, {1, true}));
    EXPECT_EQ(SYSDT_OK, status_of("[NODE]" + head + local + "[UNKNOWN" + deep + "]"));
    EXPECT_EQ(SYSDT_OK, status_of("[NODE]" + head + "[index" + deep + "]" + local));
    const std::string link_ids = "[LINK[link-local-id0.0.0.1][link-remote-id0.0.0.2]]";
    EXPECT_EQ(SYSDT_OK, status_of("[LINK]" + head +
                                  "[LOCAL[bgp-ls-identifier192.0.2.1][ospf-area-id0.0.0.0]]"
                                  "[REMOTE[bgp-ls-identifier192.0.2.2]]" +
                                  link_ids));
    for (const std::string &text : {std::string(),
                                    std::string("["),
                                    std::string("]"),
                                    std::string("NODE"),
                                    std::string("[NODE"),
                                    std::string("[NODE]"),
                                    std::string("[OSPFv2][NODE]"),
                                    std::string("[NODE][NODE]"),
                                    "[NODE]" + head + head + local,
                                    "[NODE][RSVP-TE][IDENTIFIER0]" + local,
                                    "[NODE]" + head + local + "]",
                                    "[NODE]" + head + local + "[",
                                    "[NODE]" + head + "[LOCAL[as64496]]",
                                    "[NODE]" + head + "[LOCAL]",
                                    "[NODE]" + head + "[LOCAL[as0][bgp-ls-identifier192.0.2.1]]",
                                    "[NODE]" + head + "[LOCAL[bgp-ls-identifier192.0.2.1][igp-router-idx]]",
                                    "[NODE]" + head + "[REMOTE]" + local,
                                    "[NODE]" + head + local + "[LINK[mt-id1]]", // a node has none
                                    "[NODE]" + head + local + "[PREFIX[mt-id1]]",
                                    "[NODE]" + head + local + "[TE[Flag1]]",
                                    "[NODE]" + head + local + "[SID[sid2001:db8::1]]",
                                    "[NODE]" + head + "[LOCAL" + deep + "]",
                                    "[NODE]" + head + local + "[UNKNOWN" + deep + "[]",
                                    "[NODE] " + head + local,
                                    "[NODE]" + head + local + "[UNKNOWN" + std::string(430, 'a') + "]",
                                    std::string(500, '['),
                                    std::string(501, '['),
                                    "[LINK]" + head + local + link_ids,
                                    "[LINK]" + head + "[LINK[mt-idx]]",
                                    "[IPV4-PREFIX]" + head + "[PREFIX[prefix192.0.2.0]]",
                                    "[IPV6-PREFIX]" + head + "[PREFIX[prefix192.0.2.0/24]]",
                                    "[TEPOLICY]" + head + "[TE[Flag256]]",
                                    "[TEPOLICY]" + head + local + "[TE[Flag1]]",
                                    "[SRV6-SID]" + head + "[SID[sid192.0.2.1]]",
                                    "[SRV6-SID]" + head + "[SID[mt-id1]]"})
        EXPECT_EQ(SYSDT_ERR_FAIL, status_of(text)) << text;
}

TEST_F(BgpLsTest, FieldsOfANode)
{
    auto *parse = exported<decltype(BgpLsParseNodeDesc)>("BgpLsParseNodeDesc");
    const auto parsed = [&](const std::string &text, LsNodeDescScratch &scratch, std::uint32_t route_type,
                            std::uint32_t protocol) {
        LsPrefixParseContext context{};
        context.seen = 0x003;
        context.routeType = route_type;
        context.protocolId = protocol;
        scratch = {};
        return parse(Text(text).constant(), &scratch, &context);
    };
    LsNodeDescScratch scratch;
    EXPECT_EQ(SYSDT_OK, parsed("[ipv6-router-id2001:db8::1][ipv4-router-id192.0.2.4][member-as1.2][bgp-router-id100]"
                               "[igp-router-id192.0.2.2/192.0.2.3][ospf-area-id0.0.0.1][bgp-ls-identifier192.0.2.1]"
                               "[as64496]",
                               scratch, SYSDT_LS_LINK, SYSDT_LS_OSPFV2));
    EXPECT_EQ(0xFFU, scratch.seen);
    EXPECT_EQ(64496U, std::uint32_t{scratch.as.asNumValue});
    EXPECT_EQ(0U, std::uint32_t{scratch.as.asType});
    EXPECT_EQ(0xC0000201U, scratch.bgpLsId);
    EXPECT_EQ(0x00010002U, std::uint32_t{scratch.memberAs.asNumValue});
    EXPECT_EQ(1U, std::uint32_t{scratch.memberAs.asType});
    EXPECT_EQ(100U, scratch.bgpRouterId);
    EXPECT_EQ(1U, scratch.ospfArea);
    EXPECT_EQ(0xC0000204U, scratch.ipv4RouterId);
    const std::uint8_t ipv6[16] = {0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
    EXPECT_EQ(0, std::memcmp(ipv6, scratch.ipv6RouterId, sizeof ipv6));
    const std::uint8_t ospf_router[SYSDT_LS_ROUTER_ID_SIZE] = {192, 0, 2, 2, 192, 0, 2, 3};
    EXPECT_EQ(0, std::memcmp(ospf_router, scratch.igpRouterId, sizeof ospf_router));

    EXPECT_EQ(SYSDT_OK, parsed("[igp-router-id0000.5E00.5301.02]", scratch, SYSDT_LS_NODE, SYSDT_LS_ISIS_LEVEL_2));
    const std::uint8_t isis_router[SYSDT_LS_ROUTER_ID_SIZE] = {0x00, 0x00, 0x5E, 0x00, 0x53, 0x01, 0x02};
    EXPECT_EQ(0, std::memcmp(isis_router, scratch.igpRouterId, sizeof isis_router));
    EXPECT_EQ(0x08U, scratch.seen);

    EXPECT_EQ(SYSDT_OK, parsed("[bgp-router-id192.0.2.1][as]", scratch, SYSDT_LS_TE_POLICY, SYSDT_LS_BGP));
    EXPECT_EQ(0xC0000201U, scratch.bgpRouterId);
    EXPECT_EQ(0x10U, scratch.seen); // an empty AS number is as none
    EXPECT_EQ(SYSDT_ERR_FAIL, parsed("[bgp-router-id100]", scratch, SYSDT_LS_TE_POLICY, SYSDT_LS_BGP));
    EXPECT_EQ(SYSDT_ERR_FAIL, parsed("[igp-router-id192.0.2.2]", scratch, SYSDT_LS_LINK, SYSDT_LS_BGP));
    EXPECT_EQ(SYSDT_ERR_FAIL, parsed("[as1][as1]", scratch, SYSDT_LS_LINK, SYSDT_LS_BGP));
    EXPECT_EQ(SYSDT_ERR_FAIL, parsed("[as1][AS1]", scratch, SYSDT_LS_LINK, SYSDT_LS_BGP));
}

/// A key whose every text is as long as it gets.
template <class Part>
SYSDT_LsPrefix key_of(std::uint32_t route_type, std::uint32_t protocol, Part part)
{
    part.head = {route_type, protocol, 0xFFFFFFFFFFFFFFFF};
    SYSDT_LsPrefix key{};
    std::memcpy(&key, &part, sizeof part);
    return key;
}

constexpr SYSDT_AsNum dotted_as{0xFBF0FBFF, 1};
constexpr SYSDT_AsNum plain_as{64496, 0};

SYSDT_LsNodeDesc full_node()
{
    SYSDT_LsNodeDesc node{dotted_as, 0xC0000201, 0xFFFFFFFF, {}};
    std::memset(node.igpRouterId, 'r', sizeof node.igpRouterId);
    return node;
}

SYSDT_LsMemberNodeDesc full_member_node(std::uint32_t bgp_ls_id)
{
    SYSDT_LsMemberNodeDesc node{dotted_as, bgp_ls_id, plain_as, 0xFFFFFFFF, {}};
    std::memset(node.igpRouterId, 'r', sizeof node.igpRouterId);
    return node;
}

const std::string igp_fields =
    "[as64496.64511][bgp-ls-identifier192.0.2.1][ospf-area-id255.255.255.255][igp-router-id" + std::string(49, 'r') +
    "]]";
const std::string identifier = "[IDENTIFIER18446744073709551615]";
constexpr std::uint8_t long_ipv6[16] = {0x20, 0x01, 0x0D, 0xB8, 0x11, 0x11, 0x22, 0x22,
                                        0x33, 0x33, 0x44, 0x44, 0x55, 0x55, 0x66, 0x66};
const std::string long_ipv6_text = "2001:db8:1111:2222:3333:4444:5555:6666";

class BgpLsPrintTest : public BgpLsTest {
protected:
    /// In every size, the text as far as it fits with its NUL.
    void expect_in_every_size(const char *printer, const SYSDT_LsPrefix &key, const std::string &text) const
    {
        ASSERT_LT(text.size(), 600U);
        for (std::size_t size = 1; size <= 600; ++size)
            EXPECT_EQ(text.substr(0, size - 1), printed(printer, key, size)) << printer << " in " << size;
    }
};

TEST_F(BgpLsPrintTest, Nodes)
{
    const std::string fields = identifier + "[LOCAL" + igp_fields;
    for (const auto &[protocol, name] : {std::pair(SYSDT_LS_SEGMENT_ROUTING, "[NODE][SEGMENT-ROUTING]"),
                                         std::pair(SYSDT_LS_BGP, "[NODE][BGP]"), std::pair(8U, "[NODE][]")}) {
        expect_in_every_size("SYSDT_LS_NodeKeyToStr", key_of(1, protocol, SYSDT_LsNode{{}, full_node()}),
                             name + fields);
    }
}

TEST_F(BgpLsPrintTest, Prefixes)
{
    const std::string fields = "[BGP]" + identifier + "[LOCAL" + igp_fields;
    SYSDT_LsIpv4Prefix ipv4{{}, full_node(), 5, 0xFFFFFFFF, 0xC6336400, 255};
    expect_in_every_size("SYSDT_LS_Ipv4PrefixKeyToStr", key_of(3, SYSDT_LS_BGP, ipv4),
                         "[IPV4-PREFIX]" + fields +
                             "[PREFIX[mt-id5][ospf-route-type4294967295][prefix198.51.100.0/255]]");
    ipv4.mtId = SYSDT_LS_NO_MT_ID;
    ipv4.prefixLength = 0;
    expect_in_every_size("SYSDT_LS_Ipv4PrefixKeyToStr", key_of(3, SYSDT_LS_BGP, ipv4),
                         "[IPV4-PREFIX]" + fields + "[PREFIX[ospf-route-type4294967295][prefix198.51.100.0/0]]");

    SYSDT_LsIpv6Prefix ipv6{{}, full_node(), 0, 1, {}, 128};
    std::memcpy(ipv6.prefix, long_ipv6, sizeof long_ipv6);
    expect_in_every_size("SYSDT_LS_Ipv6PrefixKeyToStr", key_of(4, SYSDT_LS_BGP, ipv6),
                         "[IPV6-PREFIX]" + fields + "[PREFIX[mt-id0][ospf-route-type1][prefix" + long_ipv6_text +
                             "/128]]");
    ipv6.mtId = SYSDT_LS_NO_MT_ID;
    expect_in_every_size("SYSDT_LS_Ipv6PrefixKeyToStr", key_of(4, SYSDT_LS_BGP, ipv6),
                         "[IPV6-PREFIX]" + fields + "[PREFIX[ospf-route-type1][prefix" + long_ipv6_text + "/128]]");
}

SYSDT_LsLink full_link()
{
    SYSDT_LsLink link{};
    link.local = full_member_node(0xC0000201);
    link.remote = full_member_node(0xC0000201);
    link.ipv4Interface = 0xC6336401;
    link.ipv4Neighbor = 0xC6336402;
    std::memcpy(link.ipv6Interface, long_ipv6, sizeof long_ipv6);
    link.ipv6Neighbor[15] = 1;
    link.mtId = 0xFFFFFFFE;
    link.localBgpRouterId = 0xCB007101;
    link.remoteBgpRouterId = 0xCB007102;
    return link;
}

TEST_F(BgpLsPrintTest, LinksOfAnIgp)
{
    constexpr const char *printer = "SYSDT_LS_LinkKeyToStr";
    const std::string nodes = "[LINK][OSPFv3]" + identifier + "[LOCAL" + igp_fields + "[REMOTE" + igp_fields;
    const std::string addresses =
        "[LINK[if-address198.51.100.1][peer-address198.51.100.2][if-address" + long_ipv6_text + "][peer-address::1]";
    SYSDT_LsLink link = full_link();
    expect_in_every_size(printer, key_of(2, SYSDT_LS_OSPFV3, link), nodes + addresses + "[mt-id4294967294]]");
    link.mtId = SYSDT_LS_NO_MT_ID;
    expect_in_every_size(printer, key_of(2, SYSDT_LS_OSPFV3, link), nodes + addresses + "]");
    link.linkRemoteId = 2;
    expect_in_every_size(printer, key_of(2, SYSDT_LS_OSPFV3, link),
                         nodes + "[LINK[link-local-id0.0.0.0][link-remote-id0.0.0.2]]");
    link.linkLocalId = 0xFFFFFFFF;
    link.linkRemoteId = 0;
    link.mtId = 0;
    expect_in_every_size(printer, key_of(2, SYSDT_LS_OSPFV3, link),
                         nodes + "[LINK[link-local-id255.255.255.255][link-remote-id0.0.0.0][mt-id0]]");
}

TEST_F(BgpLsPrintTest, LinksOfBgp)
{
    constexpr const char *printer = "SYSDT_LS_LinkKeyToStr";
    const std::string node = "[as64496.64511][bgp-ls-identifier192.0.2.1][bgp-router-id203.0.113.";
    const std::string begin = "[LINK][BGP]" + identifier + "[LOCAL" + node;
    SYSDT_LsLink link = full_link();
    link.linkLocalId = 1;
    expect_in_every_size(
        printer, key_of(2, SYSDT_LS_BGP, link),
        begin + "1][member-as64496]][REMOTE" + node +
            "2][member-as64496]][LINK[identifier0.0.0.1.0.0.0.0][local198.51.100.1][remote198.51.100.2]]");
    link.ipv4Interface = 0;
    link.remote.memberAs = dotted_as;
    link.local.memberAs = {0, 1};
    expect_in_every_size(printer, key_of(2, SYSDT_LS_BGP, link),
                         begin + "1]][REMOTE" + node +
                             "2][member-as64496.64511]][LINK[identifier0.0.0.1.0.0.0.0][local0.0.0.0]"
                             "[remote198.51.100.2]]");
    link.ipv4Neighbor = 0;
    expect_in_every_size(printer, key_of(2, SYSDT_LS_BGP, link),
                         begin + "1]][REMOTE" + node +
                             "2][member-as64496.64511]][LINK[identifier0.0.0.1.0.0.0.0][local" + long_ipv6_text +
                             "][remote::1]]");
}

TEST_F(BgpLsPrintTest, TePolicies)
{
    SYSDT_LsTePolicy policy{{},  plain_as, 0xC0000201,          0xCB007101, 0xCB007102, {},
                            255, 128,      {0xC6336401, {}, 0}, 0xFFFFFFFF, dotted_as,  {0xC6336402, {}, 1},
                            7};
    std::memcpy(policy.ipv6RouterId, long_ipv6, sizeof long_ipv6);
    std::memcpy(policy.originatorAddress.ipv6, long_ipv6, sizeof long_ipv6);
    const std::string local = "[TEPOLICY][SEGMENT-ROUTING]" + identifier +
                              "[LOCAL[as64496][bgp-ls-identifier192.0.2.1][bgp-router-id203.0.113.1]"
                              "[ipv4-router-id203.0.113.2][ipv6-router-id" +
                              long_ipv6_text + "]]";
    const std::string te = "[TE[protocol-origin255][Flag128][endpoint198.51.100.1][color4294967295]"
                           "[originator-as64496.64511][originator-address" +
                           long_ipv6_text + "][discriminator7]]";
    SYSDT_LsPrefix key = key_of(5, SYSDT_LS_SEGMENT_ROUTING, policy);
    expect_in_every_size("SYSDT_LS_TePolicyKeyToStr", key, local + te);
    expect_in_every_size("SYSDT_LS_TePolicy_TeKeyToStr", key, te);

    key.tePolicy.endpoint.family = 1;
    key.tePolicy.originatorAddress.family = 2;
    key.tePolicy.originatorAs = {0, 1};
    const std::string other = "[TE[protocol-origin255][Flag128][endpoint::][color4294967295]"
                              "[originator-as0][originator-address][discriminator7]]";
    expect_in_every_size("SYSDT_LS_TePolicyKeyToStr", key, local + other);
    expect_in_every_size("SYSDT_LS_TePolicy_TeKeyToStr", key, other);
}

TEST_F(BgpLsPrintTest, Srv6Sids)
{
    constexpr const char *printer = "SYSDT_LS_Srv6SidKeyToStr";
    SYSDT_LsSrv6Sid sid{{}, full_member_node(0xC0000201), 5, {}, 0xCB007101};
    std::memcpy(sid.sid, long_ipv6, sizeof long_ipv6);
    const std::string igp = "[SRV6-SID][ISIS-LEVEL-1]" + identifier + "[LOCAL" + igp_fields;
    const std::string bgp =
        "[SRV6-SID][BGP]" + identifier + "[LOCAL[as64496.64511][bgp-ls-identifier192.0.2.1][bgp-router-id203.0.113.1]";
    const std::string text = "[sid" + long_ipv6_text + "]]";
    expect_in_every_size(printer, key_of(6, SYSDT_LS_ISIS_LEVEL_1, sid), igp + "[SID[mt-id5]" + text);
    expect_in_every_size(printer, key_of(6, SYSDT_LS_BGP, sid), bgp + "[member-as64496]][SID" + text);
    sid.mtId = SYSDT_LS_NO_MT_ID;
    sid.local.memberAs = {};
    expect_in_every_size(printer, key_of(6, SYSDT_LS_ISIS_LEVEL_1, sid), igp + "[SID" + text);
    expect_in_every_size(printer, key_of(6, SYSDT_LS_BGP, sid), bgp + "][SID" + text);
}

TEST_F(BgpLsPrintTest, WholeKeysAreCutTo512Characters)
{
    auto *print = exported<decltype(SYSDT_LsPrefix2Str)>("SYSDT_LsPrefix2Str");
    SYSDT_LsLink link = full_link();
    link.local.bgpLsId = link.remote.bgpLsId = 0xFFFFFFFF;
    link.ipv4Interface = link.ipv4Neighbor = 0xFFFFFFFF;
    std::memcpy(link.ipv6Neighbor, long_ipv6, sizeof long_ipv6);
    const SYSDT_LsPrefix key = key_of(2, SYSDT_LS_SEGMENT_ROUTING, link);
    const std::string node = "[as64496.64511][bgp-ls-identifier255.255.255.255][ospf-area-id255.255.255.255]"
                             "[igp-router-id" +
                             std::string(49, 'r') + "]]";
    const std::string text = "[LINK][SEGMENT-ROUTING]" + identifier + "[LOCAL" + node + "[REMOTE" + node +
                             "[LINK[if-address255.255.255.255][peer-address255.255.255.255][if-address" +
                             long_ipv6_text + "][peer-address" + long_ipv6_text + "][mt-id4294967294]]";
    ASSERT_GT(text.size(), 512U);
    Guarded buffer(513);
    auto *out = reinterpret_cast<char *>(buffer.data());
    std::uint32_t length = 0;
    EXPECT_EQ(SYSDT_OK, print(&key, out, &length));
    EXPECT_EQ(text.substr(0, 512), out);
    EXPECT_EQ(512U, length);
    EXPECT_TRUE(buffer.intact());
    EXPECT_EQ(text, printed("SYSDT_LS_LinkKeyToStr", key, 768));
}

TEST_F(BgpLsPrintTest, TheLowByteOfTheRouteTypeTellsThePrinter)
{
    auto *print = exported<decltype(SYSDT_LsPrefix2Str)>("SYSDT_LsPrefix2Str");
    const char *const own_groups[] = {"",
                                      "",
                                      "[REMOTE",
                                      "[PREFIX[mt-id0][ospf-route-type0][prefix0.0.0.0/0]]",
                                      "[PREFIX[mt-id0][ospf-route-type0][prefix::/0]]",
                                      "[TE[",
                                      "[SID[mt-id0][sid::]]"};
    const char *const names[] = {
        "", "[NODE][]", "[LINK][]", "[IPV4-PREFIX][]", "[IPV6-PREFIX][]", "[TEPOLICY][]", "[SRV6-SID][]"};
    for (const std::uint32_t above : {0U, 0x100U, 0xFFFFFF00U}) {
        for (std::uint32_t type = 0; type < 256; ++type) {
            SYSDT_LsPrefix key{};
            key.head.routeType = type | above;
            char text[513] = "unchanged";
            std::uint32_t length = 0;
            if (type == 0 || type > 6) {
                EXPECT_EQ(SYSDT_ERR_FAIL, print(&key, text, &length)) << type;
                EXPECT_STREQ("unchanged", text) << type;
                EXPECT_EQ(0U, length) << type;
                continue;
            }
            EXPECT_EQ(SYSDT_OK, print(&key, text, &length)) << type;
            const std::string begin = above == 0 ? names[type] : "[][]";
            EXPECT_EQ(begin + "[IDENTIFIER0][LOCAL[as]", std::string(text).substr(0, begin.size() + 23)) << type;
            EXPECT_NE(nullptr, std::strstr(text, own_groups[type])) << text;
            EXPECT_EQ(std::strlen(text), length) << type;
        }
    }
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
    for (const std::size_t size : {1U, 2U, 13U, 100U, 768U})
        EXPECT_EQ(whole.substr(0, size - 1), printed("SYSDT_LS_TePolicyKeyToStr", key, size));
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
    std::uint32_t length = 0;
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
    for (std::uint32_t i = 0; i < std::size(types); ++i)
        expect(route_type, i, 32, types[i]);
    const char *const protocols[] = {"unchanged", "ISIS-LEVEL-1",    "ISIS-LEVEL-2", "OSPFv2",
                                     "DIRECT",    "STATIC",          "OSPFv3",       "BGP",
                                     "unchanged", "SEGMENT-ROUTING", "unchanged"};
    for (std::uint32_t i = 0; i < std::size(protocols); ++i)
        expect(protocol, i, 32, protocols[i]);
    for (std::uint32_t size = 1; size <= 20; ++size) {
        Guarded buffer(size);
        auto *text = reinterpret_cast<char *>(buffer.data());
        EXPECT_EQ(SYSDT_OK, protocol(9, text, size));
        EXPECT_EQ(std::string("SEGMENT-ROUTING").substr(0, size - 1), text);
        EXPECT_EQ(SYSDT_OK, route_type(4, text, size));
        EXPECT_EQ(std::string("IPV6-PREFIX").substr(0, size - 1), text);
        EXPECT_TRUE(buffer.intact());
    }
    Guarded nothing(0);
    protocol(9, reinterpret_cast<char *>(nothing.data()), 0);
    route_type(4, reinterpret_cast<char *>(nothing.data()), 0);
    EXPECT_TRUE(nothing.intact());
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

} // namespace bgpdt::test::bgpls
