// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The irregularities by which an accepted text has other numbers than its value prints, as the heads of the vectors tell
/// them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "written.hpp"

namespace bgpdt::test {

/// An accepted text and what became of it.
struct AcceptedText {
    std::string_view text;
    std::string_view family; ///< the subject's type; of a route key the row of its value
    Numbers written;
    std::string print; ///< empty if it does not print
    Numbers printed;
    std::unordered_set<std::string> fields;
    Bytes value;
};

/// A numbered irregularity, and what still holds of a text that it concerns.
struct Irregularity {
    std::vector<std::string_view> families;
    std::string_view number; ///< as the family's head comment has it
    std::string_view why;
    bool (*holds)(const AcceptedText &);

    bool concerns(std::string_view family) const;
};

/// In the order in which they are tried.
std::span<const Irregularity> irregular_texts();

} // namespace bgpdt::test
