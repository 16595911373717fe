// SPDX-License-Identifier: Apache-2.0
/// @file
/// What somebody who wrote an unknown name may have meant.
#ifndef BGPDT_TOOL_NEAR_NAMES_HPP
#define BGPDT_TOOL_NEAR_NAMES_HPP

#include <span>
#include <string>
#include <string_view>

namespace bgpdt::tool {

/// In small ASCII letters.
std::string lower(std::string_view text);

/// " (did you mean A, B?)" with the known names that contain the given one or are up to two letters away from it,
/// whatever the case; empty when there are none.
std::string did_you_mean(std::string_view name, std::span<const std::string> known);

} // namespace bgpdt::tool

#endif
