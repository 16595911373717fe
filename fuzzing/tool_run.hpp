// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The tool in this process: its main(), with files in memory for the standard ones.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bgpdt::fuzzing {

struct Outcome {
    int status;
    std::string output;
    std::string errors;

    bool operator==(const Outcome &) const = default;
};

/// The process must have its report descriptor by then: whatever else writes to standard error goes to the outcome.
/// @param words  behind the program's name
Outcome run_tool(const std::vector<std::string> &words, std::string_view input);

/// Sanitizers write where standard error is now, and the process goes to an empty folder of its own.
void prepare_tool();

} // namespace bgpdt::fuzzing
