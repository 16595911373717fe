// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What becomes of texts when their values print, compared with what the grammar says of it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automaton.hpp"
#include "parser.hpp"

namespace bgpdt::grammar {

class Printing {
public:
    Printing(Parser &parser, const Grammar &grammar);

    bool prints_as_it_is(std::string_view text) { return parser_.takes(text) && parser_.printed() == text; }
    /// Looks at what the text, which the parser has just taken, prints as.
    void follow(std::string_view text);
    /// Looks at what a value of no text prints as.
    void follow_value(std::span<const std::uint8_t> value);

    /// Values that print as what is not read, and were compared with others that print so.
    std::uint64_t compared() const { return compared_; }
    /// Of the steps through the automaton of `printed`, those that a printed text took, and all.
    std::size_t steps_met() const;
    std::size_t steps() const;

    struct Finding {
        std::string text;
        std::string what;
    };
    std::vector<Finding> findings; ///< the first of them

private:
    using Bytes = std::vector<std::uint8_t>;

    void find(std::string_view text, const char *what);
    void follow_canonical(std::string_view text, const Bytes &value, const std::string &printed);
    void follow_other(std::string_view text, const Bytes &value, const std::string &printed);
    void compare(std::string_view text, const Bytes &value, const std::string &printed);
    bool is_lossy(std::string_view text) const { return lossy_ && lossy_->accepts(text); }
    bool reads_back(const std::string &printed, const Bytes &value);
    void meet(std::string_view printed);

    /// What printed: hashes of the text and of the value. A slot keeps the last of those that share it.
    struct Slot {
        std::uint64_t printed = 0;
        std::uint64_t value = 0;
    };

    Parser &parser_;
    std::optional<Automaton> canonical_;
    std::optional<Automaton> printed_;
    std::optional<Automaton> lossy_;
    std::vector<bool> met_; ///< by state of `printed` and class
    std::vector<Slot> slots_;
    std::uint64_t compared_ = 0;
};

} // namespace bgpdt::grammar
