// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What went wrong, in the words of the command line.
#pragma once

#include <exception>
#include <string>

#include "toolkit/errors.hpp"

namespace bgpdt::tool {

/// What went wrong; texts of any content stand in it.
std::string sentence(const std::exception &error);

/// The place of what is wrong, and what would be accepted instead; empty where nothing is known of it.
std::string lines_below(const toolkit::Refusal &refusal);
/// The forms that the type takes.
std::string form_lines(const toolkit::Refusal &refusal);

} // namespace bgpdt::tool
