// SPDX-License-Identifier: Apache-2.0
/// @file
/// IPv4 addresses as numbers, the first octet in the top byte: from the octets of a text, and to one.
#pragma once

#include "common/print.hpp"

namespace bgpdt {

/// Whether scanned numbers are octets.
constexpr bool are_octets(const u32 (&octet)[4]) { return (octet[0] | octet[1] | octet[2] | octet[3]) <= UINT8_MAX; }

constexpr u32 joined(const u32 (&octet)[4]) { return octet[0] << 24 | octet[1] << 16 | octet[2] << 8 | octet[3]; }

constexpr void print_ipv4_address(u32 address, Writer &out)
{
    print<"%u.%u.%u.%u">(out, address >> 24, address >> 16 & 0xFF, address >> 8 & 0xFF, address & 0xFF);
}

} // namespace bgpdt
