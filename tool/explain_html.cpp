// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <string_view>

#include "explain_pictures.hpp"
#include "toolkit/shown_text.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

constexpr std::size_t bytes_per_row = 16;

constexpr std::string_view style = R"(body { font-family: sans-serif; margin: 2em; color: #222; background: #fff }
table { border-collapse: collapse }
th, td { border: 1px solid #bbb; padding: .2em .6em; text-align: left; vertical-align: top }
code, pre { font-family: monospace }
pre { white-space: pre-wrap; overflow-wrap: anywhere }
.c0 { background: #fbf1c9 } .c1 { background: #dde8fb } .c2 { background: #fde2e0 } .c3 { background: #d8f3f3 }
.none { color: #767676 }
@media (max-width: 50em) {
  body { margin: 1em }
  thead { display: none }
  tr { display: block; margin-bottom: .6em; border: 1px solid #bbb; overflow-wrap: anywhere }
  td { display: block; border: 0 }
  td:empty { display: none }
  td::before { content: attr(data-head) ": "; color: #555 }
}
)";

std::string escaped(std::string_view text)
{
    std::string html;
    for (const char c : text) {
        switch (c) {
        case '&': html += "&amp;"; break;
        case '<': html += "&lt;"; break;
        case '>': html += "&gt;"; break;
        case '"': html += "&quot;"; break;
        default: html += c;
        }
    }
    return html;
}

/// Where there is no room for columns the head stands in front of the cell.
std::string cell(const char *head, const std::string &html)
{
    return "<td data-head=\"" + std::string(head) + "\">" + html + "</td>";
}

std::string row(const Explanation &explanation, const Part &part, std::optional<std::size_t> colour)
{
    std::string bytes;
    for (const std::string &line : byte_lines(explanation, part, bytes_per_row))
        bytes += (bytes.empty() ? "" : "<br>") + line;
    return "<tr class=\"" + (colour ? "c" + std::to_string(*colour) : "none") + "\">" +
           cell("Offset", std::to_string(part.offset)) + cell("Size", std::to_string(part.size)) +
           cell("Bytes", "<code>" + bytes + "</code>") + cell("Field", part.name.empty() ? "-" : escaped(part.name)) +
           cell("Meaning", escaped(part.meaning)) + cell("Value", escaped(part.shown)) +
           cell("Script field", escaped(part.key)) + "</tr>\n";
}

} // namespace

std::string explanation_html(const Explanation &explanation)
{
    const std::string title = escaped(title_of(explanation));
    const auto colours = colours_of(explanation);
    std::string rows;
    for (std::size_t i = 0; i < colours.size(); ++i)
        rows += row(explanation, explanation.parts[i], colours[i]);
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
           title + "</title>\n<style>\n" + std::string(style) + "</style>\n</head>\n<body>\n<h1>" + title +
           "</h1>\n<p>Byte order: " + escaped(order_of(explanation)) +
           "</p>\n<table>\n<thead><tr><th>Offset</th><th>Size</th><th>Bytes</th><th>Field</th><th>Meaning</"
           "th><th>Value</th>"
           "<th>Script field</th></tr></thead>\n<tbody>\n" +
           rows + "</tbody>\n</table>\n<h2>Text</h2>\n<pre>" + escaped(text_of(explanation)) +
           "</pre>\n<h2>Script table</h2>\n<pre>" + escaped(table_of(explanation)) + "</pre>\n</body>\n</html>\n";
}

} // namespace bgpdt::tool
