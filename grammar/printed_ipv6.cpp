// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "printed_ipv6.hpp"

#include <algorithm>
#include <span>
#include <string>
#include <utility>

namespace bgpdt::grammar {
namespace {

constexpr unsigned group_count = 8;

Expression number(std::uint64_t low, std::uint64_t high, unsigned base)
{
    Expression made;
    made.kind = Expression::Kind::number;
    made.number = {low, high, base, 0};
    return made;
}

/// A part of the common file.
Expression named(const char *part)
{
    Expression made;
    made.kind = Expression::Kind::name;
    made.name = part;
    return made;
}

Expression octet() { return named("octet"); }

Expression group() { return named("printed-group"); }

Expression row(std::vector<Expression> parts) { return sequence(std::move(parts)); }

/// Four octets; with `nonzero` one of the first two is.
Expression tail(bool nonzero)
{
    Expression rest = row({word("."), octet(), word("."), octet()});
    if (!nonzero)
        return row({octet(), word("."), octet(), std::move(rest)});
    Expression front = choice({row({number(1, 255, 10), word("."), octet()}), row({word("0."), number(1, 255, 10)})});
    return row({std::move(front), std::move(rest)});
}

/// The first of the longest runs of zero groups.
struct Zeros {
    unsigned start = 0;
    unsigned length = 0;

    explicit Zeros(unsigned zero_groups)
    {
        for (unsigned i = 0; i < group_count; ++i) {
            unsigned end = i;
            while (end < group_count && (zero_groups >> end & 1) != 0)
                ++end;
            if (end - i > length) {
                start = i;
                length = end - i;
            }
        }
    }
};

// The letters of a pattern.
constexpr char zero = '0';
constexpr char other = 'g';
constexpr char unmapped = 'u'; // neither zero nor ffff
constexpr char separator = ':';
constexpr char gap = 'G';

/// Of addresses in hexadecimal of which exactly the groups whose bits are set are zero.
std::string pattern(unsigned zero_groups, const Zeros &zeros)
{
    const bool may_be_mapped = zeros.start == 0 && zeros.length == 5;
    std::string made;
    for (unsigned i = 0; i < group_count; ++i) {
        if (zeros.length > 1 && i == zeros.start) {
            made += gap;
            i += zeros.length - 1;
            continue;
        }
        if (!made.empty() && made.back() != gap)
            made += separator;
        made += (zero_groups >> i & 1) != 0 ? zero : i == 5 && may_be_mapped ? unmapped : other;
    }
    return made;
}

Expression letter(char byte)
{
    switch (byte) {
    case zero: return word("0");
    case other: return group();
    case unmapped: return number(1, 0xfffe, 16);
    case separator: return word(":");
    default: return word("::");
    }
}

/// One of the sorted patterns, what they begin with told once.
Expression tree(std::span<const std::string> patterns, std::size_t begin)
{
    std::vector<Expression> choices;
    const bool may_end = patterns.front().size() == begin; // what a pattern begins with stands in front of it
    if (may_end)
        patterns = patterns.subspan(1);
    while (!patterns.empty()) {
        const char first = patterns.front()[begin];
        const auto end = std::ranges::find_if(
            patterns, [&](const std::string &other_pattern) { return other_pattern[begin] != first; });
        const auto count = static_cast<std::size_t>(end - patterns.begin());
        choices.push_back(row({letter(first), tree(patterns.first(count), begin + 1)}));
        patterns = patterns.subspan(count);
    }
    if (choices.empty())
        return {};
    Expression more = choice(std::move(choices));
    return may_end ? repeat(std::move(more), {0, 1}) : more;
}

} // namespace

Expression printed_ipv6()
{
    std::vector<std::string> patterns;
    for (unsigned zero_groups = 0; zero_groups < 1U << group_count; ++zero_groups)
        if (const Zeros zeros(zero_groups); zeros.start != 0 || zeros.length != 6)
            patterns.push_back(pattern(zero_groups, zeros));
    std::ranges::sort(patterns);
    return choice({row({word("::ffff:"), tail(false)}), row({word("::"), tail(true)}), tree(patterns, 0)});
}

} // namespace bgpdt::grammar
