// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "host/host.hpp"

namespace {

constexpr std::uint32_t untouched_number = 0x5A5A5A5A;

TEST(Numbers, DecimalTextOf32Bits)
{
    struct {
        const char *text;
        std::uint32_t number;
    } const good[] = {{"0", 0}, {"7", 7}, {"007", 7}, {"4294967295", 4294967295}, {"00000000004294967295", 4294967295}};
    const char *const bad[] = {"",  " 1", "1 ", "+1", "-1",         "1a",          "0x1",
                               "a", "1.", ".",  " ",  "4294967296", "10000000000", "99999999999999999999999"};
    for (const auto read : {SMP_StrToUint32, PAL_StrToUint32}) {
        for (const auto &[text, expected] : good) {
            std::uint32_t number = untouched_number;
            EXPECT_EQ(read(text, &number), SYSDT_OK) << text;
            EXPECT_EQ(number, expected) << text;
        }
        for (const char *text : bad) {
            std::uint32_t number = untouched_number;
            EXPECT_NE(read(text, &number), SYSDT_OK) << text;
            EXPECT_EQ(number, untouched_number) << text;
        }
        std::uint32_t number = untouched_number;
        EXPECT_NE(read(nullptr, &number), SYSDT_OK);
        EXPECT_NE(read("1", nullptr), SYSDT_OK);
    }
}

TEST(Numbers, DecimalTextOf64Bits)
{
    struct {
        const char *text;
        std::uint64_t number;
    } const good[] = {{"0", 0}, {"4294967296", 4294967296}, {"18446744073709551615", 18446744073709551615u}};
    for (const auto &[text, expected] : good) {
        std::uint64_t number = untouched_number;
        EXPECT_EQ(PAL_StrToUint64(text, &number), SYSDT_OK) << text;
        EXPECT_EQ(number, expected) << text;
    }
    for (const char *text : {"", "18446744073709551616", "20000000000000000000", "-1", "1 ", "0x1"}) {
        std::uint64_t number = untouched_number;
        EXPECT_NE(PAL_StrToUint64(text, &number), SYSDT_OK) << text;
        EXPECT_EQ(number, untouched_number) << text;
    }
}

TEST(Numbers, LeadingHexDigits)
{
    EXPECT_EQ(SMP_atoulx("0"), 0u);
    EXPECT_EQ(SMP_atoulx("ff"), 0xFFu);
    EXPECT_EQ(SMP_atoulx("DeadBeef"), 0xDEADBEEFu);
    EXPECT_EQ(SMP_atoulx("1G"), 1u);
    EXPECT_EQ(SMP_atoulx("12:34"), 0x12u);
    EXPECT_EQ(SMP_atoulx("0x12"), 0u); // a prefix is no digit
    EXPECT_EQ(SMP_atoulx(""), 0u);
    EXPECT_EQ(SMP_atoulx(" 1"), 0u);
    EXPECT_EQ(SMP_atoulx("-1"), 0u);
}

TEST(Numbers, WritesInAnyBase)
{
    struct {
        std::uint32_t value;
        std::uint32_t base;
        const char *text;
    } const samples[] = {
        {0, 10, "0"},    {4294967295, 10, "4294967295"},
        {255, 16, "ff"}, {4294967295, 2, "11111111111111111111111111111111"},
        {35, 36, "z"},   {8, 8, "10"},
    };
    for (const auto &[value, base, expected] : samples) {
        char buffer[34];
        EXPECT_EQ(PAL_Uint32ToStr(value, buffer, base), SYSDT_OK);
        EXPECT_STREQ(buffer, expected);
    }
    char buffer[34] = "kept";
    for (const std::uint32_t base : {0u, 1u, 37u}) {
        EXPECT_NE(PAL_Uint32ToStr(1, buffer, base), SYSDT_OK);
        EXPECT_STREQ(buffer, "kept");
    }
    EXPECT_NE(PAL_Uint32ToStr(1, nullptr, 10), SYSDT_OK);
}

TEST(Numbers, StrtoulIs32BitsWideEverywhere)
{
    struct {
        const char *text;
        int base;
        std::uint32_t number;
        int used; // characters before the end
    } const samples[] = {
        {"12ab", 10, 12, 2},
        {"  +12", 10, 12, 5},
        {"-1", 10, 4294967295, 2},
        {"-4294967295", 10, 1, 11},
        {"4294967295", 10, 4294967295, 10},
        {"4294967296", 10, 4294967295, 10},
        {"-4294967296", 10, 4294967295, 11},
        {"99999999999999999999999", 10, 4294967295, 23},
        {"-99999999999999999999999", 10, 4294967295, 24},
        {"0x1F", 16, 31, 4},
        {"0x1F", 0, 31, 4},
        {"010", 0, 8, 3},
        {"ab", 10, 0, 0},
        {"", 10, 0, 0},
    };
    for (const auto &[text, base, expected, used] : samples) {
        char *end = nullptr;
        EXPECT_EQ(PAL_strtoul(text, &end, base), expected) << text;
        EXPECT_EQ(end - text, used) << text;
        EXPECT_EQ(PAL_strtoul(text, nullptr, base), expected) << text;
    }
}

} // namespace
