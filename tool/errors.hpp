// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Why a command does not end well, and the exit status that says so.
#pragma once

#include <stdexcept>

#include "toolkit/errors.hpp"

namespace bgpdt::tool {

enum Exit : int { exit_done = 0, exit_refused = 1, exit_usage = 2 };

/// A command line that cannot be understood, a file that cannot be read, output that cannot be written.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A script that ends with an error; the sentence goes on with the lines of its traceback.
class ScriptError : public toolkit::Refusal {
public:
    using Refusal::Refusal;
};

} // namespace bgpdt::tool
