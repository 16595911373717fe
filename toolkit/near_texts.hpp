// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What texts near a refused one could be meant: edits of it, the likeliest first, whatever type it is of. Which of them
/// a type takes is not known here.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "text_pieces.hpp"

namespace bgpdt::toolkit {

/// Whether the places are both inside a number or a word.
bool joins(const std::string &text, std::size_t before, std::size_t behind);
/// Whether a blank in the place of the part would have something else on both sides.
bool separates(const std::string &text, std::size_t at, std::size_t length);

/// An UTF-8 sequence is one character.
std::vector<Range> characters(const std::string &text, Range window);
/// The end of the text, then in front of each character.
std::vector<std::size_t> gaps(const std::string &text, Range window);
/// The numbers, the last first.
std::vector<Range> last_numbers(const std::string &text, Range window);
/// Where words begin.
std::vector<std::size_t> word_beginnings(const std::string &text, Range window);

/// The whole text written in another way.
struct Rewriting {
    std::string (*of)(const std::string &text);
    const char *reason;
};
std::span<const Rewriting> rewritings();

/// A word in the place of one that is like it.
struct WordEdit {
    std::size_t distance;
    Edit edit;
};
/// Instead of what begins at the place, the words most like it first.
std::vector<WordEdit> words_like(const std::string &text, std::size_t at, const Texts &words);

/// Hexadecimal digits in groups as samples write them.
Edits regroupings(const std::string &text, Range window, const Texts &samples);
/// Pieces in brackets, as far as samples have any.
Edits bracketings(const std::string &text, const Texts &samples);
/// Keys beside or like those that were meant.
Edits lookalikes(const std::string &text, Range window);
/// Two characters of a number or word in the other order.
Edits swaps(const std::string &text, Range window);
/// Without one character: those that join two numbers or words, or all others.
Edits deletions(const std::string &text, Range window, bool joining);
/// Without its end, its beginning, a few pieces, the letters ahead of a number, a group in brackets. What is left is most
/// of the text.
Edits removals(const std::string &text, Range window);

/// The ends of samples that may follow the text, the shortest first.
Edits endings(const std::string &text, const Texts &samples);
Edits beginnings(const std::string &text, const Texts &samples);
/// Parts of samples, from the end of the text on: what is forgotten tends to be the end of something.
Edits insertions(const std::string &text, Range window, const Texts &samples);

} // namespace bgpdt::toolkit
