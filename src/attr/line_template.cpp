// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "attr/line_template.hpp"

#include <cstring>

#include "common/format.hpp"

namespace bgpdt {

namespace {

struct Conversion {
    bool left = false;      ///< "-"
    bool plus = false;      ///< "+"
    bool space = false;     ///< " "
    bool alternate = false; ///< "#"
    bool zero = false;      ///< "0"
    bool precise = false;
    u32 width = 0;
    u32 precision = 0;
    u32 bits = 32;
    char letter = '\0';

    bool is_signed() const { return letter == 'd' || letter == 'i'; }
    bool is_hex() const { return letter == 'x' || letter == 'X'; }
};

bool Conversion::*flag_of(char character)
{
    switch (character) {
    case '-': return &Conversion::left;
    case '+': return &Conversion::plus;
    case ' ': return &Conversion::space;
    case '#': return &Conversion::alternate;
    case '0': return &Conversion::zero;
    default: return nullptr;
    }
}

/// The number of the digits, or the greatest that there is.
u32 read_number(const char *&at)
{
    u32 number = 0;
    for (; format::is_digit(*at); ++at) {
        const u32 digit = static_cast<u32>(*at - '0');
        number = number > (UINT32_MAX - digit) / 10 ? UINT32_MAX : number * 10 + digit;
    }
    return number;
}

/// Reads the conversion behind a "%". Returns its end, null if it is none of the letters'.
const char *read_conversion(const char *at, const char *letters, Conversion &out)
{
    for (bool Conversion::*flag; (flag = flag_of(*at)) != nullptr; ++at)
        out.*flag = true;
    out.width = read_number(at);
    if (*at == '.') {
        out.precise = true;
        out.precision = read_number(++at);
    }
    if (*letters != 's' && *at == 'h') {
        ++at;
        out.bits = *at == 'h' ? 8 : 16;
        at += *at == 'h' ? 1 : 0;
    }
    out.letter = *at;
    return *at != '\0' && std::strchr(letters, *at) != nullptr ? at + 1 : nullptr;
}

/// As many as are asked for; what does not fit is not counted to the end.
void put_many(char character, u64 count, Writer &out)
{
    for (count = std::min<u64>(count, out.room()); count != 0; --count)
        out.put(character);
}

void put_aligned(const Conversion &c, std::string_view prefix, u64 zeros, std::string_view body, Writer &out)
{
    const u64 length = prefix.size() + zeros + body.size();
    const u64 blanks = c.width > length ? c.width - length : 0;
    if (!c.left)
        put_many(' ', blanks, out);
    out.put(prefix);
    put_many('0', zeros, out);
    out.put(body);
    if (c.left)
        put_many(' ', blanks, out);
}

/// The sign or the base that stands in front of the digits.
std::string_view prefix_of(const Conversion &c, bool negative, u32 magnitude)
{
    if (c.is_signed())
        return negative ? "-" : c.plus ? "+" : c.space ? " " : "";
    if (c.is_hex() && c.alternate && magnitude != 0)
        return c.letter == 'x' ? "0x" : "0X";
    return "";
}

void put_number(const Conversion &c, u32 number, Writer &out)
{
    const u32 unused = 32 - c.bits;
    const bool negative = c.is_signed() && (number << unused) >> 31 != 0;
    const u32 magnitude = (negative ? 0 - number : number) << unused >> unused;

    char digits[11]; // a 32-bit number in base 8
    char *first = digits + sizeof digits;
    const u32 base = c.letter == 'o' ? 8 : c.is_hex() ? 16 : 10;
    const char *const alphabet = c.letter == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    for (u32 rest = magnitude; rest != 0; rest /= base)
        *--first = alphabet[rest % base];
    const std::string_view body(first, static_cast<std::size_t>(digits + sizeof digits - first));

    const auto prefix = prefix_of(c, negative, magnitude);
    u64 fewest = c.precise ? c.precision : 1;
    if (c.letter == 'o' && c.alternate)
        fewest = std::max<u64>(fewest, body.size() + 1);
    if (c.zero && !c.left && !c.precise && c.width > prefix.size())
        fewest = std::max<u64>(fewest, c.width - prefix.size());
    put_aligned(c, prefix, fewest > body.size() ? fewest - body.size() : 0, body, out);
}

void put_text(const Conversion &c, std::string_view text, Writer &out)
{
    const std::size_t length = c.precise ? std::min<std::size_t>(text.size(), c.precision) : text.size();
    put_aligned(c, "", 0, {text.data(), length}, out);
}

} // namespace

bool print_piece(const char *piece, const PieceValue &value, Writer &out)
{
    const char *const percent = std::strchr(piece, '%');
    if (percent == nullptr) {
        out.put(piece);
        return true;
    }
    Conversion conversion;
    const char *const end = read_conversion(percent + 1, value.is_text ? "s" : "diuoxX", conversion);
    if (end == nullptr)
        return false;
    out.put({piece, static_cast<std::size_t>(percent - piece)});
    if (value.is_text)
        put_text(conversion, value.text, out);
    else
        put_number(conversion, value.number, out);
    out.put(end);
    return true;
}

} // namespace bgpdt
