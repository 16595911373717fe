// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a grammar says: expressions over bytes, numbers among them, and the named parts of one text form.
#pragma once

#include <bitset>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bgpdt::grammar {

using ByteSet = std::bitset<256>;

/// How often something stands in a row. There is no most where it is `unlimited`.
struct Times {
    static constexpr unsigned unlimited = ~0U;
    unsigned least = 1;
    unsigned most = 1;
};

/// A number's text: digits for a value within bounds.
struct Number {
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    unsigned base = 10;                ///< 10, or 16 with digits in lower case
    unsigned width = Times::unlimited; ///< digits at most; leading zeros fill them. 0: no leading zero
};

struct Expression {
    enum class Kind { bytes, number, name, sequence, choice, repeat };

    Kind kind = Kind::sequence;
    ByteSet bytes;                 ///< of `bytes`: any one of these
    Number number;                 ///< of `number`
    std::string name;              ///< of `name`: the part meant
    Times times;                   ///< of `repeat`
    std::vector<Expression> parts; ///< of `sequence` and `choice`; of `repeat` the one that repeats
};

Expression one_of(ByteSet bytes);
Expression word(std::string_view text);
Expression sequence(std::vector<Expression> parts);
Expression choice(std::vector<Expression> parts);
Expression repeat(Expression part, Times times);

/// The number as digits: without leading zeros a choice by leading digits, in the order of the values.
Expression spelled(const Number &number);

std::string digits_of(std::uint64_t value, unsigned base);

/// A language: what the expression gives, within limits of length, and of what other parts give.
struct Language {
    Expression expression;
    Times length{0, Times::unlimited};
    std::string within;  ///< the name of a part, whose texts alone are meant, or empty
    std::string but_not; ///< the name of a part whose texts are not meant, or empty

    bool is_limited() const
    {
        return length.least != 0 || length.most != Times::unlimited || !within.empty() || !but_not.empty();
    }
};

/// A part within a text: what stands in front of it and behind it.
struct Frame {
    std::string front;
    std::string part; ///< empty: rows of a word
    std::string behind;
    std::string word;      ///< of a row: what stands there so many times
    Times times;           ///< of a row: how often that may be
    std::string without;   ///< a part: texts in the frame of which nothing is said, or empty
    std::string canonical; ///< a part: the texts in the frame that print as they are, or empty where none is told
};

/// An order of words: a part whose letters stand for them.
struct Order {
    std::string part;
    std::map<char, std::string> words;
};

/// The grammar of one type's, or one kind's, texts.
struct Grammar {
    std::string name;     ///< of the type, or TYPE/KIND
    std::string about;    ///< the comment at its head
    bool loose = false;   ///< whether `text` tells a form alone: frames and orders say what is taken
    std::size_t room = 0; ///< of frames: the characters that a text may have, 0 if there is no limit
    std::vector<Frame> frames;
    std::vector<Order> orders;
    bool prints = true;                    ///< whether values print
    bool trimmed = true;                   ///< whether white space at both ends of a text does not count
    std::vector<std::string> order;        ///< its own parts that `text` needs, as they were written
    std::map<std::string, Language> parts; ///< own ones, and those of the common file that they use
    std::string written;                   ///< the definitions of its own parts as they stand in its file

    const Language &part(const std::string &part_name) const { return parts.at(part_name); }
    bool has(const std::string &part_name) const { return parts.contains(part_name); }
};

} // namespace bgpdt::grammar
