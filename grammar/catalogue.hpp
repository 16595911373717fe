// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The grammars of all types and kinds, built in.
#pragma once

#include <span>
#include <string_view>

#include "expression.hpp"

namespace bgpdt::grammar {

/// By name: that of a type, or "TYPE KIND".
std::span<const std::string_view> names();
/// @throws std::out_of_range if there is none of the name
Grammar grammar_of(std::string_view name);
/// That of a standard, which has no `text` but parts named as they are there.
Grammar standard_grammar(std::string_view name);

} // namespace bgpdt::grammar
