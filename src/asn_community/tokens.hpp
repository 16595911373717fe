// SPDX-License-Identifier: Apache-2.0
/// @file
/// A list's text, cut at blanks into a fixed table of tokens.
#pragma once

#include <array>
#include <cstring>

#include "common/format.hpp"

namespace bgpdt {

/// Which characters a token may hold.
template <FixedString Known>
inline constexpr std::array<bool, 256> token_characters = [] {
    std::array<bool, 256> table{};
    for (std::size_t i = 0; i < Known.length; ++i)
        table[static_cast<u8>(Known.text[i])] = true;
    return table;
}();

/// Up to `Most` tokens of up to `Longest` characters.
template <u32 Most, u32 Longest>
struct Tokens {
    char token[Most][Longest + 1];
    u32 count = 0;

    /// Cuts the text at blanks, a run of them counting as one.
    ///
    /// @return false if a character is not in Known, a token is too long, or there are too many
    template <FixedString Known>
    bool split(const char *text)
    {
        for (;;) {
            while (*text == ' ')
                ++text;
            if (*text == '\0')
                return true;
            const char *const start = text;
            while (token_characters<Known>[static_cast<u8>(*text)])
                ++text;
            const auto length = static_cast<std::size_t>(text - start);
            if ((*text != ' ' && *text != '\0') || length > Longest || count == Most)
                return false;
            std::memcpy(token[count], start, length);
            token[count++][length] = '\0';
        }
    }
};

} // namespace bgpdt
