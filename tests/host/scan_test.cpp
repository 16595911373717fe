// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <tuple>

#include "host/host.hpp"

namespace {

/// Reads one number; 99 when there is none.
template <class Number>
Number read(const char *text, const char *format, int expected_items)
{
    Number number = 99;
    EXPECT_EQ(sscanf_s(text, format, &number), expected_items) << '"' << text << "\" as \"" << format << '"';
    return number;
}

template <class Number>
void expect_number(const char *text, const char *format, Number expected)
{
    EXPECT_EQ(read<Number>(text, format, 1), expected) << '"' << text << "\" as \"" << format << '"';
}

/// No number is there, but the text has not ended before it.
template <class Number>
void expect_none(const char *text, const char *format)
{
    EXPECT_EQ(read<Number>(text, format, 0), Number{99}) << '"' << text << "\" as \"" << format << '"';
}

TEST(Scan, UnsignedNumbersAreAsC)
{
    expect_number<std::uint32_t>("12ab", "%u", 12);
    expect_number<std::uint32_t>(" \t\n12", "%u", 12);
    expect_number<std::uint32_t>("+12", "%u", 12);
    expect_number<std::uint32_t>("0012", "%u", 12);
    expect_number<std::uint32_t>("-1", "%u", 4294967295);
    expect_number<std::uint32_t>("-4294967295", "%u", 1);
    expect_number<std::uint32_t>("4294967295", "%u", 4294967295);
    expect_number<std::uint32_t>("12345", "%3u", 123);
    expect_number<std::uint32_t>("-12345", "%3u", 0 - 12u); // the sign counts
    expect_number<std::uint32_t>("42949672960", "%9u", 429496729);
}

TEST(Scan, NumbersThatDoNotFitDoNotConvert)
{
    expect_none<std::uint32_t>("4294967296", "%u");
    expect_none<std::uint32_t>("-4294967296", "%u");
    expect_none<std::uint32_t>("99999999999999999999999999", "%u");
    expect_none<std::uint32_t>("100000000", "%x");
    expect_none<std::uint16_t>("65536", "%hu");
    expect_none<std::uint16_t>("-65536", "%hu");
    expect_none<std::uint8_t>("256", "%hhu");
    expect_none<std::uint64_t>("18446744073709551616", "%llu");
    expect_none<std::uint64_t>("-18446744073709551616", "%llu");
    expect_none<std::uint64_t>("184467440737095516160", "%llu");
    expect_none<std::int32_t>("2147483648", "%d");
    expect_none<std::int32_t>("-2147483649", "%d");
    expect_none<std::int16_t>("32768", "%hd");
    expect_none<std::int8_t>("-129", "%hhd");
    expect_none<std::int64_t>("9223372036854775808", "%lld");
}

TEST(Scan, EveryWidthOfNumber)
{
    expect_number<std::uint8_t>("255", "%hhu", 255);
    expect_number<std::uint8_t>("-1", "%hhu", 255);
    expect_number<std::uint16_t>("65535", "%hu", 65535);
    expect_number<std::uint16_t>("-1", "%hu", 65535);
    expect_number<unsigned long>("4294967295", "%lu", 4294967295);
    expect_number<unsigned long>("-1", "%lu", ULONG_MAX);
    expect_number<unsigned long long>("18446744073709551615", "%llu", 18446744073709551615u);
    expect_number<unsigned long long>("-1", "%llu", ULLONG_MAX);
    expect_number<std::uintmax_t>("18446744073709551615", "%ju", UINTMAX_MAX);
    expect_number<std::size_t>("-1", "%zu", SIZE_MAX);
    expect_number<std::ptrdiff_t>("-1", "%td", -1);
    expect_number<std::int32_t>("-2147483648", "%d", INT32_MIN);
    expect_number<std::int32_t>("2147483647", "%d", INT32_MAX);
    expect_number<std::int16_t>("-32768", "%hd", INT16_MIN);
    expect_number<std::int8_t>("-128", "%hhd", INT8_MIN);
    expect_number<std::int64_t>("-9223372036854775808", "%lld", INT64_MIN);
}

TEST(Scan, Bases)
{
    expect_number<std::uint32_t>("1g", "%2x", 1);
    expect_number<std::uint32_t>("-1", "%2x", UINT32_MAX);
    expect_number<std::uint32_t>("fF", "%X", 255);
    expect_number<std::uint32_t>("0xfF", "%x", 255);
    expect_number<std::uint32_t>("0x1", "%1x", 0);
    expect_number<std::uint32_t>("0x12", "%3x", 1);
    expect_number<std::uint32_t>("0", "%x", 0);
    expect_number<std::uint32_t>("178", "%o", 15);
    expect_number<std::int32_t>("-0x10", "%i", -16);
    expect_number<std::int32_t>("010", "%i", 8);
    expect_number<std::int32_t>("10", "%i", 10);
    expect_number<std::int32_t>("0", "%i", 0);
    for (const char *text : {"g1", ".1", "0x", "0xg", "-", "+", "--1"})
        expect_none<std::uint32_t>(text, "%2x");
}

TEST(Scan, PatternsMatchUpToTheFirstDifference)
{
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::uint32_t c = 0;
    const auto scan = [&](const char *text) {
        a = b = c = 99;
        return sscanf_s(text, "%u.%u:%u", &a, &b, &c);
    };
    EXPECT_EQ(scan("1.2:3"), 3);
    EXPECT_EQ(std::tie(a, b, c), std::make_tuple(1u, 2u, 3u));
    EXPECT_EQ(scan("1.2:3 and more"), 3);
    EXPECT_EQ(scan("1. 2: 3"), 3);
    EXPECT_EQ(scan("1.2"), 2);
    EXPECT_EQ(c, 99u);
    EXPECT_EQ(scan("1.2:"), 2);
    EXPECT_EQ(scan("1:2"), 1);
    EXPECT_EQ(scan("1 .2:3"), 1);
    EXPECT_EQ(scan("1.4294967296:3"), 1);
    EXPECT_EQ(b, 99u);
    EXPECT_EQ(scan("x"), 0);
    EXPECT_EQ(scan(""), EOF);
    EXPECT_EQ(scan("  "), EOF);
}

TEST(Scan, LiteralsAndWhiteSpace)
{
    std::uint32_t number = 0;
    EXPECT_EQ(sscanf_s("a  1", "a %u", &number), 1);
    EXPECT_EQ(sscanf_s("a1", "a %u", &number), 1);
    EXPECT_EQ(sscanf_s("5%6", "%*u%%%u", &number), 1);
    EXPECT_EQ(number, 6u);
    EXPECT_EQ(sscanf_s("5 %6", "%*u%%%u", &number), 1); // "%%" skips white space, as any conversion does
    EXPECT_EQ(sscanf_s("5x6", "%*u%%%u", &number), 0);
    EXPECT_EQ(sscanf_s("", "a"), EOF);
    EXPECT_EQ(sscanf_s("b", "a"), 0);
    EXPECT_EQ(sscanf_s("a", "a"), 0);
    EXPECT_EQ(sscanf_s("5", "%*u%u", &number), 0); // the end comes behind a complete conversion
    EXPECT_EQ(sscanf_s("", ""), 0);
}

TEST(Scan, CountsCharacters)
{
    std::uint32_t number = 0;
    int count = -1;
    EXPECT_EQ(sscanf_s("12 34", "%u%n", &number, &count), 1);
    EXPECT_EQ(count, 2);
    std::int8_t small = -1;
    EXPECT_EQ(sscanf_s("12 34", "%*u %hhn", &small), 0);
    EXPECT_EQ(small, 3);
}

/// A destination with a size of its own.
struct Word {
    std::string text = std::string(16, '#');
    char *data() { return text.data(); }
    std::string word() const { return text.c_str(); }
};

TEST(Scan, TextsNeedTheirTerminator)
{
    Word word;
    EXPECT_EQ(sscanf_s("  abc def", "%s", word.data(), std::size_t{4}), 1);
    EXPECT_EQ(word.word(), "abc");
    EXPECT_EQ(word.text[4], '#');
    word = {};
    EXPECT_EQ(sscanf_s("abcd", "%s", word.data(), std::size_t{4}), 0);
    EXPECT_EQ(word.text[3], '#');
    EXPECT_EQ(sscanf_s("abcd", "%3s", word.data(), std::size_t{4}), 1);
    EXPECT_EQ(word.word(), "abc");
    EXPECT_EQ(sscanf_s("abcd", "%s", word.data(), std::size_t{0}), 0);
    EXPECT_EQ(sscanf_s("", "%s", word.data(), std::size_t{4}), EOF);
    EXPECT_EQ(sscanf_s("abc", "%s", static_cast<char *>(nullptr), std::size_t{4}), 0);
}

TEST(Scan, TheSizeStandsBehindEachTextPointer)
{
    Word first;
    Word second;
    char letter = '#';
    std::uint32_t number = 0;
    EXPECT_EQ(sscanf_s("ab cd-7", "%s %2s%c%u", first.data(), std::size_t{16}, second.data(), std::size_t{16}, &letter,
                       std::size_t{1}, &number),
              4);
    EXPECT_EQ(first.word(), "ab");
    EXPECT_EQ(second.word(), "cd");
    EXPECT_EQ(letter, '-');
    EXPECT_EQ(number, 7u);
    EXPECT_EQ(sscanf_s("ab 8", "%*s %u", &number), 1);
    EXPECT_EQ(number, 8u);
}

TEST(Scan, CharactersAreTakenAsTheyStand)
{
    Word word;
    EXPECT_EQ(sscanf_s(" ab", "%c", word.data(), std::size_t{1}), 1);
    EXPECT_EQ(word.text.substr(0, 2), " #");
    EXPECT_EQ(sscanf_s(" ab", "%3c", word.data(), std::size_t{3}), 1);
    EXPECT_EQ(word.text.substr(0, 4), " ab#");
    word = {};
    EXPECT_EQ(sscanf_s("ab", "%3c", word.data(), std::size_t{3}), 0);
    EXPECT_EQ(sscanf_s("abc", "%3c", word.data(), std::size_t{2}), 0);
    EXPECT_EQ(sscanf_s("", "%c", word.data(), std::size_t{1}), EOF);
    EXPECT_EQ(word.text, Word{}.text);
}

TEST(Scan, Sets)
{
    struct {
        const char *text;
        const char *format;
        const char *word; // null: no match
    } const samples[] = {
        {"abc]d", "%[^]]", "abc"},        {"12-4x", "%[0-9-]", "12-4"}, {"]]x", "%[]]", "]]"}, {" a", "%[a]", nullptr},
        {"abc", "%2[a-c]", "ab"},         {"x", "%[a-c]", nullptr},     {"a-", "%[a-]", "a-"}, {",", "%[+-]", nullptr},
        {"\xC4", "%[\xC0-\xFF]", "\xC4"}, {"abc", "%[abc", nullptr},    {"a^", "%[a^]", "a^"}, {"b", "%[^", nullptr},
    };
    for (const auto &[text, format, expected] : samples) {
        Word word;
        EXPECT_EQ(sscanf_s(text, format, word.data(), std::size_t{16}), expected != nullptr ? 1 : 0) << format;
        EXPECT_EQ(word.word(), expected != nullptr ? expected : Word{}.text) << format;
    }
    Word word;
    EXPECT_EQ(sscanf_s("abc", "%[abc]", word.data(), std::size_t{3}), 0);
}

TEST(Scan, RefusesWhatItDoesNotKnow)
{
    std::uint64_t number = 99;
    for (const char *format : {"%f", "%p", "%ls", "%lc", "%l[1]", "%0u", "%", "%*", "%12", "%l", "%k", "%-u"}) {
        EXPECT_EQ(sscanf_s("1", format, &number, std::size_t{8}), 0) << format;
        EXPECT_EQ(number, 99u) << format;
    }
    EXPECT_EQ(sscanf_s(nullptr, "%u", &number), EOF);
    EXPECT_EQ(sscanf_s("1", nullptr), EOF);
}

} // namespace
