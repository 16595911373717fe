// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "json_text.hpp"

#include <algorithm>
#include <cstdint>

#include "digits.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr bool is_plain(char c)
{
    const auto byte = static_cast<std::uint8_t>(c);
    return byte >= ' ' && byte < 0x7f && byte != '"' && byte != '\\';
}

/// A character at the beginning of a text.
struct Character {
    std::size_t size;
    bool whole; ///< else what there is of it
};

/// As Unicode has it (table 3-7): no long forms, no surrogates, nothing above U+10FFFF.
Character character_in(std::string_view text)
{
    const auto byte = [text](std::size_t at) { return static_cast<std::uint8_t>(at < text.size() ? text[at] : 0); };
    const std::uint8_t first = byte(0);
    if (first < 0xc2 || first > 0xf4)
        return {1, first < 0x80};
    const std::size_t size = first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    const std::uint8_t least = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
    const std::uint8_t most = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
    if (byte(1) < least || byte(1) > most)
        return {1, false};
    for (std::size_t at = 2; at < size; ++at)
        if ((byte(at) & 0xc0) != 0x80)
            return {at, false};
    return {size, true};
}

void append_escape(std::string &out, std::uint8_t code)
{
    constexpr std::string_view named = "\b\t\n\f\r\"\\";
    constexpr std::string_view letters = "btnfr\"\\";
    const std::size_t name = named.find(static_cast<char>(code));
    if (name != std::string_view::npos)
        out += {'\\', letters[name]};
    else
        out += {'\\', 'u', '0', '0', hex_digits[code >> 4], hex_digits[code & 0x0f]};
}

void append_character(std::string &out, std::string_view character, bool whole)
{
    const auto last = static_cast<std::uint8_t>(character.back());
    const bool c1 = character.size() == 2 && character[0] == '\xc2' && last < 0xa0;
    if (!whole)
        out += "\ufffd";
    else if (character.size() == 1 || c1)
        append_escape(out, last);
    else
        out += character;
}

} // namespace

void append_json(std::string &out, std::string_view text)
{
    out += '"';
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(std::ranges::find_if_not(text, is_plain) - text.begin());
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            const auto [size, whole] = character_in(text);
            append_character(out, text.substr(0, size), whole);
            text.remove_prefix(size);
        }
    }
    out += '"';
}

} // namespace bgpdt::toolkit
