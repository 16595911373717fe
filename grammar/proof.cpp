// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "proof.hpp"

#include <algorithm>
#include <utility>

#include "identification.hpp"

namespace bgpdt::grammar {
namespace {

using State = Automaton::State;

constexpr std::size_t shown_differences = 5;

/// What stands in front of a number, its digits, and what stands behind.
struct NumberText {
    std::string text;
    std::size_t begin; ///< of the digits
    std::size_t end;

    /// The same with the next number.
    void count_up(unsigned base)
    {
        const char highest = base == 16 ? 'f' : '9';
        for (std::size_t at = end; at-- != begin; text[at] = '0')
            if (text[at] != highest) {
                text[at] = static_cast<char>(text[at] == '9' ? 'a' : text[at] + 1);
                return;
            }
        text.insert(begin, 1, '1');
        ++end;
    }
};

std::vector<unsigned char> all_samples(const Automaton &automaton)
{
    std::vector<unsigned char> samples = samples_of_classes(automaton);
    std::erase(samples, 0); // no text holds a NUL
    return samples;
}

} // namespace

Proof::Proof(const Automaton &automaton, Judge takes) : Proof(automaton, std::move(takes), all_samples(automaton)) {}

Proof::Proof(const Automaton &automaton, Judge takes, std::vector<unsigned char> samples)
    : automaton_(automaton), takes_(std::move(takes)), samples_(std::move(samples))
{
    Identification known = identify(automaton, samples_);
    access_ = std::move(known.access);
    for (State state = 0; state < automaton.states(); ++state) {
        std::vector<std::string> &endings = endings_.emplace_back();
        std::vector<bool> &expected = expected_.emplace_back();
        for (const std::uint32_t number : known.of_state[state]) {
            endings.push_back(known.endings[number]);
            expected.push_back(automaton.accepting[automaton.run(state, endings.back())]);
        }
    }
}

void Trial::add(std::string_view text, bool right)
{
    ++texts;
    if (right)
        return;
    if (++wrong <= shown_differences)
        differences.emplace_back(text);
}

void Proof::try_text(std::string_view text, bool expected) { trial_.add(text, takes_(text) == expected); }

void Proof::try_endings(State state, std::string &text)
{
    const std::size_t size = text.size();
    for (std::size_t i = 0; i < endings_[state].size(); ++i) {
        text += endings_[state][i];
        try_text(text, expected_[state][i]);
        text.resize(size);
    }
}

void Proof::try_bytes(std::size_t share)
{
    for (std::size_t state = 0; state < automaton_.states(); state += share) {
        std::string text = access_[state];
        try_endings(static_cast<State>(state), text);
        for (unsigned byte = 1; byte < 256; ++byte) {
            text += static_cast<char>(byte);
            try_endings(automaton_.step(static_cast<State>(state), static_cast<unsigned char>(byte)), text);
            text.pop_back();
        }
    }
}

double Proof::bytes_cost() const
{
    std::size_t cost = 0;
    for (State state = 0; state < automaton_.states(); ++state)
        for (unsigned byte = 1; byte < 256; ++byte)
            cost += endings_[automaton_.step(state, static_cast<unsigned char>(byte))].size();
    return static_cast<double>(cost);
}

void Proof::try_words_behind(State state, std::string &text, unsigned left)
{
    try_endings(state, text);
    if (left == 0)
        return;
    for (const unsigned char byte : samples_) {
        text += static_cast<char>(byte);
        try_words_behind(automaton_.step(state, byte), text, left - 1);
        text.pop_back();
    }
}

void Proof::try_words(unsigned extra_states)
{
    for (State state = 0; state < automaton_.states(); ++state) {
        std::string text = access_[state];
        try_words_behind(state, text, extra_states + 1);
    }
}

double Proof::words_cost(unsigned extra_states) const
{
    std::vector<double> cost(automaton_.states());
    for (State state = 0; state < cost.size(); ++state)
        cost[state] = static_cast<double>(endings_[state].size());
    for (unsigned step = 0; step <= extra_states; ++step) {
        std::vector<double> longer(cost.size());
        for (State state = 0; state < cost.size(); ++state) {
            longer[state] = static_cast<double>(endings_[state].size());
            for (const unsigned char byte : samples_)
                longer[state] += cost[automaton_.step(state, byte)];
        }
        cost = std::move(longer);
    }
    double total = 0;
    for (const double one : cost)
        total += one;
    return total;
}

void Proof::try_runs(std::size_t longest, std::size_t share)
{
    for (std::size_t state = 0; state < automaton_.states(); state += share) {
        for (const unsigned char byte : samples_) {
            std::string text = access_[state] + static_cast<char>(byte);
            State behind = automaton_.step(static_cast<State>(state), byte);
            for (std::size_t i = 1; i < longest; ++i) {
                text += static_cast<char>(byte);
                behind = automaton_.step(behind, byte);
                try_endings(behind, text);
            }
        }
    }
}

void Proof::try_numbers(const Place &place, const std::vector<std::uint64_t> &values, unsigned zeros)
{
    for (const std::uint64_t value : values) {
        std::string digits = digits_of(value, place.number.base);
        for (unsigned i = 0; i <= zeros; ++i) {
            const std::string text = place.front + digits + place.behind;
            try_text(text, automaton_.accepts(text));
            digits.insert(digits.begin(), '0');
        }
    }
}

void try_every_number(const Automaton &automaton, const Judge &takes, const Place &place, Trial &trial)
{
    constexpr std::uint64_t beyond = 70'000;
    const std::uint64_t first = place.number.low - std::min(place.number.low, beyond);
    const std::uint64_t last = place.number.high + beyond;
    const unsigned base = place.number.base;
    const std::string digits = digits_of(first, base);
    NumberText number{place.front + digits + place.behind, place.front.size(), place.front.size() + digits.size()};
    State before_last = 0; // of the digits: it changes with every tenth or sixteenth value alone
    for (std::uint64_t value = first; value <= last; ++value, number.count_up(base)) {
        const std::string_view text = number.text;
        if (value == first || value % base == 0)
            before_last = automaton.run(automaton.start, text.substr(0, number.end - 1));
        const State behind = automaton.run(before_last, text.substr(number.end - 1));
        trial.add(text, takes(text) == automaton.accepting[behind]);
    }
}

} // namespace bgpdt::grammar
