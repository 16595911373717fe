// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// An input of the records' fuzzer: four bytes that choose, then what is tried.
///
///      0         1           2      3       4
///     +---------+-----------+------+-------+---- ... ----+
///     | subject | operation | mode | flags | payload     |
///     +---------+-----------+------+-------+---- ... ----+
///
/// The payload is a text, a value, three values of one length for compare, or a script value (script.hpp).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace bgpdt::fuzzing {

enum class Operation : std::uint8_t { parse, print, check, help, compare, set, get, read, swap, function, count };

enum Flag : std::uint8_t {
    failing_request = 3,      ///< the request for memory that fails, 0: none
    failing_onward = 1 << 2,  ///< and every later one
    odd_address = 1 << 3,     ///< the value stands at an odd address
    callers_block = 1 << 4,   ///< FormatOut is given its block
    relative_index = 1 << 5,  ///< the script table is told as -1
    other_length = 1 << 6,    ///< a script buffer one byte short; a whole value told with another length
    stripped_request = 1 << 7 ///< a help request without its second word
};

constexpr std::size_t header_size = 4;
/// Longer inputs say nothing more.
constexpr std::size_t most_bytes = 4096;

/// The conversion modes and their first neighbours are as likely as all the others together.
constexpr std::uint8_t mode_of(std::uint8_t byte) { return byte < 128 ? byte % 9 : byte; }

} // namespace bgpdt::fuzzing
