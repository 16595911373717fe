// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "notations.hpp"

#include <algorithm>
#include <bit>
#include <charconv>
#include <iterator>
#include <map>
#include <span>

#include "bgp_datatype/values.h"
#include "near_names.hpp"
#include "near_texts.hpp"
#include "reasons.hpp"
#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

/// A name, and how what it stands for is written here.
struct Written {
    std::string_view name; ///< in small letters, "-" between its words
    const char *written;
};

/// RFC 8326, 7611, 9494, 7999, 3765 and those that are registered without one; the last is what some call it.
constexpr Written communities[] = {
    {"graceful-shutdown", "65535:0"}, {"gshut", "65535:0"},      {"accept-own", "65535:1"},
    {"llgr-stale", "65535:6"},        {"no-llgr", "65535:7"},    {"accept-own-nexthop", "65535:8"},
    {"blackhole", "65535:666"},       {"nopeer", "65535:65284"}, {"no-peer", "65535:65284"},
    {"local-as", "65535:65283"},
};
constexpr Written protocols[] = {
    {"isis-l1", "ISIS-LEVEL-1"}, {"isis-l2", "ISIS-LEVEL-2"}, {"isis-1", "ISIS-LEVEL-1"}, {"isis-2", "ISIS-LEVEL-2"}};

std::span<const Written> names_written(std::uint16_t type_id)
{
    switch (type_id) {
    case SYSDT_TYPE_COMMUNITY:
    case SYSDT_TYPE_CMNTY_ENHANCE: return communities;
    case SYSDT_TYPE_BGPLSPREFIX: return protocols;
    default: return {};
    }
}

constexpr std::size_t longest_word = 32; ///< more than any that is known here has

/// Where the word that begins at the place ends, or has more characters than any that is known.
std::size_t word_end(const std::string &text, std::size_t at)
{
    const std::size_t last = std::min(text.size(), at + longest_word);
    while (at < last && (is_inner(text[at]) || text[at] == '-' || text[at] == '_'))
        ++at;
    return at;
}

struct Entries {
    std::vector<Range> places;

    explicit Entries(const std::string &text)
    {
        for (std::size_t at = text.find_first_not_of(' '); at < text.size(); at = text.find_first_not_of(' ', at)) {
            const std::size_t end = std::min(text.find(' ', at), text.size());
            places.push_back({at, end});
            at = end;
        }
    }
};

/// A field of a route as others show it: MAC addresses and segment identifiers as octets, IPv6 addresses by themselves.
std::string field_written(const std::string &shown)
{
    std::string octets;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (i % 3 == 2 ? shown[i] != ':' : !is_hex(shown[i]))
            break;
        octets += i % 3 == 2 ? "" : std::string(1, shown[i]);
    }
    if (shown.size() == 17 && octets.size() == 12)
        return Groups{4, 3, '-'}.laid_out(octets);
    if (shown.size() == 29 && octets.size() == 20)
        return Groups{4, 5, '.'}.laid_out(octets);
    return std::ranges::count(shown, ':') > 1 ? "[" + shown + "]" : shown;
}

/// What stands in brackets, if a text is nothing else but for ":" between them.
Texts fields_in_brackets(const std::string &text)
{
    constexpr std::size_t most_fields = 16; // more than any route has
    Texts fields;
    for (std::size_t at = 0; at < text.size(); at += at < text.size() && text[at] == ':' ? 1 : 0) {
        const std::size_t end = text[at] == '[' ? text.find(']', at) : std::string::npos;
        if (end == std::string::npos || fields.size() == most_fields)
            return {};
        fields.push_back(text.substr(at + 1, end - at - 1));
        at = end + 1;
    }
    return fields;
}

/// A number as it is written elsewhere, and its value.
struct Number {
    Range place;
    std::uint64_t value;
};

template <class Value>
std::optional<Value> read_number(std::string_view text, int base = 10)
{
    Value value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

/// Numbers that the reading knows, in the place of the digits and letters that stand together.
template <class Reading>
std::vector<Number> numbers_written(const std::string &text, Range window, const char *inside, Reading &&reading)
{
    std::vector<Number> numbers;
    for (std::size_t at = window.begin; at < window.end; ++at) {
        if (!is_digit(text[at]) || (at > 0 && is_inner(text[at - 1])))
            continue;
        const std::size_t end = std::min(text.find_first_not_of(inside, at), text.size());
        if (const std::optional<std::uint64_t> value = reading(std::string_view(text).substr(at, end - at)))
            numbers.push_back({{at, end}, *value});
        at = std::max(at, end - 1);
    }
    return numbers;
}

/// All of the numbers written in decimal; of what is marked the first tells.
Found in_decimal(Refused &refused, const std::vector<Number> &numbers, const std::string &reason)
{
    if (numbers.empty())
        return {};
    std::string text = refused.text;
    std::for_each(numbers.rbegin(), numbers.rend(), [&text](const Number &number) {
        text = edited(text, {number.place.begin, number.place.size(), std::to_string(number.value)});
    });
    if (!refused.takes(text))
        return {};
    const auto &[place, value] = numbers.front();
    Found found =
        refused.told(place, reason + ": " + refused.piece(place.begin, place.size()) + " is " + std::to_string(value));
    found->repair = text;
    return found;
}

} // namespace

Found invisible_character(Refused &refused)
{
    const std::string &text = refused.text;
    std::vector<Range> all;
    for (std::size_t at = 0; at < text.size(); at += character_size(text, at))
        if (invisible_name(text, at) != nullptr)
            all.push_back({at, at + character_size(text, at)});
    if (all.empty())
        return {};
    const auto with = [&](const char *other) {
        std::string result;
        std::size_t copied = 0;
        for (const auto [begin, end] : all) {
            result.append(text, copied, begin - copied).append(other);
            copied = end;
        }
        return result.append(text, copied);
    };
    const Range first = all.front();
    Found found =
        refused.told(first, "an invisible character stands here, " + std::string(invisible_name(text, first.begin)) +
                                " (" + code_point(text, first.begin) + ")");
    const std::string without = with("");
    const std::string blank = with(" ");
    found->repair = refused.takes(without) ? without : refused.takes(blank) ? blank : "";
    return found;
}

Found unknown_name(Refused &refused)
{
    const bool named = std::ranges::any_of(refused.text, is_letter);
    if (!named || !is_name_index(refused.asking.type_id()) || refused.asking.knows_names())
        return {};
    return refused.told({0, refused.text.size()}, "it is a name, and no names are known");
}

Found label(Refused &refused)
{
    constexpr std::string_view labels[] = {"as",     "asn",          "rt",        "rd",    "soo",
                                           "target", "route-target", "community", "large", "ext"};
    const std::size_t end = word_end(refused.text, 0);
    const std::size_t letters = std::min(refused.text.substr(0, end).find_first_of(digits), end);
    const std::size_t behind = refused.text.find_first_not_of(": ", letters);
    const std::string word = lower(refused.text.substr(0, letters));
    if (std::ranges::find(labels, word) == std::end(labels) || behind == std::string::npos)
        return {};
    return refused.first_taken({{0, behind, ""}},
                               [](const std::string &piece, const auto &) { return named(piece) + " is too much"; });
}

Found number_of_name(Refused &refused)
{
    const std::span<const Written> aliases = names_written(refused.asking.type_id());
    if (aliases.empty())
        return {};
    for (const std::size_t at : word_beginnings(refused.text, refused.window)) {
        const std::string word = refused.piece(at, word_end(refused.text, at) - at);
        std::string plain = lower(word);
        std::ranges::replace(plain, '_', '-');
        const auto alias = std::ranges::find(aliases, plain, &Written::name);
        if (alias == aliases.end() || !refused.takes(Edit{at, word.size(), alias->written}))
            continue;
        const bool number = is_digit(alias->written[0]);
        return refused.found({at, word.size(), alias->written},
                             number ? lua_quoted(word) + " is none of the names here, which are " +
                                          listed(refused.asking.sample().words, "and") + "; its number is " +
                                          alias->written
                                    : cannot_stand(word, lua_quoted(alias->written)));
    }
    return {};
}

Found list_separators(Refused &refused)
{
    if (!takes_lists(refused))
        return {};
    std::string text = refused.text;
    std::ranges::replace_if(
        text, [](char c) { return std::string_view(",;|{}[]()\t").find(c) != std::string_view::npos; }, ' ');
    std::string entries;
    for (const auto &[begin, end] : Entries(text).places)
        entries.append(entries.empty() ? "" : " ").append(text, begin, end - begin);
    return refused.rewritten(entries, "blanks alone separate the entries of a list");
}

Found too_many_entries(Refused &refused)
{
    const std::vector<Range> entries = takes_lists(refused) ? Entries(refused.text).places : std::vector<Range>{};
    if (entries.size() < 2)
        return {};
    const auto beyond = std::partition_point(entries.begin(), entries.end(), [&refused](const Range &entry) {
        return refused.takes(refused.text.substr(0, entry.end));
    });
    const auto taken = static_cast<std::size_t>(beyond - entries.begin());
    if (beyond == entries.end() || taken < 2 || !refused.takes(refused.piece(beyond->begin, beyond->size())))
        return {};
    return refused.told(*beyond,
                        std::to_string(entries.size()) + " entries are too many: at most " + std::to_string(taken));
}

Found other_brackets(Refused &refused)
{
    std::string text = refused.text;
    for (char &c : text) {
        const bool opens = c == '(' || c == '{' || c == '<';
        const bool closes = c == ')' || c == '}' || c == '>';
        c = opens ? '[' : closes ? ']' : c;
    }
    return refused.rewritten(text, "brackets are square here");
}

Found route_in_brackets(Refused &refused)
{
    Texts fields = fields_in_brackets(refused.text);
    if (fields.size() < 3)
        return {};
    if (fields.front() == "5") // a prefix, its length in front of it
        std::swap(fields.back(), fields[fields.size() - 2]);
    fields.erase(fields.begin());
    std::ranges::transform(fields, fields.begin(), field_written);
    return refused.rewritten(joined(fields, ":"),
                             "fields stand without brackets here, and without the type of the route");
}

Found hexadecimal_number(Refused &refused)
{
    const auto reading = [](std::string_view word) -> std::optional<std::uint64_t> {
        const bool marked = word.starts_with("0x") || word.starts_with("0X");
        return marked ? read_number<std::uint64_t>(word.substr(2), 16) : std::nullopt;
    };
    return in_decimal(refused, numbers_written(refused.text, refused.window, "0123456789abcdefABCDEFxX", reading),
                      "numbers are decimal here");
}

Found number_with_exponent(Refused &refused)
{
    const auto reading = [](std::string_view word) -> std::optional<std::uint64_t> {
        const std::size_t e = word.find_first_of("eE");
        if (e == std::string_view::npos)
            return {};
        std::optional<std::uint64_t> number = read_number<std::uint64_t>(word.substr(0, e));
        const std::optional<unsigned> exponent = read_number<unsigned>(word.substr(e + 1));
        if (!number || !exponent || *number > 9999 || *exponent > 15)
            return {};
        for (unsigned i = 0; i < *exponent; ++i)
            *number *= 10;
        return number;
    };
    return in_decimal(refused, numbers_written(refused.text, refused.window, "0123456789eE", reading),
                      "numbers are written out here");
}

Found grouped_digits(Refused &refused)
{
    const auto reading = [](std::string_view text) -> std::optional<std::uint64_t> {
        std::string plain;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool separates = (text.size() - i) % 4 == 0;
            if (is_digit(text[i]) == separates)
                return {};
            plain += separates ? "" : std::string(1, text[i]);
        }
        return plain.size() == text.size() ? std::nullopt : read_number<std::uint64_t>(plain);
    };
    return in_decimal(refused, numbers_written(refused.text, refused.window, "0123456789,_'", reading),
                      "digits are not grouped here");
}

Found zone(Refused &refused)
{
    const std::size_t at = refused.text.find('%');
    Edits edits;
    const std::string behind = refused.text.substr(std::min(at, refused.text.size()), widest_search);
    for (const std::size_t edge : boundaries(behind))
        if (edge > 1)
            edits.push_back({at, edge, ""});
    std::ranges::reverse(edits);
    return refused.first_taken(edits, [](const auto &, const auto &) { return "an address has no zone here"; });
}

namespace {

/// How many ones the mask begins with; none for what is no mask.
std::optional<int> mask_length(std::string_view text)
{
    std::uint32_t mask = 0;
    for (int octet = 0; octet < 4; ++octet) {
        const std::size_t end = std::min(text.find('.'), text.size());
        const std::optional<std::uint8_t> number = read_number<std::uint8_t>(text.substr(0, end));
        if (!number || (end == text.size()) != (octet == 3))
            return {};
        mask = mask << 8 | *number;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const int ones = std::countl_one(mask);
    return ones + std::countr_zero(mask) >= 32 ? std::optional(ones) : std::nullopt;
}

} // namespace

Found network_mask(Refused &refused)
{
    const std::string &text = refused.text;
    const std::size_t at = text.find("255.");
    if (at == 0 || at == std::string::npos || is_inner(text[at - 1]) || text[at - 1] == '.')
        return {};
    const std::string mask = text.substr(at, text.find_first_not_of("0123456789.", at) - at);
    const std::optional<int> length = mask_length(mask);
    if (!length)
        return {};
    const std::string by = std::to_string(*length);
    const std::string is_mask = lua_quoted(mask) + " is a network mask";
    const std::string samples = joined(refused.samples(), " ");
    Edits edits;
    for (const char separator : {'/', ':'}) {
        if (samples.find(std::string(".0") + separator) != std::string::npos) // a prefix and its length
            edits.push_back(text[at - 1] == separator ? Edit{at, mask.size(), by}
                                                      : Edit{at - 1, mask.size() + 1, separator + by});
    }
    if (edits.empty() && text[at - 1] == '/')
        return refused.told({at, at + mask.size()}, is_mask + ", and no prefix stands here");
    return refused.first_taken(
        edits, [&](const auto &, const auto &) { return is_mask + ", the length of the prefix stands here: " + by; });
}

Found octets(Refused &refused)
{
    const std::string &text = refused.text;
    const Groups groups = groups_at(text, 0);
    const bool lettered = std::ranges::any_of(text, is_letter);
    const bool padded = text.starts_with('0') || text.find(groups.separator + std::string("0")) != std::string::npos;
    const std::size_t least = lettered ? 3 : 5; // fewer may be numbers
    const bool whole = groups.width == 2 && groups.count >= least && 3 * groups.count - 1 == text.size();
    const auto is_taken = [&refused](const Edit &edit) { return refused.takes(edit); };
    if (!whole || !(lettered || padded) ||
        std::ranges::any_of(regroupings(text, {0, text.size()}, refused.samples()), is_taken))
        return {};
    return refused.told({0, text.size()}, "it is " + counted(groups.count, "byte") + " in hexadecimal, and no text");
}

namespace {

struct Unit {
    const char *name; ///< which its first letters stand for
    std::uint64_t seconds;
    std::uint64_t most; ///< that is written of it
};

constexpr Unit units[] = {
    {"weeks", 604800, 0}, {"days", 86400, 10000}, {"hours", 3600, 23}, {"minutes", 60, 59}, {"seconds", 1, 59}};

/// What a text says of a duration.
struct Spans {
    std::map<char, Range> numbers = {}; ///< by unit
    std::uint64_t seconds = 0;
};

/// Numbers with a unit each, or one of seconds; nothing for what is none.
std::optional<Spans> spans_of(const std::string &text)
{
    Spans spans;
    for (std::size_t at = text.find_first_not_of(' '); at < text.size(); at = text.find_first_not_of(' ', at)) {
        const std::size_t end = std::min(text.find_first_not_of(digits, at), text.size());
        const std::string number = text.substr(at, end - at);
        const bool bare = spans.numbers.empty() && end == text.size();
        const std::size_t begin = std::min(text.find_first_not_of(' ', end), text.size());
        const std::size_t behind = bare ? end : std::min(text.find_first_of(" 0123456789", begin), text.size());
        const std::string word = bare ? "s" : lower(text.substr(begin, std::min(behind - begin, longest_word)));
        const auto *const unit = std::ranges::find_if(
            units, [&word](const Unit &row) { return !word.empty() && std::string_view(row.name).starts_with(word); });
        constexpr std::size_t most_digits = 10;
        if (number.empty() || number.size() > most_digits || unit == std::end(units) ||
            !spans.numbers.insert({unit->name[0], {at, end}}).second)
            return {};
        spans.seconds += *read_number<std::uint64_t>(number) * unit->seconds;
        at = behind;
    }
    return spans;
}

/// Hours, minutes and seconds as clocks show them.
std::optional<Spans> clock_of(const std::string &text)
{
    Spans spans;
    unsigned parts = 0;
    for (std::size_t at = 0; at <= text.size(); ++parts) {
        const std::size_t end = std::min(text.find(':', at), text.size());
        const std::optional<std::uint8_t> number = read_number<std::uint8_t>(text.substr(at, end - at));
        if (!number || (parts != 0 && *number > 59))
            return {};
        spans.seconds = spans.seconds * 60 + *number;
        at = end + 1;
    }
    return parts == 3 ? std::optional(spans) : std::nullopt;
}

std::string written(std::uint64_t seconds)
{
    std::string text;
    for (const Unit &unit : std::span(units).subspan(1)) {
        text += std::to_string(seconds / unit.seconds) + unit.name[0];
        seconds %= unit.seconds;
    }
    return text;
}

} // namespace

Found duration(Refused &refused)
{
    if (refused.asking.type_id() != SYSDT_TYPE_TIME_RANGE)
        return {};
    const std::optional<Spans> clock = clock_of(refused.text);
    const std::optional<Spans> spans = clock ? clock : spans_of(refused.text);
    const std::string text = spans ? written(spans->seconds) : "";
    if (!spans || !refused.takes(text))
        return {};
    const Range whole{0, refused.text.size()};
    Found found = refused.told(whole, "days, hours, minutes and seconds are all named here: " + text);
    for (const Unit &unit : std::span(units).subspan(1)) {
        const auto place = spans->numbers.size() == 4 ? spans->numbers.find(unit.name[0]) : spans->numbers.end();
        if (place == spans->numbers.end())
            continue;
        const std::string number = refused.piece(place->second.begin, place->second.size());
        if (*read_number<std::uint64_t>(number) > unit.most) {
            found = refused.told(place->second, exceeds(number, unit.most));
            break;
        }
    }
    found->repair = text;
    return found;
}

namespace {

/// Where the character stands, if not at more places than so many.
std::vector<std::size_t> places_of(const std::string &text, char c, std::size_t most)
{
    std::vector<std::size_t> places;
    for (std::size_t at = text.find(c); at != std::string::npos; at = text.find(c, at + 1)) {
        if (places.size() == most)
            return {};
        places.push_back(at);
    }
    return places;
}

/// The first ones replaced, as many as the type takes it for.
Found replaced(Refused &refused, const std::vector<std::size_t> &places, char from, char to)
{
    std::string text = refused.text;
    for (const std::size_t at : places) {
        text[at] = to;
        if (from == to || !refused.takes(text))
            continue;
        const std::string can = lua_quoted(std::string(1, to)) + " can";
        return refused.found(difference(refused.text, text),
                             lua_quoted(std::string(1, from)) + " cannot separate the parts here, " + can);
    }
    return {};
}

} // namespace

Found other_separators(Refused &refused)
{
    constexpr std::size_t most_places = 12;
    const auto has_shape = [mine = shape(refused.text)](const std::string &sample) { return shape(sample) == mine; };
    if (std::ranges::any_of(refused.samples(), has_shape)) // they are right
        return {};
    const bool dots = joined(refused.samples(), "").find('.') != std::string::npos;
    for (const char from : {':', '-', '/', ',', ';', '_', '.'}) {
        if (from == '.' && dots) // they do not separate parts
            continue;
        const std::vector<std::size_t> places = places_of(refused.text, from, most_places);
        if (places.size() < 2)
            continue;
        for (const char to : {'/', '-', ':'})
            if (Found found = replaced(refused, places, from, to))
                return found;
    }
    return {};
}

} // namespace bgpdt::toolkit
