// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Deterministic automata over bytes: made of grammars, combined, minimal.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "expression.hpp"

namespace bgpdt::grammar {

/// Complete: every state has a successor for every byte. Bytes that are alike in all states share a class.
struct Automaton {
    using State = std::uint32_t;

    std::array<std::uint8_t, 256> class_of{};
    std::size_t classes = 0;
    State start = 0;
    std::vector<State> next; ///< by state and class
    std::vector<bool> accepting;

    std::size_t states() const { return accepting.size(); }
    State step(State state, unsigned char byte) const { return next[state * classes + class_of[byte]]; }
    State run(State state, std::string_view text) const
    {
        for (const char byte : text)
            state = step(state, static_cast<unsigned char>(byte));
        return state;
    }
    bool accepts(std::string_view text) const { return accepting[run(start, text)]; }
};

inline constexpr std::string_view white_space = "\t\n\v\f\r ";

/// The part's language, minimal.
Automaton automaton_of(const Grammar &grammar, const std::string &part);
/// The language of whole texts: `text`, and where it is trimmed white space round it; minimal.
Automaton texts_of(const Grammar &grammar);

Automaton minimal(const Automaton &automaton);
Automaton trimmed(const Automaton &automaton);

/// Its texts of these lengths; minimal.
Automaton limited(const Automaton &automaton, Times length);

/// What the decision says of what either accepts; minimal.
template <class Decision>
Automaton combined(const Automaton &first, const Automaton &second, Decision decide);

Automaton both(const Automaton &first, const Automaton &second);
Automaton either(const Automaton &first, const Automaton &second);
Automaton first_only(const Automaton &first, const Automaton &second);

/// The shortest texts that are accepted, in the order of their bytes, so many at most.
std::vector<std::string> shortest(const Automaton &automaton, std::size_t count);
/// How many texts there are; nothing if there is no end to them.
std::optional<long double> count(const Automaton &automaton);
/// The length of the longest text; nothing if there is no end to it.
std::optional<std::size_t> longest(const Automaton &automaton);
/// Whether a state leads to an accepting one.
std::vector<bool> alive(const Automaton &automaton);
/// A byte of each class; that with the least harm to the eye.
std::vector<unsigned char> samples_of_classes(const Automaton &automaton);

} // namespace bgpdt::grammar
