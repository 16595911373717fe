// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "key_mistakes.hpp"

#include <algorithm>
#include <iterator>
#include <limits>

#include "bgp_datatype/values.h"
#include "near_texts.hpp"
#include "reasons.hpp"
#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

bool holds_evpn_keys(const Refused &refused)
{
    return refused.asking.type_id() == SYSDT_TYPE_EVNPREFIX || refused.asking.type_id() == SYSDT_TYPE_BOLPREFIX;
}

/// The numbers with dots between them that begin at the place.
std::vector<Range> dotted_numbers(const std::string &text, std::size_t at)
{
    std::vector<Range> numbers;
    while (at < text.size() && is_digit(text[at])) {
        numbers.push_back({at, std::min(text.find_first_not_of(digits, at), text.size())});
        at = numbers.back().end;
        if (at == text.size() || text[at] != '.')
            break;
        ++at;
    }
    return numbers;
}

/// Whether an Ethernet segment identifier or a MAC address stands in front of the colon.
bool ends_groups(const std::string &text, std::size_t colon)
{
    const std::size_t before = colon == 0 ? std::string::npos : text.rfind(':', colon - 1);
    const std::size_t count = groups_at(text, before == std::string::npos ? 0 : before + 1).count;
    return count == 3 || count == 5;
}

bool begins_number(const std::string &text, std::size_t at)
{
    return is_digit(text[at]) && (at == 0 || (!is_inner(text[at - 1]) && text[at - 1] != '.'));
}

constexpr std::size_t most_groups = 64; // more than any key has

/// The groups in brackets behind one another, brackets and all; one more than the most of those that no key has.
Texts groups_in(const std::string &text)
{
    Texts groups;
    for (std::size_t at = 0; at < text.size() && text[at] == '[' && groups.size() <= most_groups;
         at += groups.back().size()) {
        const std::size_t close = closing(text, at);
        if (close == std::string::npos)
            break;
        groups.push_back(text.substr(at, close + 1 - at));
    }
    return groups;
}

/// What a group of a BGP-LS key is called, behind the first, which says of what sort it is.
std::string group_name(const std::string &group)
{
    for (const char *name : {"IDENTIFIER", "LOCAL", "REMOTE", "LINK", "PREFIX", "TE", "SID"})
        if (group.starts_with("[" + std::string(name)) && !is_letter(group[1 + std::string_view(name).size()]))
            return name;
    return "PROTOCOL";
}

Texts group_names(const Texts &groups)
{
    Texts names;
    for (std::size_t i = 1; i < groups.size(); ++i)
        names.push_back(group_name(groups[i]));
    return names;
}

} // namespace

Found refused_segment(Refused &refused)
{
    constexpr std::size_t width = 24; ///< five groups of four digits
    const std::string &text = refused.text;
    const Groups groups = holds_evpn_keys(refused) ? groups_at(text, 0) : Groups{0, 0, '\0'};
    if (groups.count != 5 || groups.width != 4 || groups.separator != '.')
        return {};
    const std::string segment = text.substr(0, width);
    const bool ones = segment.find_first_not_of("fF.") == std::string::npos;
    const bool zeros = segment.find_first_not_of("0.") == std::string::npos;
    if ((!ones && !zeros) || !refused.takes(Edit{0, width, "0011.2233.4455.6677.8899"}))
        return {};
    return refused.told({0, width}, ones ? "an Ethernet segment identifier of all ones is refused"
                                         : "an Ethernet segment identifier of all zeros is refused here");
}

Found length_of_address(Refused &refused)
{
    const std::string &text = refused.text;
    Edits edits;
    for (std::size_t at = refused.window.begin + 1; holds_evpn_keys(refused) && at < refused.window.end; ++at) {
        if (text[at - 1] != ':' || !ends_groups(text, at - 1))
            continue;
        if (text[at] == '[')
            edits.push_back({at, 0, "128:"});
        else if (dotted_numbers(text, at).size() == 4)
            edits.push_back({at, 0, "32:"});
    }
    return refused.first_taken(edits, [](const auto &, const std::string &by) {
        return "the length of the address, " + lua_quoted(by) + ", is missing here";
    });
}

Found length_of_mac(Refused &refused)
{
    const std::string &text = refused.text;
    Edits edits;
    for (const Range run : number_runs(text, refused.window)) {
        const Groups mac =
            run.end < text.size() && text[run.end] == ':' ? groups_at(text, run.end + 1) : Groups{0, 0, '\0'};
        if (holds_evpn_keys(refused) && mac.count == 3 && mac.separator == '-')
            edits.push_back({run.begin, run.size(), "48"});
    }
    return refused.first_taken(edits, [](const auto &, const auto &) { return "a MAC address has the length 48"; });
}

Found router_id_groups(Refused &refused)
{
    constexpr std::string_view keyword = "igp-router-id";
    constexpr std::size_t widths[] = {4, 4, 4, 2};
    std::size_t at = refused.text.find(keyword);
    if (at == std::string::npos)
        return {};
    at += keyword.size();
    const std::size_t begin = at;
    std::string padded;
    std::optional<Range> wrong;
    std::size_t expected = 0;
    for (const std::size_t width : widths) {
        const std::size_t end = std::min(refused.text.find_first_of(".]", at), refused.text.size());
        const std::string group = refused.piece(at, end - at);
        if (!wrong && group.size() != width) {
            wrong = {at, end};
            expected = width;
        }
        padded += (padded.empty() ? "" : ".") + std::string(width - std::min(width, group.size()), '0') + group;
        at = std::min(end + 1, refused.text.size());
    }
    const Edit edit{begin, at - 1 - begin, padded};
    if (!wrong || !refused.takes(edit))
        return {};
    const std::string group = refused.piece(wrong->begin, wrong->size());
    Found found =
        refused.told(*wrong, std::string(expected == 4 ? "each group has four" : "the last group has two") +
                                 " digits here, " + lua_quoted(group) + " has " + std::to_string(group.size()));
    found->repair = edited(refused.text, edit);
    return found;
}

Found missing_groups(Refused &refused)
{
    const Texts mine = groups_in(refused.text);
    if (mine.empty() || mine.size() > most_groups)
        return {};
    const Texts my_names = group_names(mine);
    for (const std::string &sample : refused.samples()) {
        const Texts theirs = groups_in(sample);
        if (theirs.empty() || mine.front() != theirs.front())
            continue;
        Texts names;
        std::string all = refused.text;
        for (std::size_t i = 1; i < theirs.size(); ++i) {
            const std::string name = group_name(theirs[i]);
            if (std::ranges::find(my_names, name) == my_names.end()) {
                names.push_back(name);
                all += theirs[i];
            }
        }
        if (names.empty() || !refused.takes(all))
            continue;
        const bool one = names.size() == 1;
        return refused.found(difference(refused.text, all), (one ? "the group " : "the groups ") +
                                                                listed(names, "and") + (one ? " is" : " are") +
                                                                " missing");
    }
    return {};
}

Found long_address(Refused &refused)
{
    for (std::size_t at = refused.window.begin; at < refused.window.end; ++at) {
        const std::vector<Range> numbers =
            begins_number(refused.text, at) ? dotted_numbers(refused.text, at) : std::vector<Range>{};
        if (numbers.size() > 4 && refused.takes(Edit{at, numbers.back().end - at, "192.0.2.1"}))
            return refused.told({at, numbers.back().end},
                                "an IPv4 address has four numbers, this has " + std::to_string(numbers.size()));
    }
    return {};
}

Found prefix_length(Refused &refused)
{
    const std::size_t slash = refused.text.rfind('/');
    const bool is_length = slash != std::string::npos && slash + 1 < refused.text.size() &&
                           refused.text.find_first_not_of(digits, slash + 1) == std::string::npos &&
                           refused.text.find_first_of(".:") < slash;
    const Edits edits{{slash, refused.text.size() - slash, ""}};
    return is_length
               ? refused.first_taken(edits, [](const auto &, const auto &) { return "there is no prefix length here"; })
               : Found{};
}

Found negative_number(Refused &refused)
{
    const std::string &text = refused.text;
    for (const Range run : number_runs(text, refused.window)) {
        if (run.begin == 0 || text[run.begin - 1] != '-' || (run.begin > 1 && is_inner(text[run.begin - 2])))
            continue;
        const std::size_t at = run.begin - 1;
        const std::size_t length = run.size() + 1;
        const std::string beyond = std::to_string(std::numeric_limits<std::uint64_t>::max());
        const std::optional<std::uint64_t> most =
            refused.greatest(edited(text, {at, length, beyond}), {at, at + beyond.size()});
        if (!most)
            continue;
        const bool from_zero = refused.takes(Edit{at, length, "0"});
        return refused.told({at, at + length}, refused.piece(at, length) + " cannot stand here: " +
                                                   (from_zero ? "0" : "1") + " to " + std::to_string(*most) + " can");
    }
    return {};
}

} // namespace bgpdt::toolkit
