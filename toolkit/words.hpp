// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Words and columns of what is printed for people.
#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace bgpdt::toolkit {

inline std::string joined(std::span<const std::string> words, std::string_view separator)
{
    std::string line;
    for (const std::string &word : words)
        line.append(line.empty() ? std::string_view() : separator).append(word);
    return line;
}

/// The text and blanks up to the column, at least one if there is a column.
inline std::string padded(std::string text, std::size_t column)
{
    text.resize(column == 0 ? text.size() : std::max(text.size() + 1, column), ' ');
    return text;
}

/// "1 byte", "2 bytes"
inline std::string counted(std::size_t count, const char *word)
{
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

} // namespace bgpdt::toolkit
