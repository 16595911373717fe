// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "display_model.hpp"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

#include "bgp_datatype/host.h"
#include "bgp_datatype/values.h"

namespace bgpdt::fuzzing {

namespace {

constexpr std::size_t most_listing = 4095;
constexpr std::size_t most_text = 299;
constexpr std::size_t most_piece = 298;

struct Entry {
    std::uint16_t kind;
    std::span<const std::uint8_t> data;
};

template <class Number>
Number number_at(std::span<const std::uint8_t> bytes, std::size_t at)
{
    Number number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

/// All the entries that the record promises, or nothing if they are not inside it.
std::optional<std::vector<Entry>> entries_of(std::span<const std::uint8_t> record)
{
    if (record.size() < 44)
        return {};
    std::vector<Entry> entries;
    std::size_t at = 44;
    for (std::size_t left = number_at<std::uint16_t>(record, 24); left > 0; --left) {
        if (record.size() - at < 4)
            return {};
        const auto kind = number_at<std::uint16_t>(record, at);
        const auto length = number_at<std::uint16_t>(record, at + 2);
        at += 4;
        if (record.size() - at < length)
            return {};
        entries.push_back({kind, record.subspan(at, length)});
        at += length;
    }
    return entries;
}

std::string text_in(std::span<const std::uint8_t> data)
{
    return {data.begin(), std::find(data.begin(), data.end(), std::uint8_t{0})};
}

/// A value as printf would be given it; neither is there for what prints nothing.
struct Value {
    std::optional<std::uint32_t> number{};
    std::optional<std::string> text{};

    bool prints() const { return number || text; }
};

std::string ipv4_text(std::span<const std::uint8_t> data)
{
    char text[16];
    return PAL_IpAddrToStr(number_at<std::uint32_t>(data, 0), text);
}

std::string ipv6_text(std::span<const std::uint8_t> data)
{
    char text[46];
    return PAL_Inet_ntoa_b_ipv6(data.data(), text);
}

/// False if the entry is shorter than its kind.
bool read_value(const Entry &entry, Value &value)
{
    const auto has = [&](std::size_t size) { return entry.data.size() >= size; };
    switch (entry.kind) {
    case 2:
        if (has(1))
            value.number = entry.data[0];
        return has(1);
    case 4:
        if (has(2))
            value.number = number_at<std::uint16_t>(entry.data, 0);
        return has(2);
    case 6:
        if (has(4))
            value.number = number_at<std::uint32_t>(entry.data, 0);
        return has(4);
    case 21:
        if (has(4))
            value.text = ipv4_text(entry.data);
        return has(4);
    case 22:
        if (has(16))
            value.text = ipv6_text(entry.data);
        return has(16);
    case 25: value.text = text_in(entry.data); return true;
    case 38:
        if (has(21) && entry.data[20] <= 1)
            value.text = entry.data[20] == 0 ? ipv4_text(entry.data) : ipv6_text(entry.data.subspan(4));
        return has(21);
    default: return true;
    }
}

/// The conversion that begins behind the "%", or empty if it does not fit the value.
std::string_view conversion_in(std::string_view behind, const Value &value)
{
    std::size_t at = std::min(behind.find_first_not_of("-+ #0"), behind.size());
    const auto digits = [&] {
        while (at < behind.size() && std::isdigit(static_cast<unsigned char>(behind[at])) != 0)
            ++at;
    };
    digits();
    if (at < behind.size() && behind[at] == '.') {
        ++at;
        digits();
    }
    if (value.number)
        at += behind.substr(at, 2) == "hh" ? 2 : behind.substr(at, 1) == "h" ? 1 : 0;
    const std::string_view letters = value.number ? "diuoxX" : "s";
    const bool fits = at < behind.size() && letters.find(behind[at]) != std::string_view::npos;
    return fits ? behind.substr(0, at + 1) : std::string_view{};
}

constexpr std::uint64_t beyond = 9999; ///< every limit of a listing

/// Digits as a number, a huge one as another huge one.
std::uint64_t number_of(std::string_view digits)
{
    std::uint64_t number = 0;
    for (const char digit : digits)
        number = std::min<std::uint64_t>(number * 10 + static_cast<std::uint64_t>(digit - '0'), UINT32_MAX);
    return number;
}

/// A width or precision that printf itself cannot take: cut to one that is beyond every limit too. A number's digits
/// still stand behind as many blanks as reach the limit, where its width is beyond its precision.
std::string capped(std::string_view conversion, bool of_number)
{
    const std::size_t width_at = std::min(conversion.find_first_not_of("-+ #0"), conversion.size());
    const std::size_t width_end = std::min(conversion.find_first_not_of("0123456789", width_at), conversion.size());
    const std::size_t dot = conversion.substr(width_end, 1) == "." ? width_end + 1 : width_end;
    const std::size_t end = std::min(conversion.find_first_not_of("0123456789", dot), conversion.size());
    const std::uint64_t width = number_of(conversion.substr(width_at, width_end - width_at));
    const std::uint64_t precision = number_of(conversion.substr(dot, end - dot));
    const bool both = of_number && precision > beyond && width > precision;
    std::string format = "%" + std::string(conversion.substr(0, width_at));
    format += width_end == width_at
                  ? ""
                  : std::to_string(both ? beyond + std::min(width - precision, beyond) : std::min(width, beyond));
    format += dot == width_end ? "" : "." + std::to_string(std::min(precision, beyond));
    return format + std::string(conversion.substr(end));
}

/// What printf makes of the conversion, as far as it can count.
std::string converted(std::string_view conversion, const Value &value)
{
    const std::string format = capped(conversion, value.number.has_value());
    char out[most_text + 1];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const int length = value.number ? std::snprintf(out, sizeof out, format.c_str(), *value.number)
                                    : std::snprintf(out, sizeof out, format.c_str(), value.text->c_str());
#pragma GCC diagnostic pop
    return {out, std::min(static_cast<std::size_t>(std::max(length, 0)), most_text)};
}

/// The piece with the value in place of its placeholder; nothing if it does not fit.
std::optional<std::string> filled(const std::string &piece, const Value &value)
{
    const std::size_t percent = piece.find('%');
    if (percent == std::string::npos)
        return piece;
    const std::string_view conversion = conversion_in(std::string_view(piece).substr(percent + 1), value);
    if (conversion.empty())
        return {};
    return piece.substr(0, percent) + converted(conversion, value) + piece.substr(percent + 1 + conversion.size());
}

/// The label that the values fill the template to.
std::optional<std::string> label_of(std::string line_template, std::span<const Entry> values)
{
    std::string label;
    bool printed = false;
    const std::string untouched = line_template;
    for (const Entry &entry : values) {
        const std::size_t second = line_template.find('%', line_template.find('%') + 1);
        const bool split = line_template.find('%') != std::string::npos && second != std::string::npos;
        const std::string piece = split ? line_template.substr(0, second) : line_template;
        if (split)
            line_template.erase(0, second);
        Value value;
        if (!read_value(entry, value))
            return {};
        const std::size_t room = most_text - label.size();
        if (!value.prints())
            continue;
        const auto text = filled(piece, value);
        if (!text)
            return {};
        label += text->substr(0, std::min(room, most_piece));
        printed = true;
    }
    return printed ? label : untouched;
}

struct Run {
    int first;
    int last;
};

std::vector<Run> runs_of(std::span<const std::uint8_t> bitmap)
{
    std::vector<Run> runs;
    for (int identifier = 0; identifier < 256; ++identifier) {
        const auto byte = static_cast<std::size_t>(identifier / 8);
        if (byte >= bitmap.size() || (bitmap[byte] & 1 << identifier % 8) == 0)
            continue;
        if (!runs.empty() && runs.back().last == identifier - 1)
            runs.back().last = identifier;
        else
            runs.push_back({identifier, identifier});
    }
    return runs;
}

std::string text_of(std::string label, std::span<const Run> runs)
{
    std::string tail;
    if (const std::size_t marker = label.find("###"); marker != std::string::npos) {
        tail = label.substr(marker + 3);
        label.resize(marker);
        label.resize(std::min(label.rfind(' '), label.size()));
    }
    std::string text;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (i % 10 == 0)
            text += (i == 0 ? "" : tail + "\r\n") + label;
        text += ' ' + std::to_string(runs[i].first);
        text += runs[i].last == runs[i].first ? "" : " to " + std::to_string(runs[i].last);
    }
    return (text + tail + "\r\n").substr(0, most_listing);
}

} // namespace

std::optional<std::string> listing_of(std::span<const std::uint8_t> record)
{
    const auto entries = entries_of(record);
    if (!entries || entries->size() < 2 || (*entries)[0].kind != SYSDT_KIND_STRING ||
        (*entries)[1].kind != SYSDT_TYPE_ATTRIDBITMAP)
        return {};
    const auto runs = runs_of((*entries)[1].data.first(std::min<std::size_t>((*entries)[1].data.size(), 32)));
    const auto label = label_of(text_in((*entries)[0].data).substr(0, most_text), std::span(*entries).subspan(2));
    if (runs.empty() || !label)
        return {};
    return text_of(*label, runs);
}

} // namespace bgpdt::fuzzing
