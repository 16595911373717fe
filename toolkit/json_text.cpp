// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "json_text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "digits.hpp"

namespace bgpdt::toolkit {
namespace {

/// A bit in the first byte, the lowest as a number, that does not stand in a string as it is, and maybe bits in bytes
/// behind it; 0 if all do.
template <class Word>
constexpr Word odd_bytes(Word bytes)
{
    constexpr auto each = [](unsigned byte) { return static_cast<Word>(Word(~Word{0}) / 0xff * byte); };
    constexpr unsigned exchange = '"' ^ ' '; // a quote is then the next behind the control characters
    const auto from_del = static_cast<Word>(bytes | (bytes + each(1)));
    const auto to_quote = static_cast<Word>((bytes ^ each(exchange)) - each(' ' + 1));
    const auto backslash = static_cast<Word>((bytes ^ each('\\')) - each(1));
    return static_cast<Word>((from_del | to_quote | backslash) & each(0x80));
}

bool is_plain(char c) { return odd_bytes(static_cast<std::uint8_t>(c)) == 0; }

template <class Word>
Word copy_word(char *to, const char *from)
{
    Word bytes = 0;
    std::memcpy(&bytes, from, sizeof bytes);
    std::memcpy(to, &bytes, sizeof bytes);
    return odd_bytes(bytes);
}

/// @param text  at least a word
template <class Word>
bool copy_words(char *to, std::string_view text)
{
    const std::size_t last = text.size() - sizeof(Word);
    Word odd = copy_word<Word>(to + last, text.data() + last);
    for (std::size_t at = 0; at < last; at += sizeof(Word))
        odd = static_cast<Word>(odd | copy_word<Word>(to + at, text.data() + at));
    return odd == 0;
}

/// Copies the text. Whether it stands in a string as it is.
bool copy_plain(char *to, std::string_view text)
{
    if (text.size() >= sizeof(std::uint64_t))
        return copy_words<std::uint64_t>(to, text);
    if (text.size() >= sizeof(std::uint32_t))
        return copy_words<std::uint32_t>(to, text);
    return text.empty() || copy_words<std::uint8_t>(to, text);
}

/// How many characters in front do.
std::size_t plain_size(std::string_view text)
{
    std::uint64_t word = 0;
    std::size_t at = 0;
    for (; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if (odd_bytes(word) != 0)
            break;
    }
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
    std::memcpy(out.room(Size), characters, Size);
    out.grown(Size);
}

/// Those of characters that have one of their own; else 0.
constexpr auto escape_letters = [] {
    std::array<char, 256> letters{};
    constexpr std::string_view named = "\b\t\n\f\r\"\\";
    for (std::size_t i = 0; i < named.size(); ++i)
        letters[static_cast<std::uint8_t>(named[i])] = "btnfr\"\\"[i];
    return letters;
}();

void append_escape(Buffer &out, std::uint8_t code)
{
    if (const char letter = escape_letters[code]; letter != 0)
        append(out, {'\\', letter});
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

[[gnu::noinline]] void append_escaped(Buffer &out, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t plain = plain_size(text);
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        while (!text.empty() && !is_plain(text.front())) {
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
    if (copy_plain(to + 1, text)) [[likely]] {
        to[1 + text.size()] = '"';
        out.grown(text.size() + 2);
        return;
    }
    out.grown(1);
    append_escaped(out, text);
    out.append('"');
}

} // namespace bgpdt::toolkit
