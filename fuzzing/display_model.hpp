// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a display record's listing is, told a second time and in another way than the plug-in does it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace bgpdt::fuzzing {

/// The listing's text, or nothing for a record that cannot be listed.
std::optional<std::string> listing_of(std::span<const std::uint8_t> record);

} // namespace bgpdt::fuzzing
