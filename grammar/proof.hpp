// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Whether a parser takes what an automaton accepts, shown by the W-method with identifying sets for each state.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automaton.hpp"
#include "samples.hpp"

namespace bgpdt::grammar {

using Judge = std::function<bool(std::string_view)>;

/// What was tried, and what was found.
struct Trial {
    std::uint64_t texts = 0;
    std::vector<std::string> differences; ///< the first texts on which parser and automaton differ
    std::uint64_t wrong = 0;

    void add(std::string_view text, bool right);
};

/// Numbers at a place: every value within its bounds, and some beyond.
void try_every_number(const Automaton &automaton, const Judge &takes, const Place &place, Trial &trial);

/// Compares a parser with a minimal automaton.
class Proof {
public:
    Proof(const Automaton &automaton, Judge takes);
    /// @param samples  the bytes that words are made of
    Proof(const Automaton &automaton, Judge takes, std::vector<unsigned char> samples);

    const Trial &trial() const { return trial_; }

    /// Behind each state, or one in so many, every byte.
    void try_bytes(std::size_t share);
    double bytes_cost() const;
    /// Behind each state all words over a byte of each class, one longer than the extra states that they would show.
    void try_words(unsigned extra_states);
    /// How many texts that makes.
    double words_cost(unsigned extra_states) const;
    /// Behind each state, or one in so many, a byte of each class so many times in a row.
    void try_runs(std::size_t longest, std::size_t share);
    /// Numbers at a place: these values, with up to so many leading zeros.
    void try_numbers(const Place &place, const std::vector<std::uint64_t> &values, unsigned zeros);
    void try_every_number(const Place &place) { grammar::try_every_number(automaton_, takes_, place, trial_); }

private:
    void try_endings(Automaton::State state, std::string &text);
    void try_words_behind(Automaton::State state, std::string &text, unsigned left);
    void try_text(std::string_view text, bool expected);

    const Automaton &automaton_;
    Judge takes_;
    std::vector<unsigned char> samples_;
    std::vector<std::string> access_;
    std::vector<std::vector<std::string>> endings_; ///< by state
    std::vector<std::vector<bool>> expected_;       ///< by state, for each of its endings
    Trial trial_;
};

} // namespace bgpdt::grammar
