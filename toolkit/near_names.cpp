// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "near_names.hpp"

#include <algorithm>
#include <numeric>

#include "host/ascii.hpp"

namespace bgpdt::toolkit {
std::vector<std::size_t> distances(std::string_view word, std::string_view text)
{
    std::vector<std::size_t> row(text.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const char letter : word) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < text.size(); ++j) {
            const std::size_t replaced = diagonal + (letter == text[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row;
}

std::string lower(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), host::to_lower);
    return result;
}

std::string did_you_mean(std::string_view name, std::span<const std::string> known)
{
    constexpr std::size_t longest = 64;
    const std::string wanted = lower(name.substr(0, longest));
    std::string names;
    for (const std::string &candidate : known) {
        const std::string other = lower(candidate);
        const bool part = wanted.size() > 1 && other.find(wanted) != std::string::npos;
        if (part || distances(wanted, other).back() <= 2)
            names += (names.empty() ? "" : ", ") + candidate;
    }
    return names.empty() ? "" : " (did you mean " + names + "?)";
}

} // namespace bgpdt::toolkit
