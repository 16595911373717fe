// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// scan<"%u.%u:%u">(text, a, b, c): sscanf with a format that the compiler reads.
///
/// What C defines is done: white space before a number is skipped, a sign is taken, a negative unsigned number wraps,
/// a width limits the characters. What C leaves undefined is refused: a number that does not fit its conversion does
/// not convert. "%s" takes a std::span<char> and fails when the string and its NUL do not fit. "%q" reads what
/// "%u.%u.%u.%u" does into one number, the first octet in the top byte, and fails where one of them is no octet.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

#include "common/format.hpp"

namespace bgpdt {
namespace format {

/// The value of each character as a hexadecimal digit; 255 for what is none.
inline constexpr auto hex_digits = [] {
    std::array<u8, 256> table{};
    table.fill(UINT8_MAX);
    for (u8 i = 0; i < 10; ++i)
        table[std::size_t{'0'} + i] = i;
    for (u8 i = 10; i < 16; ++i)
        table[std::size_t{'A'} + i - 10] = table[std::size_t{'a'} + i - 10] = i;
    return table;
}();

/// The value of a digit in the base, or anything from the base up.
template <unsigned Base>
constexpr unsigned digit_value(char character)
{
    if constexpr (Base == 10)
        return static_cast<unsigned char>(character) - unsigned{'0'};
    else
        return hex_digits[static_cast<unsigned char>(character)];
}

// The readers below move over a text by value: they return where they end, null when there is nothing to read.

/// So many digits fit whatever they are.
template <unsigned Base, class Number>
inline constexpr int safe_digits =
    Base == 16 ? std::numeric_limits<Number>::digits / 4 : std::numeric_limits<Number>::digits10;

/// Digits of a number that may be too large for a word, from the first to `end`.
template <unsigned Base, class Number>
[[gnu::noinline]] constexpr const char *read_long(const char *at, const char *end, Number &number)
{
    const bool safe = end - at <= safe_digits<Base, Number>;
    Number value = 0;
    for (; at != end; ++at) {
        const unsigned digit = digit_value<Base>(*at);
        Number next = 0;
        if (!safe && (__builtin_mul_overflow(value, Base, &next) || __builtin_add_overflow(next, digit, &next)))
            return nullptr;
        value = static_cast<Number>(value * Base + digit);
    }
    number = value;
    return end;
}

/// Digits up to `end`; where that is null up to their own end.
template <unsigned Base, class Number>
constexpr const char *read_digits(const char *at, const char *end, Number &number)
{
    using Word = std::size_t; // the processor's own
    const char *const first = at;
    Word value = 0;
    for (unsigned digit = 0; at != end && (digit = digit_value<Base>(*at)) < Base; ++at)
        value = value * Base + digit;
    if (at - first > safe_digits<Base, Word>)
        return read_long<Base>(first, at, number);
    if (at == first || value > std::numeric_limits<Number>::max())
        return nullptr;
    number = static_cast<Number>(value);
    return at;
}

constexpr const char *skip_space(const char *at)
{
    while (is_space(*at))
        ++at;
    return at;
}

/// A number with all that may stand in front of its digits, of at most `Width` characters; any number of them when that
/// is 0.
template <unsigned Base, unsigned Width, class Number>
[[gnu::noinline]] constexpr const char *scan_led_number(const char *at, Number &number)
{
    using Unsigned = std::make_unsigned_t<Number>;
    using Magnitude = std::conditional_t<BGPDT_SMALL, u64, Unsigned>; // the digits of all numbers then have one reader

    at = skip_space(at);
    const char *end = nullptr;
    if constexpr (Width != 0)
        for (end = at; end - at != std::ptrdiff_t{Width} && *end != '\0';)
            ++end;
    const bool negative = *at == '-';
    if (negative || *at == '+')
        ++at;
    if constexpr (Base == 16)
        if (at != end && *at == '0' && at + 1 != end && (at[1] | 0x20) == 'x')
            at += 2;
    Magnitude magnitude = 0;
    at = read_digits<Base>(at, end, magnitude);
    if (at == nullptr)
        return nullptr;
    if constexpr (std::is_signed_v<Number> || sizeof magnitude != sizeof number)
        if (magnitude > Unsigned{std::numeric_limits<Number>::max()} + Unsigned{std::is_signed_v<Number> && negative})
            return nullptr;
    number = static_cast<Number>(negative ? Magnitude{0} - magnitude : magnitude);
    return at;
}

/// A number in decimal; most begin with a digit.
template <unsigned Width, class Number>
[[gnu::noinline]] constexpr const char *scan_decimal(const char *at, Number &number)
{
    if constexpr (Width == 0 && std::is_unsigned_v<Number> && !BGPDT_SMALL)
        if (digit_value<10>(*at) < 10)
            return read_digits<10>(at, nullptr, number);
    return scan_led_number<10, Width>(at, number);
}

/// A number in hexadecimal; most have as many digits as their width.
template <unsigned Width, class Number>
constexpr const char *scan_hex(const char *at, Number &number)
{
    if constexpr (Width == 2 && !BGPDT_SMALL) {
        const unsigned high = digit_value<16>(at[0]);
        const unsigned low = high < 16 ? digit_value<16>(at[1]) : 16;
        if (low < 16) {
            number = static_cast<Number>(high << 4 | low);
            return at + Width;
        }
    }
    return scan_led_number<16, Width>(at, number);
}

/// A number that is an octet; most begin with a digit.
constexpr const char *scan_octet(const char *at, u32 &octet)
{
    u32 value = digit_value<10>(*at);
    if (BGPDT_SMALL || value >= 10) {
        at = scan_led_number<10, 0>(at, octet);
        return octet <= UINT8_MAX ? at : nullptr;
    }
    unsigned digit = digit_value<10>(*++at);
    if (digit < 10) {
        value = value * 10 + digit;
        while ((digit = digit_value<10>(*++at)) < 10) { // two digits are an octet always
            value = value * 10 + digit;
            if (value > UINT8_MAX)
                return nullptr;
        }
    }
    octet = value;
    return at;
}

/// Four octets with dots between them.
[[gnu::noinline]] constexpr const char *scan_quad(const char *at, u32 &quad)
{
    u32 octets = 0;
    for (int left = 4;;) {
        u32 octet = 0;
        at = scan_octet(at, octet);
        if (at == nullptr)
            return nullptr;
        octets = octets << 8 | octet;
        if (--left == 0)
            break;
        if (*at++ != '.')
            return nullptr;
    }
    quad = octets;
    return at;
}

/// Whether a string ends here; few characters are not above the blank.
constexpr bool ends_string(char character)
{
    return static_cast<unsigned char>(character) <= ' ' && (character == '\0' || is_space(character));
}

constexpr const char *scan_string(const char *at, std::span<char> string)
{
    at = skip_space(at);
    std::size_t length = 0;
    for (; !ends_string(*at); ++at) {
        if (length + 1 >= string.size())
            return nullptr;
        string[length++] = *at;
    }
    if (length == 0)
        return nullptr;
    string[length] = '\0';
    return at;
}

/// Literal characters of the format; white space there stands for any amount of it, none included.
template <FixedString Format, Piece piece>
constexpr const char *scan_literal(const char *at)
{
    for (u32 i = piece.begin; i < piece.begin + piece.length; ++i) {
        if (is_space(Format.text[i]))
            at = skip_space(at);
        else if (*at++ != Format.text[i])
            return nullptr;
    }
    return at;
}

template <Piece piece, class Argument>
constexpr const char *scan_argument(const char *at, Argument &argument)
{
    if constexpr (piece.conversion == Conversion::character) {
        argument = *at;
        return *at != '\0' ? at + 1 : nullptr;
    } else if constexpr (piece.conversion == Conversion::string) {
        return scan_string(at, argument);
    } else if constexpr (piece.conversion == Conversion::quad) {
        static_assert(std::is_same_v<Argument, u32>, "the argument is no 32-bit number");
        return scan_quad(at, argument);
    } else {
        static_assert(8 * sizeof(Argument) == piece.bits, "the argument's size is not the conversion's");
        static_assert(std::is_signed_v<Argument> == (piece.conversion == Conversion::signed_), "the argument's sign");
        if constexpr (piece.conversion == Conversion::hex)
            return scan_hex<piece.width>(at, argument);
        else
            return scan_decimal<piece.width>(at, argument);
    }
}

/// Moves `at` behind what the piece stands for.
template <FixedString Format, Piece piece, class Arguments>
constexpr bool scan_piece(const char *&at, const Arguments &arguments, int &converted)
{
    if constexpr (piece.conversion == Conversion::literal) {
        at = scan_literal<Format, piece>(at);
    } else {
        at = scan_argument<piece>(at, std::get<piece.argument>(arguments));
        converted += at != nullptr ? 1 : 0;
    }
    return at != nullptr;
}

} // namespace format

/// Reads the text by the format.
///
/// @param text       NUL-terminated
/// @param arguments  one for each conversion: u32 for "%u", "%x" and "%q", u16 with "h", u64 with "ll", i32 for "%d", char
///                   for "%c", std::span<char> for "%s"
/// @return how many conversions were done before the first that failed; 0 too where sscanf answers EOF
template <FixedString Format, class... Arguments>
constexpr int scan(const char *text, Arguments &&...arguments)
{
    constexpr auto pieces = format::parse<Format>();
    static_assert(pieces.arguments == sizeof...(Arguments), "one argument for each conversion");
    const auto references = std::forward_as_tuple(arguments...);
    int converted = 0;
    [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        static_cast<void>((format::scan_piece<Format, pieces.piece[I]>(text, references, converted) && ...));
    }
    (std::make_index_sequence<pieces.count>{});
    return converted;
}

} // namespace bgpdt
