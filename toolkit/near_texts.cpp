// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "near_texts.hpp"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "near_names.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {
namespace {

bool is_inner_at(const std::string &text, std::size_t at) { return at < text.size() && is_inner(text[at]); }

/// No more is added to a text than it has.
bool is_small(const std::string &addition, const std::string &text)
{
    return addition.size() <= std::max<std::size_t>(text.size(), 3);
}

std::string quoted(const std::string &text) { return "\"" + text + "\""; }

std::string unquoted(const std::string &text)
{
    std::string result = text;
    std::erase(result, '"');
    return result;
}

std::string in_small_letters(const std::string &text) { return lower(text); }

/// Without the blanks between its ends, but for those that keep two numbers or words apart.
std::string unspaced(const std::string &text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    const std::size_t behind = text.find_last_not_of(blanks) + 1;
    std::string inner;
    for (std::size_t i = first; i < behind; ++i)
        if (!is_blank(text[i]) || (is_inner(text[i - 1]) && is_inner(text[i + 1])))
            inner += text[i];
    return text.substr(0, first) + inner + text.substr(behind);
}

/// Where numbers and words that may be regrouped begin.
std::vector<std::size_t> inner_beginnings(const std::string &text, Range window)
{
    std::vector<std::size_t> places;
    for (const Range character : characters(text, window))
        if (character.begin == 0 || !is_inner(text[character.begin - 1]))
            places.push_back(character.begin);
    return places;
}

std::vector<Groups> groups_of(const std::string &sample)
{
    std::vector<Groups> all;
    for (const std::size_t at : inner_beginnings(sample, {0, sample.size()}))
        if (const Groups groups = groups_at(sample, at); groups.count != 0)
            all.push_back(groups);
    return all;
}

/// As many hexadecimal digits from the place on as the groups have, written as they are; nothing is edited where other
/// characters stand, different separators, or more of them than digits.
Edit regrouped(const std::string &text, std::size_t begin, const Groups &groups)
{
    const std::size_t wanted = groups.width * groups.count;
    const std::size_t last = std::min(text.size(), begin + 2 * wanted);
    std::string digits;
    std::size_t end = begin;
    char separator = '\0';
    for (; end < last && digits.size() < wanted; ++end) {
        const char c = text[end];
        if (is_hex(c))
            digits += c;
        else if ((c != ':' && c != '.' && c != '-') || (separator != '\0' && c != separator))
            return {begin, 0, ""};
        else
            separator = c;
    }
    const bool enough = digits.size() == wanted && !is_inner_at(text, end);
    return enough ? Edit{begin, end - begin, groups.laid_out(digits)} : Edit{begin, 0, ""};
}

/// The boundaries inside the window.
std::vector<std::size_t> edges(const std::string &text, Range window)
{
    std::vector<std::size_t> edges = boundaries(text);
    std::erase_if(edges, [window](std::size_t edge) { return edge < window.begin || edge > window.end; });
    return edges;
}

/// What of the text may be too much from the edge on.
std::vector<Range> removable_from(const std::string &text, const std::vector<std::size_t> &edges, std::size_t index)
{
    std::vector<Range> parts;
    const std::size_t begin = edges[index];
    for (std::size_t j = index + 1; j < std::min(index + 4, edges.size()); ++j)
        parts.push_back({begin, edges[j]});
    const std::size_t letters = std::min(text.find_first_of(digits, begin), text.size());
    if (is_inner_at(text, begin) && letters < text.size())
        parts.push_back({begin, letters});
    if (begin < text.size() && text[begin] == '[' && closing(text, begin) != std::string::npos)
        parts.push_back({begin, closing(text, begin) + 1});
    return parts;
}

} // namespace

bool joins(const std::string &text, std::size_t before, std::size_t behind)
{
    return before > 0 && is_inner_at(text, before - 1) && is_inner_at(text, behind);
}

bool separates(const std::string &text, std::size_t at, std::size_t length)
{
    return at > 0 && !is_blank(text[at - 1]) && at + length < text.size() && !is_blank(text[at + length]);
}

std::vector<Range> characters(const std::string &text, Range window)
{
    std::vector<Range> all;
    for (std::size_t at = window.begin; at < window.end; at = all.back().end)
        all.push_back({at, at + character_size(text, at)});
    return all;
}

std::vector<std::size_t> gaps(const std::string &text, Range window)
{
    std::vector<std::size_t> places{text.size()};
    for (const Range character : characters(text, window))
        places.push_back(character.begin);
    return places;
}

std::vector<Range> last_numbers(const std::string &text, Range window)
{
    std::vector<Range> runs = number_runs(text, window);
    std::ranges::reverse(runs);
    return runs;
}

std::vector<std::size_t> word_beginnings(const std::string &text, Range window)
{
    const auto in_word = [&text](std::size_t at) { return is_inner(text[at]) || text[at] == '-'; };
    std::vector<std::size_t> places;
    for (const Range character : characters(text, window)) {
        const std::size_t at = character.begin;
        if (is_letter(text[at]) && (at == 0 || !in_word(at - 1)))
            places.push_back(at);
    }
    return places;
}

std::span<const Rewriting> rewritings()
{
    static constexpr Rewriting all[] = {{quoted, "the text must stand in double quotes here"},
                                        {unquoted, "double quotes cannot stand here"},
                                        {in_small_letters, "capital letters cannot stand here"},
                                        {unspaced, "blanks cannot stand here"}};
    return all;
}

std::vector<WordEdit> words_like(const std::string &text, std::size_t at, const Texts &words)
{
    constexpr std::size_t longest = 24;
    const std::size_t end = text.find_first_of("[] ", at);
    const std::string here = text.substr(at, std::min(longest, std::min(end, text.size()) - at));
    std::vector<WordEdit> near;
    for (const std::string &word : words) {
        const std::vector<std::size_t> row = distances(lower(word), lower(here));
        const std::size_t least = *std::ranges::min_element(row);
        const bool is_like = least <= std::max<std::size_t>(1, word.size() / 3);
        for (std::size_t length = here.size(); is_like && length > 0; --length)
            if (row[length] == least && here.substr(0, length) != word)
                near.push_back({least, {at, length, word}});
    }
    std::ranges::stable_sort(near, {}, &WordEdit::distance);
    return near;
}

Edits regroupings(const std::string &text, Range window, const Texts &samples)
{
    const std::vector<std::size_t> places = inner_beginnings(text, window);
    Edits edits;
    for (const std::string &sample : samples) {
        for (const Groups &groups : groups_of(sample)) {
            for (const std::size_t begin : places) {
                const Edit edit = regrouped(text, begin, groups);
                if (edit.length != 0 && text.substr(begin, edit.length) != edit.by)
                    edits.push_back(edit);
            }
        }
    }
    return edits;
}

Edits bracketings(const std::string &text, const Texts &samples)
{
    constexpr std::size_t most_edges = 40;
    const std::vector<std::size_t> edges = boundaries(text);
    const auto has_bracket = [](const std::string &sample) { return sample.find('[') != std::string::npos; };
    if (edges.size() > most_edges || std::ranges::none_of(samples, has_bracket))
        return {};
    Edits edits;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        for (std::size_t j = edges.size() - 1; j > i; --j) {
            const std::size_t length = edges[j] - edges[i];
            edits.push_back({edges[i], length, "[" + text.substr(edges[i], length) + "]"});
        }
    }
    return edits;
}

Edits lookalikes(const std::string &text, Range window)
{
    constexpr std::pair<char, char> pairs[] = {{'o', '0'}, {'O', '0'}, {'l', '1'}, {'I', '1'},
                                               {',', '.'}, {';', ':'}, {'_', '-'}, {',', ' '}};
    Edits edits;
    for (const Range character : characters(text, window)) {
        for (const auto &[written, meant] : pairs)
            if (text[character.begin] == written && (meant != ' ' || separates(text, character.begin, 1)))
                edits.push_back({character.begin, 1, std::string(1, meant)});
    }
    return edits;
}

Edits swaps(const std::string &text, Range window)
{
    Edits edits;
    for (const Range character : characters(text, window)) {
        const std::size_t at = character.begin;
        if (joins(text, at + 1, at + 1) && text[at] != text[at + 1])
            edits.push_back({at, 2, {text[at + 1], text[at]}});
    }
    return edits;
}

Edits deletions(const std::string &text, Range window, bool joining)
{
    Edits edits;
    for (const Range character : characters(text, window))
        if (joining == (!is_inner(text[character.begin]) && joins(text, character.begin, character.end)))
            edits.push_back({character.begin, character.size(), ""});
    return edits;
}

Edits removals(const std::string &text, Range window)
{
    const std::vector<std::size_t> edges = toolkit::edges(text, window);
    std::vector<Range> parts;
    for (std::size_t i = edges.size(); i > 0; --i)
        parts.push_back({edges[i - 1], text.size()});
    for (std::size_t i = 1; i < edges.size(); ++i)
        parts.push_back({0, edges[i]});
    for (std::size_t i = 0; i < edges.size(); ++i)
        std::ranges::copy(removable_from(text, edges, i), std::back_inserter(parts));
    Edits edits;
    for (const Range part : parts)
        if (part.size() > 0 && 2 * part.size() <= text.size())
            edits.push_back({part.begin, part.size(), ""});
    return edits;
}

Edits endings(const std::string &text, const Texts &samples)
{
    std::set<std::string> ends;
    for (const std::string &sample : samples) {
        for (std::size_t at = 1; at < sample.size(); ++at)
            if (is_edge(sample[at - 1], sample[at]) && is_edge(text.back(), sample[at]))
                ends.insert(sample.substr(at));
    }
    Edits edits;
    for (const std::string &end : ends)
        if (is_small(end, text))
            edits.push_back({text.size(), 0, end});
    std::ranges::stable_sort(edits, {}, [](const Edit &edit) { return edit.by.size(); });
    return edits;
}

Edits beginnings(const std::string &text, const Texts &samples)
{
    Edits edits;
    for (const std::string &sample : samples) {
        for (std::size_t at = 1; at < sample.size(); ++at)
            if (const Edit edit{0, 0, sample.substr(0, at)}; !is_inner(sample[at - 1]) && is_small(edit.by, text))
                edits.push_back(edit);
    }
    return edits;
}

Edits insertions(const std::string &text, Range window, const Texts &samples)
{
    const Texts parts = parts_of(samples);
    std::vector<std::size_t> places = edges(text, window);
    std::ranges::reverse(places);
    Edits edits;
    for (const std::size_t at : places) {
        for (const std::string &part : parts)
            if (is_small(part, text))
                edits.push_back({at, 0, part});
    }
    return edits;
}

} // namespace bgpdt::toolkit
