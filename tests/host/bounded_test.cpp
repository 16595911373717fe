// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "host/host.hpp"

using namespace std::string_literals;

namespace {

/// A destination of exactly the size, filled with '#'.
std::vector<char> destination(std::size_t size) { return std::vector<char>(size, '#'); }

std::string bytes(const std::vector<char> &buffer) { return {buffer.begin(), buffer.end()}; }

constexpr std::size_t incredible_size = SIZE_MAX;

TEST(MemcpyS, CopiesWhatFits)
{
    auto to = destination(4);
    EXPECT_EQ(memcpy_s(to.data(), 4, "abcd", 4), 0);
    EXPECT_EQ(bytes(to), "abcd");
    EXPECT_EQ(memcpy_s(to.data(), 4, "xy", 2), 0);
    EXPECT_EQ(bytes(to), "xycd");
    EXPECT_EQ(memcpy_s(to.data(), 4, nullptr, 0), 0);
    EXPECT_EQ(bytes(to), "xycd");
    EXPECT_EQ(memcpy_s(to.data() + 2, 2, to.data(), 2), 0); // side by side
    EXPECT_EQ(bytes(to), "xyxy");
    EXPECT_EQ(memcpy_s(to.data(), 2, "ab", 2), 0);
    EXPECT_EQ(memcpy_s(to.data(), 2, to.data() + 2, 2), 0);
    EXPECT_EQ(bytes(to), "xyxy");
}

TEST(MemcpyS, ClearsTheDestinationWhenItRefuses)
{
    auto to = destination(4);
    EXPECT_NE(memcpy_s(to.data(), 4, "abcde", 5), 0);
    EXPECT_EQ(bytes(to), "\0\0\0\0"s);
    to = destination(4);
    EXPECT_NE(memcpy_s(to.data(), 4, nullptr, 1), 0);
    EXPECT_EQ(bytes(to), "\0\0\0\0"s);
    to = destination(4);
    EXPECT_NE(memcpy_s(to.data(), 3, to.data() + 1, 3), 0); // overlapping
    EXPECT_EQ(bytes(to), "\0\0\0#"s);
    to = destination(4);
    EXPECT_NE(memcpy_s(to.data() + 1, 3, to.data(), 2), 0);
    EXPECT_EQ(bytes(to), "#\0\0\0"s);
    EXPECT_NE(memcpy_s(nullptr, 4, "abcd", 4), 0);
    to = destination(4);
    EXPECT_NE(memcpy_s(to.data(), incredible_size, "a", 1), 0);
    EXPECT_EQ(bytes(to), "####");
}

TEST(MemsetS, FillsTheDestinationAtMost)
{
    auto to = destination(4);
    EXPECT_EQ(memset_s(to.data(), 4, 'x', 3), 0);
    EXPECT_EQ(bytes(to), "xxx#");
    EXPECT_NE(memset_s(to.data(), 3, 'y', 4), 0);
    EXPECT_EQ(bytes(to), "yyy#");
    EXPECT_NE(memset_s(nullptr, 4, 0, 4), 0);
    EXPECT_NE(memset_s(to.data(), incredible_size, 0, 1), 0);
    EXPECT_EQ(bytes(to), "yyy#");
}

TEST(StrcpyS, NeedsRoomForTheTerminator)
{
    auto to = destination(4);
    EXPECT_EQ(strcpy_s(to.data(), 4, "abc"), 0);
    EXPECT_EQ(bytes(to), "abc\0"s);
    to = destination(4);
    EXPECT_EQ(strcpy_s(to.data(), 4, ""), 0);
    EXPECT_EQ(bytes(to), "\0###"s);
    to = destination(4);
    EXPECT_NE(strcpy_s(to.data(), 4, "abcd"), 0);
    EXPECT_EQ(to[0], '\0');
    to = destination(4);
    EXPECT_NE(strcpy_s(to.data(), 4, nullptr), 0);
    EXPECT_EQ(to[0], '\0');
    to = {'a', 'b', '\0', '#', '#'};
    EXPECT_NE(strcpy_s(to.data() + 1, 4, to.data()), 0); // overlapping
    EXPECT_EQ(to[1], '\0');
    to = destination(4);
    EXPECT_NE(strcpy_s(to.data(), 0, ""), 0);
    EXPECT_NE(strcpy_s(to.data(), incredible_size, ""), 0);
    EXPECT_EQ(bytes(to), "####");
    EXPECT_NE(strcpy_s(nullptr, 4, ""), 0);
}

TEST(StrncpyS, CopiesAtMostTheCount)
{
    auto to = destination(4);
    EXPECT_EQ(strncpy_s(to.data(), 4, "abcdef", 3), 0);
    EXPECT_EQ(bytes(to), "abc\0"s);
    to = destination(4);
    EXPECT_EQ(strncpy_s(to.data(), 4, "ab", 100), 0);
    EXPECT_EQ(bytes(to), "ab\0#"s);
    to = destination(4);
    EXPECT_EQ(strncpy_s(to.data(), 4, "abc", 0), 0);
    EXPECT_EQ(bytes(to), "\0###"s);
    const std::vector<char> unterminated{'a', 'b', 'c'};
    to = destination(4);
    EXPECT_EQ(strncpy_s(to.data(), 4, unterminated.data(), 3), 0);
    EXPECT_EQ(bytes(to), "abc\0"s);
    to = destination(4);
    EXPECT_NE(strncpy_s(to.data(), 4, "abcdef", 4), 0);
    EXPECT_EQ(to[0], '\0');
    to = destination(4);
    EXPECT_NE(strncpy_s(to.data(), 4, nullptr, 1), 0);
    EXPECT_EQ(to[0], '\0');
    to = destination(4);
    EXPECT_NE(strncpy_s(to.data(), 4, "a", incredible_size), 0);
    EXPECT_EQ(to[0], '\0');
    EXPECT_NE(strncpy_s(nullptr, 4, "a", 1), 0);
    to = destination(1);
    EXPECT_NE(strncpy_s(to.data(), 0, "a", 1), 0);
    EXPECT_EQ(bytes(to), "#");
}

TEST(SprintfS, RefusesWhatDoesNotFit)
{
    auto to = destination(4);
    EXPECT_EQ(sprintf_s(to.data(), 4, "%u", 123u), 3);
    EXPECT_EQ(bytes(to), "123\0"s);
    EXPECT_EQ(sprintf_s(to.data(), 4, "%u", 1234u), -1);
    EXPECT_EQ(to[0], '\0');
    to = destination(4);
    EXPECT_EQ(sprintf_s(to.data(), 0, "x"), -1);
    EXPECT_EQ(sprintf_s(to.data(), incredible_size, "x"), -1);
    EXPECT_EQ(bytes(to), "####");
    EXPECT_EQ(sprintf_s(nullptr, 4, "x"), -1);
    EXPECT_EQ(sprintf_s(to.data(), 4, nullptr), -1);
    EXPECT_EQ(to[0], '\0');
}

TEST(SnprintfS, IsBoundByTheCountToo)
{
    auto to = destination(8);
    EXPECT_EQ(snprintf_s(to.data(), 8, 3, "%s", "abc"), 3);
    EXPECT_EQ(bytes(to), "abc\0####"s);
    to = destination(8);
    EXPECT_EQ(snprintf_s(to.data(), 8, 3, "%s", "abcd"), -1);
    EXPECT_EQ(bytes(to), "abc\0####"s);
    EXPECT_EQ(snprintf_s(to.data(), 8, 100, "%s", "abcdefg"), 7);
    EXPECT_EQ(bytes(to), "abcdefg\0"s);
    EXPECT_EQ(snprintf_s(to.data(), 8, 100, "%s", "abcdefgh"), -1);
    EXPECT_EQ(bytes(to), "abcdefg\0"s);
    EXPECT_EQ(snprintf_s(to.data(), 8, SIZE_MAX, "%s", "ab"), 2);
    EXPECT_EQ(snprintf_s(to.data(), 8, 0, "%s", ""), 0);
    EXPECT_EQ(snprintf_s(to.data(), 8, 0, "%s", "a"), -1);
    EXPECT_EQ(snprintf_s(to.data(), 0, 3, "a"), -1);
    EXPECT_EQ(snprintf_s(nullptr, 8, 3, "a"), -1);
}

TEST(SnprintfTruncatedS, AnswersTheCharactersInTheBuffer)
{
    auto to = destination(5);
    EXPECT_EQ(snprintf_truncated_s(to.data(), 5, "%s", "abcd"), 4);
    EXPECT_EQ(bytes(to), "abcd\0"s);
    EXPECT_EQ(snprintf_truncated_s(to.data(), 5, "%s", "efghijkl"), 4);
    EXPECT_EQ(bytes(to), "efgh\0"s);
    EXPECT_EQ(snprintf_truncated_s(to.data(), 5, "%u.%u", 1u, 2u), 3);
    EXPECT_STREQ(to.data(), "1.2");
    EXPECT_EQ(snprintf_truncated_s(to.data(), 5, "%s", ""), 0);
    EXPECT_STREQ(to.data(), "");
    EXPECT_EQ(snprintf_truncated_s(to.data(), 1, "%s", "abc"), 0);
    EXPECT_STREQ(to.data(), "");
    EXPECT_EQ(snprintf_truncated_s(to.data(), 0, "abc"), -1);
    EXPECT_EQ(snprintf_truncated_s(nullptr, 5, "abc"), -1);
    EXPECT_EQ(snprintf_truncated_s(to.data(), 5, nullptr), -1);
    EXPECT_EQ(snprintf_truncated_s(to.data(), incredible_size, "abc"), -1);
}

TEST(Printing, DoesNotWriteThroughItsArguments)
{
    int written = 77;
    for (const char *format : {"ab%n", "%5n", "%%%n", "%d%hhn", "%-+ #0*.*lln"}) {
        auto to = destination(16);
        EXPECT_EQ(sprintf_s(to.data(), 16, format, &written, &written, &written), -1) << format;
        EXPECT_EQ(to[0], '\0');
        EXPECT_EQ(snprintf_s(to.data(), 16, 15, format, &written, &written, &written), -1) << format;
        EXPECT_EQ(snprintf_truncated_s(to.data(), 16, format, &written, &written, &written), -1) << format;
    }
    EXPECT_EQ(written, 77);
    auto to = destination(16);
    EXPECT_EQ(sprintf_s(to.data(), 16, "%%n %un", 1u), 5);
    EXPECT_STREQ(to.data(), "%n 1n");
}

} // namespace
