// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts of any content, shown to people.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bgpdt::toolkit {

/// The bytes of the character at the place: of its UTF-8 sequence, 1 for a byte that is in none.
std::size_t character_size(std::string_view text, std::size_t at);
/// The name of a character that nobody sees, such as BYTE ORDER MARK; null for any other.
const char *invisible_name(std::string_view text, std::size_t at);
/// "U+FEFF"
std::string code_point(std::string_view text, std::size_t at);
/// As it stands; control characters and what is no UTF-8 as "\x1b" a byte, invisible ones as "\u{feff}".
std::string shown_character(std::string_view text, std::size_t at);

std::string shown(std::string_view text);
/// As shown(), but the ends of lines, and tabs, stay.
std::string shown_lines(std::string_view text);

/// In double quotes, as Lua reads it; what cannot be shown is escaped.
std::string lua_quoted(std::string_view text);

/// The text, "..." instead of what a line has no room for.
std::string shortened(std::string_view text);
/// A line with the text, or the part of it around the place, and one that marks the bytes: "^~~~". One mark stands
/// where no byte is, in front of what follows. Both lines are indented by two blanks and end in a line feed.
std::string underlined(std::string_view text, std::size_t at, std::size_t length);

} // namespace bgpdt::toolkit
