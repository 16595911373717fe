// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// print<"%u.%u:%u">(out, a, b, c): snprintf with a format that the compiler reads, into a bounded writer. "%q" writes a
/// number's four octets, the top byte first, as an IPv4 address.
#pragma once

#include <tuple>
#include <type_traits>

#include "common/digits.hpp"
#include "common/format.hpp"
#include "common/ipv4.hpp"
#include "common/writer.hpp"

namespace bgpdt {

/// An argument for "%s" of at most so many characters: `write` gets the start and returns the end.
template <std::size_t Most, class Write>
struct Bounded {
    Write write;
};

template <std::size_t Most, class Write>
constexpr Bounded<Most, Write> bounded(Write write)
{
    return {write};
}

namespace format {

inline constexpr std::size_t unlimited = SIZE_MAX;

template <class Argument>
inline constexpr std::size_t most_of_string = unlimited;
template <std::size_t Most, class Write>
inline constexpr std::size_t most_of_string<Bounded<Most, Write>> = Most;

/// The most characters that a piece writes.
template <Piece piece, class Arguments>
constexpr std::size_t most_characters()
{
    if constexpr (piece.conversion == Conversion::literal)
        return piece.length;
    else if constexpr (piece.conversion == Conversion::unsigned_)
        return piece.bits == 64 ? most_u64_digits : most_u32_digits;
    else if constexpr (piece.conversion == Conversion::signed_)
        return 1 + most_u32_digits;
    else if constexpr (piece.conversion == Conversion::hex)
        return most_hex_digits;
    else if constexpr (piece.conversion == Conversion::quad)
        return most_ipv4_characters;
    else if constexpr (piece.conversion == Conversion::string)
        return most_of_string<std::remove_cvref_t<std::tuple_element_t<piece.argument, Arguments>>>;
    else
        return 1;
}

/// Pieces in a row.
struct Run {
    std::size_t end;  ///< behind the last of them
    std::size_t most; ///< the most characters that they write
};

/// The pieces from `First` on up to the next string without a limit.
template <FixedString Format, std::size_t First, class Arguments>
constexpr Run limited_run()
{
    constexpr auto pieces = parse<Format>();
    if constexpr (First == pieces.count) {
        return {First, 0};
    } else {
        constexpr std::size_t most = most_characters<pieces.piece[First], Arguments>();
        if constexpr (most == unlimited)
            return {First, 0};
        constexpr Run rest = limited_run<Format, First + 1, Arguments>();
        return {rest.end, most + rest.most};
    }
}

/// Writes what takes at most most_characters() and returns the end.
template <Piece piece, class Argument>
constexpr char *write_argument(char *to, const Argument &argument)
{
    if constexpr (piece.conversion == Conversion::character) {
        *to = argument;
        return to + 1;
    } else if constexpr (piece.conversion == Conversion::string) {
        return argument.write(to);
    } else if constexpr (piece.conversion == Conversion::quad) {
        static_assert(std::is_same_v<Argument, u32>);
        return write_ipv4_address(to, argument);
    } else if constexpr (piece.conversion == Conversion::signed_) {
        static_assert(std::is_integral_v<Argument> && (sizeof(Argument) < 4 || std::is_signed_v<Argument>));
        const i32 number = argument;
        if (number < 0)
            *to++ = '-';
        return write_decimal(to, number < 0 ? 0U - static_cast<u32>(number) : static_cast<u32>(number));
    } else if constexpr (piece.bits == 64) {
        static_assert(std::is_same_v<Argument, u64>);
        return write_decimal(to, argument);
    } else {
        static_assert(std::is_unsigned_v<Argument> && sizeof(Argument) <= 4);
        const u32 number = piece.bits == 8 ? argument & 0xFFU : piece.bits == 16 ? argument & 0xFFFFU : u32{argument};
        if constexpr (piece.conversion == Conversion::hex && piece.width == 2 && sizeof argument == 1)
            return write_hex_pair(to, argument);
        else if constexpr (piece.conversion == Conversion::hex)
            return write_hex(to, number, piece.width == 0 ? 1 : piece.width);
        else if constexpr (sizeof argument == 1 || piece.bits == 8)
            return write_decimal(to, static_cast<u8>(number));
        else if constexpr (sizeof argument == 2 || piece.bits == 16)
            return write_decimal(to, static_cast<u16>(number));
        else
            return write_decimal(to, number);
    }
}

template <FixedString Format, Piece piece, class Arguments>
[[gnu::always_inline]] constexpr char *write_piece(char *to, const Arguments &arguments)
{
    if constexpr (piece.conversion == Conversion::literal)
        return std::copy_n(Format.text + piece.begin, piece.length, to);
    else
        return write_argument<piece>(to, std::get<piece.argument>(arguments));
}

/// Writes the pieces from First to Last. Inlined: the arguments then need no place in memory.
template <FixedString Format, std::size_t First, std::size_t Last, class Arguments>
[[gnu::always_inline]] constexpr char *write_pieces(char *to, const Arguments &arguments)
{
    if constexpr (First == Last)
        return to;
    else
        return write_pieces<Format, First + 1, Last>(write_piece<Format, parse<Format>().piece[First]>(to, arguments),
                                                     arguments);
}

template <class Argument>
constexpr void put_string(Writer &out, const Argument &argument)
{
    if constexpr (std::is_invocable_v<const Argument &, Writer &>)
        argument(out);
    else
        out.put(std::string_view(argument));
}

/// Prints the pieces from `First` on: what stands before the next string without a limit with one look at the room,
/// the string, the rest.
template <FixedString Format, std::size_t First, class Arguments>
constexpr void print_from(Writer &out, const Arguments &arguments)
{
    constexpr auto pieces = parse<Format>();
    constexpr Run run = limited_run<Format, First, Arguments>();
    constexpr std::size_t next = run.end;
    if constexpr (next != First)
        out.put_at_most<run.most>([&](char *to) { return write_pieces<Format, First, next>(to, arguments); });
    if constexpr (next != pieces.count) {
        put_string(out, std::get<pieces.piece[next].argument>(arguments));
        print_from<Format, next + 1>(out, arguments);
    }
}

/// How many characters a piece writes.
template <Piece piece, class Arguments>
constexpr std::size_t length_of(const Arguments &arguments)
{
    if constexpr (piece.conversion == Conversion::literal) {
        return piece.length;
    } else if constexpr (piece.conversion == Conversion::string) {
        return std::string_view(std::get<piece.argument>(arguments)).size();
    } else if constexpr (piece.conversion == Conversion::quad) {
        return ipv4_length(std::get<piece.argument>(arguments));
    } else {
        static_assert(piece.conversion == Conversion::unsigned_ && piece.bits <= 32);
        return decimal_length(std::get<piece.argument>(arguments));
    }
}

template <FixedString Format, std::size_t First, class Arguments>
constexpr std::size_t length_from(const Arguments &arguments)
{
    constexpr auto pieces = parse<Format>();
    if constexpr (First == pieces.count)
        return 0;
    else
        return length_of<pieces.piece[First]>(arguments) + length_from<Format, First + 1>(arguments);
}

} // namespace format

/// How many characters the arguments print as: strings, addresses, and unsigned numbers of at most 32 bits.
template <FixedString Format, class... Arguments>
constexpr std::size_t printed_length(const Arguments &...arguments)
{
    static_assert(format::parse<Format>().arguments == sizeof...(Arguments), "one argument for each conversion");
    return format::length_from<Format, 0>(std::tie(arguments...));
}

/// Writes the arguments, of strings bounded ones alone, by the format, without looking at the room. Returns the end.
template <FixedString Format, class... Arguments>
[[gnu::always_inline]] constexpr char *write(char *to, const Arguments &...arguments)
{
    constexpr auto pieces = format::parse<Format>();
    static_assert(pieces.arguments == sizeof...(Arguments), "one argument for each conversion");
    return format::write_pieces<Format, 0, pieces.count>(to, std::tie(arguments...));
}

/// Prints the arguments by the format.
///
/// @param out        takes the text; it is not terminated here
/// @param arguments  one for each conversion: unsigned numbers of at most 32 bits, u64 for "%llu", u32 for "%q", for "%s"
///                   anything that a std::string_view is made of, or a callable that writes to the Writer it is given
template <FixedString Format, class... Arguments>
[[gnu::always_inline]] constexpr void print(Writer &out, const Arguments &...arguments)
{
    static_assert(format::parse<Format>().arguments == sizeof...(Arguments), "one argument for each conversion");
    format::print_from<Format, 0>(out, std::tie(arguments...));
}

} // namespace bgpdt
