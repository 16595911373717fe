// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "host/host.hpp"

namespace {

struct Trimmed {
    const char *text;
    const char *kept;
    std::ptrdiff_t offset; // of the first character kept
};

const Trimmed trimmed[] = {
    {"", "", 0},
    {"100", "100", 0},
    {" 100 ", "100", 1},
    {" 1 00\t", "1 00", 1},
    {" \t\n\v\f\r", "", 6},
    {"\r\nab", "ab", 2},
    {"ab\n\n", "ab", 0},
    {"\xA0x\xA0", "\xA0x\xA0", 0},
};

TEST(Text, TrimCutsWhiteSpaceAtBothEndsInPlace)
{
    for (const auto trim : {SYSDT_BTrim, PAL_StrTrim}) {
        for (const Trimmed &sample : trimmed) {
            std::string text = sample.text;
            char *const kept = trim(text.data());
            EXPECT_STREQ(kept, sample.kept);
            EXPECT_EQ(kept - text.data(), sample.offset) << sample.text;
            const auto skipped = static_cast<std::size_t>(sample.offset);
            EXPECT_EQ(text.substr(0, skipped), std::string(sample.text, skipped));
        }
        EXPECT_EQ(trim(nullptr), nullptr);
    }
}

TEST(Text, FindsAnyWhiteSpace)
{
    for (const char *text : {" ", "a b", "ab\t", "\nab", "a\vb", "a\fb", "a\rb"})
        EXPECT_EQ(NCF_IsSpaceInString(text), 1u) << text;
    for (const char *text : {"", "ab", "a-b", "\xA0", "\x1F"})
        EXPECT_EQ(NCF_IsSpaceInString(text), 0u) << text;
}

TEST(Text, HexDigitsAreThoseOfAscii)
{
    const std::string digits = "0123456789abcdefABCDEF";
    for (int c = 0; c < 256; ++c) {
        const char character = static_cast<char>(c);
        EXPECT_EQ(NCF_IsHex(character), digits.find(character) != std::string::npos ? 1u : 0u) << c;
    }
}

TEST(Text, LowersAsciiLettersOnly)
{
    const char source[] = "AZaz09 @[`{\xC4\xFF";
    const char lower[] = "azaz09 @[`{\xC4\xFF";
    char copy[sizeof source + 1];
    copy[sizeof source] = '#';
    SMP_ToLowerString(source, copy);
    EXPECT_STREQ(copy, lower);
    EXPECT_EQ(copy[sizeof source], '#');

    std::string text = source;
    PAL_lowercase(text.data());
    EXPECT_STREQ(text.c_str(), lower);

    SMP_ToLowerString("", copy);
    EXPECT_STREQ(copy, "");
}

TEST(Text, LengthAndSearch)
{
    const char text[] = "1.2.3";
    EXPECT_EQ(PAL_StrLen(""), 0u);
    EXPECT_EQ(PAL_StrLen(text), 5u);
    EXPECT_EQ(PAL_StrStr(text, "2.3"), text + 2);
    EXPECT_EQ(PAL_StrStr(text, ""), text);
    EXPECT_EQ(PAL_StrStr(text, "4"), nullptr);
    EXPECT_EQ(PAL_StrChr(text, '.'), text + 1);
    EXPECT_EQ(PAL_StrChr(text, '\0'), text + 5);
    EXPECT_EQ(PAL_StrChr(text, '4'), nullptr);
    EXPECT_EQ(PAL_StrRChr(text, '.'), text + 3);
    EXPECT_EQ(PAL_StrRChr(text, ':'), nullptr);
}

TEST(Text, ComparesBytesUnsigned)
{
    EXPECT_LT(PAL_MemCmp("\x7F", "\x80", 1), 0);
    EXPECT_GT(PAL_MemCmp("b", "a", 1), 0);
    EXPECT_EQ(PAL_MemCmp("ab", "ac", 1), 0);
    EXPECT_EQ(PAL_MemCmp("a", "b", 0), 0);
}

} // namespace
