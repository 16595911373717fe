// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands of the program.
#ifndef BGPDT_TOOL_COMMANDS_HPP
#define BGPDT_TOOL_COMMANDS_HPP

#include <span>

#include "command.hpp"

namespace bgpdt::tool {

std::span<const Command> commands();

} // namespace bgpdt::tool

#endif
