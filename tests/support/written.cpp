// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "written.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <utility>

#include <arpa/inet.h>

#include "bgp_datatype/fields.hpp"

namespace bgpdt::test {

namespace {

bool is_decimal(char character) { return character >= '0' && character <= '9'; }
char lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
}
bool is_hexadecimal(char character)
{
    return is_decimal(character) || (lower(character) >= 'a' && lower(character) <= 'f');
}

std::string hexadecimal(std::uint64_t number)
{
    char digits[16];
    return "x" + std::string(digits, std::to_chars(digits, digits + sizeof digits, number, 16).ptr);
}

void add_number(Numbers &numbers, std::string_view digits, bool hex)
{
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    std::string &number = numbers.emplace_back(hex ? "x" : "");
    for (const char digit : digits)
        number += lower(digit);
}

void add_runs(Numbers &numbers, std::string_view text, bool hex)
{
    const auto is_digit = hex ? is_hexadecimal : is_decimal;
    for (auto at = text.begin(); (at = std::find_if(at, text.end(), is_digit)) != text.end();) {
        const auto end = std::find_if_not(at, text.end(), is_digit);
        add_number(numbers, {at, end}, hex);
        at = end;
    }
}

/// What is no address still has digits.
void add_ipv6(Numbers &numbers, std::string_view text)
{
    std::array<std::uint8_t, 16> address{};
    if (inet_pton(AF_INET6, std::string(text).c_str(), address.data()) != 1) {
        add_runs(numbers, text, true);
        return;
    }
    for (std::size_t i = 0; i < address.size(); i += 2)
        numbers.push_back(hexadecimal(address[i] * 256U + address[i + 1]));
}

void add_address(Numbers &numbers, std::string_view text)
{
    if (std::ranges::count(text, ':') > 1)
        add_ipv6(numbers, text);
    else
        add_runs(numbers, text, false);
}

void add_esi(Numbers &numbers, std::string_view text)
{
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), is_hexadecimal);
    if (!digits.empty())
        add_number(numbers, digits, true);
}

void add_evpn_field(Numbers &numbers, std::string_view field)
{
    if (field.starts_with('[')) {
        const std::size_t end = std::min(field.find(']'), field.size());
        add_ipv6(numbers, field.substr(1, end - 1));
        add_runs(numbers, field.substr(end), false);
    } else if (field.find('-') != field.npos) {
        add_runs(numbers, field, true);
    } else if (std::ranges::count(field, '.') == 4) {
        add_esi(numbers, field);
    } else {
        add_runs(numbers, field, false);
    }
}

void add_evpn(Numbers &numbers, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t behind = text.starts_with('[') ? std::min(text.find(']'), text.size()) : 0;
        const std::size_t end = std::min(text.find(':', behind), text.size());
        add_evpn_field(numbers, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void add_sections(Numbers &numbers, std::string_view text)
{
    if (text.find('-') == text.npos && std::ranges::count(text, '.') > 0) {
        add_runs(numbers, text, false);
        return;
    }
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('-'), text.size());
        add_address(numbers, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// The words of the groups that hold digits or go on in hexadecimal ones; longer ones first.
constexpr std::string_view words[] = {
    "originator-address",
    "bgp-ls-identifier",
    "ospf-route-type",
    "protocol-origin",
    "link-remote-id",
    "igp-router-id",
    "ipv4-router-id",
    "ipv6-router-id",
    "link-local-id",
    "originator-as",
    "bgp-router-id",
    "discriminator",
    "ospf-area-id",
    "ISIS-LEVEL-1",
    "ISIS-LEVEL-2",
    "peer-address",
    "IPV4-PREFIX",
    "IPV6-PREFIX",
    "IDENTIFIER",
    "identifier",
    "if-address",
    "member-as",
    "SRV6-SID",
    "endpoint",
    "prefix",
    "remote",
    "OSPFv2",
    "OSPFv3",
    "color",
    "local",
    "mt-id",
    "Flag",
    "sid",
    "as",
};

void add_group(Numbers &numbers, std::string_view group)
{
    const auto word = std::ranges::find_if(words, [&](std::string_view known) { return group.starts_with(known); });
    if (word != std::end(words))
        group.remove_prefix(word->size());
    if (word != std::end(words) && *word == "igp-router-id" && group.find('.') == 4) {
        add_runs(numbers, group, true);
        return;
    }
    const std::size_t slash = std::min(group.find('/'), group.size());
    add_address(numbers, group.substr(0, slash));
    add_runs(numbers, group.substr(slash), false);
}

void add_groups(Numbers &numbers, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("[]"), text.size());
        add_group(numbers, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// Collects a value's numbers.
class Fields {
public:
    explicit Fields(const Bytes &value) : value_(value) {}

    void add(const Field &field, std::size_t entry)
    {
        const std::size_t at = entry + field.offset;
        if (at + field.size() > value_.size())
            return;
        if (field.host_order()) {
            for (std::size_t i = 0; i < field.count; ++i)
                add_word(host_number(at + i * field.width, field.width), field.width);
            return;
        }
        add_network(at, field.size(), 1);
        add_network(at, field.size(), 2);
        add_network(at, field.size(), 4);
        if (field.form == bgpdt::Form::esi) {
            Numbers esi;
            std::string digits;
            for (std::size_t i = 0; i < field.size(); ++i)
                digits += hexadecimal(0x100U + value_[at + i]).substr(2);
            add_esi(esi, digits);
            numbers_.insert(esi.front());
        }
    }
    std::unordered_set<std::string> take() { return std::move(numbers_); }

private:
    std::uint64_t host_number(std::size_t at, std::size_t width) const
    {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < width; ++i) {
            const std::size_t place = std::endian::native == std::endian::big ? i : width - 1 - i;
            number = number << 8 | value_[at + place];
        }
        return number;
    }
    void add_word(std::uint64_t number, std::size_t width)
    {
        numbers_.insert(std::to_string(number));
        numbers_.insert(hexadecimal(number));
        for (std::size_t part = width / 2; part > 0; part /= 2) {
            for (std::size_t shift = 0; shift < width; shift += part) {
                const std::uint64_t piece = number >> 8 * shift & ((std::uint64_t{1} << 8 * part) - 1);
                numbers_.insert(std::to_string(piece));
                numbers_.insert(hexadecimal(piece));
            }
        }
    }
    void add_network(std::size_t at, std::size_t size, std::size_t width)
    {
        for (std::size_t i = 0; i + width <= size; ++i) {
            std::uint64_t number = 0;
            for (std::size_t byte = 0; byte < width; ++byte)
                number = number << 8 | value_[at + i + byte];
            numbers_.insert(std::to_string(number));
            numbers_.insert(hexadecimal(number));
        }
    }

    const Bytes &value_;
    std::unordered_set<std::string> numbers_;
};

bool is_row_key(const Subject &subject) { return subject.expect.script_size == SYSDT_BOL_SIZE; }

} // namespace

std::string sum(std::string_view first, std::string_view second)
{
    std::string digits;
    int carry = 0;
    for (std::size_t place = 1; place <= std::max(first.size(), second.size()) || carry != 0; ++place) {
        const auto digit = [&](std::string_view number) {
            return place <= number.size() ? number[number.size() - place] - '0' : 0;
        };
        carry += digit(first) + digit(second);
        digits.insert(digits.begin(), static_cast<char>('0' + carry % 10));
        carry /= 10;
    }
    return digits;
}

Writing writing_of(const Subject &subject, const Bytes &value)
{
    const Expectation *row = is_row_key(subject) ? expectation_behind(*expectation_of("BOLPREFIX"),
                                                                      selecting_word(value, std::endian::native))
                                                 : &subject.expect;
    return row == nullptr ? Writing::sections : row->numbers;
}

Numbers numbers_in(std::string_view text, Writing writing)
{
    Numbers numbers;
    text = text.substr(0, text.find('\0'));
    while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || (text.back() >= '\t' && text.back() <= '\r')))
        text.remove_suffix(1);
    const std::size_t dot = text.rfind('.');
    const std::size_t hyphen = text.rfind('-');
    switch (writing) {
    case Writing::decimal: add_runs(numbers, text, false); break;
    case Writing::hexadecimal: add_runs(numbers, text, true); break;
    case Writing::ipv6: add_ipv6(numbers, text); break;
    case Writing::ipv6_and_number:
        add_ipv6(numbers, text.substr(0, dot));
        add_runs(numbers, text.substr(std::min(dot, text.size())), false);
        break;
    case Writing::octets_or_number: add_runs(numbers, text, text.find_first_of(".:") == text.npos); break;
    case Writing::evpn: add_evpn(numbers, text); break;
    case Writing::sections: add_sections(numbers, text); break;
    case Writing::last_section:
        add_runs(numbers, text.substr(0, std::min(hyphen, text.size())), false);
        add_address(numbers, text.substr(std::min(hyphen, text.size() - 1) + 1));
        break;
    case Writing::groups: add_groups(numbers, text); break;
    }
    return numbers;
}

std::unordered_set<std::string> numbers_of(const Subject &subject, const Bytes &value)
{
    const Layout &layout = layout_of(subject.kind, value, std::endian::native);
    Fields fields(value);
    for (std::size_t entry = 0; entry < layout.repeat; ++entry)
        for (const Field &field : layout.fields)
            fields.add(field, entry * layout.stride);
    return fields.take();
}

} // namespace bgpdt::test
