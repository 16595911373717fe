// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What somebody who wrote an unknown name may have meant.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bgpdt::toolkit {

/// In small ASCII letters.
std::string lower(std::string_view text);

/// The Levenshtein distances of the word from the beginnings of the text, by their lengths.
std::vector<std::size_t> distances(std::string_view word, std::string_view text);

/// " (did you mean A, B?)" with the known names that contain the given one or are up to two letters away from it,
/// whatever the case; empty when there are none.
std::string did_you_mean(std::string_view name, std::span<const std::string> known);

} // namespace bgpdt::toolkit
