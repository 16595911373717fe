// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// An input of the library's fuzzer: four bytes that choose, then what the function is given.
///
///      0      1          2      3       4
///     +------+----------+------+-------+---- ... ----+
///     | type | function | mode | flags | payload     |   type: its number in the order of the registration
///     +------+----------+------+-------+---- ... ----+
#pragma once

#include <cstdint>

namespace bgpdt::fuzzing {

enum class Function : std::uint8_t {
    parse,
    why,
    print,
    explain,
    field, ///< the payload: a byte for the length of the name, the name, the value
    from_hex,
    change,  ///< check, swap, both byte orders
    compare, ///< two values, half of the payload each
    table,
    read_table,
    parse_many, ///< a column as library_columns.cpp tells
    print_many, ///< the room for the bytes in two, then values
    open,
    count
};

enum LibraryFlag : std::uint8_t {
    wrong_size = 1 << 0, ///< of the value or of its room
    small_room = 1 << 1, ///< for a text
    wide = 1 << 2,       ///< offsets of 64 bits
    odd_place = 1 << 3,  ///< of the offsets
    some_rows = 1 << 4,  ///< not all rows are there
    wild_offset = 1 << 5 ///< one of them is anything
};

} // namespace bgpdt::fuzzing
