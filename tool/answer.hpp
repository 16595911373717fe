// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a command answers.
#pragma once

#include <string>
#include <vector>

#include "toolkit/json_text.hpp"

namespace bgpdt::tool {

/// Lines for people and pipes, and the same in JSON.
struct Answer {
    std::string text;
    toolkit::JsonObject json;
    std::vector<std::string> notes = {}; ///< sentences beside it
};

} // namespace bgpdt::tool
