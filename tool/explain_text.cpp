// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>

#include "explain_pictures.hpp"
#include "toolkit/shown_text.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

constexpr std::size_t columns = 5;
constexpr std::size_t bytes_per_line = 8;
using Cells = std::array<std::string, columns>;

/// A line of the box; empty cells go on with the part above.
struct Line {
    Cells cells;
    std::optional<std::size_t> colour;
};

std::size_t width_of(const std::string &text)
{
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text.size(); at += character_size(text, at))
        ++characters;
    return characters;
}

void add_lines(std::vector<Line> &lines, const Explanation &explanation, const Part &part,
               std::optional<std::size_t> colour)
{
    Cells cells = {range_of(part), "", part.name.empty() ? "-" : part.name, part.meaning, part.shown};
    for (const std::string &bytes : byte_lines(explanation, part, bytes_per_line)) {
        cells[1] = bytes;
        lines.push_back({cells, colour});
        cells = {};
    }
}

std::string coloured_text(const std::string &text, const Line &line, bool coloured)
{
    if (!coloured || text.empty())
        return text;
    constexpr const char *codes[part_colours] = {"33", "34", "31", "36"};
    const std::string code = line.colour ? codes[*line.colour] : "2";
    return "\x1b[" + code + "m" + text + "\x1b[0m";
}

std::string border(const std::array<std::size_t, columns> &widths)
{
    std::string line = "+";
    for (const std::size_t width : widths)
        line += std::string(width + 2, '-') + "+";
    return line + "\n";
}

std::string box(const std::vector<Line> &lines, bool coloured)
{
    const Line heads{{"bytes", "hexadecimal", "field", "meaning", "value"}, std::nullopt};
    std::array<std::size_t, columns> widths{};
    const auto row = [&widths](const Line &line, bool in_colour) {
        std::string text = "|";
        for (std::size_t i = 0; i < columns; ++i) {
            const std::string blanks(widths[i] - width_of(line.cells[i]), ' ');
            text += " " + coloured_text(line.cells[i], line, in_colour) + blanks + " |";
        }
        return text + "\n";
    };
    const auto widen = [&widths](const Line &line) {
        for (std::size_t i = 0; i < columns; ++i) {
            widths[i] = std::max(widths[i], width_of(line.cells[i]));
        }
    };
    widen(heads);
    std::ranges::for_each(lines, widen);
    std::string text = border(widths) + row(heads, false) + border(widths);
    for (const Line &line : lines)
        text += row(line, coloured);
    return text + border(widths);
}

} // namespace

std::string range_of(const Part &part)
{
    const std::string first = std::to_string(part.offset);
    return part.size == 1 ? first : first + "-" + std::to_string(part.offset + part.size - 1);
}

std::vector<std::optional<std::size_t>> colours_of(const Explanation &explanation)
{
    std::vector<std::optional<std::size_t>> colours;
    std::size_t next = 0;
    for (const Part &part : explanation.parts)
        colours.push_back(part.name.empty() ? std::nullopt : std::optional(next++ % part_colours));
    return colours;
}

std::string explanation_text(const Explanation &explanation, bool coloured)
{
    const auto colours = colours_of(explanation);
    std::vector<Line> lines;
    for (std::size_t i = 0; i < colours.size(); ++i)
        add_lines(lines, explanation, explanation.parts[i], colours[i]);
    return title_of(explanation) + "\n" + box(lines, coloured) + "order  " + order_of(explanation) + "\ntext   " +
           text_of(explanation) + "\ntable  " + table_of(explanation) + "\n";
}

} // namespace bgpdt::tool
