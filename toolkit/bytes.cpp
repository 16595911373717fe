// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "bytes.hpp"

#include <algorithm>
#include <bit>

#include "bgp_datatype/fields.hpp"
#include "digits.hpp"
#include "errors.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {
namespace {

int digit_value(char c)
{
    const char small = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    const std::size_t value = hex_digits.find(small);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

bool is_separator(char c) { return c == ' ' || c == '\t' || c == '\n' || c == ':' || c == '_' || c == '-'; }

[[noreturn]] void refuse_hex(std::size_t position, const std::string &reason)
{
    throw Refusal("the bytes are not hexadecimal at character " + std::to_string(position + 1) + ": " + reason +
                  "; bytes are written as two digits each, as in 0x0000fbf0; blanks, ':', '_' and '-' may stand "
                  "between them");
}

[[noreturn]] void refuse_digit(std::string_view text, std::size_t position)
{
    refuse_hex(position, "'" + shown_character(text, position) + "' is no digit");
}

/// Turns between the two byte orders, `order` being the one that the value is in.
void turn(const SYSDT_Record &type, std::span<std::uint8_t> value, std::endian order)
{
    if (std::endian::native == std::endian::big || value.size() < type.dataLength)
        return;
    const Layout &layout = layout_of(type.typeId, value, order);
    if (layout.fields.empty() && type.baseKind == SYSDT_KIND_BINARY)
        std::ranges::reverse(value); // a plain binary type is one number
    reverse_numbers(layout, value);
}

} // namespace

Bytes from_hex(std::string_view text)
{
    Bytes bytes;
    std::size_t at = text.starts_with("0x") || text.starts_with("0X") ? 2 : 0;
    while (at < text.size()) {
        if (is_separator(text[at])) {
            ++at;
            continue;
        }
        const int high = digit_value(text[at]);
        if (high < 0)
            refuse_digit(text, at);
        if (at + 1 == text.size() || is_separator(text[at + 1]))
            refuse_hex(at, "a byte has one digit only");
        const int low = digit_value(text[at + 1]);
        if (low < 0)
            refuse_digit(text, at + 1);
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
        at += 2;
    }
    return bytes;
}

std::string to_hex(std::span<const std::uint8_t> bytes)
{
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        text += hex_digits[byte >> 4];
        text += hex_digits[byte & 0x0f];
    }
    return text;
}

void turn_to_native(const SYSDT_Record &type, std::span<std::uint8_t> value) { turn(type, value, std::endian::big); }

void turn_to_target(const SYSDT_Record &type, std::span<std::uint8_t> value) { turn(type, value, std::endian::native); }

} // namespace bgpdt::toolkit
