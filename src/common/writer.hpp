// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A bounded writer of text: it never passes its end, and what does not fit is cut there.
#pragma once

#include <algorithm>
#include <string_view>

#include "common/types.hpp"

namespace bgpdt {

class Writer {
public:
    /// @param buffer  where to write
    /// @param size    the most that may be written, the terminator included; at least 1
    constexpr Writer(char *buffer, std::size_t size) : begin_(buffer), at_(buffer), last_(buffer + size - 1) {}

    constexpr void put(char character)
    {
        if (at_ != last_)
            *at_++ = character;
    }

    constexpr void put(std::string_view text)
    {
        const std::size_t fitting = std::min(text.size(), room());
        at_ = std::copy_n(text.data(), fitting, at_);
    }

    /// Writes what takes at most `Most` characters; `write` gets the start and returns the end.
    template <std::size_t Most, class Write>
    constexpr void put_at_most(Write write)
    {
        char cut[Most];
        char *const to = room() >= Most ? at_ : cut;
        char *const end = write(to);
        if (to == at_)
            at_ = end;
        else
            put(std::string_view(cut, static_cast<std::size_t>(end - cut)));
    }

    /// Terminates the text and returns its length.
    constexpr u32 finish()
    {
        *at_ = '\0';
        return static_cast<u32>(at_ - begin_);
    }

    /// How many characters still fit.
    constexpr std::size_t room() const { return static_cast<std::size_t>(last_ - at_); }

private:
    char *begin_;
    char *at_;
    char *last_; ///< the terminator's last possible place
};

} // namespace bgpdt
