// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "front_seeds.hpp"

#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

namespace bgpdt::fuzzing {

namespace {

using test::Bytes;

/// Bytes and pieces, as Pieces reads them.
class Written {
public:
    Written &byte(std::size_t value)
    {
        bytes_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    Written &piece(std::string_view text)
    {
        text = text.substr(0, UINT8_MAX);
        return byte(text.size()).rest(text);
    }
    Written &rest(std::string_view text)
    {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        return *this;
    }
    operator const Bytes &() const { return bytes_; }

private:
    Bytes bytes_;
};

/// One of the choices, by the line's text: each type has many lines.
template <std::size_t count>
std::size_t chosen(const test::Line &line)
{
    return (line.text.size() + line.bytes.size()) % count;
}

std::string one_a_line(std::initializer_list<std::string_view> words)
{
    std::string text;
    for (const std::string_view word : words)
        text.append(word).append("\n");
    return text;
}

} // namespace

FrontSeeds::FrontSeeds(const std::filesystem::path &folder)
    : command_line_(folder / "command_line"), lines_(folder / "lines"), names_(folder / "names"),
      sequence_(folder / "sequence"), lua_(folder / "lua"), sql_(folder / "sql")
{
    for (const std::string_view names : {"7 red\n8 blue # a comment\n\n", " 4294967295\tred\r\n0 blue", "seven red\n"})
        names_.add(Written().rest(names));
    for (const std::string_view words : {"types\n--json\n", "help\nsort\n", "complete\n--descriptions\n--\ndescribe\n"})
        command_line_.add(Written().rest(words));
}

void FrontSeeds::add(std::size_t type, const test::Line &line)
{
    constexpr int share = 8; // these fuzzers are slow, and begin with all their seeds
    if (line.number % share != 0)
        return;
    if (line.verb == test::Verb::in || line.verb == test::Verb::bad)
        add_text(type, line);
    if (!line.bytes.empty())
        add_value(type, line);
}

void FrontSeeds::add_text(std::size_t type, const test::Line &line)
{
    constexpr std::array<std::string_view, 8> commands = {"parse",    "check", "canon", "explain",
                                                          "describe", "table", "diff",  "convert"};
    const std::string_view command = commands[chosen<commands.size()>(line)];
    const std::string &text = line.text;
    std::string words = one_a_line({command, line.subject});
    if (command == "convert")
        words += one_a_line({"--to", "json", "", text});
    else if (command != "describe")
        words += one_a_line({text, text.size() % 3 == 0 ? "--json" : ""});
    if (command == "diff")
        words = one_a_line({command, line.subject, text, text});
    command_line_.add(Written().rest(words));
    lines_.add(Written().byte(type).byte(0).rest(text + "\n" + text));
    sequence_.add(Written().byte(0).byte(0).byte(type).byte(6).byte(0).piece(text).byte(10).byte(0).byte(13).byte(0));
    // bgp.parse(type, text), then bgp.table of it
    lua_.add(Written()
                 .byte(0)
                 .byte(UINT8_MAX)
                 .byte(2)
                 .byte(3)
                 .byte(type)
                 .byte(7)
                 .piece(text)
                 .byte(3)
                 .byte(UINT8_MAX)
                 .byte(1)
                 .byte(4)
                 .byte(0));
    sql_.add(Written().byte(type).byte(0).rest(text));
    sql_.add(Written().byte(type).byte(2).piece(text).piece("1").rest(text + " "));
}

void FrontSeeds::add_value(std::size_t type, const test::Line &line)
{
    constexpr std::array<std::string_view, 4> commands = {"print", "explain", "swap", "table"};
    const std::string hex = hex_of(line.bytes);
    command_line_.add(Written().rest(one_a_line({commands[chosen<commands.size()>(line)], line.subject, "0x" + hex})));
    lines_.add(Written().byte(type).byte(1).rest(hex + "\n"));
    lines_.add(Written().byte(type).byte(2).rest("{\"hex\":\"" + hex + "\"}\n"));
    lua_.add(Written().byte(1).byte(UINT8_MAX).byte(2).byte(3).byte(type).byte(7).piece(hex));
    const std::string bytes(line.bytes.begin(), line.bytes.end());
    sequence_.add(Written().byte(0).byte(0).byte(type).byte(7).byte(0).piece(bytes).byte(14).byte(0).byte(9).byte(0));
    sql_.add(Written().byte(type).byte(1).piece("administrator").rest(bytes));
}

} // namespace bgpdt::fuzzing
