// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values from the octets that BGP sends, and back.
#pragma once

#include <string>
#include <vector>

#include "answer.hpp"
#include "errors.hpp"
#include "options.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::tool {

/// The first argument is what the octets are; of one value, or of lines.
Answer wire_values(toolkit::Session &session, const Options &options);
Exit wire_lines(toolkit::Session &session, const Options &options);

/// What octets may be, for the help.
std::string wire_form_rows();

} // namespace bgpdt::tool
