// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Numbers in memory at any alignment: in the processor's order, in network order, and from one to the other.
#pragma once

#include <bit>
#include <cstring>
#include <type_traits>

#include "common/types.hpp"

namespace bgpdt {

constexpr u8 byte_swapped(u8 number) { return number; }
constexpr u16 byte_swapped(u16 number) { return __builtin_bswap16(number); }
constexpr u32 byte_swapped(u32 number) { return __builtin_bswap32(number); }
constexpr u64 byte_swapped(u64 number) { return __builtin_bswap64(number); }

/// A number in the processor's own order.
template <class Number>
Number load(const void *from)
{
    static_assert(std::is_unsigned_v<Number>);
    Number number;
    std::memcpy(&number, from, sizeof number);
    return number;
}

/// Stores a number in the processor's own order.
template <class Number>
void store(void *to, Number number)
{
    static_assert(std::is_unsigned_v<Number>);
    std::memcpy(to, &number, sizeof number);
}

/// A number in network order.
template <class Number>
Number load_network(const void *from)
{
    const auto number = load<Number>(from);
    return std::endian::native == std::endian::big ? number : byte_swapped(number);
}

/// Stores a number in network order.
template <class Number>
void store_network(void *to, Number number)
{
    store(to, std::endian::native == std::endian::big ? number : byte_swapped(number));
}

/// Reverses the bytes of a number in place.
template <class Number>
void swap_in_place(void *at)
{
    store(at, byte_swapped(load<Number>(at)));
}

} // namespace bgpdt
