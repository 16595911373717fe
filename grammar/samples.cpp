// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

#include <algorithm>
#include <limits>
#include <set>
#include <tuple>

#include "printed_ipv6.hpp"

namespace bgpdt::grammar {
namespace {

using Kind = Expression::Kind;

char printable(const ByteSet &bytes)
{
    for (std::size_t byte = '!'; byte <= '~'; ++byte)
        if (bytes[byte])
            return static_cast<char>(byte);
    return static_cast<char>(bytes._Find_first());
}

std::string simplest(const Grammar &grammar, const Expression &expression)
{
    std::string text;
    switch (expression.kind) {
    case Kind::bytes: return {printable(expression.bytes)};
    case Kind::number: return digits_of(expression.number.low, expression.number.base);
    case Kind::name: return simplest(grammar, grammar.part(expression.name).expression);
    case Kind::choice: return simplest(grammar, expression.parts.front());
    case Kind::repeat:
        for (unsigned i = 0; i < expression.times.least; ++i)
            text += simplest(grammar, expression.parts.front());
        return text;
    case Kind::sequence:
        for (const Expression &part : expression.parts)
            text += simplest(grammar, part);
        return text;
    }
    return text;
}

/// Collects the numbers below an expression that stands between two texts.
class Finder {
public:
    explicit Finder(const Grammar &grammar) : grammar_(grammar) {}

    void find(const Expression &expression, const Place &around)
    {
        switch (expression.kind) {
        case Kind::bytes: return;
        case Kind::number: return add(expression.number, around);
        case Kind::name: return find_in_part(expression.name, around);
        case Kind::choice:
            for (const Expression &part : expression.parts)
                find(part, around);
            return;
        case Kind::repeat: return find_repeated(expression, around);
        case Kind::sequence: return find_in_row(expression, around);
        }
    }

    std::vector<Place> found;

private:
    void add(const Number &number, Place place)
    {
        place.number = number;
        if (met_.emplace(place.front, place.behind, number.low, number.high, number.base, number.width).second)
            found.push_back(std::move(place));
    }

    void find_in_part(const std::string &name, Place place)
    {
        if (name == printed_ipv6_name)
            return; // an address has no number of its own
        place.part = name;
        find(grammar_.part(name).expression, place);
    }

    void find_repeated(const Expression &expression, Place place)
    {
        const std::string other = simplest(grammar_, expression.parts.front());
        for (unsigned i = 1; i < expression.times.least; ++i)
            place.behind = other + place.behind;
        find(expression.parts.front(), place);
    }

    void find_in_row(const Expression &expression, Place place)
    {
        std::string rest;
        std::vector<std::string> behind(expression.parts.size());
        for (std::size_t i = expression.parts.size(); i-- != 0;) {
            behind[i] = rest + place.behind;
            rest.insert(0, simplest(grammar_, expression.parts[i]));
        }
        for (std::size_t i = 0; i < expression.parts.size(); ++i) {
            find(expression.parts[i], {place.front, {}, behind[i], place.part});
            place.front += simplest(grammar_, expression.parts[i]);
        }
    }

    const Grammar &grammar_;
    std::set<std::tuple<std::string, std::string, std::uint64_t, std::uint64_t, unsigned, unsigned>> met_;
};

} // namespace

std::vector<Place> places(const Grammar &grammar, const std::string &part)
{
    Finder finder(grammar);
    finder.find(grammar.part(part).expression, {"", {}, "", part});
    return std::move(finder.found);
}

std::vector<std::uint64_t> edges(const Number &number, std::uint64_t reach)
{
    std::vector<std::uint64_t> centres{number.low, number.high};
    for (std::uint64_t power = 1; power < std::numeric_limits<std::uint64_t>::max() / 16; power *= 2)
        centres.push_back(power * 2);
    for (std::uint64_t power = 1; power < std::numeric_limits<std::uint64_t>::max() / 16; power *= number.base)
        centres.push_back(power * number.base);
    std::set<std::uint64_t> values;
    for (const std::uint64_t centre : centres)
        for (std::uint64_t i = 0; i <= 2 * reach; ++i)
            values.insert(centre - reach + i); // wraps round below 0, to the largest
    return {values.begin(), values.end()};
}

} // namespace bgpdt::grammar
