// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands of the program.
#ifndef BGPDT_TOOL_COMMANDS_HPP
#define BGPDT_TOOL_COMMANDS_HPP

#include <span>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "session.hpp"

namespace bgpdt::tool {

/// What a command answers: lines for people and pipes, and the same in JSON.
struct Answer {
    std::string text;
    nlohmann::ordered_json json;
};

struct Command {
    std::string_view name;
    std::string_view arguments; ///< their names; "[ARGS]" stands for any number
    std::string_view summary;
    Answer (*run)(Session &session, std::span<const std::string> arguments);
};

std::span<const Command> commands();

/// The command that the options name, with the right number of arguments.
/// @throws UsageError
const Command &find_command(const Options &options);

} // namespace bgpdt::tool

#endif
