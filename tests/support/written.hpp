// SPDX-License-Identifier: Apache-2.0
/// @file
/// The numbers that stand in a text and in a value, as they are written: no number of any size is ever computed from
/// digits here, so none can wrap.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "subject.hpp"

namespace bgpdt::test {

/// Numbers in their order: decimal ones as their digits, hexadecimal ones as small digits behind an "x", both without
/// leading zeros. An IPv6 address is its eight groups, an IPv4 address its four octets.
using Numbers = std::vector<std::string>;

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

/// How the type writes the numbers of such a value; `value` is in the processor's order.
Writing writing_of(const Subject &subject, const Bytes &value);

/// The numbers in the text, which ends at its first NUL.
Numbers numbers_in(std::string_view text, Writing writing);

/// Every number that the value's fields hold, whole and in parts (the halves and octets of words), in both spellings.
std::unordered_set<std::string> numbers_of(const Subject &subject, const Bytes &value);

/// The sum of two decimal numbers of any length.
std::string sum(std::string_view first, std::string_view second);

} // namespace bgpdt::test
