// SPDX-License-Identifier: Apache-2.0
#include "suspicions.hpp"

#include <algorithm>
#include <utility>

#include "blending.hpp"
#include "near_texts.hpp"
#include "reasons.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::size_t widest_search = 300; ///< bytes of a text in which every character is a suspect
constexpr std::size_t brief_text = 64;     ///< bytes of a text in which every letter is tried everywhere
constexpr const char *digits_and_letters = "0123456789abcdefghijklmnopqrstuvwxyz";

/// What the first of the edits that makes a text of the type tells. The reason is told of the piece that is edited.
template <class Reason>
Found first_taken(Refused &refused, const Edits &edits, Reason &&reason)
{
    const auto edit = std::ranges::find_if(edits, [&refused](const Edit &near) { return refused.takes(near); });
    return edit == edits.end() ? Found{}
                               : refused.found(*edit, reason(refused.piece(edit->at, edit->length), edit->by));
}

std::string other_can(const std::string &piece, const std::string &by) { return cannot_stand(piece, lua_quoted(by)); }

std::string nothing_can(const std::string &piece, const std::string &) { return cannot_stand(piece); }

/// Quotes, capitals or blanks all over the text.
Found whole_text(Refused &refused)
{
    for (const auto &[rewriting, reason] : rewritings(refused.text))
        if (rewriting != refused.text && refused.takes(rewriting))
            return refused.found(difference(refused.text, rewriting), reason);
    return {};
}

/// A number with leading zeros.
Found leading_zeros(Refused &refused)
{
    Edits edits;
    for (const Range run : last_numbers(refused.text, refused.window)) {
        const std::size_t zeros = std::min(refused.text.find_first_not_of('0', run.begin), run.end - 1) - run.begin;
        if (zeros > 0)
            edits.push_back({run.begin, zeros, ""});
    }
    return first_taken(refused, edits, [](const auto &, const auto &) { return "leading zeros cannot stand here"; });
}

/// A sample of another form that takes the number at its end. It is no try: what is found is not lost for it.
std::string other_form(const Refused &refused, Range run)
{
    const std::string &text = refused.text;
    if (run.end != text.size() || run.begin == 0)
        return {};
    std::string shortest;
    for (const std::string &sample : refused.samples()) {
        const std::vector<Range> runs = number_runs(sample, {0, sample.size()});
        const Range last = runs.empty() ? Range{0, 0} : runs.back();
        const std::string form = edited(sample, {last.begin, last.size(), text.substr(run.begin)});
        if (last.end == sample.size() && last.begin > 0 && sample[last.begin - 1] == text[run.begin - 1] &&
            shape(sample) != shape(text) && (shortest.empty() || form.size() < shortest.size()) &&
            !refused.asking.value_of(form).empty())
            shortest = form;
    }
    return shortest;
}

/// A number too large for its place.
Found too_large(Refused &refused)
{
    for (const Range run : last_numbers(refused.text, refused.window)) {
        if (const std::optional<std::uint64_t> limit = refused.greatest(refused.text, run)) {
            const std::string number = refused.piece(run.begin, run.size());
            Found result = refused.found({run.begin, run.size(), std::to_string(*limit)}, exceeds(number, *limit));
            result->other = other_form(refused, run);
            return result;
        }
    }
    return {};
}

/// A 0 where numbers begin with 1.
Found too_small(Refused &refused)
{
    Edits edits;
    for (const Range run : last_numbers(refused.text, refused.window))
        if (refused.piece(run.begin, run.size()) == "0")
            edits.push_back({run.begin, 1, "1"});
    return first_taken(refused, edits, [](const auto &, const auto &) { return "0 is too small here: at least 1"; });
}

/// A number that cannot stand in its place.
Found numbers(Refused &refused)
{
    for (Found (*const suspicion)(Refused &) : {leading_zeros, too_large, too_small})
        if (Found result = suspicion(refused))
            return result;
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
        result->reason = cannot_stand(refused.piece(at, result->length), any_of(taken));
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
    return first_taken(refused, regroupings(refused.text, refused.window, refused.samples()),
                       [](const std::string &piece, const std::string &by) {
                           return named(piece) + " is written " + lua_quoted(by) + " here";
                       });
}

/// An address without its brackets.
Found unbracketed(Refused &refused)
{
    return first_taken(
        refused, bracketings(refused.text, refused.samples()),
        [](const std::string &piece, const auto &) { return named(piece) + " must stand in brackets here"; });
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
    return first_taken(refused, edits, [](const auto &, const std::string &by) {
        return "something is missing at the end, such as " + lua_quoted(by);
    });
}

/// A letter or sign that looks like another, or lies beside it.
Found lookalike(Refused &refused) { return first_taken(refused, lookalikes(refused.text, refused.window), other_can); }

/// One separator for another.
Found wrong_separator(Refused &refused)
{
    for (const auto [begin, end] : characters(refused.text, refused.window)) {
        const std::string piece = refused.piece(begin, end - begin);
        const std::string taken =
            is_inner(piece[0]) ? "" : refused.accepted(begin, piece.size(), refused.asking.separators());
        if (!taken.empty())
            return refused.found({begin, piece.size(), taken.substr(0, 1)}, cannot_stand(piece, described(taken)));
    }
    return {};
}

/// A character too many.
Found surplus_character(Refused &refused)
{
    return first_taken(refused, deletions(refused.text, refused.window, false), nothing_can);
}

/// What a digit or letter may stand in the place of.
Found wrong_character(Refused &refused, Range place)
{
    const bool brief = refused.text.size() <= brief_text;
    const auto accepted = [&](const char *candidates) {
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
Found swapped(Refused &refused) { return first_taken(refused, swaps(refused.text, refused.window), other_can); }

/// The end of a sample is missing.
Found missing_end(Refused &refused)
{
    return first_taken(refused, endings(refused.text, refused.samples()), [](const auto &, const std::string &by) {
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
    return first_taken(
        refused, insertions(refused.text, refused.window, refused.samples()),
        [](const auto &, const std::string &by) { return "something is missing here, such as " + named(by); });
}

/// A part too many.
Found surplus(Refused &refused)
{
    return first_taken(refused, removals(refused.text, refused.window),
                       [](const std::string &piece, const auto &) { return named(piece) + " is too much"; });
}

/// Two numbers or words run into one, or one torn apart.
Found joined_or_split(Refused &refused)
{
    const Found joined = missing_separator(refused, true);
    return joined ? joined : first_taken(refused, deletions(refused.text, refused.window, true), nothing_can);
}

/// The beginning of a sample is missing.
Found missing_begin(Refused &refused)
{
    return first_taken(refused, beginnings(refused.text, refused.samples()), [](const auto &, const std::string &by) {
        return "something is missing in front, such as " + named(by);
    });
}

/// Of a list with more than one mistake: that of the entry with the first.
Found first_entry(Refused &refused)
{
    const std::string &text = refused.text;
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
    /// Of a type with kinds it is looked into whatever was found: the texts near by that are taken tell which kinds are.
    bool tells_kinds;
};

constexpr Suspicion suspicions[] = {
    {whole_text, true},        {numbers, true},           {words, true},
    {regrouped, true},         {unbracketed, true},       {dangling, true},
    {lookalike, true},         {wrong_separator, true},   {wrong_letter, true},
    {surplus_character, true}, {wrong_sign, true},        {swapped, true},
    {missing_end, true},       {missing_separator, true}, {missing_character, true},
    {missing_part, false},     {blended, false},          {surplus, false},
    {joined_or_split, false},  {missing_begin, false},    {first_entry, false},
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

} // namespace

void suspect(Refused &refused)
{
    try {
        refused.window = window_of(refused);
        for (const auto &[look, tells_kinds] : suspicions) {
            if (!refused.best || (tells_kinds && !refused.asking.kinds().empty())) {
                Found next = look(refused);
                refused.best = refused.best ? refused.best : next;
            }
        }
    } catch (const Spent &) {
        return; // with what is found so far
    }
}

} // namespace bgpdt::toolkit
