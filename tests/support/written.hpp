// SPDX-FileCopyrightText: 2026 The bgpdt authors
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

/// How the type writes the numbers of such a value; `value` is in the processor's order.
Writing writing_of(const Subject &subject, const Bytes &value);

/// The numbers in the text, which ends at its first NUL.
Numbers numbers_in(std::string_view text, Writing writing);

/// Every number that the value's fields hold, whole and in parts (the halves and octets of words), in both spellings.
std::unordered_set<std::string> numbers_of(const Subject &subject, const Bytes &value);

/// The sum of two decimal numbers of any length.
std::string sum(std::string_view first, std::string_view second);

} // namespace bgpdt::test
