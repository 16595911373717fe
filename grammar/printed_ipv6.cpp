// SPDX-License-Identifier: Apache-2.0
#include "printed_ipv6.hpp"

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

/// Addresses of which exactly the groups whose bits are set are zero, in hexadecimal.
Expression address(unsigned zero_groups, const Zeros &zeros)
{
    const bool may_be_mapped = zeros.start == 0 && zeros.length == 5;
    std::vector<Expression> parts;
    bool separated = true;
    for (unsigned i = 0; i < group_count; ++i) {
        if (zeros.length > 1 && i == zeros.start) {
            parts.push_back(word("::"));
            i += zeros.length - 1;
            separated = true;
            continue;
        }
        if (!separated)
            parts.push_back(word(":"));
        separated = false;
        const bool zero = (zero_groups >> i & 1) != 0;
        parts.push_back(zero ? word("0") : i == 5 && may_be_mapped ? number(1, 0xfffe, 16) : group());
    }
    return row(std::move(parts));
}

} // namespace

Expression printed_ipv6()
{
    std::vector<Expression> choices{row({word("::ffff:"), tail(false)}), row({word("::"), tail(true)})};
    for (unsigned zero_groups = 0; zero_groups < 1U << group_count; ++zero_groups) {
        const Zeros zeros(zero_groups);
        if (zeros.start == 0 && zeros.length == 6)
            continue;
        choices.push_back(address(zero_groups, zeros));
    }
    return choice(std::move(choices));
}

} // namespace bgpdt::grammar
