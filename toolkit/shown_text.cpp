// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "shown_text.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

#include "digits.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::size_t line_width = 76;
constexpr std::string_view cut = "...";

std::uint8_t byte_at(std::string_view text, std::size_t at)
{
    return at < text.size() ? static_cast<std::uint8_t>(text[at]) : std::uint8_t{0};
}

/// By its first byte; 0 for one that begins none. Overlong forms and surrogates are not told apart.
std::size_t sequence_size(std::uint8_t first)
{
    return first < 0x80 ? 1 : first < 0xc2 ? 0 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : first < 0xf5 ? 4 : 0;
}

std::uint32_t code_of(std::string_view character)
{
    constexpr std::uint8_t first_bits[] = {0, 0x7f, 0x1f, 0x0f, 0x07};
    std::uint32_t code = byte_at(character, 0) & first_bits[std::min<std::size_t>(character.size(), 4)];
    for (std::size_t i = 1; i < character.size(); ++i)
        code = code << 6 | (byte_at(character, i) & 0x3fU);
    return code;
}

bool is_stray(std::string_view character) { return character.size() == 1 && byte_at(character, 0) >= 0x80; }

std::string hex_of(std::uint32_t number, std::string_view alphabet)
{
    std::string hex;
    for (; number != 0; number >>= 4)
        hex.insert(hex.begin(), alphabet[number & 0x0f]);
    return hex;
}

bool is_control(std::string_view text, std::size_t at)
{
    const std::uint8_t first = byte_at(text, at);
    return first < 0x20 || first == 0x7f || (first == 0xc2 && byte_at(text, at + 1) < 0xa0); // C0, DEL, C1
}

/// A character as it is shown, and where it stands in the text.
struct Column {
    std::string shown;
    std::size_t at;
};

std::size_t width(const Column &column) { return column.shown.front() == '\\' ? column.shown.size() : 1; }

struct Invisible {
    std::uint32_t first;
    std::uint32_t last;
    const char *name;
};

constexpr Invisible invisible_characters[] = {
    {0x00a0, 0x00a0, "NO-BREAK SPACE"},        {0x00ad, 0x00ad, "SOFT HYPHEN"},
    {0x2000, 0x200a, "SPACE OF TYPESETTING"},  {0x200b, 0x200b, "ZERO WIDTH SPACE"},
    {0x200c, 0x200d, "ZERO WIDTH JOINER"},     {0x200e, 0x200f, "DIRECTION MARK"},
    {0x2028, 0x2029, "LINE SEPARATOR"},        {0x202a, 0x202e, "DIRECTION MARK"},
    {0x202f, 0x202f, "NARROW NO-BREAK SPACE"}, {0x2060, 0x2060, "WORD JOINER"},
    {0x2066, 0x2069, "DIRECTION MARK"},        {0x3000, 0x3000, "IDEOGRAPHIC SPACE"},
    {0xfeff, 0xfeff, "BYTE ORDER MARK"},
};

/// Those before and behind a place, on either side more than a line has room for, if there are.
std::vector<Column> columns_round(std::string_view text, std::size_t place)
{
    constexpr std::size_t reach = 4 * (line_width + 1); // a character has at most four bytes
    std::size_t at = place - std::min(place, reach);
    while (at != 0 && (byte_at(text, at) & 0xc0) == 0x80)
        --at; // what is no continuation begins a character
    std::vector<Column> columns;
    for (; at < text.size() && at < place + reach; at += character_size(text, at))
        columns.push_back({shown_character(text, at), at});
    return columns;
}

} // namespace

std::size_t character_size(std::string_view text, std::size_t at)
{
    const std::size_t size = sequence_size(byte_at(text, at));
    for (std::size_t i = 1; i < size; ++i)
        if ((byte_at(text, at + i) & 0xc0) != 0x80)
            return 1;
    return std::max<std::size_t>(size, 1);
}

const char *invisible_name(std::string_view text, std::size_t at)
{
    if (text[at] >= ' ' && text[at] <= '~')
        return nullptr;
    const std::string_view character = text.substr(at, character_size(text, at));
    const std::uint32_t code = is_stray(character) ? 0 : code_of(character);
    const auto *const found = std::ranges::find_if(
        invisible_characters, [code](const Invisible &row) { return row.first <= code && code <= row.last; });
    return found == std::end(invisible_characters) ? nullptr : found->name;
}

std::string code_point(std::string_view text, std::size_t at)
{
    const std::string hex = hex_of(code_of(text.substr(at, character_size(text, at))), "0123456789ABCDEF");
    return "U+" + std::string(4 - std::min<std::size_t>(hex.size(), 4), '0') + hex;
}

std::string shown_character(std::string_view text, std::size_t at)
{
    const std::string_view character = text.substr(at, character_size(text, at));
    if (invisible_name(text, at) != nullptr)
        return "\\u{" + hex_of(code_of(character), hex_digits) + "}";
    if (!is_stray(character) && !is_control(text, at))
        return std::string(character);
    std::string escaped;
    for (const char c : character) {
        const auto byte = static_cast<std::uint8_t>(c);
        escaped += {'\\', 'x', hex_digits[byte >> 4], hex_digits[byte & 0x0f]};
    }
    return escaped;
}

std::string shown(std::string_view text)
{
    std::string all;
    for (std::size_t at = 0; at < text.size(); at += character_size(text, at))
        all += shown_character(text, at);
    return all;
}

std::string shown_lines(std::string_view text)
{
    std::string all;
    for (std::size_t at = 0; at < text.size(); at += character_size(text, at))
        all += text[at] == '\n' || text[at] == '\t' ? std::string(1, text[at]) : shown_character(text, at);
    return all;
}

std::string lua_quoted(std::string_view text)
{
    std::string result = "\"";
    for (std::size_t at = 0; at < text.size(); at += character_size(text, at)) {
        const char c = text[at];
        if (c == '"' || c == '\\')
            result += {'\\', c};
        else
            result += c == '\n' ? "\\n" : shown_character(text, at);
    }
    return result + "\"";
}

std::string shortened(std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size() && at < line_width)
        at += character_size(text, at);
    return std::string(text.substr(0, at)) + std::string(at < text.size() ? cut : "");
}

std::string underlined(std::string_view text, std::size_t at, std::size_t length)
{
    const std::vector<Column> columns = columns_round(text, at);
    const auto place = std::ranges::find_if(columns, [at](const Column &column) { return column.at >= at; });
    auto first = place;
    auto last = place;
    for (std::size_t room = line_width; room > 0 && (first != columns.begin() || last != columns.end());) {
        // a third of the room, or what the end of the text leaves of it, is for what stands in front
        const bool front = first != columns.begin() && (last == columns.end() || 3 * room > 2 * line_width);
        const std::size_t taken = width(front ? *--first : *last++);
        room -= std::min(room, taken);
    }
    const std::string before(first == columns.begin() ? "" : cut);
    std::string line = "  " + before;
    std::string marks(line.size(), ' ');
    for (auto column = first; column != last; ++column) {
        line += column->shown;
        const bool marked = column->at >= at && column->at < at + length;
        marks.append(width(*column), marked ? '~' : column->at < at ? ' ' : '\0');
    }
    marks.erase(std::find(marks.begin(), marks.end(), '\0'), marks.end());
    const std::size_t caret = marks.find('~');
    marks = caret == std::string::npos ? marks + "^" : marks.replace(caret, 1, "^");
    return line + std::string(last == columns.end() ? "" : cut) + "\n" + marks + "\n";
}

} // namespace bgpdt::toolkit
