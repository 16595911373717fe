// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The exported helpers that no type's callbacks show as they are.
#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/attack_host.hpp"
#include "support/conversion.hpp"
#include "support/guarded.hpp"
#include "support/plugin_test.hpp"

namespace bgpdt::test::contract {

namespace {

constexpr std::uint32_t untouched = 0xA5A5A5A5;

using ContractTest = PluginTest;

/// The text flush against an inaccessible page.
Guarded guarded_text(const std::string &text)
{
    return Guarded(std::span(reinterpret_cast<const std::uint8_t *>(text.c_str()), text.size() + 1));
}

const char *characters(const Guarded &text) { return reinterpret_cast<const char *>(text.constant()); }

TEST_F(ContractTest, LeadingNumber)
{
    struct Case {
        const char *text;
        std::int32_t result;
        std::uint32_t number;
    };
    auto *atoul = exported<decltype(SYSDT_atoul)>("SYSDT_atoul");
    for (const Case &sample :
         {Case{"12ab", 0, 12}, Case{"ab", -1, 0}, Case{"", -1, 0}, Case{" \t12", 0, 12}, Case{"+12", 0, 12},
          Case{"-1", 0, 4294967295U}, Case{"4294967295", 0, 4294967295U}, Case{"4294967296", -1, 0}, Case{"0", 0, 0},
          Case{"007", 0, 7}, Case{"-", -1, 0}, Case{"0x1f", 0, 0}, Case{"1 2", 0, 1}}) {
        SCOPED_TRACE(sample.text);
        const Guarded text = guarded_text(sample.text);
        std::uint32_t number = untouched;
        EXPECT_EQ(sample.result, atoul(characters(text), &number));
        EXPECT_EQ(sample.number, number);
    }
}

TEST_F(ContractTest, LeadingNumberNeedsItsPointers)
{
    auto *atoul = exported<decltype(SYSDT_atoul)>("SYSDT_atoul");
    std::uint32_t number = untouched;
    EXPECT_EQ(-1, atoul(nullptr, &number));
    EXPECT_EQ(untouched, number);
    EXPECT_EQ(-1, atoul("12", nullptr));
}

TEST_F(ContractTest, DotsInANumber)
{
    struct Case {
        const char *text;
        std::uint32_t dots;
    };
    auto *dots = exported<decltype(SYSDT_getStrDotNum)>("SYSDT_getStrDotNum");
    for (const Case &sample : {Case{"", 0}, Case{"1", 0}, Case{"1.2.3", 2}, Case{"...", 3}, Case{".", 1},
                               Case{"0123456789", 0}, Case{"1.a", SYSDT_ERR_FAIL}, Case{"a", SYSDT_ERR_FAIL},
                               Case{"1 2", SYSDT_ERR_FAIL}, Case{"1.2 ", SYSDT_ERR_FAIL}, Case{"-1", SYSDT_ERR_FAIL},
                               Case{"1:2", SYSDT_ERR_FAIL}, Case{"1/2", SYSDT_ERR_FAIL}}) {
        SCOPED_TRACE(sample.text);
        const Guarded text = guarded_text(sample.text);
        EXPECT_EQ(sample.dots, dots(characters(text)));
    }
}

TEST_F(ContractTest, HexadecimalDigits)
{
    static const std::string digits = "0123456789abcdefABCDEF";
    auto *is_hex = exported<decltype(BGP_DATATYPE_IsHex)>("BGP_DATATYPE_IsHex");
    for (std::uint32_t character = 0; character < 256; ++character) {
        const bool expected = character != 0 && digits.find(static_cast<char>(character)) != std::string::npos;
        for (const std::uint32_t above : {0U, 0x100U, 0xFFFFFF00U})
            EXPECT_EQ(expected ? 1U : 0U, is_hex(character | above)) << character;
    }
}

TEST_F(ContractTest, SectionPositions)
{
    auto *note = exported<decltype(SYSDT_GetSectionPos)>("SYSDT_GetSectionPos");
    const auto noted = [&](std::uint32_t section, std::uint32_t position, std::uint32_t status) {
        Guarded page(3 * sizeof(std::uint32_t));
        auto *positions = reinterpret_cast<std::uint32_t *>(page.data());
        EXPECT_EQ(status, note(section, position, positions));
        EXPECT_TRUE(page.intact());
        return std::vector<std::uint32_t>(positions, positions + 3);
    };
    using Positions = std::vector<std::uint32_t>;
    EXPECT_EQ((Positions{untouched, untouched, untouched}), noted(0, 10, 0));
    EXPECT_EQ((Positions{1, untouched, untouched}), noted(1, 0, 0));
    EXPECT_EQ((Positions{untouched, 6, untouched}), noted(2, 5, 0));
    EXPECT_EQ((Positions{untouched, untouched, 11}), noted(3, 10, 0));
    EXPECT_EQ((Positions{untouched, untouched, untouched}), noted(4, 10, SYSDT_ERR_FAIL));
    EXPECT_EQ((Positions{untouched, untouched, untouched}), noted(0xFFFFFFFF, 10, SYSDT_ERR_FAIL));
}

class AsNumberParserTest : public ContractTest {
protected:
    struct Case {
        const char *text;
        std::uint32_t status;
        std::uint32_t number;
        std::uint32_t notation;
    };

    void expect(const char *parser, std::initializer_list<Case> cases) const
    {
        auto *parse = exported<decltype(SYSDT_Str2AsNum)>(parser);
        for (const Case &sample : cases) {
            SCOPED_TRACE(std::string(parser) + " of " + sample.text);
            Guarded text = guarded_text(sample.text);
            SYSDT_AsNum value{untouched, untouched};
            EXPECT_EQ(sample.status, parse(reinterpret_cast<char *>(text.data()), &value));
            EXPECT_EQ(sample.number, std::uint32_t{value.asNumValue});
            EXPECT_EQ(sample.notation, std::uint32_t{value.asType});
        }
    }
    void expect_pointers_needed(const char *parser) const
    {
        auto *parse = exported<decltype(SYSDT_Str2AsNum)>(parser);
        SYSDT_AsNum value{untouched, untouched};
        Guarded text = guarded_text("1");
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(nullptr, &value));
        EXPECT_EQ(untouched, std::uint32_t{value.asNumValue});
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(reinterpret_cast<char *>(text.data()), nullptr));
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(nullptr, nullptr));
    }
};

// The notation is stored before the range of a dotted number is looked at, the number only behind that.
TEST_F(AsNumberParserTest, StatusAndWhatAFailureLeaves)
{
    for (const char *parser : {"SYSDT_Str2AsNum", "SYSDT_Str2AsNumExt"}) {
        expect_pointers_needed(parser);
        expect(parser, {{"64496", 0, 64496, 0},
                        {" 1.10\t", 0, 65546, 1},
                        {"65536.1", SYSDT_ERR_FAIL, untouched, 1},
                        {"1.65536", SYSDT_ERR_FAIL, untouched, 1},
                        {"0.5", SYSDT_ERR_FAIL, untouched, untouched},
                        {"4294967296", SYSDT_ERR_FAIL, untouched, untouched},
                        {"1.2.3", SYSDT_ERR_FAIL, untouched, untouched},
                        {"+5", SYSDT_ERR_FAIL, untouched, untouched},
                        {"", SYSDT_ERR_FAIL, untouched, untouched}});
    }
}

TEST_F(AsNumberParserTest, OnlyTheExtendedOneTakesZero)
{
    expect("SYSDT_Str2AsNum", {{"0", SYSDT_ERR_FAIL, untouched, untouched}});
    expect("SYSDT_Str2AsNumExt", {{"0", 0, 0, 0}});
}

// Where there is no memory: what no name can be is refused, or read, before a copy is taken.
TEST_F(ContractTest, OnlyTheNameOfACommunityTakesMemory)
{
    auto *parse = exported<decltype(SYSDT_Str2Community)>("SYSDT_Str2Community");
    AttackHost &services = AttackHost::instance();
    const auto expect = [&](const std::string &sample, std::uint32_t status) {
        SYSDT_Community value{};
        Guarded text = guarded_text(sample);
        services.begin({.first = 1, .onward = true});
        EXPECT_EQ(status, parse(owner_handle, reinterpret_cast<char *>(text.data()), &value)) << sample;
        EXPECT_EQ(status == SYSDT_ERR_NO_MEMORY ? 1U : 0U, services.requests()) << sample;
    };
    for (const std::string &name : {std::string("no-export"), std::string("a"), std::string(19, 'a')})
        expect(name, SYSDT_ERR_NO_MEMORY);
    for (const std::string &none : {std::string(), std::string(" \t"), std::string("no export"), std::string(20, 'a'),
                                    std::string("1:2:3"), std::string("4294967296")})
        expect(none, SYSDT_ERR_FAIL);
    expect("64496:100", SYSDT_OK);
}

TEST_F(ContractTest, SeparatorsOfAnExtendedRouteTarget)
{
    auto *check = exported<decltype(SYSDT_CheckVrfRtExtStr)>("SYSDT_CheckVrfRtExtStr");
    std::uint32_t dots = untouched;
    std::uint32_t colons = untouched;
    std::uint32_t hyphens = untouched;
    const auto counts = [&](const std::string &sample, std::uint32_t d, std::uint32_t c, std::uint32_t h) {
        const Guarded text = guarded_text(sample);
        EXPECT_EQ(SYSDT_OK, check(characters(text), &dots, &colons, &hyphens)) << sample;
        EXPECT_TRUE(dots == d && colons == c && hyphens == h) << sample;
    };
    counts("192.0.2.1:100", 3, 1, 0);
    counts("0000-5E00-5301", 0, 0, 2);
    counts("afAF09", 0, 0, 0);
    counts(std::string(100, '-'), 0, 0, 100);
    for (const std::string &sample : {std::string(), std::string(101, '1'), std::string("1 :2"), std::string("g:1"),
                                      std::string("1:*"), std::string(" 1:1")}) {
        const Guarded text = guarded_text(sample);
        EXPECT_EQ(SYSDT_ERR_FAIL, check(characters(text), &dots, &colons, &hyphens)) << sample;
    }
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, check(nullptr, &dots, &colons, &hyphens));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, check("1", nullptr, &colons, &hyphens));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, check("1", &dots, nullptr, &hyphens));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, check("1", &dots, &colons, nullptr));
}

} // namespace

} // namespace bgpdt::test::contract
