// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Pictures of a value's fields.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/explain.hpp"

namespace bgpdt::tool {

/// "4-7": the part's bytes, "4" for one alone.
std::string range_of(const toolkit::Part &part);

/// Yellow, blue, red, cyan: no two in a row that eyes without red or green see as one.
inline constexpr std::size_t part_colours = 4;
/// A colour for each part; none for bytes without a name.
std::vector<std::optional<std::size_t>> colours_of(const toolkit::Explanation &explanation);

std::string explanation_text(const toolkit::Explanation &explanation, bool coloured);
/// A page that needs nothing else.
std::string explanation_html(const toolkit::Explanation &explanation);

} // namespace bgpdt::tool
