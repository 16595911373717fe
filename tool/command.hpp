// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a command is, and which one a command line means.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "errors.hpp"
#include "options.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::tool {

struct Answer;

struct Command {
    std::string_view name;
    std::string_view arguments; ///< their names; "[X]" may be left out, "[X...]" stands for any number
    std::string_view summary;
    std::string_view options; ///< those that not every command has
    std::string_view example;
    /// Null for a command that only runs over many values.
    Answer (*run)(toolkit::Session &session, const Options &options);
    /// Runs over many values and writes by itself; null for a command that does not. A command that does both takes many
    /// if it is given no value.
    Exit (*stream)(toolkit::Session &session, const Options &options) = nullptr;
};

/// Whether the command runs over many values with the options' arguments.
bool streams(const Command &command, const Options &options);

/// Whether the option means anything to the command.
bool has_option(const Command &command, std::string_view option);

/// @throws UsageError with names like it
const Command &find_command(std::span<const Command> commands, const std::string &name);
/// The command that the options name, with the right number of arguments and options that mean something to it.
/// @throws UsageError
const Command &find_command(std::span<const Command> commands, const Options &options);

} // namespace bgpdt::tool
