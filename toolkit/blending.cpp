// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "blending.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "reasons.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {
namespace {

/// Text and sample side by side, and of which pairs the text's piece is kept.
struct Blend {
    std::vector<Pair> pairs;
    std::vector<bool> kept;

    std::string text() const { return blended(pairs, kept); }
    /// The first pair of which the sample's piece is taken, or the number of pairs.
    std::size_t first_lost() const { return static_cast<std::size_t>(std::ranges::find(kept, false) - kept.begin()); }
    /// How much of the text is not in it.
    std::size_t lost() const
    {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < pairs.size(); ++i)
            sum += kept[i] ? 0 : loss(pairs[i]);
        return sum;
    }
};

/// Keeps the text's pieces from one pair up to another, if the type takes that.
void keep(Refused &refused, Blend &blend, std::size_t begin, std::size_t end)
{
    const std::vector<bool> before = blend.kept;
    std::fill(blend.kept.begin() + static_cast<std::ptrdiff_t>(begin),
              blend.kept.begin() + static_cast<std::ptrdiff_t>(end), true);
    if (blend.kept != before && (runs_together(blend.pairs, blend.kept) || !refused.takes(blend.text())))
        blend.kept = before;
}

/// Keeps all of a run of pieces that only one of the two has.
void keep_runs(Refused &refused, Blend &blend)
{
    const std::vector<Pair> &pairs = blend.pairs;
    const auto sort = [&pairs](std::size_t i) { return std::pair(pairs[i].mine.empty(), pairs[i].theirs.empty()); };
    for (std::size_t begin = 0, end = 0; begin < pairs.size(); begin = end) {
        for (end = begin + 1; end < pairs.size() && sort(end) == sort(begin);)
            ++end;
        if (sort(begin) != std::pair(false, false))
            keep(refused, blend, begin, end);
    }
}

/// Keeps of the text whatever may stand beside the sample's pieces.
Blend blend_of(Refused &refused, const Texts &mine, const Texts &theirs)
{
    Blend blend{aligned(mine, theirs), {}};
    for (const Pair &pair : blend.pairs)
        blend.kept.push_back(pair.mine == pair.theirs);
    keep_runs(refused, blend);
    for (int pass = 0; pass < 2; ++pass)
        for (std::size_t i = 0; i < blend.pairs.size(); ++i)
            keep(refused, blend, i, i + 1);
    return blend;
}

/// A number that is too large in the place of the sample's.
Found number_in_blend(Refused &refused, const Pair &pair, const std::string &blend)
{
    const auto is_number = [](const std::string &piece) {
        return !piece.empty() && piece.find_first_not_of(digits) == std::string::npos;
    };
    if (!is_number(pair.mine) || !is_number(pair.theirs))
        return {};
    const std::string with_mine = edited(blend, {pair.at, pair.theirs.size(), pair.mine});
    const std::optional<std::uint64_t> limit = refused.greatest(with_mine, {pair.at, pair.at + pair.mine.size()});
    if (!limit)
        return {};
    return Diagnosis{refused.text, pair.at, pair.mine.size(), exceeds(pair.mine, *limit),
                     edited(with_mine, {pair.at, pair.mine.size(), std::to_string(*limit)})};
}

/// What stands in the text and in the sample where they first differ.
Diagnosis first_difference(const Refused &refused, const Blend &blend, std::size_t begin, std::size_t end)
{
    std::string old;
    std::string fresh;
    for (std::size_t i = begin; i < end; ++i) {
        old += blend.pairs[i].mine;
        fresh += blend.pairs[i].theirs;
    }
    const std::string reason = old.empty() ? "something is missing here, such as " + named(fresh)
                               : fresh.empty()
                                   ? named(old) + " is too much"
                                   : named(old) + " cannot stand here, something like " + lua_quoted(fresh) + " can";
    return {refused.text, blend.pairs[begin].at, old.size(), reason, blend.text()};
}

Found told(Refused &refused, const Blend &blend)
{
    const std::size_t begin = blend.first_lost();
    const auto behind = std::find(blend.kept.begin() + static_cast<std::ptrdiff_t>(begin), blend.kept.end(), true);
    const auto end = static_cast<std::size_t>(behind - blend.kept.begin());
    const bool more = std::find(behind, blend.kept.end(), false) != blend.kept.end();
    Found result = end == begin + 1 ? number_in_blend(refused, blend.pairs[begin], blend.text()) : Found{};
    if (!result)
        result = first_difference(refused, blend, begin, end);
    result->reason += more ? "; more is wrong behind it" : "";
    return result;
}

} // namespace

Found blended(Refused &refused)
{
    constexpr std::size_t most_pieces = 150;
    const Texts mine = pieces_of(refused.text);
    if (mine.size() > most_pieces)
        return {};
    std::size_t best_lost = refused.text.size() * 2 / 5 + 1;
    for (const std::string &sample : refused.samples()) {
        if (!refused.takes(sample)) // in another mode
            continue;
        const Blend blend = blend_of(refused, mine, pieces_of(sample));
        if (blend.lost() < best_lost && blend.first_lost() < blend.pairs.size()) {
            best_lost = blend.lost();
            refused.best = told(refused, blend);
            refused.best->change = Change::example;
        }
    }
    return refused.best;
}

} // namespace bgpdt::toolkit
