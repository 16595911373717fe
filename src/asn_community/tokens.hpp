// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A list's text, read where it stands: one token after the other, blanks between them.
#pragma once

#include "common/census.hpp"
#include "common/cut.hpp"

namespace bgpdt {

struct Token {
    char *begin;
    char *end;
    Census census;

    /// As a text of its own.
    Cut text() const { return {begin, end}; }
};

/// The tokens of a text, made of the characters `Known`; a token's census counts the `Marks` among them.
template <FixedString Known, FixedString Marks = "-*">
class Tokens {
public:
    /// @param longest  how many characters a token may have
    constexpr Tokens(char *text, std::size_t longest) : at_(text), longest_(longest) {}

    /// Finds the next token; false if there is none, or only one with another character in it or too long.
    bool next(Token &token)
    {
        while (*at_ == ' ')
            ++at_;
        const auto census = Census::of_start<Known, Marks>(at_);
        token = {at_, at_ + census.length(), census};
        const bool ends = *token.end == ' ' || *token.end == '\0';
        if (census.length() == 0 || census.length() > longest_ || !ends)
            return false;
        at_ = token.end;
        return true;
    }

    /// Whether nothing follows; the text does not end in blanks.
    constexpr bool exhausted() const { return *at_ == '\0'; }

private:
    char *at_;
    std::size_t longest_;
};

} // namespace bgpdt
