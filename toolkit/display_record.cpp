// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "display_record.hpp"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "errors.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::size_t longest_template = 299;
constexpr std::size_t longest_text = 298; ///< that a placeholder shows to its end
constexpr std::size_t count_offset = 24;
constexpr std::size_t record_head = 44;

template <class Number>
Bytes in_memory(Number number)
{
    Bytes bytes(sizeof number);
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

/// Nothing if the text is no value of the kind.
template <class Number>
Bytes number_bytes(const std::string &text)
{
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? in_memory(number) : Bytes{};
}

Bytes read_ipv4(const std::string &text)
{
    std::uint32_t address = 0;
    return SYSDT_Str2Ipv4(text.c_str(), &address) == SYSDT_OK ? in_memory(address) : Bytes{};
}

Bytes read_ipv6(const std::string &text)
{
    Bytes bytes(16);
    return SYSDT_Str2Ipv6(text.c_str(), bytes.data()) == SYSDT_OK ? bytes : Bytes{};
}

Bytes terminated(std::string_view text)
{
    Bytes bytes(text.begin(), text.end());
    bytes.push_back(0);
    return bytes;
}

Bytes read_text(const std::string &text) { return text.size() > longest_text ? Bytes{} : terminated(text); }

/// IPv4 address, IPv6 address, family.
Bytes read_address(const std::string &text)
{
    const std::uint8_t family = text.find(':') == std::string::npos ? 0 : 1;
    const Bytes address = family == 0 ? read_ipv4(text) : read_ipv6(text);
    if (address.empty())
        return {};
    Bytes bytes(21);
    std::ranges::copy(address, bytes.begin() + (family == 0 ? 0 : 4));
    bytes.back() = family;
    return bytes;
}

constexpr DisplayKind value_kinds[] = {
    {2, "u8", "a number from 0 to 255", number_bytes<std::uint8_t>},
    {4, "u16", "a number from 0 to 65535", number_bytes<std::uint16_t>},
    {6, "u32", "a number from 0 to 4294967295", number_bytes<std::uint32_t>},
    {21, "ipv4", "an IPv4 address", read_ipv4},
    {22, "ipv6", "an IPv6 address", read_ipv6},
    {25, "text", "a text of at most 298 characters", read_text},
    {38, "address", "an IPv4 or IPv6 address", read_address},
};

void append(Bytes &record, std::span<const std::uint8_t> bytes)
{
    record.insert(record.end(), bytes.begin(), bytes.end());
}

void append_entry(Bytes &record, std::uint16_t kind, std::span<const std::uint8_t> data)
{
    append(record, in_memory(kind));
    append(record, in_memory(static_cast<std::uint16_t>(data.size())));
    append(record, data);
}

} // namespace

std::span<const DisplayKind> display_kinds() { return value_kinds; }

Bytes bitmap_record(std::span<const std::uint8_t> bitmap, std::string_view line_template,
                    std::span<const DisplayValue> values)
{
    if (line_template.size() > longest_template) {
        throw Refusal("the template has " + std::to_string(line_template.size()) + " characters, at most " +
                      std::to_string(longest_template) + " are allowed");
    }
    constexpr std::size_t most_values = 0xffff - 2;
    if (values.size() > most_values)
        throw Refusal("a display record holds at most " + std::to_string(most_values) + " values");
    const auto count = static_cast<std::uint16_t>(2 + values.size());
    Bytes record(record_head);
    std::memcpy(record.data() + count_offset, &count, sizeof count);
    append_entry(record, SYSDT_KIND_STRING, terminated(line_template));
    append_entry(record, SYSDT_TYPE_ATTRIDBITMAP, bitmap);
    for (const DisplayValue &value : values)
        append_entry(record, value.kind, value.data);
    return record;
}

Bytes printable(const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    return type.typeId == SYSDT_TYPE_ATTRIDBITMAP ? bitmap_record(value, default_template, {})
                                                  : Bytes(value.begin(), value.end());
}

} // namespace bgpdt::toolkit
