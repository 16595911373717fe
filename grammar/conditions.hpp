// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A text form as conditions on whole texts, which is what languages without automata have room for.
#pragma once

#include <vector>

#include "expression.hpp"

namespace bgpdt::grammar {

/// A text of this form matches all of `must` and none of `must_not`. No expression names a part with limits.
struct Alternative {
    std::vector<Expression> must;
    std::vector<Expression> must_not;
};

struct Form {
    Times length;
    std::vector<Alternative> alternatives; ///< a text has to be of one of these
};

/// That of the part `text`.
Form form_of(const Grammar &grammar);

/// All bytes that texts of the expression may hold.
ByteSet alphabet(const Grammar &grammar, const Expression &expression);

} // namespace bgpdt::grammar
