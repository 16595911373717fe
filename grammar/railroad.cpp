// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdio>
#include <utility>

#include "exports.hpp"

namespace bgpdt::grammar {
namespace {

using Kind = Expression::Kind;

// Lengths are in pixels.
constexpr int row_gap = 12;  // between choices
constexpr int part_gap = 16; // between parts of a row
constexpr int bend = 10;     // of a line that turns off
constexpr int half_box = 13;
constexpr int letter_width = 8;
constexpr int left_margin = 20;

std::string escaped(const std::string &text)
{
    std::string made;
    for (const char byte : text) {
        if (byte == '&')
            made += "&amp;";
        else if (byte == '<')
            made += "&lt;";
        else
            made += byte;
    }
    return made;
}

/// Something with a line that goes in on the left and comes out on the right, at the same height.
struct Drawing {
    int width = 0;
    int above = 0; ///< the line
    int below = 0;
    std::string svg;
};

std::string moved(const Drawing &drawing, int x, int y)
{
    if (x == 0 && y == 0)
        return drawing.svg;
    return "<g transform=\"translate(" + std::to_string(x) + "," + std::to_string(y) + ")\">" + drawing.svg + "</g>\n";
}

std::string line(int from, int to)
{
    return "<path d=\"M" + std::to_string(from) + " 0H" + std::to_string(to) + "\"/>\n";
}

/// Leaves the line at `from` for a height and comes back at `to`.
std::string detour(int from, int to, int height)
{
    const int turn = height < 0 ? -bend : bend;
    char path[200];
    (void)std::snprintf(path, sizeof path,
                        "<path d=\"M%d 0q%d 0 %d %dV%dq0 %d %d %d\"/>\n<path d=\"M%d %dq%d 0 %d %dV%dq0 %d %d %d\"/>\n",
                        from, bend, bend, turn, height - turn, turn, bend, turn, to - 2 * bend, height, bend, bend,
                        -turn, turn, -turn, bend, -turn);
    return path;
}

enum class Style { literal, number, name };

Drawing box(const std::string &text, Style style)
{
    Drawing made;
    made.width = static_cast<int>(text.size()) * letter_width + 16;
    made.above = made.below = half_box;
    const char *const fill = style == Style::literal ? "#d9ead3" : style == Style::number ? "#fff2cc" : "#cfe2f3";
    made.svg = R"(<rect y="-13" width=")" + std::to_string(made.width) + R"(" height="26" rx=")" +
               (style == Style::name ? "2" : "13") + "\" fill=\"" + fill + "\" stroke=\"#555555\"/>\n<text x=\"" +
               std::to_string(made.width / 2) + R"(" y="4">)" + escaped(text) + "</text>\n";
    return made;
}

/// The bytes as people write them: ranges, and words for what is long.
std::string told(ByteSet bytes)
{
    const ByteSet all = ~ByteSet(1);
    if (bytes == all)
        return "any";
    const bool negated = bytes[255];
    if (negated)
        bytes = all & ~bytes;
    std::string text;
    if (bytes['\t'] && bytes[' ']) {
        text += "blank ";
        for (const char blank : {'\t', '\n', '\v', '\f', '\r', ' '})
            bytes.reset(static_cast<unsigned char>(blank));
    }
    for (std::size_t first = bytes._Find_first(); first < 256; first = bytes._Find_next(first)) {
        std::size_t last = first;
        while (last < 255 && bytes[last + 1])
            bytes.reset(++last);
        text += static_cast<char>(first);
        text += last > first ? "-" + std::string(1, static_cast<char>(last)) : "";
        text += ' ';
    }
    text.pop_back();
    return (negated ? "none of " : "") + text;
}

std::string told(const Number &number)
{
    const char *const front = number.base == 16 ? "0x" : "";
    std::string text = front + digits_of(number.low, number.base);
    if (number.high != number.low)
        text += ".." + std::string(front) + digits_of(number.high, number.base);
    if (number.width != 0 && number.width != Times::unlimited)
        text += " in " + std::to_string(number.width);
    return text;
}

class Painter {
public:
    Drawing paint(const Expression &expression) const
    {
        switch (expression.kind) {
        case Kind::bytes: return box(told(expression.bytes), Style::literal);
        case Kind::number: return box(told(expression.number), Style::number);
        case Kind::name: return box(expression.name, Style::name);
        case Kind::repeat: return repeated(expression);
        case Kind::choice: return choices(expression.parts);
        case Kind::sequence: return row(expression.parts);
        }
        return {};
    }

private:
    /// A character, or a letter in either case.
    static std::string letter_of(const Expression &part)
    {
        if (part.kind != Kind::bytes || part.bytes.count() > 2)
            return {};
        const std::size_t first = part.bytes._Find_first();
        const bool either = part.bytes.count() == 2 && part.bytes[first ^ 0x20] && (first | 0x20) >= 'a';
        return part.bytes.count() == 1 || either ? std::string(1, static_cast<char>(either ? first | 0x20 : first))
                                                 : "";
    }

    Drawing row(const std::vector<Expression> &parts) const
    {
        std::vector<Drawing> drawings;
        for (std::size_t i = 0; i < parts.size();) {
            std::string word;
            for (; i < parts.size() && !letter_of(parts[i]).empty(); ++i)
                word += letter_of(parts[i]);
            drawings.push_back(word.empty() ? paint(parts[i++]) : box(word, Style::literal));
        }
        Drawing made;
        for (const Drawing &drawing : drawings) {
            if (made.width != 0) {
                made.svg += line(made.width, made.width + part_gap);
                made.width += part_gap;
            }
            made.svg += moved(drawing, made.width, 0);
            made.width += drawing.width;
            made.above = std::max(made.above, drawing.above);
            made.below = std::max(made.below, drawing.below);
        }
        return made;
    }

    Drawing choices(const std::vector<Expression> &parts) const
    {
        std::vector<Drawing> drawings;
        int widest = 0;
        for (const Expression &part : parts) {
            drawings.push_back(paint(part));
            widest = std::max(widest, drawings.back().width);
        }
        Drawing made;
        made.width = widest + 4 * bend;
        made.above = drawings.front().above;
        int height = 0;
        for (const Drawing &drawing : drawings) {
            const bool first = &drawing == &drawings.front();
            height += first ? 0 : made.below - height + row_gap + drawing.above;
            if (first)
                made.svg += line(0, 2 * bend) + line(2 * bend + drawing.width, made.width);
            else
                made.svg += detour(0, made.width, height) +
                            moved({0, 0, 0, line(2 * bend + drawing.width, made.width - 2 * bend)}, 0, height);
            made.svg += moved(drawing, 2 * bend, height);
            made.below = height + drawing.below;
        }
        return made;
    }

    /// What may be left out is passed above; what repeats goes back below, with a word of how often.
    Drawing repeated(const Expression &expression) const
    {
        const auto [least, most] = expression.times;
        const Drawing inner = paint(expression.parts.front());
        Drawing made{inner.width + 4 * bend, inner.above, inner.below, line(0, 2 * bend) + moved(inner, 2 * bend, 0)};
        made.svg += line(2 * bend + inner.width, made.width);
        if (least == 0) {
            made.above = inner.above + row_gap;
            made.svg += detour(0, made.width, -made.above) +
                        moved({0, 0, 0, line(2 * bend, made.width - 2 * bend)}, 0, -made.above);
        }
        if (most == 1)
            return made;
        const int height = inner.below + row_gap;
        char path[160];
        (void)std::snprintf(path, sizeof path,
                            "<path d=\"M%d 0q%d 0 %d %dV%dq0 %d %d %dH%dq-%d 0 -%d -%dV%dq0 -%d %d -%d\"/>\n",
                            made.width - 2 * bend, bend, bend, bend, height - bend, bend, -bend, bend, 2 * bend, bend,
                            bend, bend, bend, bend, bend, bend);
        made.svg += path;
        const std::string times = most == Times::unlimited ? (least > 1 ? std::to_string(least) + " or more" : "")
                                  : least == most          ? std::to_string(least) + " times"
                                                           : std::to_string(least) + " to " + std::to_string(most);
        made.svg += "<text x=\"" + std::to_string(made.width / 2) + "\" y=\"" + std::to_string(height + 12) +
                    R"(" class="note">)" + times + "</text>\n";
        made.below = height + (times.empty() ? 2 : 16);
        return made;
    }
};

std::string limits(const Language &part)
{
    std::string text;
    if (part.length.least != 0 || part.length.most != Times::unlimited) {
        text = std::to_string(part.length.least) + (part.length.most == Times::unlimited ? " or more" : "");
        if (part.length.most != Times::unlimited && part.length.most != part.length.least)
            text += " to " + std::to_string(part.length.most);
        text += " characters";
    }
    if (!part.within.empty())
        text += (text.empty() ? "" : ", ") + std::string("that are also ") + part.within;
    if (!part.but_not.empty())
        text += (text.empty() ? "" : ", ") + std::string("but no ") + part.but_not;
    return text.empty() ? "" : " (" + text + ")";
}

} // namespace

std::string railroad(const Grammar &grammar)
{
    std::string rows;
    int width = 300;
    int y = 20;
    for (const std::string &name : grammar.order) {
        const Language &part = grammar.part(name);
        const Drawing drawing = Painter().paint(part.expression);
        rows += "<text x=\"" + std::to_string(left_margin) + "\" y=\"" + std::to_string(y) + R"(" class="name">)" +
                name + escaped(limits(part)) + "</text>\n";
        y += 14 + drawing.above;
        Drawing whole{drawing.width, 0, 0, line(-10, 0) + drawing.svg + line(drawing.width, drawing.width + 10)};
        rows += moved(whole, left_margin + 10, y);
        y += drawing.below + 30;
        width = std::max(width, drawing.width + 2 * left_margin + 20);
    }
    return R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + std::to_string(width) + "\" height=\"" +
           std::to_string(y) + "\" font-family=\"monospace\" font-size=\"13\">\n<title>" + escaped(grammar.name) +
           "</title>\n<style>path{fill:none;stroke:#555555;stroke-width:1.5}text{text-anchor:middle}"
           ".name{text-anchor:start;font-weight:bold;font-family:sans-serif}.note{font-size:11px;font-family:sans-"
           "serif}"
           "</style>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" +
           rows + "</svg>\n";
}

} // namespace bgpdt::grammar
