// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands of the program.
#pragma once

#include <span>

#include "command.hpp"

namespace bgpdt::tool {

std::span<const Command> commands();

} // namespace bgpdt::tool
