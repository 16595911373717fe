// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Command lines: the options of all commands, and help.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "command.hpp"
#include "options.hpp"

namespace bgpdt::tool {

struct OptionName {
    std::string name;  ///< the long one where there are two
    std::string value; ///< what its value is called; empty for an option without
    std::string meaning;
};
/// Those of all commands.
std::vector<OptionName> option_names();

/// @param commands  of which help tells
/// @throws UsageError
Options read_options(int argc, const char *const *argv, std::span<const Command> commands);

/// Whether --json is given, also on a command line that is wrong otherwise.
bool asks_for_json(int argc, const char *const *argv);

} // namespace bgpdt::tool
