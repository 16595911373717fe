// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the router's types are, in words, and texts that they take; their own help tells little more than lengths.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bgpdt::toolkit {

/// One kind of a type whose values stand behind a sub-kind word.
struct KindSample {
    std::uint32_t kind;
    std::string about;
    std::vector<std::string> texts; ///< one of each form
};

struct Sample {
    std::string about;
    std::string grammar;                 ///< which texts there are in mode 2; empty for a type that takes none
    std::vector<std::string> texts;      ///< one of each form in mode 2; none for a type that takes no text
    std::vector<std::string> words = {}; ///< which may stand in its texts
    std::vector<KindSample> kinds = {};  ///< with the same texts; none for a type without kinds

    /// Empty for a kind that there is not.
    KindSample of_kind(std::uint32_t kind) const;
};

/// Whether its values are indexes that have names.
bool is_name_index(std::uint16_t type_id);

/// Empty for a type of another plug-in.
Sample sample_of(std::uint16_t type_id);

} // namespace bgpdt::toolkit
