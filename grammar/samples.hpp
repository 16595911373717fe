// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the numbers of a grammar stand in its texts, and values that are worth trying there.
#pragma once

#include <string>
#include <vector>

#include "expression.hpp"

namespace bgpdt::grammar {

/// A number within a text whose other parts are the simplest.
struct Place {
    std::string front;
    Number number;
    std::string behind;
    std::string part; ///< the innermost named part that the number is in
};

/// The places of all numbers in a part; of equal ones the first.
std::vector<Place> places(const Grammar &grammar, const std::string &part);

/// Bounds, powers of 2 and of the base, and what lies so near to them.
std::vector<std::uint64_t> edges(const Number &number, std::uint64_t reach);

} // namespace bgpdt::grammar
