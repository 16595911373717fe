// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "text_pieces.hpp"

#include <algorithm>
#include <limits>
#include <set>

#include "near_names.hpp"

namespace bgpdt::toolkit {
namespace {

/// What it costs to have one piece for the other.
std::size_t unlikeness(const std::string &first, const std::string &second)
{
    const bool same_sort = is_inner(first[0]) == is_inner(second[0]);
    return first == second ? 0 : lower(first) == lower(second) ? 1 : same_sort ? 2 : 6;
}

} // namespace

Edit difference(const std::string &from, const std::string &to)
{
    const std::size_t shorter = std::min(from.size(), to.size());
    std::size_t front = 0;
    while (front < shorter && from[front] == to[front])
        ++front;
    std::size_t back = 0;
    while (back < shorter - front && from[from.size() - back - 1] == to[to.size() - back - 1])
        ++back;
    return {front, from.size() - front - back, to.substr(front, to.size() - front - back)};
}

std::vector<Range> number_runs(const std::string &text, Range within)
{
    std::vector<Range> runs;
    for (std::size_t i = within.begin; i < within.end; ++i) {
        if (is_digit(text[i])) {
            const std::size_t end = std::min(text.find_first_not_of(digits, i), text.size());
            runs.push_back({i, end});
            i = end;
        }
    }
    return runs;
}

std::vector<std::size_t> boundaries(const std::string &text)
{
    std::vector<std::size_t> places{0};
    for (std::size_t i = 1; i < text.size(); ++i) {
        const bool inside_character = (static_cast<unsigned char>(text[i]) & 0xc0) == 0x80;
        if ((!is_inner(text[i]) || !is_inner(text[i - 1])) && !inside_character)
            places.push_back(i);
    }
    places.push_back(text.size());
    return places;
}

std::size_t closing(const std::string &text, std::size_t open)
{
    int depth = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        depth += text[i] == '[' ? 1 : text[i] == ']' ? -1 : 0;
        if (depth == 0)
            return i;
    }
    return std::string::npos;
}

std::string shape(const std::string &text)
{
    std::string result;
    for (const char c : text)
        if (!is_digit(c) || result.empty() || result.back() != '0')
            result += is_digit(c) ? '0' : c;
    return result;
}

bool is_edge(char before, char behind)
{
    return !is_inner(behind) || is_digit(before) != is_digit(behind) || is_letter(before) != is_letter(behind);
}

std::string Groups::laid_out(const std::string &characters) const
{
    std::string text;
    for (std::size_t i = 0; i < characters.size(); ++i)
        text += i != 0 && i % width == 0 ? std::string{separator, characters[i]} : std::string(1, characters[i]);
    return text;
}

Groups groups_at(const std::string &text, std::size_t at)
{
    const auto width_at = [&text](std::size_t from) {
        std::size_t end = from;
        while (end < text.size() && is_hex(text[end]))
            ++end;
        return end - from;
    };
    constexpr std::size_t most = 32; // more than any sample has
    Groups groups{width_at(at), 1, '\0'};
    for (std::size_t i = at + groups.width; groups.width > 1 && groups.count <= most && i < text.size();
         i += groups.width + 1, ++groups.count) {
        groups.separator = groups.count == 1 ? text[i] : groups.separator;
        if (text[i] != groups.separator || width_at(i + 1) != groups.width)
            break;
    }
    return groups.count >= 3 && groups.count <= most ? groups : Groups{0, 0, '\0'};
}

Texts parts_of(const Texts &texts)
{
    std::set<std::string> parts;
    for (const std::string &text : texts) {
        const bool bracketed = text.starts_with('[');
        const std::vector<std::size_t> edges = boundaries(text);
        for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
            const std::size_t close = text[edges[i]] == '[' ? closing(text, edges[i]) : std::string::npos;
            if (close != std::string::npos)
                parts.insert(text.substr(edges[i], close + 1 - edges[i]));
            else if (!bracketed && i + 2 < edges.size())
                parts.insert(text.substr(edges[i], edges[i + 2] - edges[i]));
        }
    }
    return {parts.begin(), parts.end()};
}

Texts pieces_of(const std::string &text)
{
    Texts pieces;
    const std::vector<std::size_t> edges = boundaries(text);
    for (std::size_t i = 0; i + 1 < edges.size(); ++i)
        pieces.push_back(text.substr(edges[i], edges[i + 1] - edges[i]));
    return pieces;
}

std::vector<Pair> aligned(const Texts &mine, const Texts &theirs)
{
    constexpr std::size_t gap = 3;
    const std::size_t width = theirs.size() + 1;
    std::vector<std::size_t> cost((mine.size() + 1) * width);
    const auto at = [&cost, width](std::size_t i, std::size_t j) -> std::size_t & { return cost[i * width + j]; };
    for (std::size_t i = 0; i <= mine.size(); ++i) {
        for (std::size_t j = 0; j < width; ++j) {
            const std::size_t none = std::numeric_limits<std::size_t>::max();
            const std::size_t both = i > 0 && j > 0 ? at(i - 1, j - 1) + unlikeness(mine[i - 1], theirs[j - 1]) : none;
            const std::size_t one = i > 0 ? at(i - 1, j) + gap : none;
            const std::size_t other = j > 0 ? at(i, j - 1) + gap : none;
            at(i, j) = i + j == 0 ? 0 : std::min({both, one, other});
        }
    }
    std::vector<Pair> pairs;
    for (std::size_t i = mine.size(), j = theirs.size(); i + j > 0;) {
        const bool both = i > 0 && j > 0 && at(i, j) == at(i - 1, j - 1) + unlikeness(mine[i - 1], theirs[j - 1]);
        const bool one = !both && i > 0 && at(i, j) == at(i - 1, j) + gap;
        pairs.push_back({both || one ? mine[--i] : "", both || !one ? theirs[--j] : "", 0});
    }
    std::ranges::reverse(pairs);
    std::size_t place = 0;
    for (Pair &pair : pairs) {
        pair.at = place;
        place += pair.mine.size();
    }
    return pairs;
}

std::string blended(const std::vector<Pair> &pairs, const std::vector<bool> &mine)
{
    std::string text;
    for (std::size_t i = 0; i < pairs.size(); ++i)
        text += mine[i] ? pairs[i].mine : pairs[i].theirs;
    return text;
}

bool runs_together(const std::vector<Pair> &pairs, const std::vector<bool> &mine)
{
    bool inner = false;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const std::string &piece = mine[i] ? pairs[i].mine : pairs[i].theirs;
        if (!piece.empty()) {
            if (inner && is_inner(piece[0]))
                return true;
            inner = is_inner(piece[0]);
        }
    }
    return false;
}

std::size_t loss(const Pair &pair)
{
    return lower(pair.mine) == lower(pair.theirs) ? 1 : std::max(pair.mine.size(), pair.theirs.size());
}

} // namespace bgpdt::toolkit
