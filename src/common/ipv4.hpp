// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// IPv4 addresses as numbers, the first octet in the top byte, to text.
#pragma once

#include "common/digits.hpp"

namespace bgpdt {

inline constexpr std::size_t most_ipv4_characters = 15 + 2; // an octet's digits may be overwritten behind their end

/// Writes an address and returns the end.
constexpr char *write_ipv4_address(char *to, u32 address)
{
    to = write_decimal(to, static_cast<u8>(address >> 24));
    *to++ = '.';
    to = write_decimal(to, static_cast<u8>(address >> 16));
    *to++ = '.';
    to = write_decimal(to, static_cast<u8>(address >> 8));
    *to++ = '.';
    return write_decimal(to, static_cast<u8>(address));
}

/// How many characters that takes.
constexpr std::size_t ipv4_length(u32 address)
{
    std::size_t length = 3;
    for (const int shift : {24, 16, 8, 0})
        length += digits::octets[address >> shift & UINT8_MAX].length;
    return length;
}

} // namespace bgpdt
