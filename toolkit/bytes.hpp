// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values as hexadecimal text, and their byte order. In memory a value's numbers are in the machine's own order; outside
/// they are in that of the 32-bit big-endian target unless the machine's own is asked for.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "bgp_datatype/fields.hpp"
#include "host/host.hpp"

namespace bgpdt::toolkit {

using host::Bytes;

/// Digits, two a byte; "0x" may stand first; blanks, ':', '_' and '-' may stand between bytes.
/// @throws Refusal with the position of what is wrong
Bytes from_hex(std::string_view text);
std::string to_hex(std::span<const std::uint8_t> bytes);

/// From the target's byte order to the machine's. What the field tables do not know stays as it is.
void turn_to_native(const SYSDT_Record &type, std::span<std::uint8_t> value);
/// From the machine's byte order to the target's.
void turn_to_target(const SYSDT_Record &type, std::span<std::uint8_t> value);

/// Of up to eight bytes in network order.
inline std::uint64_t network_number(std::span<const std::uint8_t> bytes)
{
    std::uint64_t number = 0;
    for (const std::uint8_t byte : bytes)
        number = number << 8 | byte;
    return number;
}

} // namespace bgpdt::toolkit
