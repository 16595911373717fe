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

std::string text_of(std::uint64_t value, unsigned base)
{
    std::string text;
    do {
        text.insert(text.begin(), digit(static_cast<unsigned>(value % base)));
        value /= base;
    } while (value != 0);
    return text;
}

unsigned value_of(char digit)
{
    return static_cast<unsigned>(digit >= 'a' ? digit - 'a' + 10 : digit - '0');
}

/// Numbers of as many digits as both bounds have, behind what stands in front of them.
class Splitter {
public:
    explicit Splitter(unsigned base) : base_(base) {}

    void split(Expression front, std::string_view low, std::string_view high)
    {
        const bool all = low.find_first_not_of('0') == low.npos && high.find_first_not_of(digit(base_ - 1)) == high.npos;
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

/// Leading zeros in front of so many digits.
void put_zeros(Expression &digits_of_number, std::size_t count, unsigned width)
{
    if (width == 0 || (width != Times::unlimited && width <= count))
        return;
    const unsigned most = width == Times::unlimited ? Times::unlimited : width - static_cast<unsigned>(count);
    digits_of_number.parts.insert(digits_of_number.parts.begin(), repeat(word("0"), {0, most}));
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

Expression spelled(const Number &number)
{
    std::vector<Expression> choices;
    const std::string high = text_of(number.high, number.base);
    std::string low = text_of(number.low, number.base);
    for (;;) {
        const bool last = low.size() == high.size();
        Splitter splitter(number.base);
        splitter.split({}, low, last ? high : std::string(low.size(), digit(number.base - 1)));
        for (Expression &made : splitter.choices) {
            put_zeros(made, low.size(), number.width);
            choices.push_back(sequence(std::move(made.parts)));
        }
        if (last)
            return choice(std::move(choices));
        low = "1" + std::string(low.size(), '0');
    }
}

} // namespace bgpdt::grammar
