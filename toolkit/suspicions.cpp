// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "suspicions.hpp"

#include <algorithm>
#include <utility>

#include "blending.hpp"
#include "key_mistakes.hpp"
#include "near_texts.hpp"
#include "notations.hpp"
#include "number_mistakes.hpp"
#include "reasons.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::size_t brief_text = 64; ///< bytes of a text in which every letter is tried everywhere
constexpr std::string_view digits_and_letters = "0123456789abcdefghijklmnopqrstuvwxyz";

std::string other_can(const std::string &piece, const std::string &by) { return cannot_stand(piece, lua_quoted(by)); }

std::string nothing_can(const std::string &piece, const std::string &) { return cannot_stand(piece); }

/// Quotes, capitals or blanks all over the text.
Found whole_text(Refused &refused)
{
    for (const auto &[of, reason] : rewritings())
        if (Found found = refused.rewritten(of(refused.text), reason))
            return found;
    return {};
}

/// What words can stand where one begins: the nearest, all that are equally near.
Found misspelt(Refused &refused, std::size_t at)
{
    Found result;
    Texts taken;
    std::size_t reach = 0;
    for (const auto &[distance, edit] : words_like(refused.text, at, refused.asking.sample().words)) {
        if ((result && (distance != reach || edit.length != result->length)) || !refused.takes(edit))
            continue;
        taken.push_back(lua_quoted(edit.by));
        if (!result) {
            result = refused.found(edit, "");
            reach = distance;
        }
    }
    if (result)
        result->reason = cannot_stand(refused.piece(at, result->length), listed(taken, "or"));
    return result;
}

/// A misspelt word.
Found words(Refused &refused)
{
    for (const std::size_t at : word_beginnings(refused.text, refused.window))
        if (Found result = misspelt(refused, at))
            return result;
    return {};
}

/// Hexadecimal digits in groups of another width.
Found regrouped(Refused &refused)
{
    return refused.first_taken(regroupings(refused.text, refused.window, refused.samples()),
                               [](const std::string &piece, const std::string &by) {
                                   return named(piece) + " is written " + lua_quoted(by) + " here";
                               });
}

/// An address without its brackets.
Found unbracketed(Refused &refused)
{
    return refused.first_taken(
        bracketings(refused.text, refused.samples()),
        [](const std::string &piece, const auto &) { return named(piece) + " must stand in brackets here"; });
}

/// A text as far as a sample's numbers go, but not to its end.
Found unfinished(Refused &refused)
{
    Edits edits;
    const std::string mine = shape(refused.text);
    for (const std::string &sample : refused.samples()) {
        if (sample.starts_with('[')) // what is missing there may be inside
            continue;
        std::size_t at = 1;
        while (at < sample.size() && (shape(sample.substr(0, at)) != mine || is_digit(sample[at])))
            ++at;
        if (at < sample.size())
            edits.push_back({refused.text.size(), 0, sample.substr(at)});
    }
    return refused.first_taken(edits, [](const auto &, const std::string &by) {
        return "something is missing at the end, such as " + lua_quoted(by);
    });
}

/// A separator at the end.
Found dangling(Refused &refused)
{
    const char last = refused.text.back();
    Edits edits;
    if (!is_inner(last) && !is_blank(last)) {
        edits = endings(refused.text, refused.samples());
        std::erase_if(edits, [](const Edit &edit) { return !is_inner(edit.by.front()); });
    }
    return refused.first_taken(edits, [](const auto &, const std::string &by) {
        return "something is missing at the end, such as " + lua_quoted(by);
    });
}

/// A letter or sign that looks like another, or lies beside it.
Found lookalike(Refused &refused) { return refused.first_taken(lookalikes(refused.text, refused.window), other_can); }

/// One separator for another; not a dot for a colon between decimal numbers, which makes one number of two.
Found wrong_separator(Refused &refused)
{
    const bool decimal = refused.text.find_first_not_of("0123456789.:") == std::string::npos;
    for (const auto [begin, end] : characters(refused.text, refused.window)) {
        const std::string piece = refused.piece(begin, end - begin);
        std::string candidates = refused.asking.separators();
        if (decimal && piece == ":")
            std::erase(candidates, '.');
        const std::string taken = is_inner(piece[0]) ? "" : refused.accepted(begin, piece.size(), candidates);
        if (!taken.empty())
            return refused.found({begin, piece.size(), taken.substr(0, 1)}, cannot_stand(piece, described(taken)));
    }
    return {};
}

/// A character too many.
Found surplus_character(Refused &refused)
{
    return refused.first_taken(deletions(refused.text, refused.window, false), nothing_can);
}

/// What a digit or letter may stand in the place of.
Found wrong_character(Refused &refused, Range place)
{
    if (place.size() == refused.text.size()) // nothing of the text would be left
        return {};
    const bool brief = refused.text.size() <= brief_text;
    const auto accepted = [&](std::string_view candidates) {
        return refused.accepted(place.begin, place.size(), candidates);
    };
    if (!brief && accepted("1a").empty())
        return {};
    const std::string taken = accepted(brief ? digits_and_letters : hex_digits);
    if (taken.empty())
        return {};
    const bool in_number = taken.find_first_not_of(digits) == std::string::npos;
    const bool surplus = in_number && refused.takes(Edit{place.begin, place.size(), ""});
    return refused.found({place.begin, place.size(), surplus ? "" : taken.substr(0, 1)},
                         cannot_stand(refused.piece(place.begin, place.size()), described(taken)));
}

/// A wrong letter.
Found wrong_letter(Refused &refused)
{
    for (const Range place : characters(refused.text, refused.window))
        if (Found result = is_letter(refused.text[place.begin]) ? wrong_character(refused, place) : Found{})
            return result;
    return {};
}

/// A character that is neither in numbers and words nor separates them.
Found wrong_sign(Refused &refused)
{
    for (const Range place : characters(refused.text, refused.window)) {
        const char c = refused.text[place.begin];
        const bool sign = !is_inner(c) && refused.asking.separators().find(c) == std::string::npos;
        if (Found result = sign ? wrong_character(refused, place) : Found{})
            return result;
    }
    return {};
}

/// Two characters in the wrong order.
Found swapped(Refused &refused) { return refused.first_taken(swaps(refused.text, refused.window), other_can); }

/// The end of a sample is missing.
Found missing_end(Refused &refused)
{
    return refused.first_taken(endings(refused.text, refused.samples()), [](const auto &, const std::string &by) {
        return by.size() == 1 ? lua_quoted(by) + " is missing at the end"
                              : "something is missing at the end, such as " + named(by);
    });
}

/// A separator is missing: between two numbers or words that have run into one, or elsewhere.
Found missing_separator(Refused &refused, bool joining)
{
    for (const std::size_t at : gaps(refused.text, refused.window)) {
        const bool here = joins(refused.text, at, at) == joining;
        const std::string taken = here ? refused.accepted(at, 0, refused.asking.separators()) : "";
        if (!taken.empty())
            return refused.found({at, 0, taken.substr(0, 1)}, described(taken) + " is missing here");
    }
    return {};
}

/// A separator is missing beside another.
Found missing_separator(Refused &refused) { return missing_separator(refused, false); }

/// A digit is missing.
Found missing_character(Refused &refused)
{
    for (const std::size_t at : gaps(refused.text, refused.window)) {
        if (!refused.accepted(at, 0, "1a").empty()) {
            const std::string taken = refused.accepted(at, 0, hex_digits);
            return refused.found({at, 0, taken.substr(0, 1)}, described(taken) + " is missing here");
        }
    }
    return {};
}

/// A part that samples have is missing.
Found missing_part(Refused &refused)
{
    return refused.first_taken(
        insertions(refused.text, refused.window, refused.samples()),
        [](const auto &, const std::string &by) { return "something is missing here, such as " + named(by); });
}

/// A part too many.
Found surplus(Refused &refused)
{
    return refused.first_taken(removals(refused.text, refused.window),
                               [](const std::string &piece, const auto &) { return named(piece) + " is too much"; });
}

/// Two numbers or words run into one, or one torn apart.
Found joined_or_split(Refused &refused)
{
    const Found joined = missing_separator(refused, true);
    return joined ? joined : refused.first_taken(deletions(refused.text, refused.window, true), nothing_can);
}

/// The beginning of a sample is missing.
Found missing_begin(Refused &refused)
{
    return refused.first_taken(beginnings(refused.text, refused.samples()), [](const auto &, const std::string &by) {
        return "something is missing in front, such as " + named(by);
    });
}

/// Of a list with more than one mistake: that of the entry with the first.
Found first_entry(Refused &refused)
{
    const std::string &text = refused.text;
    if (!takes_lists(refused))
        return {};
    for (std::size_t at = text.find(' ', refused.window.begin); at != std::string::npos; at = text.find(' ', at + 1)) {
        const std::string front = text.substr(0, at);
        if (at == 0 || is_blank(front.back()) || refused.takes(front))
            continue;
        Refused entry{refused.asking, front};
        suspect(entry);
        refused.near_kinds.merge(entry.near_kinds);
        if (entry.best) {
            entry.best->text = text;
            entry.best->reason += "; more is wrong behind it";
        }
        return entry.best;
    }
    return {};
}

struct Suspicion {
    Found (*look)(Refused &);
    Change change; ///< what its repairs make of the value
    /// Of a type with kinds it is looked into whatever was found: the texts near by that are taken tell which kinds are.
    bool tells_kinds = false;
};

constexpr Change spelling = Change::spelling;
constexpr Change example = Change::example;
constexpr Change new_value = Change::value;

constexpr Suspicion suspicions[] = {
    // what other programs and people write, whatever it is close to
    {invisible_character, spelling},
    {unknown_name, new_value},
    {label, spelling},
    {number_of_name, spelling},
    {list_separators, spelling},
    {too_many_entries, new_value},
    {other_brackets, spelling},
    {route_in_brackets, spelling},
    {hexadecimal_number, spelling},
    {number_with_exponent, spelling},
    {grouped_digits, spelling},
    {zone, spelling},
    {network_mask, spelling},
    {octets, new_value},
    {duration, spelling},
    {other_separators, spelling},
    // what is wrong with the parts of keys
    {refused_segment, new_value},
    {length_of_address, spelling},
    {length_of_mac, spelling},
    {router_id_groups, example},
    {missing_groups, example},
    {long_address, new_value},
    {prefix_length, new_value},
    {negative_number, new_value},
    // what is mistyped
    {whole_text, spelling, true},
    {zero_half, spelling},
    {leading_zeros, spelling, true},
    {too_large, new_value, true},
    {too_small, new_value, true},
    {words, spelling, true},
    {regrouped, spelling, true},
    {unbracketed, spelling, true},
    {unfinished, example},
    {dangling, example, true},
    {lookalike, spelling, true},
    {wrong_separator, spelling, true},
    {wrong_letter, new_value, true},
    {surplus_tail, new_value},
    {surplus_character, new_value, true},
    {wrong_sign, new_value, true},
    {swapped, new_value, true},
    {missing_end, example, true},
    {missing_separator, example, true},
    {missing_character, new_value, true},
    {several_too_large, new_value},
    {missing_part, example},
    {blended, example},
    {surplus, new_value},
    {joined_or_split, new_value},
    {missing_begin, example},
    {first_entry, new_value},
};

/// Where a long text is suspect: behind the longest beginning that is taken, else at its beginning.
Range window_of(Refused &refused)
{
    const std::string &text = refused.text;
    if (text.size() <= widest_search)
        return {0, text.size()};
    const std::vector<std::size_t> edges = boundaries(text);
    const auto behind = std::partition_point(edges.begin() + 1, edges.end(),
                                             [&](std::size_t edge) { return refused.takes(text.substr(0, edge)); });
    const std::size_t begin = *std::prev(behind);
    return {begin, std::min(text.size(), begin + widest_search)};
}

/// The first that is found counts.
void keep(Refused &refused, Found found, Change change)
{
    if (refused.best || !found)
        return;
    refused.best = std::move(found);
    refused.best->change = change;
}

} // namespace

void suspect(Refused &refused)
{
    try {
        refused.window = window_of(refused);
        for (const auto &[look, change, tells_kinds] : suspicions) {
            if (!refused.best || (tells_kinds && !refused.asking.kinds().empty()))
                keep(refused, look(refused), change);
            if (refused.best && refused.best->change == spelling)
                return;
        }
    } catch (const Spent &) {
        return; // with what is found so far
    }
}

} // namespace bgpdt::toolkit
