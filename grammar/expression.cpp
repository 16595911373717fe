// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "expression.hpp"

#include <algorithm>
#include <utility>

namespace bgpdt::grammar {
namespace {

using Kind = Expression::Kind;

char digit(unsigned value) { return "0123456789abcdef"[value]; }

Expression digits(unsigned low, unsigned high)
{
    ByteSet set;
    for (unsigned value = low; value <= high; ++value)
        set.set(static_cast<unsigned char>(digit(value)));
    return one_of(set);
}

unsigned value_of(char digit) { return static_cast<unsigned>(digit >= 'a' ? digit - 'a' + 10 : digit - '0'); }

/// Numbers of as many digits as both bounds have, behind what stands in front of them.
class Splitter {
public:
    explicit Splitter(unsigned base) : base_(base) {}

    void split(Expression front, std::string_view low, std::string_view high)
    {
        const bool all =
            low.find_first_not_of('0') == low.npos && high.find_first_not_of(digit(base_ - 1)) == high.npos;
        if (all) {
            add_rest(std::move(front), low.size());
            return;
        }
        const unsigned first = value_of(low[0]);
        const unsigned last = value_of(high[0]);
        if (first == last || low.size() == 1) {
            front.parts.push_back(digits(first, last));
            if (low.size() == 1)
                choices.push_back(std::move(front));
            else
                split(std::move(front), low.substr(1), high.substr(1));
            return;
        }
        split_by_first_digit(front, low, high);
    }

    std::vector<Expression> choices;

private:
    void add_rest(Expression front, std::size_t count)
    {
        const auto times = static_cast<unsigned>(count);
        front.parts.push_back(count == 1 ? digits(0, base_ - 1) : repeat(digits(0, base_ - 1), {times, times}));
        choices.push_back(std::move(front));
    }

    void split_by_first_digit(const Expression &front, std::string_view low, std::string_view high)
    {
        const std::string lowest(low.size() - 1, '0');
        const std::string highest(low.size() - 1, digit(base_ - 1));
        unsigned first = value_of(low[0]);
        unsigned last = value_of(high[0]);
        const bool low_part = low.substr(1) != lowest;
        const bool high_part = high.substr(1) != highest;
        if (low_part)
            split(behind(front, first, first), low.substr(1), highest);
        first += low_part ? 1 : 0;
        last -= high_part ? 1 : 0;
        if (first <= last)
            split(behind(front, first, last), lowest, highest);
        if (high_part)
            split(behind(front, last + 1, last + 1), lowest, high.substr(1));
    }

    static Expression behind(Expression front, unsigned first, unsigned last)
    {
        front.parts.push_back(digits(first, last));
        return front;
    }

    unsigned base_;
};

/// Numbers with so many digits between the bounds, without leading zeros.
std::vector<Expression> of_length(const Number &number, std::size_t length)
{
    const std::string low = digits_of(number.low, number.base);
    const std::string high = digits_of(number.high, number.base);
    Splitter splitter(number.base);
    splitter.split({}, low.size() == length ? low : "1" + std::string(length - 1, '0'),
                   high.size() == length ? high : std::string(length, digit(number.base - 1)));
    std::vector<Expression> made;
    for (Expression &row : splitter.choices)
        made.push_back(sequence(std::move(row.parts)));
    return made;
}

/// Numbers of so many digits at least and at most; in front stands no zero unless it is said to.
Expression all_numbers(unsigned base, Times length, bool zero_in_front)
{
    if (zero_in_front)
        return repeat(digits(0, base - 1), length);
    if (length.most == 1)
        return digits(1, base - 1);
    return sequence({digits(1, base - 1), repeat(digits(0, base - 1), {length.least - 1, length.most - 1})});
}

/// Zeros fill each number up to the width.
Expression within_width(const Number &number, std::size_t shortest, std::size_t longest)
{
    std::vector<Expression> choices;
    for (std::size_t length = shortest; length <= std::min<std::size_t>(longest, number.width); ++length) {
        for (Expression &made : of_length(number, length)) {
            choices.push_back(
                length < number.width
                    ? sequence({repeat(word("0"), {0, number.width - static_cast<unsigned>(length)}), std::move(made)})
                    : std::move(made));
        }
    }
    return choice(std::move(choices));
}

/// The lengths of which the bounds let all numbers pass; 0 is of none, unless leading zeros do not count.
Times full_lengths(const Number &number, std::size_t shortest, std::size_t longest)
{
    const auto power = [&](std::size_t length) { return "1" + std::string(length - 1, '0'); };
    const std::string low = digits_of(number.low, number.base);
    const std::string high = digits_of(number.high, number.base);
    const bool from_zero = number.low == 0;
    Times full{static_cast<unsigned>(shortest), static_cast<unsigned>(longest)};
    if (from_zero ? number.width == 0 : low != power(shortest))
        ++full.least;
    if (high != std::string(longest, digit(number.base - 1)))
        --full.most;
    return full;
}

} // namespace

Expression one_of(ByteSet bytes)
{
    Expression made;
    made.kind = Kind::bytes;
    made.bytes = bytes;
    return made;
}

Expression word(std::string_view text)
{
    std::vector<Expression> parts;
    for (const char byte : text)
        parts.push_back(one_of(ByteSet().set(static_cast<unsigned char>(byte))));
    return sequence(std::move(parts));
}

Expression sequence(std::vector<Expression> parts)
{
    if (parts.size() == 1)
        return std::move(parts.front());
    Expression made;
    made.parts = std::move(parts);
    return made;
}

Expression choice(std::vector<Expression> parts)
{
    if (parts.size() == 1)
        return std::move(parts.front());
    Expression made;
    made.kind = Kind::choice;
    made.parts = std::move(parts);
    return made;
}

Expression repeat(Expression part, Times times)
{
    Expression made;
    made.kind = Kind::repeat;
    made.times = times;
    made.parts.push_back(std::move(part));
    return made;
}

std::string digits_of(std::uint64_t value, unsigned base)
{
    std::string text;
    do {
        text.insert(text.begin(), digit(static_cast<unsigned>(value % base)));
        value /= base;
    } while (value != 0);
    return text;
}

Expression spelled(const Number &number)
{
    const std::size_t shortest = digits_of(number.low, number.base).size();
    const std::size_t longest = digits_of(number.high, number.base).size();
    const bool zeros = number.width == Times::unlimited;
    if (zeros && number.high == 0)
        return repeat(word("0"), {1, Times::unlimited});
    if (!zeros && number.width != 0)
        return within_width(number, shortest, longest);
    const Times full = full_lengths(number, shortest, longest);
    std::vector<Expression> choices;
    for (std::size_t length = shortest; length <= longest; ++length) {
        if (length >= full.least && length <= full.most) {
            choices.push_back(all_numbers(number.base, full, zeros && number.low == 0));
            length = full.most;
            continue;
        }
        for (Expression &made : of_length(number, length))
            choices.push_back(std::move(made));
    }
    Expression all = choice(std::move(choices));
    return zeros ? sequence({repeat(word("0"), {0, Times::unlimited}), std::move(all)}) : all;
}

} // namespace bgpdt::grammar
