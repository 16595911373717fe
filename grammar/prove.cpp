// SPDX-License-Identifier: Apache-2.0
/// @file
/// bgpdt_prove PLUGIN [--texts N] [--short] [--every-number] [NAME...]: whether the plug-in takes what the grammars say.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "catalogue.hpp"
#include "parser.hpp"
#include "proof.hpp"

namespace {

using namespace bgpdt;
using namespace bgpdt::grammar;

struct Settings {
    std::string plugin;
    double texts = 5e7;    ///< about as many words for each automaton at most
    bool is_short = false; ///< of a large automaton not all states are tried
    bool every_number = false;
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

void try_places(Proof &proof, const std::vector<Place> &places, const Settings &settings)
{
    constexpr std::uint64_t small = 65'536;
    for (const Place &place : places) {
        proof.try_numbers(place, edges(place.number, settings.is_short ? 1 : 20), 3);
        const bool every = place.number.high < small ? !settings.is_short : settings.every_number;
        if (every && place.number.high <= 0xffffffff)
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

bool report(const std::string &name, const char *what, const Outcome &outcome)
{
    texts_tried += outcome.trial.texts;
    std::cout << name << ' ' << what << ": " << outcome.states << " states, " << outcome.trial.texts
              << " texts, " << outcome.extra_states << " more states, runs of " << outcome.longest;
    if (outcome.share != 1)
        std::cout << ", one state in " << outcome.share << " with every byte";
    std::cout << '\n';
    if (outcome.trial.wrong == 0)
        return true;
    std::cout << "  differs from the parser in " << outcome.trial.wrong << " texts:\n";
    for (const std::string &text : outcome.trial.differences)
        std::cout << "    " << shown(text) << '\n';
    return false;
}

/// Texts that print as they are, and that all other texts' values print as one of them.
class Canonical {
public:
    Canonical(Parser &parser, const Grammar &grammar) : parser_(parser), canonical_(automaton_of(grammar, "canonical"))
    {
        if (grammar.has("lossy"))
            lossy_ = trimmed(automaton_of(grammar, "lossy"));
    }

    bool is_printed(std::string_view text) { return parser_.takes(text) && parser_.printed() == text; }

    /// Counts texts whose value prints as no canonical text, or as one of another value.
    bool takes(std::string_view text)
    {
        if (!parser_.takes(text))
            return false;
        const std::vector<std::uint8_t> value(parser_.value().begin(), parser_.value().end());
        const std::string printed(parser_.printed());
        const bool same =
            canonical_.accepts(printed) && parser_.takes(printed) && std::ranges::equal(parser_.value(), value);
        if (!same && !(lossy_ && lossy_->accepts(text)) && wrong.size() < 5)
            wrong.emplace_back(text);
        return true;
    }

    const Automaton &automaton() const { return canonical_; }
    std::vector<std::string> wrong;

private:
    Parser &parser_;
    Automaton canonical_;
    std::optional<Automaton> lossy_;
};

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

bool prove_texts(Parser &parser, const Grammar &grammar, const Settings &settings)
{
    const Within within(grammar);
    const Automaton texts = within.cut(texts_of(grammar));
    const std::size_t run = run_length(automaton_of(grammar, "text"));
    const std::vector<Place> numbers = places(grammar, "text");
    if (!grammar.has("canonical")) {
        const Judge takes = within.judge([&](std::string_view text) { return parser.takes(text); });
        return report(grammar.name, "texts", prove({texts, run, takes, numbers}, settings));
    }
    Canonical canonical(parser, grammar);
    const Judge takes = within.judge([&](std::string_view text) { return canonical.takes(text); });
    bool right = report(grammar.name, "texts", prove({texts, run, takes, numbers}, settings));
    for (const std::string &text : canonical.wrong)
        std::cout << "  does not come back as it was: " << shown(text) << '\n';
    right &= canonical.wrong.empty();
    const Judge prints = [&](std::string_view text) { return canonical.is_printed(text); };
    return report(grammar.name, "canonical",
                  prove({canonical.automaton(), run, prints, places(grammar, "canonical")}, settings)) &&
           right;
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

/// A part within a text.
Outcome prove_frame(Parser &parser, const Grammar &grammar, const Frame &told, const Settings &settings)
{
    Automaton part = automaton_of(grammar, told.part);
    const Frame frame = filled(grammar, told, part);
    std::optional<Automaton> others;
    if (!frame.without.empty()) {
        others = automaton_of(grammar, frame.without);
        part = first_only(part, *others);
    }
    if (grammar.room != 0) {
        const auto left = static_cast<unsigned>(grammar.room - frame.front.size() - frame.behind.size());
        part = limited(part, {0, left});
    }
    const Judge takes = [&](std::string_view text) {
        return !(others && others->accepts(text)) && parser.takes(frame.front + std::string(text) + frame.behind);
    };
    return prove({part, run_length(part), takes, places(grammar, frame.part)}, settings);
}

/// A word so many times in a row: more than it may be, too.
Outcome prove_row(Parser &parser, const Frame &frame)
{
    Outcome outcome;
    std::string row;
    for (unsigned times = 0; times <= frame.times.most + 300; ++times, row += frame.word) {
        const std::string text = frame.front + row + frame.behind;
        ++outcome.trial.texts;
        if (parser.takes(text) != (times >= frame.times.least && times <= frame.times.most) &&
            ++outcome.trial.wrong <= 1)
            outcome.trial.differences.push_back(text);
    }
    outcome.states = 1;
    return outcome;
}

/// Words in any order.
Outcome prove_order(Parser &parser, const Grammar &grammar, const Order &order, const Settings &settings)
{
    std::vector<unsigned char> letters;
    for (const auto &[letter, word] : order.words)
        letters.push_back(static_cast<unsigned char>(letter));
    const Judge takes = [&](std::string_view text) {
        std::string words;
        for (const char letter : text)
            words += order.words.at(letter);
        return parser.takes(words);
    };
    const Automaton automaton = automaton_of(grammar, order.part);
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

/// What is too large for one automaton, part by part.
bool prove_parts(Parser &parser, const Grammar &grammar, const Settings &settings)
{
    Outcome frames{0, 0, ~0U, 1, {}};
    for (const Frame &frame : grammar.frames) {
        if (frame.part.empty())
            continue;
        const Outcome outcome = prove_frame(parser, grammar, frame, settings);
        add(frames, outcome);
    }
    bool right = report(grammar.name, "fields", frames);
    Outcome rows{0, 0, 0, 1, {}};
    for (const Frame &frame : grammar.frames)
        if (frame.part.empty())
            add(rows, prove_row(parser, frame));
    if (rows.trial.texts != 0)
        right &= report(grammar.name, "rows", rows);
    Outcome orders{0, 0, ~0U, 1, {}};
    for (const Order &order : grammar.orders)
        add(orders, prove_order(parser, grammar, order, settings));
    return (grammar.orders.empty() || report(grammar.name, "orders", orders)) && right;
}

bool prove_type(const host::Host &host, const std::string &name, const Settings &settings)
{
    const Grammar grammar = grammar_of(name);
    if (!grammar.has("text"))
        return true;
    Parser parser(host, name);
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
