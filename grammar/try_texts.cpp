// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// bgpdt_try_texts NAME COUNT: so many texts in and near the language of the grammar, a line each, behind '+' if they are
/// in it, behind '-' if not, behind '?' if the grammar says nothing of them. With - as COUNT the lines of the input.
#include <cstdlib>
#include <iostream>
#include <optional>
#include <random>
#include <string>

#include "automaton.hpp"
#include "catalogue.hpp"

namespace {

using namespace bgpdt::grammar;

class Source {
public:
    explicit Source(const Automaton &automaton)
        : automaton_(automaton), samples_(samples_of_classes(automaton)), alive_(alive(automaton))
    {
    }

    std::string near()
    {
        std::string text = inside();
        for (auto changes = random_() % 3; changes != 0; --changes)
            change(text);
        return text;
    }

private:
    std::string inside()
    {
        constexpr std::size_t longest = 400;
        std::string text;
        Automaton::State state = automaton_.start;
        while (text.size() < longest && !(automaton_.accepting[state] && random_() % 4 == 0)) {
            const auto byte = static_cast<unsigned char>(random_() % 4 == 0 ? '!' + random_() % 94
                                                                            : samples_[random_() % samples_.size()]);
            const Automaton::State next = automaton_.step(state, byte);
            if (byte > ' ' && alive_[next]) {
                text += static_cast<char>(byte);
                state = next;
            } else if (automaton_.accepting[state] && random_() % 64 == 0) {
                break;
            }
        }
        return text;
    }

    void change(std::string &text)
    {
        constexpr std::string_view usual = "0123456789abcfABF.:-/[]*+";
        const char byte =
            random_() % 8 == 0 ? static_cast<char>('!' + random_() % 94) : usual[random_() % usual.size()];
        const std::size_t at = random_() % (text.size() + 1);
        const auto kind = random_() % 4;
        if (kind == 0 || at == text.size())
            text.insert(at, 1, byte);
        else if (kind == 1)
            text.erase(at, 1);
        else if (kind == 2)
            text[at] = byte;
        else
            text.insert(at, text.substr(at, random_() % 4));
    }

    const Automaton &automaton_;
    std::vector<unsigned char> samples_;
    std::vector<bool> alive_;
    std::mt19937 random_{1}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts on every run
};

/// What the grammar says of texts.
class Judge {
public:
    /// Of a list what is not long.
    explicit Judge(const Grammar &grammar) : texts_(automaton_of(grammar, grammar.has("short") ? "short" : "text"))
    {
        for (const char *part : {"beyond", "long"})
            if (grammar.has(part))
                beyond_ = automaton_of(grammar, part);
    }
    const Automaton &texts() const { return texts_; }
    char operator()(const std::string &text) const
    {
        return beyond_ && beyond_->accepts(text) ? '?' : texts_.accepts(text) ? '+' : '-';
    }

private:
    Automaton texts_;
    std::optional<Automaton> beyond_;
};

} // namespace

int main(int count, char **arguments)
{
    if (count != 3) {
        std::cerr << "usage: bgpdt_try_texts NAME COUNT\n";
        return 2;
    }
    const Judge judge(grammar_of(arguments[1]));
    if (arguments[2] == std::string("-")) {
        for (std::string text; std::getline(std::cin, text);)
            std::cout << judge(text) << text << '\n';
        return 0;
    }
    Source source(judge.texts());
    for (long left = std::strtol(arguments[2], nullptr, 10); left > 0; --left) {
        const std::string text = source.near();
        std::cout << judge(text) << text << '\n';
    }
}
