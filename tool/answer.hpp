// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a command answers.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace bgpdt::tool {

/// Lines for people and pipes, and the same in JSON.
struct Answer {
    std::string text;
    nlohmann::ordered_json json;
    std::vector<std::string> notes = {}; ///< sentences beside it
};

} // namespace bgpdt::tool
