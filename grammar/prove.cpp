// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// bgpdt_prove PLUGIN [--texts N] [--short] [--every-number] [NAME...]: whether the plug-in takes what the grammars say.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "catalogue.hpp"
#include "parser.hpp"
#include "printing.hpp"
#include "proof.hpp"

namespace {

using namespace bgpdt;
using namespace bgpdt::grammar;

struct Settings {
    std::string plugin;
    double texts = 5e7;        ///< about as many words for each automaton at most
    bool is_short = false;     ///< of a large automaton not all states are tried
    bool every_number = false; ///< numbers from 65536 to 2^32 - 1 alone are tried, with every value
    std::vector<std::string> names;
};

struct Outcome {
    std::size_t states = 0;
    std::size_t longest = 0;
    unsigned extra_states = 0;
    std::size_t share = 1; ///< one state in so many was tried with every byte
    Trial trial;
};

std::string shown(const std::string &text)
{
    std::string line;
    for (const char byte : text) {
        char escape[5];
        (void)std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned char>(byte));
        line += byte < ' ' || byte > '~' ? std::string(escape) : std::string(1, byte);
    }
    return '"' + line + '"';
}

/// How many bytes in a row are tried: one more than the longest text has, or a few where there is no longest.
std::size_t run_length(const Automaton &automaton) { return longest(automaton).value_or(24) + 1; }

/// What an automaton is compared with a parser in.
struct Subject {
    const Automaton &automaton;
    std::size_t run = 0; ///< the longest row of one byte
    Judge takes;
    std::vector<Place> places;
};

bool is_small(const Number &number) { return number.high < 0x10000; }

void try_places(Proof &proof, const std::vector<Place> &places, const Settings &settings)
{
    for (const Place &place : places) {
        proof.try_numbers(place, edges(place.number, settings.is_short ? 1 : 20), 3);
        if (is_small(place.number) && !settings.is_short)
            proof.try_every_number(place);
    }
}

/// So many extra states that the words for them are about as many as wanted.
unsigned affordable(const Proof &proof, const Settings &settings)
{
    constexpr unsigned enough = 8;
    unsigned extra_states = 0;
    while (extra_states < enough && proof.words_cost(extra_states + 1) <= settings.texts)
        ++extra_states;
    return extra_states;
}

Outcome prove(const Subject &subject, const Settings &settings)
{
    constexpr double bytes_share = 8; // so many times as many texts as for words
    Proof proof(subject.automaton, subject.takes);
    Outcome outcome{subject.automaton.states(), subject.run, 0, 1, {}};
    if (settings.is_short)
        outcome.share = static_cast<std::size_t>(proof.bytes_cost() / (bytes_share * settings.texts)) + 1;
    proof.try_bytes(outcome.share);
    outcome.extra_states = affordable(proof, settings);
    if (outcome.extra_states != 0)
        proof.try_words(outcome.extra_states);
    proof.try_runs(subject.run, outcome.share);
    try_places(proof, subject.places, settings);
    outcome.trial = proof.trial();
    return outcome;
}

std::uint64_t texts_tried = 0; // by all proofs

bool report_differences(const Trial &trial)
{
    texts_tried += trial.texts;
    if (trial.wrong == 0)
        return true;
    std::cout << "  differs from the parser in " << trial.wrong << " texts:\n";
    for (const std::string &text : trial.differences)
        std::cout << "    " << shown(text) << '\n';
    return false;
}

bool report(const std::string &name, const char *what, const Outcome &outcome)
{
    std::cout << name << ' ' << what << ": " << outcome.states << " states, " << outcome.trial.texts << " texts, "
              << outcome.extra_states << " more states, runs of " << outcome.longest;
    if (outcome.share != 1)
        std::cout << ", one state in " << outcome.share << " with every byte";
    std::cout << '\n';
    return report_differences(outcome.trial);
}

bool report_findings(const Printing &printing)
{
    for (const Printing::Finding &finding : printing.findings)
        std::cout << "  " << shown(finding.text) << ' ' << finding.what << '\n';
    return printing.findings.empty();
}

/// What was met of `printed`, where the grammar has it.
bool report_printed(const std::string &name, const Printing &printing)
{
    if (printing.steps() != 0)
        std::cout << name << " printed: " << printing.steps_met() << " of " << printing.steps() << " steps met, "
                  << printing.compared() << " values compared\n";
    return report_findings(printing);
}

/// A parser about some of whose texts the grammar says nothing: it takes none of these.
class Within {
public:
    explicit Within(const Grammar &grammar)
    {
        if (grammar.has("beyond"))
            beyond_ = trimmed(automaton_of(grammar, "beyond"));
    }
    Judge judge(Judge takes) const
    {
        if (!beyond_)
            return takes;
        return
            [this, takes = std::move(takes)](std::string_view text) { return !beyond_->accepts(text) && takes(text); };
    }
    Automaton cut(const Automaton &automaton) const { return beyond_ ? first_only(automaton, *beyond_) : automaton; }

private:
    std::optional<Automaton> beyond_;
};

/// Asks the parser, and looks at what the texts that it takes print as.
Judge following(Parser &parser, Printing &printing)
{
    return [&](std::string_view text) {
        if (!parser.takes(text))
            return false;
        if (parser.prints())
            printing.follow(text);
        return true;
    };
}

/// That the canonical texts, and no others, print as they are.
Outcome prove_canonical(Printing &printing, const Grammar &grammar, std::size_t run, const Settings &settings)
{
    const Judge prints = [&](std::string_view text) { return printing.prints_as_it_is(text); };
    return prove({automaton_of(grammar, "canonical"), run, prints, places(grammar, "canonical")}, settings);
}

bool prove_texts(Parser &parser, const Grammar &grammar, const Settings &settings)
{
    const Within within(grammar);
    const Automaton texts = within.cut(texts_of(grammar));
    const std::size_t run = run_length(automaton_of(grammar, "text"));
    Printing printing(parser, grammar);
    const Judge takes = within.judge(following(parser, printing));
    bool right = report(grammar.name, "texts", prove({texts, run, takes, places(grammar, "text")}, settings));
    right &= report_printed(grammar.name, printing);
    if (grammar.has("canonical"))
        right &= report(grammar.name, "canonical", prove_canonical(printing, grammar, run, settings));
    return right;
}

/// Texts in the frame have so much room as the part needs, and some more; what a BGP-LS key ignores fills the rest.
Frame filled(const Grammar &grammar, Frame frame, const Automaton &part)
{
    constexpr std::size_t enough = 30;
    const std::size_t wanted = longest(part).value_or(enough) + 4;
    const std::string opening = "[UNKNOWN";
    const std::size_t used = frame.front.size() + frame.behind.size() + opening.size() + 1 + wanted;
    if (used < grammar.room)
        frame.behind += opening + std::string(grammar.room - used, 'x') + "]";
    return frame;
}

/// Tries a part within a text, where the judge says what the whole is.
template <typename Attempt>
auto try_frame(const Grammar &grammar, const Frame &frame, const std::string &name, const Judge &judge, Attempt attempt)
{
    Automaton part = automaton_of(grammar, name);
    std::optional<Automaton> others;
    if (!frame.without.empty()) {
        others = automaton_of(grammar, frame.without);
        part = first_only(part, *others);
    }
    if (grammar.room != 0) {
        const auto left = static_cast<unsigned>(grammar.room - frame.front.size() - frame.behind.size());
        part = limited(part, {0, left});
    }
    std::string whole;
    const Judge takes = [&](std::string_view text) {
        (whole = frame.front).append(text).append(frame.behind);
        return !(others && others->accepts(text)) && judge(whole);
    };
    return attempt(Subject{part, run_length(part), takes, places(grammar, name)});
}

auto proving(const Settings &settings)
{
    return [&](const Subject &subject) { return prove(subject, settings); };
}

/// A word so many times in a row: more than it may be, too.
Outcome prove_row(const Frame &frame, const Judge &takes)
{
    Outcome outcome;
    std::string row;
    for (unsigned times = 0; times <= frame.times.most + 300; ++times, row += frame.word) {
        const std::string text = frame.front + row + frame.behind;
        ++outcome.trial.texts;
        if (takes(text) != (times >= frame.times.least && times <= frame.times.most) && ++outcome.trial.wrong <= 1)
            outcome.trial.differences.push_back(text);
    }
    outcome.states = 1;
    return outcome;
}

/// Words in any order.
Outcome prove_order(const Order &order, const Automaton &automaton, const Judge &judge, const Settings &settings)
{
    std::vector<unsigned char> letters;
    for (const auto &[letter, word] : order.words)
        letters.push_back(static_cast<unsigned char>(letter));
    const Judge takes = [&](std::string_view text) {
        std::string words;
        for (const char letter : text)
            words += order.words.at(letter);
        return judge(words);
    };
    Proof proof(automaton, takes, letters);
    Outcome outcome{automaton.states(), 0, 0, 1, {}};
    outcome.extra_states = affordable(proof, settings);
    proof.try_words(outcome.extra_states);
    outcome.trial = proof.trial();
    return outcome;
}

void add(Outcome &sum, const Outcome &one)
{
    sum.states += one.states;
    sum.longest = std::max(sum.longest, one.longest);
    sum.extra_states = std::min(sum.extra_states, one.extra_states);
    sum.trial.texts += one.trial.texts;
    sum.trial.wrong += one.trial.wrong;
    sum.trial.differences.insert(sum.trial.differences.end(), one.trial.differences.begin(),
                                 one.trial.differences.end());
}

/// The parts that stand in frames, within whole texts.
Outcome prove_fields(Parser &parser, Printing &printing, const Grammar &grammar, const Settings &settings)
{
    Outcome fields{0, 0, ~0U, 1, {}};
    for (const Frame &frame : grammar.frames) {
        if (frame.part.empty())
            continue;
        const Frame whole = filled(grammar, frame, automaton_of(grammar, frame.part));
        add(fields, try_frame(grammar, whole, frame.part, following(parser, printing), proving(settings)));
    }
    return fields;
}

/// What prints as it is: as a whole, or where frames tell it of their parts, within these.
Outcome prove_printed_parts(Printing &printing, const Grammar &grammar, const Settings &settings)
{
    constexpr std::size_t digits = 11; // one more than a number has
    if (std::ranges::all_of(grammar.frames, &std::string::empty, &Frame::canonical))
        return prove_canonical(printing, grammar, digits, settings);
    const Judge prints = [&](std::string_view text) { return printing.prints_as_it_is(text); };
    Outcome parts{0, 0, ~0U, 1, {}};
    for (const Frame &frame : grammar.frames)
        if (!frame.canonical.empty())
            add(parts, try_frame(grammar, frame, frame.canonical, prints, proving(settings)));
    return parts;
}

/// How often words may stand in a row.
Outcome prove_rows(Parser &parser, Printing &printing, const Grammar &grammar)
{
    Outcome rows{0, 0, 0, 1, {}};
    for (const Frame &frame : grammar.frames)
        if (frame.part.empty())
            add(rows, prove_row(frame, following(parser, printing)));
    return rows;
}

/// What is too large for one automaton, part by part.
bool prove_parts(Parser &parser, const Grammar &grammar, const Settings &settings)
{
    Printing printing(parser, grammar);
    bool right = report(grammar.name, "fields", prove_fields(parser, printing, grammar, settings));
    right &= report(grammar.name, "canonical", prove_printed_parts(printing, grammar, settings));
    if (const Outcome rows = prove_rows(parser, printing, grammar); rows.trial.texts != 0)
        right &= report(grammar.name, "rows", rows);
    Outcome orders{0, 0, ~0U, 1, {}};
    for (const Order &order : grammar.orders)
        add(orders, prove_order(order, automaton_of(grammar, order.part), following(parser, printing), settings));
    right &= grammar.orders.empty() || report(grammar.name, "orders", orders);
    return report_printed(grammar.name, printing) && right;
}

/// Every value of the numbers from 65536 to 2^32 - 1, of each number of the grammar at the first place where it stands.
bool prove_numbers(Parser &parser, const Grammar &grammar)
{
    std::set<std::pair<std::string, std::uint64_t>> swept; // parts, and the bounds in them
    Trial trial;
    const auto sweep = [&](const Subject &subject) {
        for (const Place &place : subject.places)
            if (!is_small(place.number) && place.number.high <= 0xffffffff &&
                swept.emplace(place.part, place.number.high).second)
                try_every_number(subject.automaton, subject.takes, place, trial);
    };
    const Judge takes = [&](std::string_view text) { return parser.takes(text); };
    if (grammar.frames.empty()) {
        const Within within(grammar);
        sweep({within.cut(texts_of(grammar)), 0, within.judge(takes), places(grammar, "text")});
    }
    for (const Frame &frame : grammar.frames)
        if (!frame.part.empty())
            try_frame(grammar, frame, frame.part, takes, sweep);
    if (!swept.empty())
        std::cout << grammar.name << " numbers: every value of " << swept.size() << ", " << trial.texts << " texts\n";
    return report_differences(trial);
}

/// Values to begin with: each byte of them is changed in turn.
std::vector<std::vector<std::uint8_t>> first_values(const Parser &parser)
{
    std::vector<std::vector<std::uint8_t>> values;
    for (const std::uint8_t fill : std::initializer_list<std::uint8_t>{0, 1, 0x5b, 0xff})
        values.emplace_back(parser.value_size(), fill);
    std::mt19937 random{1}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same values on every run
    for (unsigned i = 0; i < 12; ++i) {
        std::vector<std::uint8_t> &value = values.emplace_back(parser.value_size());
        std::ranges::generate(value, [&] { return static_cast<std::uint8_t>(random()); });
    }
    return values;
}

/// Values of a type that takes no text: every two bytes that stand beside each other, or in short every byte.
bool prove_values(Parser &parser, const Grammar &grammar, const Settings &settings)
{
    Printing printing(parser, grammar);
    const std::uint32_t kind = parser.kind().value_or(0);
    const std::size_t head = parser.kind() ? sizeof kind : 0;
    std::uint64_t values = 0;
    for (std::vector<std::uint8_t> &value : first_values(parser)) {
        std::memcpy(value.data(), &kind, head);
        for (std::size_t at = head; at + 1 < value.size(); ++at) {
            const std::uint8_t first = value[at];
            const std::uint8_t second = value[at + 1];
            for (unsigned pair = 0; pair < 0x10000; pair += settings.is_short ? 0x101 : 1, ++values) {
                value[at] = static_cast<std::uint8_t>(pair >> 8);
                value[at + 1] = static_cast<std::uint8_t>(pair);
                printing.follow_value(value);
            }
            value[at] = first;
            value[at + 1] = second;
        }
    }
    std::cout << grammar.name << " values: " << values << " printed\n";
    return report_printed(grammar.name, printing);
}

bool prove_type(const host::Host &host, const std::string &name, const Settings &settings)
{
    const Grammar grammar = grammar_of(name);
    Parser parser(host, name);
    if (settings.every_number)
        return !grammar.has("text") || prove_numbers(parser, grammar);
    if (!grammar.has("text"))
        return !grammar.has("printed") || prove_values(parser, grammar, settings);
    if (parser.prints() != grammar.prints) {
        std::cout << name << (grammar.prints ? " does not print\n" : " prints\n");
        return false;
    }
    return grammar.frames.empty() ? prove_texts(parser, grammar, settings) : prove_parts(parser, grammar, settings);
}

Settings read_settings(int count, char **arguments)
{
    Settings settings;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "--texts" && i + 1 < count)
            settings.texts = std::stod(arguments[++i]);
        else if (argument == "--short")
            settings.is_short = true;
        else if (argument == "--every-number")
            settings.every_number = true;
        else if (settings.plugin.empty())
            settings.plugin = argument;
        else
            settings.names.push_back(argument);
    }
    if (settings.plugin.empty())
        throw std::invalid_argument("usage: bgpdt_prove PLUGIN [--texts N] [--short] [--every-number] [NAME...]");
    if (settings.names.empty())
        settings.names.assign(names().begin(), names().end());
    return settings;
}

} // namespace

int main(int count, char **arguments)
{
    try {
        const Settings settings = read_settings(count, arguments);
        const host::Host host(settings.plugin);
        bool right = true;
        for (const std::string &name : settings.names)
            right &= prove_type(host, name, settings);
        if (right)
            std::cout << "proved: " << settings.names.size() << " grammars are equal to the parsers on " << texts_tried
                      << " texts\n";
        return right ? 0 : 1;
    } catch (const std::exception &error) {
        std::cerr << "bgpdt_prove: " << error.what() << '\n';
        return 2;
    }
}
