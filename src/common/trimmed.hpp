// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The first look at a text that no census counts: its ends, its length, its white space.
#pragma once

#include <cstring>

#include "common/bytes.hpp"
#include "common/types.hpp"

namespace bgpdt {

/// No white space is above the blank.
constexpr bool may_be_blank(char character) { return static_cast<u8>(character) <= ' '; }

/// Whether the host must be asked for white space in the text. The characters of a processor's word are looked at
/// together: subtracting sets the top bit of those below the subtrahend.
inline bool may_have_blank(const char *text, std::size_t length)
{
    using Chunk = std::size_t;
    constexpr Chunk each = ~Chunk{0} / UINT8_MAX;
    constexpr Chunk top_bits = each << 7;
    if (length < sizeof(Chunk))
        return true;
    const auto low_characters = [](const char *at) {
        const auto word = load<Chunk>(at);
        return (word - each * (' ' + 1)) & ~word;
    };
    const char *const last = text + length - sizeof(Chunk);
    Chunk low = low_characters(last);
    for (; text < last; text += sizeof(Chunk))
        low |= low_characters(text);
    return (low & top_bits) != 0;
}

struct Trimmed {
    char *text; ///< null if it is shorter or longer than allowed or has white space inside
    std::size_t length;
};

/// The text without the white space at its ends, cut in place by the host.
inline Trimmed trimmed(char *text, std::size_t shortest, std::size_t longest)
{
    text = SYSDT_BTrim(text);
    const std::size_t length = std::strlen(text);
    if (length < shortest || length > longest || (may_have_blank(text, length) && NCF_IsSpaceInString(text) != 0))
        return {nullptr, 0};
    return {text, length};
}

} // namespace bgpdt
