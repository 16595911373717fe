// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "reasons.hpp"

#include <span>

#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {

std::string named(std::string_view piece)
{
    constexpr std::size_t longest = 48;
    return piece.size() <= longest ? lua_quoted(piece) : "what stands here";
}

std::string listed(const Texts &words, const std::string &conjunction)
{
    const std::string front = joined(std::span(words).first(words.size() - 1), ", ");
    return front + (front.empty() ? "" : " " + conjunction + " ") + words.back();
}

std::string described(const std::string &characters)
{
    const auto has_all = [&characters](std::string_view set) {
        return set.find_first_not_of(characters) == std::string_view::npos;
    };
    if (has_all(hex_digits))
        return "a hexadecimal digit";
    if (has_all(digits))
        return "a digit";
    if (has_all("123456789"))
        return "a digit but 0";
    Texts some;
    for (const char c : characters.substr(0, 3))
        some.push_back(lua_quoted(std::string(1, c)));
    return listed(some, "or") + (characters.size() > some.size() ? " or the like" : "");
}

std::string cannot_stand(std::string_view piece) { return lua_quoted(piece) + " cannot stand here"; }

std::string cannot_stand(std::string_view piece, const std::string &what_can)
{
    return cannot_stand(piece) + ", " + what_can + " can";
}

std::string exceeds(const std::string &number, std::uint64_t limit)
{
    const std::string most = std::to_string(limit);
    const bool by_digits = most.find_first_not_of('9') == std::string::npos;
    return by_digits ? number + " is too long here: at most " + counted(most.size(), "digit")
                     : number + " is too large here: at most " + most;
}

} // namespace bgpdt::toolkit
