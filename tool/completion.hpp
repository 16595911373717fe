// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What may stand on a command line that is being written; the completions of shells ask for it.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "command.hpp"

namespace bgpdt::tool {

/// Stands for the names of files.
inline constexpr const char *file_candidate = ":file";

struct Candidate {
    std::string word;
    std::string about = {}; ///< what it means; empty if it says so itself
};

/// What the last of the words may become, whatever its case; the others stand in front of it, behind the program.
std::vector<Candidate> completions(toolkit::Session &session, std::span<const Command> commands,
                                   std::span<const std::string> words);

} // namespace bgpdt::tool
