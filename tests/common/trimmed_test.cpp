// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The look for white space a processor's word at a time: none is overlooked, and for none the host is asked in vain.
#include "common/trimmed.hpp"

#include <string>

#include <gtest/gtest.h>

namespace bgpdt::test {

namespace {

/// Texts of every length at every alignment, all of one character.
template <class Look>
void for_texts(char character, Look look)
{
    for (std::size_t length = 1; length <= 3 * sizeof(std::uint64_t); ++length) {
        for (std::size_t alignment = 0; alignment < sizeof(std::uint64_t); ++alignment) {
            std::string padded(alignment, ' '); // what stands around the text does not matter
            padded.append(length, character);
            padded += ' ';
            look(padded.data() + alignment, length);
        }
    }
}

constexpr char not_blank[] = {'!', '0', ':', '[', '~', '\x7f', '\x80', '\xa0', '\xff'};
constexpr char blank[] = {' ', '\t', '\n', '\v', '\f', '\r'};

} // namespace

TEST(TrimmedTest, FindsWhiteSpaceWhereverItStands)
{
    const auto expect_found = [](char *text, std::size_t length) {
        for (std::size_t place = 0; place < length; ++place) {
            const char other = text[place];
            for (const char space : blank) {
                text[place] = space;
                EXPECT_TRUE(may_have_blank(text, length)) << length << " characters, at " << place;
            }
            text[place] = other;
        }
    };
    for (const char other : not_blank)
        for_texts(other, expect_found);
}

TEST(TrimmedTest, FindsNoneInTextsOfAWordOrMore)
{
    const auto expect_none = [](const char *text, std::size_t length) {
        EXPECT_EQ(may_have_blank(text, length), length < sizeof(std::size_t)) << text;
    };
    for (const char other : not_blank)
        for_texts(other, expect_none);
}

} // namespace bgpdt::test
