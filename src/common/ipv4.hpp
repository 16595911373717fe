// SPDX-License-Identifier: Apache-2.0
/// @file
/// IPv4 addresses as numbers, the first octet in the top byte: from the octets of a text, and to one.
#pragma once

#include "common/print.hpp"

namespace bgpdt {

/// Whether scanned numbers are octets.
constexpr bool are_octets(const u32 (&octet)[4]) { return (octet[0] | octet[1] | octet[2] | octet[3]) <= UINT8_MAX; }

constexpr u32 joined(const u32 (&octet)[4]) { return octet[0] << 24 | octet[1] << 16 | octet[2] << 8 | octet[3]; }

/// The first to the last, by their number from 0.
constexpr u8 octet_of(u32 address, int number) { return static_cast<u8>(address >> (24 - 8 * number)); }

inline constexpr std::size_t most_ipv4_characters = 15 + 2; // an octet's digits may be overwritten behind their end

/// Writes an address and returns the end.
constexpr char *write_ipv4_address(char *to, u32 address)
{
    return write<"%u.%u.%u.%u">(to, octet_of(address, 0), octet_of(address, 1), octet_of(address, 2),
                                octet_of(address, 3));
}

constexpr void print_ipv4_address(u32 address, Writer &out)
{
    out.put_at_most<most_ipv4_characters>([=](char *to) { return write_ipv4_address(to, address); });
}

} // namespace bgpdt
