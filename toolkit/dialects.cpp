// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "dialects.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <string>

#include "operations.hpp"

namespace bgpdt::toolkit {
namespace {

struct Speaker {
    std::string_view name;
    std::string_view version;
};

constexpr char between_cells = '\t';
constexpr char inside_cell = '|';
#include "dialects_table.inc"

std::string_view take_until(std::string_view &text, char end)
{
    const std::size_t size = std::min(text.find(end), text.size());
    const std::string_view taken = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    return taken;
}

// ------------------------------------------------------------------------------------------------ shapes

/// Numbers are alike in what bounds them: 0, 16 bits, 32 bits, more; leading zeros are another way to write.
char class_of_number(std::string_view digits)
{
    if (digits == "0")
        return 'z';
    if (digits.starts_with('0'))
        return 'o';
    std::uint64_t number = UINT64_MAX;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number <= UINT16_MAX ? 's' : number <= UINT32_MAX ? 'l' : 'h';
}

bool is_address(const std::string &part)
{
    in_addr address;
    return inet_pton(AF_INET, part.c_str(), &address) == 1;
}

bool is_digit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

/// What stands between two colons.
std::string shape_of_part(const std::string &part)
{
    constexpr std::size_t segment_size = 24;
    constexpr std::size_t mac_size = 14;
    if (part.starts_with('['))
        return "[]";
    if (is_address(part))
        return "A";
    if (std::ranges::count(part, '.') == 4 && part.size() == segment_size)
        return "E";
    if (std::ranges::count(part, '-') == 2 && part.size() == mac_size)
        return "M";
    std::string shape;
    for (std::size_t at = 0; at < part.size();) {
        const auto end = static_cast<std::size_t>(
            std::find_if_not(part.begin() + static_cast<std::ptrdiff_t>(at), part.end(), is_digit) - part.begin());
        shape += end > at ? class_of_number(std::string_view(part).substr(at, end - at)) : part[at];
        at = std::max(end, at + 1);
    }
    return shape;
}

/// Texts of one shape are written alike, their numbers are of the same classes, and names are the same.
std::string shape_of(std::string_view text)
{
    std::string shape;
    std::string part;
    bool in_brackets = false;
    for (const char c : text) {
        in_brackets = c == '[' || (in_brackets && c != ']');
        if (c == ':' && !in_brackets) {
            shape += shape_of_part(part) + c;
            part.clear();
        } else {
            part += c;
        }
    }
    return shape + shape_of_part(part);
}

// ------------------------------------------------------------------------------------------------ rows

/// A cell is an answer, or hexadecimal, value and change.
Reading reading_of(std::string_view reader, std::string_view version, std::string_view cell)
{
    Reading reading{reader, version, "taken", take_until(cell, inside_cell), "", ""};
    const bool taken = !reading.hex.empty() && reading.hex.find_first_not_of("0123456789abcdef") == reading.hex.npos;
    if (!taken) {
        reading.answer = reading.hex;
        reading.hex = "";
    }
    reading.value = take_until(cell, inside_cell);
    reading.change = cell;
    return reading;
}

/// @param row  behind the type
Dialects dialects_in(std::string_view row)
{
    Dialects dialects{take_until(row, between_cells)};
    dialects.readings.push_back(reading_of("bgpdt", "", take_until(row, between_cells)));
    for (const Speaker &speaker : speakers)
        dialects.readings.push_back(reading_of(speaker.name, speaker.version, take_until(row, between_cells)));
    if (!row.empty())
        dialects.readings.push_back(reading_of("RFC 8294", "", row));
    return dialects;
}

} // namespace

Dialects dialects_of(const SYSDT_Record &type, std::string_view text)
{
    const std::string name = name_of(type);
    const std::string shape = shape_of(text);
    Dialects nearest;
    for (std::string_view row : rows) {
        if (take_until(row, between_cells) != name)
            continue;
        std::string_view rest = row;
        const std::string_view asked = take_until(rest, between_cells);
        if (asked == text)
            return dialects_in(row);
        if (nearest.text.empty() && shape_of(asked) == shape)
            nearest = dialects_in(row);
    }
    return nearest;
}

} // namespace bgpdt::toolkit
