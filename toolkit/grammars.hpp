// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the types take as text, told in a sentence or two; their own help tells little more than lengths.
#pragma once

#include <cstdint>
#include <string>

namespace bgpdt::toolkit {

/// Of its texts in the mode in which they go both ways; empty for a type that takes none, and of another plug-in.
std::string grammar_of(std::uint16_t type_id);

} // namespace bgpdt::toolkit
