// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "number_mistakes.hpp"

#include <algorithm>

#include "near_texts.hpp"
#include "reasons.hpp"

namespace bgpdt::toolkit {

Found leading_zeros(Refused &refused)
{
    Edits edits;
    for (const Range run : last_numbers(refused.text, refused.window)) {
        const std::size_t zeros = std::min(refused.text.find_first_not_of('0', run.begin), run.end - 1) - run.begin;
        if (zeros > 0)
            edits.push_back({run.begin, zeros, ""});
    }
    return refused.first_taken(edits, [](const auto &, const auto &) { return "leading zeros cannot stand here"; });
}

Found zero_half(Refused &refused)
{
    const std::string &text = refused.text;
    Edits edits;
    for (const Range run : number_runs(text, refused.window)) {
        const bool dotted = run.end + 1 < text.size() && text[run.end] == '.' && is_digit(text[run.end + 1]);
        if (dotted && refused.piece(run.begin, run.size()) == "0" && (run.begin == 0 || text[run.begin - 1] != '.'))
            edits.push_back({run.begin, 2, ""});
    }
    return refused.first_taken(edits,
                               [](const auto &, const auto &) { return "no 0 stands in front of the dot here"; });
}

Found too_large(Refused &refused)
{
    for (const Range run : last_numbers(refused.text, refused.window)) {
        if (const std::optional<std::uint64_t> limit = refused.greatest(refused.text, run)) {
            const std::string number = refused.piece(run.begin, run.size());
            return refused.found({run.begin, run.size(), std::to_string(*limit)}, exceeds(number, *limit));
        }
    }
    return {};
}

Found several_too_large(Refused &refused)
{
    constexpr std::size_t most_numbers = 8;
    const std::vector<Range> runs = number_runs(refused.text, refused.window);
    for (std::size_t i = 0; runs.size() <= most_numbers && i < runs.size(); ++i) {
        std::string others = refused.text;
        Range run = runs[i];
        for (std::size_t j = runs.size(); j-- > 0;)
            if (j != i)
                others = edited(others, {runs[j].begin, runs[j].size(), "1"});
        for (std::size_t j = 0; j < i; ++j)
            run = {run.begin + 1 - runs[j].size(), run.end + 1 - runs[j].size()};
        if (const std::optional<std::uint64_t> limit = refused.greatest(others, run))
            return refused.told(runs[i], exceeds(refused.piece(runs[i].begin, runs[i].size()), *limit) +
                                             "; more is wrong behind it");
    }
    return {};
}

Found too_small(Refused &refused)
{
    Edits edits;
    for (const Range run : last_numbers(refused.text, refused.window))
        if (refused.piece(run.begin, run.size()) == "0")
            edits.push_back({run.begin, 1, "1"});
    return refused.first_taken(edits, [](const auto &, const auto &) { return "0 is too small here: at least 1"; });
}

Found surplus_tail(Refused &refused)
{
    Edits edits;
    std::vector<std::size_t> edges = boundaries(refused.text);
    std::ranges::reverse(edges);
    for (const std::size_t edge : edges) {
        const std::string tail = refused.text.substr(edge);
        const bool numbers = tail.find_first_not_of("0123456789.:/-") == std::string::npos;
        if (edge > 0 && numbers && tail.size() > 1 && !is_inner(tail[0]) && 2 * tail.size() <= refused.text.size())
            edits.push_back({edge, tail.size(), ""});
    }
    return refused.first_taken(edits,
                               [](const std::string &piece, const auto &) { return named(piece) + " is too much"; });
}

} // namespace bgpdt::toolkit
