// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands that run over many values, from files or pipes, in constant memory: a line is a text, and what stands
/// in the lines comes out in their order. They write by themselves.
///
/// A line ends in LF or CRLF; the last may end with its file. Every line counts: an empty one, or one that begins with
/// '#', is a text like any other. A refused line is told on standard error, up to a number of them, and goes to the file
/// of --rejects as it is.
#pragma once

#include "errors.hpp"
#include "options.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::tool {

// The arguments are the type and the files.
Exit convert_lines(toolkit::Session &session, const Options &options);
Exit sort_lines(toolkit::Session &session, const Options &options);
Exit uniq_lines(toolkit::Session &session, const Options &options);
// The argument is the type; --in names the files, or standard input is read.
Exit print_lines(toolkit::Session &session, const Options &options);
Exit check_lines(toolkit::Session &session, const Options &options);
Exit canon_lines(toolkit::Session &session, const Options &options);

} // namespace bgpdt::tool
