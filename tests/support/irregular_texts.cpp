// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "irregular_texts.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <vector>

namespace bgpdt::test {

namespace {

bool are_in_fields(const Numbers &numbers, const AcceptedText &text)
{
    return std::ranges::all_of(numbers, [&](const std::string &number) { return text.fields.contains(number); });
}

bool in_fields(const AcceptedText &text) { return are_in_fields(text.written, text); }

bool has_letters(std::string_view text)
{
    return std::ranges::any_of(text,
                               [](char character) { return (character | 0x20) >= 'a' && (character | 0x20) <= 'z'; });
}

bool named(const AcceptedText &text) { return has_letters(text.print) && in_fields(text); }

bool unprinted(const AcceptedText &text) { return text.print.empty() && in_fields(text); }

/// The numbers that print are those that the text begins with.
bool begins_with_printed(const AcceptedText &text)
{
    return text.printed.size() < text.written.size() && !text.printed.empty() &&
           std::equal(text.printed.begin(), text.printed.end(), text.written.begin());
}

/// A number and the one that its negative counts as.
bool complement(std::string_view written, std::string_view printed)
{
    static constexpr std::array<std::string_view, 3> sizes{"65536", "4294967296", "18446744073709551616"};
    return !written.starts_with('x') && std::ranges::find(sizes, sum(written, printed)) != sizes.end();
}

bool agree(const std::string &written, const std::string &printed)
{
    return written == printed || complement(written, printed);
}

/// With a hyphen ahead a number is negative; what follows the last one is not looked at.
bool negative(const AcceptedText &text)
{
    return text.text.find('-') != text.text.npos && !text.printed.empty() &&
           text.printed.size() <= text.written.size() &&
           std::equal(text.printed.begin(), text.printed.end(), text.written.begin(),
                      [](const std::string &printed, const std::string &written) { return agree(written, printed); });
}

/// The address prints; the mask length behind it is in a field.
bool address_and_mask(const AcceptedText &text)
{
    return text.printed.size() == 4 && text.written.size() >= 5 &&
           std::equal(text.printed.begin(), text.printed.end(), text.written.begin(),
                      [](const std::string &printed, const std::string &written) { return agree(written, printed); }) &&
           std::ranges::any_of(text.fields, [&](const std::string &field) {
               return !field.starts_with('x') && agree(text.written[4], field);
           });
}

bool segment_alone(const AcceptedText &text)
{
    Numbers printed = text.written;
    printed.insert(printed.end(), 5, "0");
    return text.written.size() == 1 && text.printed == printed;
}

std::string trimmed(std::string_view text)
{
    static constexpr std::string_view blanks = " \t\n\v\f\r";
    text = text.substr(0, text.find('\0'));
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return std::string(text.substr(begin, text.find_last_not_of(blanks) + 1 - begin));
}

/// The character behind the bracket is skipped.
bool skipped_behind_bracket(const AcceptedText &text)
{
    std::string rest = trimmed(text.text);
    const std::size_t bracket = rest.find(']');
    if (bracket == rest.npos || bracket + 1 >= rest.size())
        return false;
    rest[bracket + 1] = ':';
    return numbers_in(rest, Writing::evpn) == text.printed;
}

/// The last character stands for the closing bracket.
bool without_last_character(const AcceptedText &text)
{
    std::string rest = trimmed(text.text);
    rest.back() = ']';
    const Numbers written = numbers_in(rest, Writing::groups);
    return std::ranges::equal(written, text.printed, agree);
}

/// One colon and six dots: whatever they stand between.
bool addresses_given_up(const AcceptedText &text)
{
    const std::string rest = trimmed(text.text);
    return std::ranges::count(rest, ':') == 1 && std::ranges::count(rest, '.') == 6;
}

/// Groups are read two digits at a time: of three the last is one by itself; the fifth ends the text.
bool octets_by_two(const AcceptedText &text)
{
    std::string rest = trimmed(text.text);
    Numbers written;
    for (int group = 0; group < 3; ++group) {
        const std::size_t end = std::min(rest.find('-'), rest.size());
        std::string digits = rest.substr(0, std::min<std::size_t>(end, 4));
        if (digits.size() == 3)
            digits.insert(2, "0");
        for (const std::string &number : numbers_in(digits, Writing::hexadecimal))
            written.push_back(number);
        rest.erase(0, end + 1);
    }
    return written == text.printed;
}

template <class Number>
bool parsed(std::string_view digits, Number &number)
{
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc{} && result.ptr == digits.data() + digits.size();
}

bool seconds_are_right(const AcceptedText &text)
{
    static constexpr std::array<std::uint64_t, 4> units{86400, 3600, 60, 1};
    std::uint64_t seconds = 0;
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t number = 0;
        if (!parsed(text.written[i], number))
            return false;
        seconds += number * units[i];
    }
    std::uint32_t stored = 0;
    std::memcpy(&stored, text.value.data(), sizeof stored);
    return seconds == stored;
}

bool duration(const AcceptedText &text) { return text.written.size() == 4 && seconds_are_right(text); }
bool duration_and_digits(const AcceptedText &text) { return text.written.size() == 5 && seconds_are_right(text); }

/// The numbers of the text are among those that print, in their order.
bool among_printed(const AcceptedText &text)
{
    auto printed = text.printed.begin();
    for (const std::string &number : text.written) {
        printed = std::find(printed, text.printed.end(), number);
        if (printed == text.printed.end())
            return false;
        ++printed;
    }
    return true;
}

/// The text without the groups that begin with the words; what their brackets enclose goes too.
std::string without_groups(std::string text, std::initializer_list<std::string_view> words)
{
    for (const std::string_view word : words) {
        const std::string opening = "[" + std::string(word);
        for (std::size_t at = 0; (at = text.find(opening, at)) != text.npos;) {
            std::size_t end = at;
            for (int depth = 0; end < text.size(); ++end) {
                depth += text[end] == '[' ? 1 : text[end] == ']' ? -1 : 0;
                if (depth == 0)
                    break;
            }
            text.erase(at, std::min(end + 1, text.size()) - at);
        }
    }
    return text;
}

/// The number behind the opening is kept in its low bits.
void keep_low_bits(std::string &text, std::string_view opening, unsigned bits)
{
    for (std::size_t at = 0; (at = text.find(opening, at)) != text.npos;) {
        at += opening.size();
        const std::size_t end = std::min(text.find_first_not_of("0123456789", at), text.size());
        std::uint64_t number = 0;
        if (parsed(std::string_view(text).substr(at, end - at), number))
            text.replace(at, end - at, std::to_string(number & ((std::uint64_t{1} << bits) - 1)));
    }
}

std::string with_low_bits(std::string_view text)
{
    std::string kept(text);
    keep_low_bits(kept, "[IDENTIFIER", 32);
    keep_low_bits(kept, "/", 8);
    return kept;
}

bool low_bits(const AcceptedText &text)
{
    return are_in_fields(numbers_in(with_low_bits(text.text), Writing::groups), text);
}

bool are_in_fields_without(const AcceptedText &text, std::initializer_list<std::string_view> words)
{
    const std::string kept = with_low_bits(text.text);
    const std::string rest = without_groups(kept, words);
    return rest.size() < kept.size() && are_in_fields(numbers_in(rest, Writing::groups), text);
}

bool dropped_groups(const AcceptedText &text) { return are_in_fields_without(text, {"UNKNOWN", "index"}); }
bool dropped_mt_id(const AcceptedText &text) { return are_in_fields_without(text, {"mt-id"}); }
bool digits_at_places(const AcceptedText &text) { return are_in_fields_without(text, {"igp-router-id"}); }
bool repeated_addresses(const AcceptedText &text)
{
    return are_in_fields_without(text, {"if-address", "peer-address", "local", "remote"});
}
bool repeated_identifiers(const AcceptedText &text)
{
    return are_in_fields_without(text, {"identifier", "link-local-id", "link-remote-id"});
}
bool no_place(const AcceptedText &text)
{
    return are_in_fields_without(
        text, {"member-as", "bgp-router-id", "ipv4-router-id", "ipv6-router-id", "ospf-area-id", "igp-router-id"});
}

struct Rule {
    std::string_view name;
    bool (*holds)(const AcceptedText &);
};

constexpr Rule rules[] = {
    {"address_and_mask", address_and_mask},
    {"addresses_given_up", addresses_given_up},
    {"among_printed", among_printed},
    {"begins_with_printed", begins_with_printed},
    {"digits_at_places", digits_at_places},
    {"dropped_groups", dropped_groups},
    {"dropped_mt_id", dropped_mt_id},
    {"duration", duration},
    {"duration_and_digits", duration_and_digits},
    {"in_fields", in_fields},
    {"low_bits", low_bits},
    {"named", named},
    {"negative", negative},
    {"no_place", no_place},
    {"octets_by_two", octets_by_two},
    {"repeated_addresses", repeated_addresses},
    {"repeated_identifiers", repeated_identifiers},
    {"segment_alone", segment_alone},
    {"skipped_behind_bracket", skipped_behind_bracket},
    {"unprinted", unprinted},
    {"without_last_character", without_last_character},
};

/// "RULE NUMBERS: why"
Irregularity irregularity(const Statement &statement)
{
    const std::string_view words = statement.words;
    const std::size_t rule_end = std::min(words.find(' '), words.size());
    const std::size_t number_end = words.find(": ");
    const auto *rule = std::ranges::find(rules, words.substr(0, rule_end), &Rule::name);
    if (rule == std::end(rules) || number_end == words.npos)
        throw std::runtime_error("the head of " + std::string(statement.name) +
                                 " has an irregularity without a rule: " + std::string(words));
    return {{statement.name},
            words.substr(rule_end + 1, number_end - rule_end - 1),
            words.substr(number_end + 2),
            rule->holds};
}

/// Those of several families stand together.
std::vector<Irregularity> all_irregularities()
{
    std::vector<Irregularity> rows;
    for (const Statement &statement : head_statements("irregular")) {
        const Irregularity row = irregularity(statement);
        const auto same = std::ranges::find_if(rows, [&](const Irregularity &known) {
            return known.number == row.number && known.why == row.why && known.holds == row.holds;
        });
        if (same == rows.end())
            rows.push_back(row);
        else
            same->families.push_back(statement.name);
    }
    return rows;
}

} // namespace

bool Irregularity::concerns(std::string_view family) const
{
    return std::ranges::find(families, family) != families.end();
}

std::span<const Irregularity> irregular_texts()
{
    static const std::vector<Irregularity> all = all_irregularities();
    return all;
}

} // namespace bgpdt::test
