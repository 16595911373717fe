// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Grammars in other languages. Of trimmed texts, they are about what stands between the white space at the ends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "expression.hpp"

namespace bgpdt::grammar {

/// Kinds of regular expressions. `portable` has what POSIX's extended ones, RE2, PCRE, Python and ECMAScript share.
enum class Dialect { portable, python, pcre, ecmascript, xsd };

/// A text is taken if its length is within the limits, and one of the rows has it: all of its expressions in `must`, none
/// of those in `must_not` match the whole text.
struct RegexRow {
    std::vector<std::string> must;
    std::vector<std::string> must_not;
};
struct Regex {
    Times length;
    std::vector<RegexRow> rows;
    std::string definitions; ///< of PCRE: what the names in the expressions mean
};
Regex regex_of(const Grammar &grammar, Dialect dialect);

/// One expression, anchored, for a dialect that looks ahead.
std::string single_regex(const Grammar &grammar, Dialect dialect);
/// The portable expressions, a line each: "length", "match", "except", and "or" between rows.
std::string portable_regex(const Grammar &grammar);

/// RFC 5234, RFC 7405. What it cannot say stands in comments.
std::string abnf(const Grammar &grammar);
/// A typedef (RFC 7950).
std::string yang_typedef(const Grammar &grammar);
/// What the texts print as, in sentences that name the grammar's parts.
std::string printing(const Grammar &grammar);
/// A railroad picture, its own parts below each other.
std::string railroad(const Grammar &grammar);

} // namespace bgpdt::grammar
