// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Format texts that the compiler reads: the common ground of scan.hpp and print.hpp.
///
/// A format is a template argument. It is cut into pieces at compile time; a wrong letter, or another number of
/// conversions than there are arguments, does not build.
#pragma once

#include <algorithm>
#include <array>

#include "common/types.hpp"

namespace bgpdt {

/// A string literal as a template argument.
template <std::size_t Size>
struct FixedString {
    char text[Size]{};

    consteval FixedString(const char (&literal)[Size]) { std::copy_n(literal, Size, text); }
    static constexpr std::size_t length = Size - 1;
};

namespace format {

enum class Conversion : u8 {
    literal,   ///< characters that stand for themselves
    unsigned_, ///< %u
    signed_,   ///< %d
    hex,       ///< %x
    character, ///< %c
    string,    ///< %s
    quad,      ///< %q: what "%u.%u.%u.%u" with octets is, as one number, the first octet in the top byte
};

/// One step of a format.
struct Piece {
    Conversion conversion{};
    u16 begin{};   ///< where the literal characters stand in the format
    u16 length{};  ///< how many of them there are
    u8 bits{};     ///< size of the number: 8 (hh), 16 (h), 32 or 64 (ll)
    u8 width{};    ///< most characters to read, fewest digits to write; 0 is none
    u8 argument{}; ///< which argument it converts
};

template <std::size_t Capacity>
struct Pieces {
    std::array<Piece, Capacity> piece{};
    std::size_t count{};
    u8 arguments{};
};

/// Not constexpr on purpose: to reach it while a format is read stops the build and names the fault.
void unknown_conversion_in_format();

constexpr bool is_digit(char character) { return character >= '0' && character <= '9'; }
constexpr bool is_space(char character) { return character == ' ' || (character >= '\t' && character <= '\r'); }

template <FixedString Text>
consteval auto parse()
{
    Pieces<Text.length> out;
    for (std::size_t i = 0; i < Text.length; ++i) {
        Piece &piece = out.piece[out.count++];
        if (Text.text[i] != '%') {
            piece.begin = static_cast<u16>(i);
            while (i + 1 < Text.length && Text.text[i + 1] != '%')
                ++i;
            piece.length = static_cast<u16>(i + 1 - piece.begin);
            continue;
        }
        ++i;
        if (Text.text[i] == '.') // "%.2x" writes as "%02x" does
            ++i;
        while (is_digit(Text.text[i]))
            piece.width = static_cast<u8>(piece.width * 10 + (Text.text[i++] - '0'));
        piece.bits = 32;
        if (Text.text[i] == 'h') {
            piece.bits = Text.text[i + 1] == 'h' ? 8 : 16;
            i += piece.bits == 8 ? 2 : 1;
        } else if (Text.text[i] == 'l' && Text.text[i + 1] == 'l') {
            piece.bits = 64;
            i += 2;
        }
        switch (Text.text[i]) {
        case 'u': piece.conversion = Conversion::unsigned_; break;
        case 'd': piece.conversion = Conversion::signed_; break;
        case 'x': piece.conversion = Conversion::hex; break;
        case 'c': piece.conversion = Conversion::character; break;
        case 's': piece.conversion = Conversion::string; break;
        case 'q': piece.conversion = Conversion::quad; break;
        default: unknown_conversion_in_format();
        }
        piece.argument = out.arguments++;
    }
    return out;
}

} // namespace format
} // namespace bgpdt
