// SPDX-License-Identifier: Apache-2.0
/// @file
/// A list's text, read where it stands: one token after the other, blanks between them.
#pragma once

#include "common/census.hpp"
#include "common/cut.hpp"

namespace bgpdt {

/// The tokens of a text, made of the characters `Known`; the census counts the `Marks` among them.
template <FixedString Known, FixedString Marks = "-*">
class Tokens {
public:
    /// @param longest  how many characters a token may have
    constexpr Tokens(char *text, std::size_t longest) : at_(text), longest_(longest) {}

    /// Moves to the next token; false if there is none, or only one with another character in it or too long.
    constexpr bool next()
    {
        skip_blanks();
        text_ = at_;
        census_ = Census::of_start<Known, Marks>(at_);
        const bool ends = at_[census_.length()] == ' ' || at_[census_.length()] == '\0';
        if (census_.length() == 0 || census_.length() > longest_ || !ends)
            return false;
        at_ += census_.length();
        return true;
    }

    /// The token as a text of its own.
    Cut text() const { return {text_, at_}; }
    constexpr const Census &census() const { return census_; }

    /// Whether nothing but blanks follows.
    constexpr bool exhausted()
    {
        skip_blanks();
        return *at_ == '\0';
    }

private:
    constexpr void skip_blanks()
    {
        while (*at_ == ' ')
            ++at_;
    }

    char *at_;
    std::size_t longest_;
    char *text_ = nullptr;
    Census census_ = Census::of<Known>("");
};

} // namespace bgpdt
