// SPDX-License-Identifier: Apache-2.0
/// @file
/// The commands that run over many values, from files or pipes, in constant memory: a line is a text, and what stands
/// in the lines comes out in their order. They write by themselves.
///
/// A line ends in LF or CRLF; the last may end with its file. Every line counts: an empty one, or one that begins with
/// '#', is a text like any other. A refused line is told on standard error, up to a number of them, and goes to the file
/// of --rejects as it is.
#ifndef BGPDT_TOOL_STREAM_HPP
#define BGPDT_TOOL_STREAM_HPP

#include <span>
#include <string>

#include "errors.hpp"
#include "session.hpp"

namespace bgpdt::tool {

/// Lines longer than that are refused: no type has values that long.
inline constexpr std::size_t longest_line = std::size_t{64} << 10;

// The arguments are the type and the files.
Exit convert_lines(Session &session, std::span<const std::string> arguments);
Exit sort_lines(Session &session, std::span<const std::string> arguments);
Exit uniq_lines(Session &session, std::span<const std::string> arguments);
// The files stand in the options.
Exit check_lines(Session &session, std::span<const std::string> arguments);
Exit canon_lines(Session &session, std::span<const std::string> arguments);

} // namespace bgpdt::tool

#endif
