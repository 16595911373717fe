// SPDX-License-Identifier: Apache-2.0
/// @file
/// bgpdt_prove PLUGIN [--texts N] [--short] [--every-number] [NAME...]: whether the plug-in takes what the grammars say.
#include <algorithm>
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
    double texts = 2e8;    ///< about as many words for each automaton at most
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

Outcome prove(const Automaton &automaton, std::size_t run, const Judge &takes, const Grammar &grammar,
              const Settings &settings)
{
    Proof proof(automaton, takes);
    Outcome outcome{automaton.states(), run, 0, 1, {}};
    if (settings.is_short)
        outcome.share = static_cast<std::size_t>(proof.bytes_cost() / settings.texts) + 1;
    proof.try_bytes(outcome.share);
    while (proof.words_cost(outcome.extra_states + 1) <= settings.texts)
        ++outcome.extra_states;
    if (outcome.extra_states != 0)
        proof.try_words(outcome.extra_states);
    proof.try_runs(run, outcome.share);
    for (const Place &place : places(grammar)) {
        proof.try_numbers(place, edges(place.number), 3);
        if (place.number.high < 65'536 ? !settings.is_short : settings.every_number && place.number.high <= 0xffffffff)
            proof.try_every_number(place);
    }
    outcome.trial = proof.trial();
    return outcome;
}

bool report(const std::string &name, const char *what, const Outcome &outcome)
{
    std::cout << "proved: " << name << ' ' << what << ": " << outcome.states << " states, " << outcome.trial.texts
              << " texts, " << outcome.extra_states << " more states, runs of " << outcome.longest << '\n';
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

bool prove_type(const host::Host &host, const std::string &name, const Settings &settings)
{
    const Grammar grammar = grammar_of(name);
    if (!grammar.has("text"))
        return true;
    Parser parser(host, name);
    const Within within(grammar);
    const Automaton texts = within.cut(texts_of(grammar));
    const std::size_t run = run_length(automaton_of(grammar, "text"));
    if (!grammar.has("canonical")) {
        const Judge takes = within.judge([&](std::string_view text) { return parser.takes(text); });
        return report(name, "texts", prove(texts, run, takes, grammar, settings));
    }
    Canonical canonical(parser, grammar);
    const Judge takes = within.judge([&](std::string_view text) { return canonical.takes(text); });
    bool right = report(name, "texts", prove(texts, run, takes, grammar, settings));
    for (const std::string &text : canonical.wrong)
        std::cout << "  does not come back as it was: " << shown(text) << '\n';
    right &= canonical.wrong.empty();
    const Judge prints = [&](std::string_view text) { return canonical.is_printed(text); };
    return report(name, "canonical", prove(canonical.automaton(), run, prints, grammar, settings)) && right;
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
        return right ? 0 : 1;
    } catch (const std::exception &error) {
        std::cerr << "bgpdt_prove: " << error.what() << '\n';
        return 2;
    }
}
