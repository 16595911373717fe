// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Numbers on the wire, in network order, and in values, in the machine's.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "item.hpp"

namespace bgpdt::wire {

inline constexpr std::uint32_t beyond_tlvs = 0x10000; ///< greater than every type of a TLV

/// All of the octets, at most eight.
inline std::uint64_t number_in(Octets octets)
{
    std::uint64_t number = 0;
    for (const std::uint8_t octet : octets)
        number = number << 8 | octet;
    return number;
}

inline void append_number(Bytes &bytes, std::uint64_t number, std::size_t size)
{
    for (std::size_t i = size; i-- > 0;)
        bytes.push_back(static_cast<std::uint8_t>(number >> 8 * i));
}

/// @param place  its offset in the value
template <std::unsigned_integral Number>
Number load(Octets value, std::size_t place)
{
    Number number = 0;
    std::memcpy(&number, value.subspan(place, sizeof number).data(), sizeof number);
    return number;
}

template <std::unsigned_integral Number>
void store(std::span<std::uint8_t> value, std::size_t place, Number number)
{
    std::memcpy(value.subspan(place, sizeof number).data(), &number, sizeof number);
}

} // namespace bgpdt::wire
