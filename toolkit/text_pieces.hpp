// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts taken to pieces, whatever type they are of: numbers and words, and what separates them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "digits.hpp"

namespace bgpdt::toolkit {

using Texts = std::vector<std::string>;

inline constexpr const char *blanks = " \t\n\v\f\r";

inline bool is_digit(char c) { return c >= '0' && c <= '9'; }
inline bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
inline bool is_hex(char c) { return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
/// Of a number, an address group or a word; everything else separates.
inline bool is_inner(char c) { return is_digit(c) || is_letter(c); }
inline bool is_blank(char c) { return std::string_view(blanks).find(c) != std::string_view::npos; }

/// What stands in the text instead of a part of it.
struct Edit {
    std::size_t at;
    std::size_t length;
    std::string by;
};

using Edits = std::vector<Edit>;

/// The text with the edit; it costs as much as what comes of it, however long the text is.
inline std::string edited(std::string_view text, const Edit &edit)
{
    std::string result(text.substr(0, edit.at));
    return result.append(edit.by).append(text.substr(edit.at + edit.length));
}

/// The edit that turns one text into the other.
Edit difference(const std::string &from, const std::string &to);

struct Range {
    std::size_t begin;
    std::size_t end;
    std::size_t size() const { return end - begin; }
};

std::vector<Range> number_runs(const std::string &text, Range within);
/// Where characters of numbers and words meet separators, and where separators meet; both ends too.
std::vector<std::size_t> boundaries(const std::string &text);
/// Whether a number, a word or a separator begins with the second character behind the first.
bool is_edge(char before, char behind);
/// The bracket that closes the one at the place, or std::string::npos.
std::size_t closing(const std::string &text, std::size_t open);
/// With every number as "0": texts of one form have one shape.
std::string shape(const std::string &text);
/// Equally wide groups of hexadecimal digits in a row, as samples write them: "0000-5e00-5301".
struct Groups {
    std::size_t width;
    std::size_t count;
    char separator;

    std::string laid_out(const std::string &characters) const;
};

/// The groups that begin at the place; count 0 if none do, or too many.
Groups groups_at(const std::string &text, std::size_t at);

/// Parts of the texts that may be missing in another: groups in brackets, or a number or word with a separator.
Texts parts_of(const Texts &texts);
/// From boundary to boundary.
Texts pieces_of(const std::string &text);

/// A piece of a text beside the piece of a sample that has its place; either may be empty.
struct Pair {
    std::string mine;
    std::string theirs;
    std::size_t at; ///< of mine in the text
};

/// The pieces of text and sample side by side, so that they are as alike as can be.
std::vector<Pair> aligned(const Texts &mine, const Texts &theirs);
/// Of each pair the one or the other.
std::string blended(const std::vector<Pair> &pairs, const std::vector<bool> &mine);
/// Whether two numbers or words of a blend run into one.
bool runs_together(const std::vector<Pair> &pairs, const std::vector<bool> &mine);
/// How much of the text is not in a blend that has the sample's piece.
std::size_t loss(const Pair &pair);

} // namespace bgpdt::toolkit
