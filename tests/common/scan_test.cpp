// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// scan: proved while this file is compiled, and compared with the C library where C defines the result.
#include "common/scan.hpp"

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <random>
#include <string>

using namespace bgpdt;

namespace {

template <FixedString Format, class Number>
struct One {
    int converted;
    Number number;
    bool operator==(const One &) const = default;
};

template <FixedString Format, class Number = u32>
constexpr auto one(const char *text)
{
    One<Format, Number> result{};
    result.converted = scan<Format>(text, result.number);
    return result;
}

template <FixedString Format, class Number = u32>
constexpr bool gives(const char *text, Number number)
{
    return one<Format, Number>(text) == One<Format, Number>{1, number};
}

template <FixedString Format, class Number = u32>
constexpr bool fails(const char *text)
{
    return one<Format, Number>(text).converted == 0;
}

// Digits, leading zeros, what follows.
static_assert(gives<"%u">("0", 0U) && gives<"%u">("007", 7U) && gives<"%u">("12ab", 12U));
static_assert(fails<"%u">("") && fails<"%u">("ab") && fails<"%u">(".1"));
// White space before a number is skipped, all six kinds of it; a sign is taken, one of them.
static_assert(gives<"%u">(" \t\n\v\f\r5", 5U) && gives<"%u">("+5", 5U) && fails<"%u">("+-5") && fails<"%u">("+ 5"));
// A negative unsigned number wraps.
static_assert(gives<"%u">("-1", 4294967295U) && gives<"%u">("-4294967295", 1U) && gives<"%u">("-0", 0U));
static_assert(gives<"%llu", u64>("-1", UINT64_MAX) && gives<"%hu", u16>("-1", u16{65535}));
// What does not fit does not convert.
static_assert(gives<"%u">("4294967295", 4294967295U) && fails<"%u">("4294967296") && fails<"%u">("-4294967296"));
static_assert(gives<"%u">("00000000004294967295", 4294967295U) && fails<"%u">("18446744073709551617"));
static_assert(gives<"%hu", u16>("65535", u16{65535}) && fails<"%hu", u16>("65536") && fails<"%hu", u16>("-65536"));
static_assert(gives<"%llu", u64>("18446744073709551615", UINT64_MAX) && fails<"%llu", u64>("18446744073709551616"));
static_assert(gives<"%d", i32>("2147483647", INT32_MAX) && fails<"%d", i32>("2147483648"));
static_assert(gives<"%d", i32>("-2147483648", INT32_MIN) && fails<"%d", i32>("-2147483649"));
// Hexadecimal: both cases, a prefix that needs a digit behind it, a width that counts sign and prefix.
static_assert(gives<"%x">("fF", 255U) && gives<"%x">("0x1f", 31U) && fails<"%x">("0x") && fails<"%x">("0xg"));
static_assert(gives<"%llx", u64>("ffffffffffffffff", UINT64_MAX) && fails<"%llx", u64>("10000000000000000"));
static_assert(gives<"%2x">("123", 0x12U) && gives<"%2x">("1g", 1U) && gives<"%2x">("-1", 0xFFFFFFFFU));
static_assert(fails<"%1x">("-0x5") && gives<"%2x">("-0x5", 0U) && fails<"%3x">("-0x5") && gives<"%4x">("+0x5", 5U));
static_assert(fails<"%2x">("g1") && fails<"%2x">(".1") && fails<"%2x">("0x1") && fails<"%2x">("-"));

// An address is four octets, each as "%u" reads it, in one number; it counts once, and only as a whole.
static_assert(gives<"%q">("192.0.2.1", 0xC0000201U) && gives<"%q">("0.10.255.99x", 0x000AFF63U));
static_assert(gives<"%q">("192.0.2.0001", 0xC0000201U) && gives<"%q">(" +192. 0.\t2.-4294967295", 0xC0000201U));
static_assert(fails<"%q">("192.0.2") && fails<"%q">("192.0.2.") && fails<"%q">("192.0:2.1") && fails<"%q">(""));
static_assert(fails<"%q">("256.0.2.1") && fails<"%q">("192.0.2.256") && fails<"%q">("192.0.2.4294967297"));
static_assert(fails<"%q">("192.+256.2.1") && fails<"%q">("192.0.-1.1") && fails<"%q">("192.0.2.+"));

constexpr bool counts_what_was_converted()
{
    u32 a = 0;
    u32 b = 0;
    u32 c = 9;
    return scan<"%u.%u:%u">("1.2", a, b, c) == 2 && a == 1 && b == 2 && c == 9 &&
           scan<"%u.%u:%u">("1.2:3", a, b, c) == 3 && c == 3 && scan<"%u.%u:%u">("x", a, b, c) == 0;
}
static_assert(counts_what_was_converted());

constexpr bool reads_groups_of_two()
{
    u16 a = 0;
    u16 b = 0;
    return scan<"%02hx%02hx-">("aabb-", a, b) == 2 && a == 0xAA && b == 0xBB;
}
static_assert(reads_groups_of_two());

constexpr bool reads_strings_and_characters()
{
    u32 number = 0;
    char character = 0;
    char room[5]{};
    return scan<"%u:%c">("7:*x", number, character) == 2 && character == '*' &&
           scan<"%u:%c">("7:", number, character) == 1 && scan<"[%u][%s">("[1][abc] d", number, room) == 2 &&
           std::string_view(room) == "abc]" && scan<"%s">("abcde", room) == 0 && scan<"%s">("  ", room) == 0;
}
static_assert(reads_strings_and_characters());

constexpr bool takes_white_space_of_a_format_for_any()
{
    u32 a = 0;
    u32 b = 0;
    return scan<"%u %u">("1 \t2", a, b) == 2 && b == 2 && scan<"%u :%u">("3:4", a, b) == 2 && b == 4 &&
           scan<"%u :%u">("5 .6", a, b) == 1;
}
static_assert(takes_white_space_of_a_format_for_any());

/// A width may end at a sign or at a base's zero.
constexpr bool ends_at_a_width()
{
    u32 a = 0;
    return scan<"%1x">("0x1", a) == 1 && a == 0 && scan<"%3x">("0x1f", a) == 1 && a == 1 && scan<"%3x">("+", a) == 0;
}
static_assert(ends_at_a_width());

/// The way past a word is safe for few digits too.
constexpr bool reads_few_digits_as_many()
{
    const char *const text = "4294967296";
    u64 wide = 0;
    u32 narrow = 0;
    return format::read_long<10>(text, text + 10, wide) == text + 10 && wide == 4294967296 &&
           format::read_long<10>(text, text + 10, narrow) == nullptr &&
           format::read_long<10>(text, text + 9, narrow) == text + 9 && narrow == 429496729;
}
static_assert(reads_few_digits_as_many());

/// The compiler reads a text in its own way: once more, by the code it makes.
TEST(Scan, does_the_same_when_it_runs)
{
    EXPECT_TRUE(counts_what_was_converted());
    EXPECT_TRUE(reads_groups_of_two());
    EXPECT_TRUE(reads_strings_and_characters());
    EXPECT_TRUE(takes_white_space_of_a_format_for_any());
    EXPECT_TRUE(ends_at_a_width());
    EXPECT_TRUE(reads_few_digits_as_many());
}

/// Texts in which every short shape of number and punctuation turns up.
std::string random_text(std::mt19937 &random)
{
    static constexpr std::string_view alphabet = "0123456789999+-.: \tx/abf";
    std::string text;
    for (std::size_t i = random() % 14; i > 0; --i)
        text += alphabet[random() % alphabet.size()];
    return text;
}

TEST(Scan, agrees_with_the_c_library_where_c_defines_the_result)
{
    std::mt19937 random(4711);
    for (int i = 0; i < 200000; ++i) {
        const std::string text = random_text(random);
        u32 ours[3]{};
        unsigned theirs[3]{};
        // Nine characters fit every conversion, so C leaves nothing here to the library.
        const int expected = std::sscanf(text.c_str(), "%9u.%9u:%9u", &theirs[0], &theirs[1], &theirs[2]);
        const int converted = scan<"%9u.%9u:%9u">(text.c_str(), ours[0], ours[1], ours[2]);
        ASSERT_EQ(converted, std::max(expected, 0)) << '"' << text << '"';
        for (int n = 0; n < converted; ++n)
            ASSERT_EQ(ours[n], theirs[n]) << '"' << text << '"';
    }
}

TEST(Scan, reads_back_every_kind_of_64_bit_number)
{
    std::mt19937_64 random(4711);
    for (int i = 0; i < 100000; ++i) {
        const u64 number = random() >> (random() % 64);
        char text[32];
        std::snprintf(text, sizeof text, "%" PRIu64, number);
        u64 decimal = 0;
        ASSERT_EQ(scan<"%llu">(text, decimal), 1);
        ASSERT_EQ(decimal, number);
        std::snprintf(text, sizeof text, "%" PRIx64, number);
        u64 hex = 0;
        ASSERT_EQ(scan<"%llx">(text, hex), 1);
        ASSERT_EQ(hex, number);
    }
}

} // namespace
