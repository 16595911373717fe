// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "json_text.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "digits.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr bool is_plain(char c)
{
    const auto byte = static_cast<std::uint8_t>(c);
    return byte >= ' ' && byte < 0x7f && byte != '"' && byte != '\\';
}

/// Whether all of eight are; of some that are it says no.
bool are_plain(const char *eight)
{
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t tops = 0x80 * ones;
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, eight, sizeof bytes);
    const auto zeros = [](std::uint64_t word) {
        return (word - ones) & ~word;
    }; // in the top bits, of the lowest at least
    const std::uint64_t beyond = bytes | (bytes + ones);
    const std::uint64_t below = (bytes - ' ' * ones) & ~bytes;
    return ((beyond | below | zeros(bytes ^ '"' * ones) | zeros(bytes ^ '\\' * ones)) & tops) == 0;
}

bool are_plain(std::string_view text)
{
    constexpr std::size_t word = sizeof(std::uint64_t);
    if (text.size() < word)
        return std::ranges::all_of(text, is_plain);
    bool plain = are_plain(text.data() + text.size() - word);
    for (std::size_t at = 0; plain && at + word < text.size(); at += word)
        plain = are_plain(text.data() + at);
    return plain;
}

/// How many characters in front are.
std::size_t plain_size(std::string_view text)
{
    constexpr std::size_t word = sizeof(std::uint64_t);
    std::size_t at = 0;
    while (at + word <= text.size() && are_plain(text.data() + at))
        at += word;
    return static_cast<std::size_t>(std::ranges::find_if_not(text.substr(at), is_plain) - text.begin());
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

template <std::size_t Size>
void append(Buffer &out, const char (&characters)[Size])
{
    out.append(std::string_view(characters, Size));
}

void append_escape(Buffer &out, std::uint8_t code)
{
    constexpr std::string_view named = "\b\t\n\f\r\"\\";
    constexpr std::string_view letters = "btnfr\"\\";
    const std::size_t name = named.find(static_cast<char>(code));
    if (name != std::string_view::npos)
        append(out, {'\\', letters[name]});
    else
        append(out, {'\\', 'u', '0', '0', hex_digits[code >> 4], hex_digits[code & 0x0f]});
}

void append_character(Buffer &out, std::string_view character, bool whole)
{
    const auto last = static_cast<std::uint8_t>(character.back());
    const bool c1 = character.size() == 2 && character[0] == '\xc2' && last < 0xa0;
    if (!whole)
        out.append("\ufffd");
    else if (character.size() == 1 || c1)
        append_escape(out, last);
    else
        out.append(character);
}

void append_escaped(Buffer &out, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t plain = plain_size(text);
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (!text.empty()) {
            const auto [size, whole] = character_in(text);
            append_character(out, text.substr(0, size), whole);
            text.remove_prefix(size);
        }
    }
}

} // namespace

void append_json(Buffer &out, std::string_view text)
{
    char *const to = out.room(text.size() + 2);
    *to = '"';
    out.grown(1);
    if (are_plain(text)) {
        text.copy(to + 1, text.size()); // there may be none
        out.grown(text.size());
    } else {
        append_escaped(out, text);
    }
    out.append('"');
}

} // namespace bgpdt::toolkit
