// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads grammar files; README.md beside them tells the notation.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "expression.hpp"

namespace bgpdt::grammar {

/// A grammar file says something that it may not; tells file and line.
class NotationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// @param common  the text of the file with the parts that all grammars may use
Grammar read_grammar(const std::string &name, std::string_view text, std::string_view common);

} // namespace bgpdt::grammar
