// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Draws the README's pictures as SVG: `draw house|value PLUGIN`; the bytes of a value come from the plug-in and what
/// is said of its fields from the toolkit.
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/explain.hpp"
#include "toolkit/session.hpp"

namespace {

namespace toolkit = bgpdt::toolkit;

constexpr const char *type_name = "EVNPREFIX";
constexpr const char *text = "100:48:0000-5e00-5301:32:192.0.2.1";

constexpr int width = 760; // all lengths in pixels
constexpr int margin = 20;
constexpr const char *colours[] = {"#cfe2f3", "#d9ead3", "#fff2cc", "#f4cccc", "#d9d2e9",
                                   "#fce5cd", "#d0e0e3", "#ead1dc", "#e6e6e6"};

void open_picture(int height, std::string_view title)
{
    std::cout << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
              << "\" font-family=\"sans-serif\" font-size=\"13\">\n<title>" << title
              << "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
}

void close_picture() { std::cout << "</svg>\n"; }

struct Box {
    int x;
    int y;
    int width;
    int height;
};

void rectangle(const Box &box, std::string_view fill)
{
    std::cout << "<rect x=\"" << box.x << "\" y=\"" << box.y << "\" width=\"" << box.width << "\" height=\""
              << box.height << "\" fill=\"" << fill << "\" stroke=\"#555555\"/>\n";
}

void label(int x, int y, std::string_view style, std::string_view words)
{
    std::cout << "<text x=\"" << x << "\" y=\"" << y << "\" " << style << '>' << words << "</text>\n";
}

constexpr const char *plain = "";
constexpr const char *bold = "font-weight=\"bold\"";
constexpr const char *middle = "text-anchor=\"middle\"";
constexpr const char *middle_bold = "text-anchor=\"middle\" font-weight=\"bold\"";
constexpr const char *octet = "text-anchor=\"middle\" font-family=\"monospace\"";

// ---------------------------------------------------------------------------------------------------- the value

constexpr int cell = 45;
constexpr std::size_t cells_in_row = 16;

constexpr int line_height = 20;

int line(std::size_t index) { return line_height * static_cast<int>(index); }

/// Which part the byte is of.
std::size_t part_at(std::span<const toolkit::Part> parts, std::size_t at)
{
    std::size_t index = 0;
    while (at >= parts[index].offset + parts[index].size)
        ++index;
    return index;
}

std::string hex(std::uint8_t byte)
{
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(byte));
    return digits;
}

void draw_bytes(std::span<const toolkit::Part> parts, std::span<const std::uint8_t> shown, int top)
{
    for (std::size_t at = 0; at < shown.size(); ++at) {
        const int x = margin + cell * static_cast<int>(at % cells_in_row);
        const int y = top + cell * static_cast<int>(at / cells_in_row);
        rectangle({x, y, cell, cell}, colours[part_at(parts, at) % std::size(colours)]);
        label(x + 3, y + 11, "font-size=\"9\" fill=\"#777777\"", std::to_string(at));
        label(x + cell / 2, y + 30, octet, hex(shown[at]));
    }
}

/// "route type: 2, MAC/IP advertisement"
std::string words_for(const toolkit::Part &part)
{
    return part.name + ": " + part.shown + (part.in_words ? ", " + part.meaning : "");
}

void draw_legend(std::span<const toolkit::Part> parts, int top)
{
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const toolkit::Part &part = parts[index];
        const int y = top + line(index);
        rectangle({margin, y, 14, 14}, colours[index % std::size(colours)]);
        label(margin + 24, y + 12, plain, words_for(part));
        const std::string first = std::to_string(part.offset);
        label(margin + 420, y + 12, "fill=\"#777777\"",
              part.size == 1 ? "byte " + first
                             : "bytes " + first + " to " + std::to_string(part.offset + part.size - 1));
    }
}

void draw_value(const char *plugin)
{
    toolkit::Session session({.plugin = plugin});
    const SYSDT_Record &type = session.type(type_name);
    toolkit::Explanation explanation =
        toolkit::explanation_of(session, type, session.host().parse(type, text, session.mode_for(type)).data);
    std::vector<toolkit::Part> &parts = explanation.parts;
    const std::size_t used = parts.back().name.empty() ? parts.back().offset : explanation.bytes.size();
    std::erase_if(parts, [](const toolkit::Part &part) { return part.name.empty(); });
    const int rows = static_cast<int>((used + cells_in_row - 1) / cells_in_row);
    constexpr int bytes_top = 50;
    const int legend_top = bytes_top + rows * cell + 15;
    const int bottom = legend_top + line(parts.size());
    open_picture(bottom + 35, std::string("The bytes of one ") + type_name);
    label(margin, 30, bold, std::string(type_name) + " " + text);
    draw_bytes(parts, std::span(explanation.bytes).first(used), bytes_top);
    draw_legend(parts, legend_top);
    label(margin, bottom + 16, plain,
          std::to_string(explanation.bytes.size() - used) + " bytes behind them are zero: other route types use them.");
    close_picture();
}

// ---------------------------------------------------------------------------------------------------- the house

struct Part {
    Box box;
    const char *name;
    const char *what;
    const char *colour;
};

constexpr Part parts[] = {
    {{20, 50, 200, 60}, "router", "the configuration framework", "#e6e6e6"},
    {{230, 50, 130, 60}, "tool/", "the command line", "#fff2cc"},
    {{370, 50, 140, 60}, "lua/ sqlite/", "modules", "#fff2cc"},
    {{520, 50, 220, 60}, "tests/ fuzzing/ benchmarks/", "vectors, attacks, figures", "#fff2cc"},
    {{230, 140, 280, 60}, "toolkit/ library/", "libbgpdt: answers, reasons, fields", "#d9d2e9"},
    {{230, 230, 510, 60}, "host/", "libbgpdt_host: every service of host.h, on real Lua 5.4", "#d9ead3"},
    {{20, 320, 720, 60},
     "include/bgp_datatype/",
     "host.h, values.h, fields.hpp, bgp_datatype.h: the boundary, in C",
     "#cfe2f3"},
    {{20, 410, 720, 60}, "src/init/", "libbgp_datatype: one record for each type, handed to the host", "#fce5cd"},
    {{20, 490, 170, 60}, "src/asn_community/", "AS numbers", "#fce5cd"},
    {{203, 490, 170, 60}, "src/vpn_id/", "RD, RT, VPN-ID", "#fce5cd"},
    {{386, 490, 170, 60}, "src/bol_prefix/", "prefixes", "#fce5cd"},
    {{569, 490, 171, 60}, "src/route_keys/", "EVPN, MVPN, policies", "#fce5cd"},
    {{20, 563, 170, 60}, "src/bgpls/", "link state", "#fce5cd"},
    {{203, 563, 170, 60}, "src/attr/", "bitmap, time, SID", "#fce5cd"},
    {{386, 563, 354, 60}, "src/common/", "the contract of all types; scan and print", "#fce5cd"},
};

void draw_house()
{
    open_picture(645, "The house");
    label(margin, 30, bold, "Who calls is above; the plug-in meets its host through the headers alone.");
    for (const Part &part : parts) {
        rectangle(part.box, part.colour);
        const int centre = part.box.x + part.box.width / 2;
        label(centre, part.box.y + 26, middle_bold, part.name);
        label(centre, part.box.y + 46, middle, part.what);
    }
    // The router and the host each stand on the headers, the fronts on the toolkit; that and the tests on the host.
    for (const Box &down : {Box{120, 110, 0, 210}, Box{295, 110, 0, 30}, Box{440, 110, 0, 30}, Box{630, 110, 0, 120},
                            Box{370, 200, 0, 30}, Box{485, 290, 0, 30}, Box{380, 380, 0, 30}}) {
        std::cout << "<line x1=\"" << down.x << "\" y1=\"" << down.y << "\" x2=\"" << down.x << "\" y2=\""
                  << down.y + down.height << "\" stroke=\"#555555\" stroke-width=\"2\"/>\n";
    }
    close_picture();
}

} // namespace

int main(int argc, char **argv)
{
    const std::string_view picture = argc > 1 ? argv[1] : "";
    if (picture == "house" && argc == 3) {
        draw_house();
    } else if (picture == "value" && argc == 3) {
        draw_value(argv[2]);
    } else {
        std::cerr << "usage: draw house|value PLUGIN\n";
        return 2;
    }
}
