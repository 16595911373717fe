// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// How each type treats the contract that all types share, as the heads of its vectors tell.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vector_file.hpp"

namespace bgpdt::test {

/// Whatever is no mode letter, allocator or size.
enum Trait : std::uint32_t {
    none = 0,
    null_without_memory = 1U << 0, ///< FormatIn sets out data to null when memory is out
    clears_first = 1U << 1,        ///< FormatOut clears kind and length before it looks at the mode
    clears_late = 1U << 2,         ///< FormatOut clears kind and length behind that
    apart_in_mode_2 = 1U << 3,     ///< mode 2 may print another text than the other modes
    whole_value = 1U << 4,         ///< FormatOut reads the whole value whatever length it is told
    always_takes = 1U << 5,        ///< FormatOut takes a block even when it is given one
    dispatches = 1U << 6,          ///< every failure of a row becomes SYSDT_ERR_INVALID_VALUE
    help_only_mode_1 = 1U << 7,    ///< Help is silent in mode 6 too
    help_swallows = 1U << 8,       ///< Help returns 0 when SYSDT_InitHelpInfo fails
    help_asks_symbol = 1U << 9,    ///< Help returns what KPL_CheckBySymbolForIPV4 answers
    bytewise = 1U << 10,           ///< Compare orders the bytes as they stand
    compare_tests_null = 1U << 11, ///< Compare refuses null pointers
    endian_tests_null = 1U << 12,  ///< Endian refuses null pointers
    check_takes_null = 1U << 13,   ///< Check does not look at its pointer
    name_optional = 1U << 14,      ///< scripts: without a field name the value itself is meant
    set_any_length = 1U << 15,     ///< LuaSet does not look at the length
    short_set_invalid = 1U << 16,  ///< LuaSet answers SYSDT_ERR_INVALID_VALUE to a short value
    short_get_invalid = 1U << 17,  ///< LuaGet does
    get_leaves_none = 1U << 18,    ///< LuaGet leaves nothing on the script stack
    get_pushed = 1U << 19,         ///< LuaGet: index -1 means the table itself, one below the top
    any_sub_kind = 1U << 20,       ///< a row that does what the value's own sub-kind word says
    inert_in = 1U << 21,           ///< FormatIn does nothing at all
};

/// How a Compare treats the length that it is told.
enum class Reads {
    nothing, ///< there is none, or it is the host's
    bytes,   ///< it compares as many bytes
    at_most, ///< it reads no more than that, and zeros in place of what is missing
    whole,   ///< it reads the whole values
    by_rows, ///< as the rows do that it asks
};

/// Where a type's texts have which kind of number.
enum class Writing {
    decimal,          ///< all of them decimal
    hexadecimal,      ///< all of them hexadecimal
    ipv6,             ///< an IPv6 address
    ipv6_and_number,  ///< an IPv6 address and, behind the last dot, a decimal number
    octets_or_number, ///< groups of hexadecimal digits if there are neither dots nor colons, else decimal
    evpn,             ///< fields between colons: an ESI, a MAC address, an IPv6 address in brackets, decimal
    sections,         ///< IPv6 addresses or decimal between hyphens if there are any, else decimal
    last_section,     ///< decimal between hyphens, and behind the last one perhaps an IPv6 address
    groups,           ///< brackets around words with numbers or an IPv6 address behind them
};

/// What a line `contract` tells. The letters of a mode column stand for the modes 0 to 6.
struct Expectation {
    std::string_view name;
    /// FormatIn: p parses, q parses what is quoted, f FAIL, u UNSUPPORTED.
    std::string_view in;
    /// What FormatIn answers to every text that does not parse.
    std::uint32_t unparsed;
    /// FormatOut: t text, b bare text, c copy, s nothing, f FAIL, u UNSUPPORTED, . the host's own.
    std::string_view out;
    std::uint16_t buffer; ///< the block that FormatOut takes for text
    /// FormatIn, FormatOut, Help: h by handle, p plain, - takes none.
    std::string_view memory;
    std::uint16_t script_size; ///< the least length for LuaSet and LuaGet; 0: the type's own
    std::uint32_t traits;
    std::array<std::uint16_t, 2> checked{}; ///< the lengths that Check takes; none: the one that scripts have
    Reads compare = Reads::bytes;
    Writing numbers = Writing::decimal;

    bool has(Trait trait) const { return (traits & trait) != 0; }
    char in_letter(std::uint8_t mode) const { return mode < in.size() ? in[mode] : 'u'; }
    char out_letter(std::uint8_t mode) const { return mode < out.size() ? out[mode] : 'u'; }
    bool helps_in(std::uint8_t mode) const { return mode == 1 || (mode == 6 && !has(help_only_mode_1)); }
};

/// The row of that name ("BOLPREFIX", "IPV4", "RD:RT"), or null.
const Expectation *expectation_of(std::string_view name);

/// The row of the dispatch table that a dispatched value's sub-kind word selects, or null.
const Expectation *expectation_behind(const Expectation &dispatcher, std::uint32_t sub_kind);

/// A way in which a value of the right length may not print.
struct PrintFailure {
    std::vector<std::string_view> names; ///< of types and rows
    std::uint32_t status;
    Fate fate;
    std::string_view why;

    bool concerns(std::string_view name) const;
};

/// With a blank between.
std::string joined(std::span<const std::string_view> names);

/// All that there are.
std::span<const PrintFailure> print_failures();

/// A statement at the head of vectors, for those who ask for it.
struct Statement {
    std::string_view name; ///< of the type or row
    std::string_view words;
};

/// The statements with that verb, in their order: `irregular` (irregular_texts.hpp), `breaks` (the fuzzers').
std::span<const Statement> head_statements(std::string_view verb);

} // namespace bgpdt::test
