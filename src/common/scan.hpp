// SPDX-License-Identifier: Apache-2.0
/// @file
/// scan<"%u.%u:%u">(text, a, b, c): sscanf with a format that the compiler reads.
///
/// What C defines is done: white space before a number is skipped, a sign is taken, a negative unsigned number wraps,
/// a width limits the characters. What C leaves undefined is refused: a number that does not fit its conversion does
/// not convert. "%s" takes a std::span<char> and fails when the string and its NUL do not fit.
#pragma once

#include <limits>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

#include "common/format.hpp"

namespace bgpdt {
namespace format {

/// The value of a digit in the base, or anything from the base up.
template <unsigned Base>
constexpr unsigned digit_value(char character)
{
    const unsigned decimal = static_cast<unsigned char>(character) - unsigned{'0'};
    if constexpr (Base == 10)
        return decimal;
    const unsigned letter = (static_cast<unsigned char>(character) | 0x20U) - unsigned{'a'};
    return letter < 6 ? letter + 10 : decimal < 10 ? decimal : Base;
}

/// Reads digits from [at, end) and says whether their number fits; `end` null is the end of the digits themselves.
template <unsigned Base, class Number>
constexpr bool read_digits(const char *&at, const char *end, Number &number)
{
    // As many digits as fit whatever they are, leading zeros included: these need no test for overflow.
    constexpr int safe = Base == 16 ? std::numeric_limits<Number>::digits / 4 : std::numeric_limits<Number>::digits10;
    const char *const first = at;
    Number value = 0;
    unsigned digit = 0;
    for (; at != end && (digit = digit_value<Base>(*at)) < Base; ++at)
        value = static_cast<Number>(value * Base + digit);
    number = value;
    if (at - first <= safe)
        return at != first;
    value = 0;
    for (const char *again = first; again != at; ++again) {
        digit = digit_value<Base>(*again);
        if (value > (std::numeric_limits<Number>::max() - digit) / Base)
            return false;
        value = static_cast<Number>(value * Base + digit);
    }
    return true;
}

constexpr void skip_space(const char *&at)
{
    while (is_space(*at))
        ++at;
}

/// One number of at most `Width` characters; any number of them when that is 0.
template <unsigned Base, unsigned Width, class Number>
[[gnu::noinline]] constexpr bool scan_number(const char *&at, Number &number)
{
    using Unsigned = std::make_unsigned_t<Number>;

    skip_space(at);
    const char *end = nullptr;
    if constexpr (Width != 0)
        for (end = at; end != at + Width && *end != '\0';)
            ++end;
    const bool negative = *at == '-';
    if (negative || *at == '+')
        ++at;
    if constexpr (Base == 16)
        if (at != end && *at == '0' && at + 1 != end && (at[1] | 0x20) == 'x')
            at += 2;
    Unsigned magnitude = 0;
    if (!read_digits<Base>(at, end, magnitude))
        return false;
    if constexpr (std::is_signed_v<Number>)
        if (magnitude > Unsigned{std::numeric_limits<Number>::max()} + Unsigned{negative})
            return false;
    number = static_cast<Number>(negative ? Unsigned{0} - magnitude : magnitude);
    return true;
}

constexpr bool scan_string(const char *&at, std::span<char> string)
{
    skip_space(at);
    std::size_t length = 0;
    for (; *at != '\0' && !is_space(*at); ++at) {
        if (length + 1 >= string.size())
            return false;
        string[length++] = *at;
    }
    if (length == 0)
        return false;
    string[length] = '\0';
    return true;
}

/// Literal characters of the format; white space there stands for any amount of it, none included.
template <FixedString Format, Piece piece>
constexpr bool scan_literal(const char *&at)
{
    for (u32 i = piece.begin; i < piece.begin + piece.length; ++i) {
        if (is_space(Format.text[i]))
            skip_space(at);
        else if (*at++ != Format.text[i])
            return false;
    }
    return true;
}

template <Piece piece, class Argument>
constexpr bool scan_argument(const char *&at, Argument &argument)
{
    if constexpr (piece.conversion == Conversion::character) {
        argument = *at;
        return *at++ != '\0';
    } else if constexpr (piece.conversion == Conversion::string) {
        return scan_string(at, argument);
    } else {
        static_assert(8 * sizeof(Argument) == piece.bits, "the argument's size is not the conversion's");
        static_assert(std::is_signed_v<Argument> == (piece.conversion == Conversion::signed_), "the argument's sign");
        return scan_number < piece.conversion == Conversion::hex ? 16 : 10, piece.width > (at, argument);
    }
}

template <FixedString Format, Piece piece, class Arguments>
constexpr bool scan_piece(const char *&at, const Arguments &arguments, int &converted)
{
    if constexpr (piece.conversion == Conversion::literal) {
        return scan_literal<Format, piece>(at);
    } else {
        if (!scan_argument<piece>(at, std::get<piece.argument>(arguments)))
            return false;
        ++converted;
        return true;
    }
}

} // namespace format

/// Reads the text by the format.
///
/// @param text       NUL-terminated
/// @param arguments  one for each conversion: u32 for "%u" and "%x", u16 with "h", u64 with "ll", i32 for "%d", char
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
