// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which texts lead to a state, and which ones behind it tell it from all others.
#pragma once

#include <string>
#include <vector>

#include "automaton.hpp"

namespace bgpdt::grammar {

/// Of a minimal automaton. Any two states share an ending that one accepts and the other refuses.
struct Identification {
    std::vector<std::string> access; ///< by state the first of the shortest texts that lead there
    std::vector<std::string> endings;
    std::vector<std::vector<std::uint32_t>> of_state; ///< by state the endings that identify it
};

/// @param samples  the bytes that texts are made of, at least one of each class that matters
Identification identify(const Automaton &automaton, std::vector<unsigned char> samples);

} // namespace bgpdt::grammar
