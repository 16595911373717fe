// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The types that take a text which one type refuses.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "errors.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// The likeliest first; not those of any text or number.
std::vector<TypeName> types_that_take(Session &session, std::string_view text);

/// "it is a text of A (about), B (about) and 3 more types"; empty for none.
std::string types_sentence(std::span<const TypeName> types);

} // namespace bgpdt::toolkit
