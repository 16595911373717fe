// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Numbers to digits, without a division that the target's processor lacks: the 64-bit form works in 16-bit limbs.
#pragma once

#include <algorithm>
#include <array>
#include <bit>

#include "common/types.hpp"

namespace bgpdt {

namespace digits {

inline constexpr auto pairs = [] {
    struct {
        char text[200];
    } table{};
    for (std::size_t i = 0; i < 100; ++i) {
        table.text[2 * i] = static_cast<char>('0' + i / 10);
        table.text[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return table;
}();

constexpr void put_pair(char *to, u32 number)
{
    const char *const pair = pairs.text + std::size_t{2} * number;
    to[0] = pair[0];
    to[1] = pair[1];
}

/// Writes exactly four digits.
constexpr char *write_four(char *to, u32 number)
{
    put_pair(to, number / 100);
    put_pair(to + 2, number % 100);
    return to + 4;
}

/// Writes one digit or two.
constexpr char *write_up_to_two(char *to, u32 number)
{
    if (number < 10) {
        *to = static_cast<char>('0' + number);
        return to + 1;
    }
    put_pair(to, number);
    return to + 2;
}

constexpr char *write_up_to_four(char *to, u32 number)
{
    if (number < 100)
        return write_up_to_two(to, number);
    to = write_up_to_two(to, number / 100);
    put_pair(to, number % 100);
    return to + 2;
}

/// Every octet in decimal.
inline constexpr auto octets = [] {
    struct Text {
        char text[3];
        u8 length;
    };
    std::array<Text, 256> table{};
    for (u32 i = 0; i < table.size(); ++i)
        table[i].length = static_cast<u8>(write_up_to_four(table[i].text, i) - table[i].text);
    return table;
}();

} // namespace digits

inline constexpr std::size_t most_u32_digits = 10;
inline constexpr std::size_t most_u64_digits = 20;
inline constexpr std::size_t most_hex_digits = 8;

/// How many digits a number has in decimal.
constexpr std::size_t decimal_length(u32 number)
{
    constexpr u32 powers_of_ten[] = {0, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};
    const auto bits = static_cast<u32>(std::bit_width(number));
    const u32 fewest = bits * 1233 >> 12; // the decimal logarithm of 2 is 1233 / 4096
    return fewest + (number >= powers_of_ten[fewest] ? 1 : 0);
}

/// Writes an octet in decimal and returns the end; up to two characters behind it may be overwritten.
constexpr char *write_decimal(char *to, u8 octet)
{
    const auto &written = digits::octets[octet];
    std::copy_n(written.text, sizeof written.text, to);
    return to + written.length;
}

/// Writes a number in decimal and returns the end.
[[gnu::noinline]] constexpr char *write_decimal(char *to, u16 number)
{
    if (number < 10000)
        return digits::write_up_to_four(to, number);
    *to = static_cast<char>('0' + number / 10000);
    return digits::write_four(to + 1, number % 10000);
}

[[gnu::noinline]] constexpr char *write_decimal(char *to, u32 number)
{
    if (number < 10000)
        return digits::write_up_to_four(to, number);
    const u32 head = number / 10000;
    if (head < 10000)
        to = digits::write_up_to_four(to, head);
    else
        to = digits::write_four(digits::write_up_to_two(to, head / 10000), head % 10000);
    return digits::write_four(to, number % 10000);
}

[[gnu::noinline]] constexpr char *write_decimal(char *to, u64 number)
{
    if (number <= UINT32_MAX)
        return write_decimal(to, static_cast<u32>(number));
    // Long division by 10000, high limb first, gives the number's groups of four digits from the last to the first.
    u32 limb[4] = {static_cast<u32>(number >> 48), static_cast<u32>(number >> 32) & 0xFFFF,
                   static_cast<u32>(number >> 16) & 0xFFFF, static_cast<u32>(number) & 0xFFFF};
    u32 group[5];
    int first = 5;
    for (u32 *top = limb; top != limb + 4;) {
        u32 rest = 0;
        for (u32 *part = top; part != limb + 4; ++part) {
            const u32 dividend = rest << 16 | *part;
            *part = dividend / 10000;
            rest = dividend % 10000;
        }
        group[--first] = rest;
        while (top != limb + 4 && *top == 0)
            ++top;
    }
    to = digits::write_up_to_four(to, group[first]);
    while (++first != 5)
        to = digits::write_four(to, group[first]);
    return to;
}

inline constexpr char hex_characters[] = "0123456789abcdef";

namespace digits {

inline constexpr auto hex_pairs = [] {
    struct {
        char text[512];
    } table{};
    for (std::size_t i = 0; i < 256; ++i) {
        table.text[2 * i] = hex_characters[i / 16];
        table.text[2 * i + 1] = hex_characters[i % 16];
    }
    return table;
}();

} // namespace digits

/// Writes an octet as two hexadecimal digits and returns the end.
constexpr char *write_hex_pair(char *to, u8 octet)
{
    return std::copy_n(digits::hex_pairs.text + std::size_t{2} * octet, 2, to);
}

/// Writes a number in lower-case hexadecimal with at least so many digits and returns the end.
[[gnu::noinline]] constexpr char *write_hex(char *to, u32 number, int fewest = 1)
{
    int left = std::max(static_cast<int>(std::bit_width(number) + 3) / 4, fewest);
    if (left % 2 != 0)
        *to++ = hex_characters[number >> 4 * --left & 0xF];
    for (; left != 0; left -= 2)
        to = write_hex_pair(to, static_cast<u8>(number >> (4 * left - 8)));
    return to;
}

} // namespace bgpdt
