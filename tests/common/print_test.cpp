// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// print and the bounded writer: proved while this file is compiled, and compared with the C library.
#include "common/print.hpp"

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <random>
#include <string>

using namespace bgpdt;

namespace {

template <FixedString Format, class... Arguments>
constexpr bool prints(std::string_view expected, const Arguments &...arguments)
{
    char buffer[64]{};
    Writer out(buffer, sizeof buffer);
    print<Format>(out, arguments...);
    return out.finish() == expected.size() && std::string_view(buffer) == expected;
}

static_assert(prints<"%u">("0", 0U) && prints<"%u">("10", 10U) && prints<"%u">("4294967295", 4294967295U));
static_assert(prints<"%u.%u:%u">("1.2:3", 1U, 2U, 3U));
static_assert(prints<"%hhu">("44", 300U) && prints<"%hu">("1", 65537U));
static_assert(prints<"%llu">("0", u64{0}) && prints<"%llu">("4294967296", u64{4294967296}));
static_assert(prints<"%llu">("18446744073709551615", UINT64_MAX) &&
              prints<"%llu">("10000000000000", u64{10000000000000}));
static_assert(prints<"%d">("-2147483648", INT32_MIN) && prints<"%d">("7", i32{7}));
static_assert(prints<"%x:%x">("0:1a2b", 0U, 0x1A2BU) && prints<"%x">("ffffffff", 0xFFFFFFFFU));
static_assert(prints<"%02hx%.2x">("0aff", u16{10}, 0xFFU) && prints<"%02x">("100", 0x100U));
static_assert(prints<"%q">("192.0.2.1", 0xC0000201U) && prints<"<%q>%u">("<0.10.255.99>7", 0x000AFF63U, 7U));
static_assert(prints<"%s <%u : %c>">("SoO <1 : *>", "SoO", 1U, '*') && prints<"%s">("", ""));
static_assert(prints<"[%s%s]">(
    "[64496]", [](Writer &out) { print<"%u">(out, 64496U); }, [](Writer &) {}));

constexpr auto hash_mark = bounded<2>([](char *to) {
    *to = '#';
    return to + 1;
});
static_assert(prints<"[%s%u%s]%s">("[#7#]end", hash_mark, 7U, hash_mark, "end"));
static_assert(prints<"%s%s%s">("a#b", "a", hash_mark, "b"));

/// Every size from the terminator alone up: what fits is written, the rest is cut, nothing behind the end is touched.
TEST(Print, is_cut_at_the_writers_end)
{
    const std::string_view whole = "label <4294967295.65535:7> #end";
    for (std::size_t size = 1; size <= whole.size() + 3; ++size) {
        char buffer[64];
        std::fill_n(buffer, sizeof buffer, '#');
        Writer out(buffer, size);
        print<"%s <%u.%u:%u> %s%s">(out, "label", 4294967295U, 65535U, 7U, hash_mark, "end");
        const std::size_t fitting = std::min(size - 1, whole.size());
        ASSERT_EQ(out.finish(), fitting);
        ASSERT_EQ(std::string_view(buffer), whole.substr(0, fitting));
        ASSERT_EQ(std::string(buffer + fitting + 1, sizeof buffer - fitting - 1),
                  std::string(sizeof buffer - fitting - 1, '#'));
    }
}

TEST(Print, agrees_with_the_c_library)
{
    std::mt19937_64 random(4711);
    for (int i = 0; i < 200000; ++i) {
        const u64 wide = random() >> (random() % 64);
        const u32 number = static_cast<u32>(random()) >> (random() % 32);
        char expected[128];
        std::snprintf(expected, sizeof expected, "%s <%u.%" PRIu64 " : %x> %.2x %d", "a", number, wide, number,
                      number & 0xFF, static_cast<int>(number));
        char buffer[128];
        Writer out(buffer, sizeof buffer);
        print<"%s <%u.%llu : %x> %.2x %d">(out, "a", number, wide, number, number & 0xFF, static_cast<i32>(number));
        out.finish();
        ASSERT_STREQ(buffer, expected);
    }
}

static_assert(printed_length<"%q/%u">(0x000AFF63U, 24U) == sizeof "0.10.255.99/24" - 1);
static_assert(printed_length<"%q">(0x09090909U) == sizeof "9.9.9.9" - 1);
static_assert(printed_length<"%q">(0x64646464U) == sizeof "100.100.100.100" - 1);
static_assert(printed_length<"[%u]%s-%hhu">(4294967295U, "end", u8{0}) == sizeof "[4294967295]end-0" - 1);

TEST(PrintedLength, is_that_of_every_number_of_digits)
{
    for (u64 power = 1; power <= UINT32_MAX; power *= 10)
        for (const u64 number : {power - 1, power, power + 1})
            ASSERT_EQ(printed_length<"%u">(static_cast<u32>(number)), std::to_string(number).size()) << number;
    for (u32 bit = 1; bit != 0; bit <<= 1) {
        ASSERT_EQ(printed_length<"%u">(bit), std::to_string(bit).size()) << bit;
        ASSERT_EQ(printed_length<"%u">(bit - 1), std::to_string(bit - 1).size()) << bit;
    }
}

} // namespace
