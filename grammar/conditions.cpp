// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "conditions.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace bgpdt::grammar {
namespace {

using Kind = Expression::Kind;

/// Takes parts with limits out of expressions, as alternatives whose first condition is the expression without limits.
class Flattening {
public:
    explicit Flattening(const Grammar &grammar) : grammar_(grammar) {}

    std::vector<Alternative> flat(const Expression &expression) const
    {
        if (!has_limits(expression))
            return {{{expression}, {}}};
        switch (expression.kind) {
        case Kind::name: return limited(grammar_.part(expression.name));
        case Kind::choice: return flat_choice(expression);
        case Kind::repeat: return flat_repeat(expression);
        default: return flat_row(expression.parts);
        }
    }

    std::vector<Alternative> limited(const Language &part) const
    {
        std::vector<Alternative> alternatives = flat(part.expression);
        for (Alternative &alternative : alternatives) {
            if (part.length.least != 0 || part.length.most != Times::unlimited)
                alternative.must.push_back(repeat(one_of(alphabet(grammar_, alternative.must.front())), part.length));
            if (!part.within.empty())
                alternative.must.push_back(grammar_.part(part.within).expression);
            if (!part.but_not.empty())
                alternative.must_not.push_back(grammar_.part(part.but_not).expression);
        }
        return alternatives;
    }

private:
    bool has_limits(const Expression &expression) const
    {
        if (expression.kind == Kind::name) {
            const Language &part = grammar_.part(expression.name);
            return part.is_limited() || has_limits(part.expression);
        }
        return std::ranges::any_of(expression.parts, [this](const Expression &part) { return has_limits(part); });
    }

    /// What has no limits stays together.
    std::vector<Alternative> flat_choice(const Expression &expression) const
    {
        std::vector<Alternative> alternatives;
        std::vector<Expression> free;
        for (const Expression &part : expression.parts) {
            if (!has_limits(part)) {
                free.push_back(part);
                continue;
            }
            std::ranges::move(flat(part), std::back_inserter(alternatives));
        }
        if (!free.empty())
            alternatives.push_back({{choice(std::move(free))}, {}});
        return alternatives;
    }

    std::vector<Alternative> flat_repeat(const Expression &expression) const
    {
        const auto [least, most] = expression.times;
        std::vector<Alternative> alternatives;
        for (unsigned count = least; count <= most; ++count)
            std::ranges::move(flat_row(std::vector<Expression>(count, expression.parts.front())),
                              std::back_inserter(alternatives));
        return alternatives;
    }

    std::vector<Alternative> flat_row(const std::vector<Expression> &parts) const
    {
        std::vector<Alternative> rows{{{Expression()}, {}}};
        for (const Expression &part : parts) {
            std::vector<Alternative> longer;
            for (const Alternative &row : rows)
                for (const Alternative &next : flat(part))
                    longer.push_back(behind(row, next));
            rows = std::move(longer);
        }
        return rows;
    }

    /// A condition on either holds with the other without limits beside it.
    static Alternative behind(const Alternative &row, const Alternative &next)
    {
        Alternative made;
        for (const Expression &condition : row.must)
            made.must.push_back(sequence({condition, next.must.front()}));
        for (std::size_t i = 1; i < next.must.size(); ++i)
            made.must.push_back(sequence({row.must.front(), next.must[i]}));
        for (const Expression &condition : row.must_not)
            made.must_not.push_back(sequence({condition, next.must.front()}));
        for (const Expression &condition : next.must_not)
            made.must_not.push_back(sequence({row.must.front(), condition}));
        return made;
    }

    const Grammar &grammar_;
};

} // namespace

Form form_of(const Grammar &grammar)
{
    Language text = grammar.part("text");
    Form form{std::exchange(text.length, {0, Times::unlimited}), {}};
    form.alternatives = Flattening(grammar).limited(text);
    return form;
}

ByteSet alphabet(const Grammar &grammar, const Expression &expression)
{
    switch (expression.kind) {
    case Kind::bytes: return expression.bytes;
    case Kind::name: return alphabet(grammar, grammar.part(expression.name).expression);
    case Kind::number: return alphabet(grammar, spelled(expression.number));
    default: break;
    }
    ByteSet set;
    for (const Expression &part : expression.parts)
        set |= alphabet(grammar, part);
    return set;
}

} // namespace bgpdt::grammar
