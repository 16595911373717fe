// SPDX-License-Identifier: Apache-2.0
/// @file
/// A text that nothing small mends: what it lacks beside a sample.
#ifndef BGPDT_TOOL_BLENDING_HPP
#define BGPDT_TOOL_BLENDING_HPP

#include "asking.hpp"

namespace bgpdt::tool {

/// The text with as few pieces of a sample in it as it takes.
Found blended(Refused &refused);

} // namespace bgpdt::tool

#endif
