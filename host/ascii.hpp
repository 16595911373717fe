// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// ASCII character classes, whatever the process's locale.
#pragma once

#include <array>

namespace bgpdt::host {

constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

inline constexpr auto digit_values = [] {
    std::array<unsigned char, 256> table{};
    table.fill(255);
    for (unsigned char i = 0; i < 10; ++i)
        table[std::size_t{'0'} + i] = i;
    for (unsigned char i = 10; i < 36; ++i)
        table[std::size_t{'A'} + i - 10] = table[std::size_t{'a'} + i - 10] = i;
    return table;
}();

/// The value of a digit in bases up to 36; 255 for any other character.
constexpr unsigned digit_value(char c) { return digit_values[static_cast<unsigned char>(c)]; }

} // namespace bgpdt::host
