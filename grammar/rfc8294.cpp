// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// bgpdt_rfc8294 prints docs/rfc8294.md: where the patterns of RFC 8294 and the types here differ, from their automata.
/// bgpdt_rfc8294 RULE: '+' in front of each line of the input that the rule takes, '-' of the others.
#include <cmath>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "automaton.hpp"
#include "catalogue.hpp"

namespace {

using namespace bgpdt::grammar;

struct Pair {
    const char *type;
    const char *standard;
    const char *reading; ///< how the texts that both take are read there; they are read otherwise here
};

constexpr Pair pairs[] = {
    {"VRFRD", "route-distinguisher", "a type of 1 to 4 hexadecimal digits and a value of 1 to 12"},
    {"VRFRT", "route-target", "a type of 1 to 4 hexadecimal digits and a value of 1 to 12"},
    {"SOO", "route-origin", "a type of 1 to 4 hexadecimal digits and a value of 1 to 12"},
    {"VRFRTV6", "ipv6-route-target", ""},
};

/// Exact below 2^64, where a long double still holds every number.
std::string told(const std::optional<long double> &count)
{
    if (!count)
        return "without end";
    char text[64];
    if (*count < 1.8e19L) {
        (void)std::snprintf(text, sizeof text, "%.0Lf", *count);
        return text;
    }
    const int exponent = static_cast<int>(std::floor(std::log10(*count)));
    (void)std::snprintf(text, sizeof text, "about %.2Lf x 10^%d", *count / std::pow(10.0L, exponent), exponent);
    return text;
}

std::string examples(const Automaton &automaton)
{
    constexpr std::size_t shown = 6;
    std::string line;
    for (const std::string &text : shortest(automaton, shown))
        line += (line.empty() ? "`" : ", `") + text + "`";
    return line.empty() ? "none" : line;
}

void print_row(const char *what, const Automaton &automaton)
{
    std::cout << "| " << what << " | " << told(count(automaton)) << " | " << examples(automaton) << " |\n";
}

void print_pair(const Pair &pair, const Grammar &standards)
{
    const Automaton here = automaton_of(grammar_of(pair.type), "text");
    const Automaton there = automaton_of(standards, pair.standard);
    const Automaton shared = both(here, there);
    std::cout << "\n## " << pair.type << " and " << pair.standard
              << "\n\n| taken by | texts | shortest |\n| --- | --- | --- |\n";
    print_row("either", either(here, there));
    print_row("both", shared);
    print_row("the type alone", first_only(here, there));
    print_row("the pattern alone", first_only(there, here));
    if (pair.reading[0] == '\0')
        return;
    const Automaton typed = automaton_of(standards, "typed");
    std::cout << "\nOf the texts that both take, " << told(count(first_only(shared, typed)))
              << " are read differently: the type reads an AS number and a number in decimal, the pattern "
              << pair.reading << ". So `10:1` is AS 10 here and type 0x0010 there. " << told(count(both(shared, typed)))
              << " are read alike.\n";
}

void try_lines(const Automaton &automaton)
{
    for (std::string line; std::getline(std::cin, line);)
        std::cout << (automaton.accepts(line) ? '+' : '-') << line << '\n';
}

} // namespace

int main(int count, char **arguments)
{
    const Grammar standards = standard_grammar("rfc8294");
    if (count == 2) {
        try_lines(automaton_of(standards, arguments[1]));
        return 0;
    }
    std::cout
        << "# The types and RFC 8294\n\n"
           "The YANG module `ietf-routing-types` (RFC 8294) has patterns for what some types here take. This page\n"
           "is made of the automata of both (`grammar/standards/rfc8294.grammar`, `grammar/texts`), white space\n"
           "round the texts aside. Leading zeros make most of the types' texts; the patterns take none in decimal.\n";
    for (const Pair &pair : pairs)
        print_pair(pair, standards);
    std::cout
        << "\nThe other types of the module (times, bandwidths, labels, router identifiers, multicast groups) have\n"
           "no counterpart here that reads text by itself.\n";
}
