// SPDX-License-Identifier: Apache-2.0
/// @file
/// ASCII character classes, whatever the process's locale.
#ifndef BGPDT_HOST_ASCII_HPP
#define BGPDT_HOST_ASCII_HPP

namespace bgpdt::host {

constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// The value of a digit in bases up to 36; 255 for any other character.
constexpr unsigned digit_value(char c)
{
    if (is_digit(c)) {
        return static_cast<unsigned>(c - '0');
    }
    const char lower = to_lower(c);
    return lower >= 'a' && lower <= 'z' ? static_cast<unsigned>(lower - 'a') + 10 : 255;
}

} // namespace bgpdt::host

#endif
