// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "asking.hpp"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>
#include <utility>

#include "near_texts.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::size_t most_bytes = 2'000'000; ///< of all texts tried together
constexpr std::size_t most_added = 4;         ///< characters more than in the text, of what is near
constexpr const char *usual_separators = ".:/-[] ";

std::string separators_of(const Sample &sample)
{
    std::string all = joined(sample.texts, "");
    std::erase_if(all, is_inner);
    all += usual_separators;
    std::string each;
    std::ranges::copy_if(all, std::back_inserter(each), [&each](char c) { return each.find(c) == std::string::npos; });
    return each;
}

} // namespace

Asking::Asking(Session &session, const SYSDT_Record &type, std::uint8_t mode, std::size_t most_tries)
    : session_(session), type_(type), mode_(mode), sample_(sample_of(type.typeId)),
      kinds_(toolkit::kinds(session, type)), separators_(separators_of(sample_)), tries_left_(most_tries),
      bytes_left_(most_bytes)
{
}

Bytes Asking::value_of(std::string_view text) const
{
    host::Converted converted = session_.parse(type_, text, mode_);
    return converted.ok() ? std::move(converted.data) : Bytes();
}

Bytes Asking::try_text(std::string_view text)
{
    if (tries_left_ == 0 || bytes_left_ < text.size())
        throw Spent();
    --tries_left_;
    bytes_left_ -= text.size();
    return value_of(text);
}

bool takes_lists(const Refused &refused)
{
    const auto has_blank = [](const std::string &sample) { return sample.find(' ') != std::string::npos; };
    return std::ranges::any_of(refused.samples(), has_blank);
}

bool Refused::takes(const std::string &candidate)
{
    const Bytes value = asking.try_text(candidate);
    if (!value.empty() && !asking.kinds().empty() && candidate.size() <= text.size() + most_added)
        near_kinds.insert(kind_of(value));
    return !value.empty();
}

std::string Refused::accepted(std::size_t at, std::size_t length, std::string_view candidates)
{
    std::string taken;
    for (const char c : candidates) {
        const Edit edit{at, length, std::string(1, c)};
        if ((c != ' ' || separates(text, at, length)) && piece(at, length) != edit.by && takes(edit))
            taken += c;
    }
    return taken;
}

std::optional<std::uint64_t> Refused::greatest(const std::string &whole, Range run)
{
    std::uint64_t refused = std::numeric_limits<std::uint64_t>::max();
    const bool beyond = std::from_chars(whole.data() + run.begin, whole.data() + run.end, refused).ec != std::errc();
    const auto takes_number = [&](std::uint64_t number) {
        return takes(edited(whole, {run.begin, run.size(), std::to_string(number)}));
    };
    const std::uint64_t trials[] = {1, 0, refused / 10};
    const auto *const trial =
        std::ranges::find_if(trials, [&](std::uint64_t number) { return number < refused && takes_number(number); });
    if (trial == std::end(trials))
        return {};
    if (takes_number(refused)) { // the number is beyond what counts here, or refused for the way it is written
        const Edit next{run.begin, run.size(), "18446744073709551616"};
        return beyond && !takes(edited(whole, next)) ? std::optional(refused) : std::nullopt;
    }
    std::uint64_t taken = *trial;
    while (refused - taken > 1) {
        const std::uint64_t middle = taken + (refused - taken) / 2;
        (takes_number(middle) ? taken : refused) = middle;
    }
    return taken;
}

Found Refused::found(const Edit &edit, std::string reason) const
{
    return Diagnosis{text, edit.at, edit.length, std::move(reason), edited(text, edit)};
}

Found Refused::rewritten(const std::string &by, const std::string &reason)
{
    return by != text && takes(by) ? found(difference(text, by), reason) : Found{};
}

Found Refused::told(Range place, std::string reason) const
{
    return Diagnosis{text, place.begin, place.size(), std::move(reason)};
}

} // namespace bgpdt::toolkit
