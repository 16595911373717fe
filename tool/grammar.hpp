// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "answer.hpp"
#include "options.hpp"

namespace bgpdt::tool {

/// The grammar of a type's, or a kind's, texts in the language that the options name.
Answer grammar_answer(toolkit::Session &session, const Options &options);

} // namespace bgpdt::tool
