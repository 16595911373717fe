// SPDX-License-Identifier: Apache-2.0
#include "diagnosis.hpp"

#include <algorithm>
#include <charconv>
#include <exception>
#include <iterator>
#include <limits>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "kinds.hpp"
#include "near_names.hpp"
#include "samples.hpp"
#include "shown_text.hpp"
#include "text_pieces.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

using Found = std::optional<Diagnosis>;

constexpr std::size_t most_bytes = 2'000'000; ///< of all texts tried together
constexpr std::size_t widest_search = 300;    ///< bytes of a text in which every character is a suspect
constexpr std::size_t most_added = 4;         ///< characters more than in the text, of what is near
constexpr std::size_t brief_text = 64;        ///< bytes of a text in which every letter is tried everywhere
constexpr const char *hex_digits = "0123456789abcdef";
constexpr const char *digits_and_letters = "0123456789abcdefghijklmnopqrstuvwxyz";
constexpr const char *usual_separators = ".:/-[] ";

/// Quoted, or nothing but "what stands here" for a long piece.
std::string named(std::string_view piece)
{
    constexpr std::size_t longest = 48;
    return piece.size() <= longest ? lua_quoted(piece) : "what stands here";
}

/// "A", "A or B", "A, B or C"
std::string any_of(const Texts &words)
{
    const std::string front = joined(std::span(words).first(words.size() - 1), ", ");
    return front + (front.empty() ? "" : " or ") + words.back();
}

/// What single characters have in common, for a sentence.
std::string described(const std::string &characters)
{
    const auto has_all = [&characters](const char *set) {
        return std::string_view(set).find_first_not_of(characters) == std::string_view::npos;
    };
    if (has_all(hex_digits)) {
        return "a hexadecimal digit";
    }
    if (has_all(digits)) {
        return "a digit";
    }
    if (has_all("123456789")) {
        return "a digit but 0";
    }
    Texts some;
    for (const char c : characters.substr(0, 3)) {
        some.push_back(lua_quoted(std::string(1, c)));
    }
    return any_of(some) + (characters.size() > some.size() ? " or the like" : "");
}

/// The tries are used up.
class Spent : public std::exception {};

class Search {
public:
    Search(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode)
        : session_(session), type_(type), text_(text), mode_(mode), sample_(sample_of(type.typeId)),
          kinds_(kinds(session, type)), separators_(separators())
    {
    }

    Found run();

private:
    void suspect();
    bool takes(const std::string &candidate);
    bool takes(const Edit &edit) { return takes(edited(text_, edit)); }
    Found found(const Edit &edit, std::string reason) const;

    std::string separators() const;
    Range find_window();
    /// Its characters, an UTF-8 sequence being one.
    std::size_t character(std::size_t at) const { return character_size(text_, at); }
    bool is_inner_at(std::size_t at) const { return at < text_.size() && is_inner(text_[at]); }
    /// Whether the places are both inside a number or a word.
    bool joins(std::size_t before, std::size_t behind) const
    {
        return before > 0 && is_inner_at(before - 1) && is_inner_at(behind);
    }
    /// Whether a blank in the place of the part would have something else on both sides.
    bool separates(std::size_t at, std::size_t length) const
    {
        return at > 0 && !is_blank(text_[at - 1]) && at + length < text_.size() && !is_blank(text_[at + length]);
    }
    /// Those of the candidates that may stand in the place of the part.
    std::string accepted(std::size_t at, std::size_t length, std::string_view candidates);
    template <class Try>
    Found at_each_character(Try &&attempt);
    template <class Try>
    Found at_each_gap(Try &&attempt);

    // The suspicions, the likeliest first.
    Found whole_text();
    Found numbers();
    Found words();
    Found regrouped();
    Found unbracketed();
    Found dangling();
    Found lookalike();
    Found wrong_separator();
    Found surplus_character();
    Found swapped();
    Found missing_end();
    Found missing_separator();
    Found wrong_letter() { return wrong_character(true); }
    Found wrong_sign() { return wrong_character(false); }
    Found missing_character();
    Found surplus();
    Found joined_or_split();
    Found missing_begin();
    Found missing_part();
    Found blended();
    Found first_entry();

    Found wrong_character(bool letter);
    Found leading_zeros(Range run);
    Found too_small(Range run);
    Found too_large(Range run);
    std::optional<std::uint64_t> greatest(const std::string &text, Range run);
    std::string other_form(Range run);
    Found word_at(std::size_t at);
    Found regrouped_from(std::size_t begin, const Groups &groups);
    Texts ends() const;
    std::vector<std::size_t> edges() const;
    std::vector<Range> removable() const;
    std::vector<bool> most_of_mine(const std::vector<Pair> &pairs);
    Found blend(const Pair *first, const std::vector<Pair> &pairs, const std::vector<bool> &mine);
    Found number_in_blend(const Pair &pair, const std::string &blend);

    Session &session_;
    const SYSDT_Record &type_;
    const std::string text_;
    const std::uint8_t mode_;
    const Sample sample_;
    const std::vector<Kind> kinds_;
    std::size_t tries_ = 0;
    std::size_t bytes_ = 0;
    std::set<std::uint32_t> near_;
    Found best_; ///< what is found when the tries are used up
    const std::string separators_;
    Range window_{0, 0};
};

bool Search::takes(const std::string &candidate)
{
    bytes_ += candidate.size();
    if (++tries_ > most_tries || bytes_ > most_bytes) {
        throw Spent();
    }
    const host::Converted converted = session_.host().parse(type_, candidate, mode_);
    const bool taken = converted.ok() && !converted.data.empty();
    if (taken && !kinds_.empty() && candidate.size() <= text_.size() + most_added) {
        near_.insert(kind_of(converted.data));
    }
    return taken;
}

Found Search::found(const Edit &edit, std::string reason) const
{
    return Diagnosis{text_, edit.at, edit.length, std::move(reason), edited(text_, edit)};
}

/// Of the samples, and the usual ones.
std::string Search::separators() const
{
    std::string all = joined(sample_.texts, "");
    std::erase_if(all, is_inner);
    all += usual_separators;
    std::string each;
    std::ranges::copy_if(all, std::back_inserter(each), [&each](char c) { return each.find(c) == std::string::npos; });
    return each;
}

/// Where a long text is suspect: behind the longest beginning that is taken, else at its beginning.
Range Search::find_window()
{
    if (text_.size() <= widest_search) {
        return {0, text_.size()};
    }
    const std::vector<std::size_t> edges = boundaries(text_);
    const auto refused = std::partition_point(edges.begin() + 1, edges.end(),
                                              [this](std::size_t edge) { return takes(text_.substr(0, edge)); });
    const std::size_t begin = *std::prev(refused);
    return {begin, std::min(text_.size(), begin + widest_search)};
}

std::string Search::accepted(std::size_t at, std::size_t length, std::string_view candidates)
{
    std::string taken;
    for (const char c : candidates) {
        if ((c != ' ' || separates(at, length)) && text_.substr(at, length) != std::string(1, c) &&
            takes(Edit{at, length, std::string(1, c)})) {
            taken += c;
        }
    }
    return taken;
}

template <class Try>
Found Search::at_each_character(Try &&attempt)
{
    for (std::size_t at = window_.begin; at < window_.end; at += character(at)) {
        if (Found result = attempt(at, character(at))) {
            return result;
        }
    }
    return {};
}

template <class Try>
Found Search::at_each_gap(Try &&attempt)
{
    if (Found result = attempt(text_.size())) {
        return result;
    }
    return at_each_character([&attempt](std::size_t at, std::size_t) { return attempt(at); });
}

Found Search::whole_text()
{
    std::string unquoted = text_;
    std::erase(unquoted, '"');
    const std::size_t first = text_.find_first_not_of(blanks);
    std::string unspaced = text_.substr(first, text_.find_last_not_of(blanks) + 1 - first);
    std::erase_if(unspaced, is_blank);
    unspaced.insert(0, text_, 0, first);
    unspaced.append(text_, text_.find_last_not_of(blanks) + 1);
    const std::pair<std::string, const char *> rewritings[] = {
        {"\"" + text_ + "\"", "the text must stand in double quotes here"},
        {unquoted, "double quotes cannot stand here"},
        {lower(text_), "capital letters cannot stand here"},
        {unspaced, "blanks cannot stand here"},
    };
    for (const auto &[rewriting, reason] : rewritings) {
        if (rewriting != text_ && takes(rewriting)) {
            return found(difference(text_, rewriting), reason);
        }
    }
    return {};
}

Found Search::numbers()
{
    std::vector<Range> runs = number_runs(text_, window_);
    std::ranges::reverse(runs);
    for (Found (Search::*suspicion)(Range) : {&Search::leading_zeros, &Search::too_large, &Search::too_small}) {
        for (const Range run : runs) {
            if (Found result = (this->*suspicion)(run)) {
                return result;
            }
        }
    }
    return {};
}

Found Search::leading_zeros(Range run)
{
    const std::size_t zeros = std::min(text_.find_first_not_of('0', run.begin), run.end - 1) - run.begin;
    const Edit edit{run.begin, zeros, ""};
    return zeros > 0 && takes(edit) ? found(edit, "leading zeros cannot stand here") : Found{};
}

/// The greatest number that may stand in the place of the run, which cannot.
std::optional<std::uint64_t> Search::greatest(const std::string &text, Range run)
{
    std::uint64_t refused = std::numeric_limits<std::uint64_t>::max();
    const bool beyond = std::from_chars(text.data() + run.begin, text.data() + run.end, refused).ec != std::errc();
    const auto takes_number = [&](std::uint64_t number) {
        return takes(edited(text, {run.begin, run.size(), std::to_string(number)}));
    };
    const std::uint64_t trials[] = {1, 0, refused / 10};
    const auto *const trial =
        std::ranges::find_if(trials, [&](std::uint64_t number) { return number < refused && takes_number(number); });
    if (trial == std::end(trials)) {
        return {};
    }
    if (takes_number(refused)) { // the number is beyond what counts here, or refused for the way it is written
        const Edit next{run.begin, run.size(), "18446744073709551616"};
        return beyond && !takes(edited(text, next)) ? std::optional(refused) : std::nullopt;
    }
    std::uint64_t taken = *trial;
    while (refused - taken > 1) {
        const std::uint64_t middle = taken + (refused - taken) / 2;
        (takes_number(middle) ? taken : refused) = middle;
    }
    return taken;
}

std::string too_large_reason(const std::string &number, std::uint64_t limit)
{
    const std::string most = std::to_string(limit);
    const bool by_digits = most.find_first_not_of('9') == std::string::npos;
    return by_digits ? number + " is too long here: at most " + counted(most.size(), "digit")
                     : number + " is too large here: at most " + most;
}

Found Search::too_large(Range run)
{
    const std::optional<std::uint64_t> limit = greatest(text_, run);
    if (!limit) {
        return {};
    }
    const std::string number = text_.substr(run.begin, run.size());
    Found result = found({run.begin, run.size(), std::to_string(*limit)}, too_large_reason(number, *limit));
    result->other = other_form(run);
    return result;
}

Found Search::too_small(Range run)
{
    const Edit edit{run.begin, run.size(), "1"};
    const bool zero = text_.substr(run.begin, run.size()) == "0";
    return zero && takes(edit) ? found(edit, "0 is too small here: at least 1") : Found{};
}

/// A sample of another form that takes the number at its end.
std::string Search::other_form(Range run)
{
    if (run.end != text_.size() || run.begin == 0) {
        return {};
    }
    std::string shortest;
    for (const std::string &sample : sample_.texts) {
        const std::vector<Range> runs = number_runs(sample, {0, sample.size()});
        const Range last = runs.empty() ? Range{0, 0} : runs.back();
        const std::string form = edited(sample, {last.begin, last.size(), text_.substr(run.begin)});
        if (last.end == sample.size() && last.begin > 0 && sample[last.begin - 1] == text_[run.begin - 1] &&
            shape(sample) != shape(text_) && (shortest.empty() || form.size() < shortest.size()) &&
            session_.host().parse(type_, form, mode_).ok()) {
            shortest = form;
        }
    }
    return shortest;
}

Found Search::words()
{
    const auto in_word = [this](std::size_t at) { return is_inner_at(at) || (at < text_.size() && text_[at] == '-'); };
    return at_each_character([&](std::size_t at, std::size_t) {
        return is_letter(text_[at]) && (at == 0 || !in_word(at - 1)) ? word_at(at) : Found{};
    });
}

/// The words nearest to what begins at the place.
Found Search::word_at(std::size_t at)
{
    constexpr std::size_t longest = 24;
    const std::size_t end = text_.find_first_of("[] ", at);
    const std::string here = text_.substr(at, std::min(longest, std::min(end, text_.size()) - at));
    std::vector<std::pair<std::size_t, Edit>> near; // by distance
    for (const std::string &word : sample_.words) {
        const std::vector<std::size_t> row = distances(lower(word), lower(here));
        const std::size_t least = *std::ranges::min_element(row);
        for (std::size_t length = here.size(); least <= std::max<std::size_t>(1, word.size() / 3) && length > 0;
             --length) {
            if (row[length] == least && here.substr(0, length) != word) {
                near.push_back({least, {at, length, word}});
            }
        }
    }
    std::ranges::stable_sort(near, {}, [](const auto &entry) { return entry.first; });
    Found result;
    Texts taken;
    std::size_t reach = 0;
    for (const auto &[distance, edit] : near) {
        if ((result && (distance != reach || edit.length != result->length)) || !takes(edit)) {
            continue;
        }
        taken.push_back(lua_quoted(edit.by));
        if (!result) {
            result = found(edit, "");
            reach = distance;
        }
    }
    if (result) {
        result->reason = lua_quoted(here.substr(0, result->length)) + " cannot stand here, " + any_of(taken) + " can";
    }
    return result;
}

Found Search::regrouped()
{
    for (const std::string &sample : sample_.texts) {
        for (std::size_t at = 0; at < sample.size(); ++at) {
            const Groups groups = at == 0 || !is_inner(sample[at - 1]) ? groups_at(sample, at) : Groups{0, 0, '\0'};
            Found result = groups.count == 0 ? Found{} : at_each_character([&](std::size_t begin, std::size_t) {
                return begin == 0 || !is_inner_at(begin - 1) ? regrouped_from(begin, groups) : Found{};
            });
            if (result) {
                return result;
            }
        }
    }
    return {};
}

Found Search::unbracketed()
{
    const bool known =
        std::ranges::any_of(sample_.texts, [](const std::string &text) { return text.find('[') != std::string::npos; });
    const std::vector<std::size_t> edges = boundaries(text_);
    constexpr std::size_t most_edges = 40;
    for (std::size_t i = 0; known && edges.size() <= most_edges && i < edges.size(); ++i) {
        for (std::size_t j = edges.size() - 1; j > i; --j) {
            const std::string piece = text_.substr(edges[i], edges[j] - edges[i]);
            const Edit edit{edges[i], piece.size(), "[" + piece + "]"};
            if (takes(edit)) {
                return found(edit, named(piece) + " must stand in brackets here");
            }
        }
    }
    return {};
}

/// As many hexadecimal digits from the place on as the groups have, written as they are.
Found Search::regrouped_from(std::size_t begin, const Groups &groups)
{
    std::string characters;
    std::size_t end = begin;
    while (end < text_.size() && characters.size() < groups.width * groups.count) {
        const char c = text_[end];
        if (is_hex(c)) {
            characters += c;
        } else if (c != ':' && c != '.' && c != '-') {
            return {};
        }
        ++end;
    }
    const Edit edit{begin, end - begin, groups.laid_out(characters)};
    const std::string piece = text_.substr(begin, end - begin);
    if (characters.size() < groups.width * groups.count || is_inner_at(end) || piece == edit.by || !takes(edit)) {
        return {};
    }
    return found(edit, named(piece) + " is written " + lua_quoted(edit.by) + " here");
}

/// The ends of samples that may follow the text, the shortest first.
Texts Search::ends() const
{
    std::set<std::string> all;
    for (const std::string &sample : sample_.texts) {
        for (std::size_t at = 1; at < sample.size() && !text_.empty(); ++at) {
            if (is_edge(sample[at - 1], sample[at]) && is_edge(text_.back(), sample[at])) {
                all.insert(sample.substr(at));
            }
        }
    }
    Texts ends(all.begin(), all.end());
    std::ranges::stable_sort(ends, {}, [](const std::string &end) { return end.size(); });
    return ends;
}

/// No more is added to a text than it has.
bool is_small(const std::string &addition, const std::string &text)
{
    return addition.size() <= std::max<std::size_t>(text.size(), 3);
}

Found Search::dangling()
{
    if (text_.empty() || is_inner(text_.back()) || is_blank(text_.back())) {
        return {};
    }
    for (const std::string &end : ends()) {
        const Edit edit{text_.size(), 0, end};
        if (is_small(end, text_) && is_inner(end.front()) && takes(edit)) {
            return found(edit, "something is missing at the end, such as " + lua_quoted(end));
        }
    }
    return {};
}

Found Search::missing_end()
{
    for (const std::string &end : ends()) {
        const Edit edit{text_.size(), 0, end};
        if (is_small(end, text_) && takes(edit)) {
            return found(edit, (end.size() == 1 ? lua_quoted(end) + " is missing at the end"
                                                : "something is missing at the end, such as " + named(end)));
        }
    }
    return {};
}

Found Search::missing_begin()
{
    for (const std::string &sample : sample_.texts) {
        for (std::size_t at = 1; at < sample.size(); ++at) {
            const Edit edit{0, 0, sample.substr(0, at)};
            if (!is_inner(sample[at - 1]) && is_small(edit.by, text_) && takes(edit)) {
                return found(edit, "something is missing in front, such as " + named(edit.by));
            }
        }
    }
    return {};
}

/// Keys beside or like those that were meant.
Found Search::lookalike()
{
    constexpr std::pair<char, char> pairs[] = {{'o', '0'}, {'O', '0'}, {'l', '1'}, {'I', '1'},
                                               {',', '.'}, {';', ':'}, {'_', '-'}, {',', ' '}};
    return at_each_character([&](std::size_t at, std::size_t) {
        for (const auto &[written, meant] : pairs) {
            const Edit edit{at, 1, std::string(1, meant)};
            if (text_[at] == written && (meant != ' ' || separates(at, 1)) && takes(edit)) {
                return found(edit, lua_quoted(std::string(1, written)) + " cannot stand here, " + lua_quoted(edit.by) +
                                       " can");
            }
        }
        return Found{};
    });
}

Found Search::wrong_separator()
{
    return at_each_character([&](std::size_t at, std::size_t length) {
        const std::string taken = is_inner(text_[at]) ? "" : accepted(at, length, separators_);
        return taken.empty()
                   ? Found{}
                   : found({at, length, taken.substr(0, 1)},
                           lua_quoted(text_.substr(at, length)) + " cannot stand here, " + described(taken) + " can");
    });
}

Found Search::surplus_character()
{
    return at_each_character([&](std::size_t at, std::size_t length) {
        const Edit edit{at, length, ""};
        const bool joining = !is_inner(text_[at]) && joins(at, at + length);
        return !joining && takes(edit) ? found(edit, lua_quoted(text_.substr(at, length)) + " cannot stand here")
                                       : Found{};
    });
}

Found Search::swapped()
{
    return at_each_character([&](std::size_t at, std::size_t) {
        if (!joins(at + 1, at + 1) || text_[at] == text_[at + 1]) {
            return Found{};
        }
        const std::string swapped = {text_[at + 1], text_[at]};
        const Edit edit{at, 2, swapped};
        return takes(edit) ? found(edit, lua_quoted(text_.substr(at, 2)) + " cannot stand here, " +
                                             lua_quoted(swapped) + " can")
                           : Found{};
    });
}

Found Search::missing_separator()
{
    return at_each_gap([&](std::size_t at) {
        const std::string taken = joins(at, at) ? "" : accepted(at, 0, separators_);
        return taken.empty() ? Found{} : found({at, 0, taken.substr(0, 1)}, described(taken) + " is missing here");
    });
}

/// One in the place of which a digit or letter may stand.
Found Search::wrong_character(bool letter)
{
    return at_each_character([&](std::size_t at, std::size_t length) {
        const bool sign = !is_inner(text_[at]) && separators_.find(text_[at]) == std::string::npos;
        const bool suspect = letter ? is_letter(text_[at]) : sign;
        const bool brief = text_.size() <= brief_text;
        if (!suspect || (!brief && accepted(at, length, "1a").empty())) {
            return Found{};
        }
        const std::string taken = accepted(at, length, brief ? digits_and_letters : hex_digits);
        if (taken.empty()) {
            return Found{};
        }
        const bool in_number = taken.find_first_not_of(digits) == std::string::npos;
        const std::string instead = in_number && takes(Edit{at, length, ""}) ? "" : taken.substr(0, 1);
        return found({at, length, instead},
                     lua_quoted(text_.substr(at, length)) + " cannot stand here, " + described(taken) + " can");
    });
}

Found Search::missing_character()
{
    return at_each_gap([&](std::size_t at) {
        if (accepted(at, 0, "1a").empty()) {
            return Found{};
        }
        const std::string taken = accepted(at, 0, hex_digits);
        return found({at, 0, taken.substr(0, 1)}, described(taken) + " is missing here");
    });
}

/// The boundaries where the text is suspect.
std::vector<std::size_t> Search::edges() const
{
    std::vector<std::size_t> edges = boundaries(text_);
    std::erase_if(edges, [this](std::size_t edge) { return edge < window_.begin || edge > window_.end; });
    return edges;
}

/// Ends, beginnings, a few pieces, the letters ahead of a number, groups in brackets.
std::vector<Range> Search::removable() const
{
    const std::vector<std::size_t> edges = this->edges();
    std::vector<Range> parts;
    for (std::size_t i = edges.size(); i > 0; --i) {
        parts.push_back({edges[i - 1], text_.size()});
    }
    for (std::size_t i = 1; i < edges.size(); ++i) {
        parts.push_back({0, edges[i]});
    }
    for (std::size_t i = 0; i < edges.size(); ++i) {
        for (std::size_t j = i + 1; j < std::min(i + 4, edges.size()); ++j) {
            parts.push_back({edges[i], edges[j]});
        }
        const std::size_t letters = std::min(text_.find_first_of(digits, edges[i]), text_.size());
        if (is_inner_at(edges[i]) && letters < text_.size()) {
            parts.push_back({edges[i], letters});
        }
        if (edges[i] < text_.size() && text_[edges[i]] == '[' && closing(text_, edges[i]) != std::string::npos) {
            parts.push_back({edges[i], closing(text_, edges[i]) + 1});
        }
    }
    return parts;
}

/// What is left must be most of the text.
Found Search::surplus()
{
    for (const Range part : removable()) {
        const Edit edit{part.begin, part.size(), ""};
        if (part.size() > 0 && 2 * part.size() <= text_.size() && takes(edit)) {
            return found(edit, named(text_.substr(part.begin, part.size())) + " is too much");
        }
    }
    return {};
}

/// Two numbers or words run into one, or one torn apart.
Found Search::joined_or_split()
{
    Found split = at_each_gap([&](std::size_t at) {
        const std::string taken = joins(at, at) ? accepted(at, 0, separators_) : "";
        return taken.empty() ? Found{} : found({at, 0, taken.substr(0, 1)}, described(taken) + " is missing here");
    });
    return split ? split : at_each_character([&](std::size_t at, std::size_t length) {
        const Edit edit{at, length, ""};
        return !is_inner(text_[at]) && joins(at, at + length) && takes(edit)
                   ? found(edit, lua_quoted(text_.substr(at, length)) + " cannot stand here")
                   : Found{};
    });
}

Found Search::missing_part()
{
    const Texts parts = parts_of(sample_.texts);
    std::vector<std::size_t> places = edges();
    std::ranges::reverse(places); // what is forgotten tends to be the end of something
    for (const std::size_t at : places) {
        for (const std::string &part : parts) {
            const Edit edit{at, 0, part};
            if (is_small(part, text_) && takes(edit)) {
                return found(edit, "something is missing here, such as " + named(part));
            }
        }
    }
    return {};
}

/// Takes from the text whatever may stand in the blend, first all of a run that only one of the two has.
std::vector<bool> Search::most_of_mine(const std::vector<Pair> &pairs)
{
    std::vector<bool> kept(pairs.size(), false);
    const auto keep = [&](std::size_t begin, std::size_t end) {
        const std::vector<bool> before = kept;
        std::fill(kept.begin() + static_cast<std::ptrdiff_t>(begin), kept.begin() + static_cast<std::ptrdiff_t>(end),
                  true);
        if (kept != before && (runs_together(pairs, kept) || !takes(toolkit::blended(pairs, kept)))) {
            kept = before;
        }
    };
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        kept[i] = pairs[i].mine == pairs[i].theirs;
    }
    for (std::size_t begin = 0, end = 0; begin < pairs.size(); begin = end) {
        const auto sort = [&pairs](std::size_t i) { return std::pair(pairs[i].mine.empty(), pairs[i].theirs.empty()); };
        for (end = begin + 1; end < pairs.size() && sort(end) == sort(begin);) {
            ++end;
        }
        if (sort(begin) != std::pair(false, false)) {
            keep(begin, end);
        }
    }
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            keep(i, i + 1);
        }
    }
    return kept;
}

/// The text with as few pieces of a sample in it as it takes.
Found Search::blended()
{
    constexpr std::size_t most_pieces = 150;
    const Texts mine = pieces_of(text_);
    if (text_.empty() || mine.size() > most_pieces) {
        return {};
    }
    std::size_t best_lost = text_.size() * 2 / 5 + 1;
    for (const std::string &sample : sample_.texts) {
        if (!takes(sample)) { // in another mode
            continue;
        }
        const std::vector<Pair> pairs = aligned(mine, pieces_of(sample));
        const std::vector<bool> kept = most_of_mine(pairs);
        std::size_t lost = 0;
        const Pair *first = nullptr;
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            lost += kept[i] ? 0 : loss(pairs[i]);
            first = first == nullptr && !kept[i] ? &pairs[i] : first;
        }
        if (lost < best_lost && first != nullptr) {
            best_lost = lost;
            best_ = blend(first, pairs, kept);
        }
    }
    return best_;
}

/// What a blend of text and sample says of the first place where it is the sample's.
Found Search::blend(const Pair *first, const std::vector<Pair> &pairs, const std::vector<bool> &mine)
{
    const std::string whole = toolkit::blended(pairs, mine);
    const auto begin = static_cast<std::size_t>(first - pairs.data());
    std::size_t end = begin;
    std::string old;
    std::string fresh;
    for (; end < pairs.size() && !mine[end]; ++end) {
        old += pairs[end].mine;
        fresh += pairs[end].theirs;
    }
    const bool more = std::find(mine.begin() + static_cast<std::ptrdiff_t>(end), mine.end(), false) != mine.end();
    Found result = end == begin + 1 ? number_in_blend(*first, whole) : Found{};
    if (!result) {
        const std::string reason =
            old.empty()     ? "something is missing here, such as " + named(fresh)
            : fresh.empty() ? named(old) + " is too much"
                            : named(old) + " cannot stand here, something like " + lua_quoted(fresh) + " can";
        result = Diagnosis{text_, first->at, old.size(), reason, whole};
    }
    result->reason += more ? "; more is wrong behind it" : "";
    return result;
}

Found Search::number_in_blend(const Pair &pair, const std::string &blend)
{
    const auto is_number = [](const std::string &piece) {
        return !piece.empty() && piece.find_first_not_of(digits) == std::string::npos;
    };
    if (!is_number(pair.mine) || !is_number(pair.theirs)) {
        return {};
    }
    const std::string with_mine = edited(blend, {pair.at, pair.theirs.size(), pair.mine});
    const Range run{pair.at, pair.at + pair.mine.size()};
    const std::optional<std::uint64_t> limit = greatest(with_mine, run);
    if (!limit) {
        return {};
    }
    return Diagnosis{text_, pair.at, pair.mine.size(), too_large_reason(pair.mine, *limit),
                     edited(with_mine, {run.begin, run.size(), std::to_string(*limit)})};
}

/// Of a list with more than one mistake: that of the entry with the first.
Found Search::first_entry()
{
    const std::size_t end = text_.find(' ', window_.begin);
    for (std::size_t at = end; at != std::string::npos; at = text_.find(' ', at + 1)) {
        if (const std::string front = text_.substr(0, at); at > 0 && !is_blank(front.back()) && !takes(front)) {
            Search of_front(session_, type_, front, mode_);
            of_front.tries_ = tries_;
            of_front.bytes_ = bytes_;
            Found result = of_front.run();
            if (result) {
                result->text = text_;
                result->reason += "; more is wrong behind it";
            }
            return result;
        }
    }
    return {};
}

void Search::suspect()
{
    using Suspicion = Found (Search::*)();
    constexpr Suspicion small[] = {
        &Search::whole_text,        &Search::numbers,           &Search::words,
        &Search::regrouped,         &Search::unbracketed,       &Search::dangling,
        &Search::lookalike,         &Search::wrong_separator,   &Search::wrong_letter,
        &Search::surplus_character, &Search::wrong_sign,        &Search::swapped,
        &Search::missing_end,       &Search::missing_separator, &Search::missing_character,
    };
    constexpr Suspicion large[] = {
        &Search::missing_part,    &Search::blended,       &Search::surplus,
        &Search::joined_or_split, &Search::missing_begin, &Search::first_entry,
    };
    window_ = find_window();
    for (const Suspicion suspicion : small) {
        if (!best_ || !kinds_.empty()) { // what else is near tells which kinds are
            Found next = (this->*suspicion)();
            best_ = best_ ? best_ : next;
        }
    }
    for (const Suspicion suspicion : large) {
        best_ = best_ ? best_ : (this->*suspicion)();
    }
}

Found Search::run()
{
    try {
        suspect();
    } catch (const Spent &) {
    }
    for (const Kind &kind : kinds_) {
        if (best_ && near_.contains(kind.number)) {
            best_->kinds.push_back(kind.name);
        }
    }
    return best_;
}

} // namespace

std::optional<Diagnosis> diagnose(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode)
{
    const bool blank = text.find_first_not_of(blanks) == std::string_view::npos;
    return blank ? std::nullopt : Search(session, type, text, mode).run();
}

bool takes_samples(Session &session, const SYSDT_Record &type, std::uint8_t mode)
{
    const auto takes = [&](const std::string &text) { return session.host().parse(type, text, mode).ok(); };
    return std::ranges::any_of(sample_of(type.typeId).texts,
                               [&takes](const std::string &text) { return takes(text) || takes('"' + text + '"'); });
}

} // namespace bgpdt::toolkit
