// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lua scripts with the module `bgp`.
#pragma once

#include <span>
#include <string>

#include "toolkit/session.hpp"

namespace bgpdt::tool {

/// Runs the script; the arguments stand in `arg` and `...` as the Lua interpreter gives them.
/// @throws UsageError if it cannot be read, ScriptError with a traceback if it fails
void run_script(toolkit::Session &session, const std::string &file, std::span<const std::string> arguments);

} // namespace bgpdt::tool
