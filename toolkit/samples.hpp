// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the router's types are, in words, and texts that they take; their own help tells little more than lengths.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bgpdt::toolkit {

/// Texts of one kind of a type whose values stand behind a sub-kind word.
struct KindTexts {
    std::uint32_t kind;
    std::vector<std::string> texts;
};

struct Sample {
    std::string about;
    std::vector<std::string> texts;      ///< one of each form in mode 2; none for a type that takes no text
    std::vector<std::string> words = {}; ///< which may stand in its texts
    std::vector<KindTexts> kinds = {};   ///< the same texts by their kind; none for a type without kinds

    /// One of each form of the kind.
    std::vector<std::string> texts_of(std::uint32_t kind) const;
};

/// Whether its values are indexes that have names.
bool is_name_index(std::uint16_t type_id);

/// Empty for a type of another plug-in.
Sample sample_of(std::uint16_t type_id);

} // namespace bgpdt::toolkit
