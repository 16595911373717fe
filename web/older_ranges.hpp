// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The algorithms on ranges that the C++ library of Emscripten 3.1.6, libc++ 13, does not have yet. Included in front of
/// every source.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#if defined(_LIBCPP_VERSION) && _LIBCPP_VERSION < 15000
namespace std::ranges {

/// What an algorithm on iterators asks, asked of the projection.
template <class Predicate, class Projection>
constexpr auto projected_by(Predicate &predicate, Projection &projection)
{
    return [&](auto &&element) -> bool { return std::invoke(predicate, std::invoke(projection, element)); };
}

template <class Range, class Predicate, class Projection = std::identity>
constexpr auto find_if(Range &&range, Predicate predicate, Projection projection = {})
{
    return std::find_if(std::begin(range), std::end(range), projected_by(predicate, projection));
}

template <class Range, class Predicate>
constexpr auto find_if_not(Range &&range, Predicate predicate)
{
    return std::find_if_not(std::begin(range), std::end(range), predicate);
}

template <class Range, class Value, class Projection = std::identity>
constexpr auto find(Range &&range, const Value &value, Projection projection = {})
{
    return ranges::find_if(
        range, [&value](const auto &element) { return element == value; }, projection);
}

template <class Range, class Value, class Projection = std::identity>
constexpr auto count(Range &&range, const Value &value, Projection projection = {})
{
    auto equal = [&value](const auto &element) { return element == value; };
    return std::count_if(std::begin(range), std::end(range), projected_by(equal, projection));
}

template <class Range, class Predicate>
constexpr bool all_of(Range &&range, Predicate predicate)
{
    return std::all_of(std::begin(range), std::end(range), predicate);
}

template <class Range, class Predicate>
constexpr bool any_of(Range &&range, Predicate predicate)
{
    return std::any_of(std::begin(range), std::end(range), predicate);
}

template <class Range, class Predicate>
constexpr bool none_of(Range &&range, Predicate predicate)
{
    return std::none_of(std::begin(range), std::end(range), predicate);
}

template <class First, class Second>
constexpr bool equal(First &&first, Second &&second)
{
    return std::equal(std::begin(first), std::end(first), std::begin(second), std::end(second));
}

template <class Range, class Output>
constexpr auto copy(Range &&range, Output output)
{
    return std::copy(std::begin(range), std::end(range), output);
}

template <class Range, class Output, class Predicate>
constexpr auto copy_if(Range &&range, Output output, Predicate predicate)
{
    return std::copy_if(std::begin(range), std::end(range), output, predicate);
}

template <class Range, class Output, class Operation>
constexpr auto transform(Range &&range, Output output, Operation operation)
{
    auto apply = [&operation](auto &&element) { return std::invoke(operation, element); };
    return std::transform(std::begin(range), std::end(range), output, apply);
}

template <class Range, class Value>
constexpr void replace(Range &&range, const Value &from, const Value &to)
{
    std::replace(std::begin(range), std::end(range), from, to);
}

template <class Range, class Predicate, class Value>
constexpr void replace_if(Range &&range, Predicate predicate, const Value &to)
{
    std::replace_if(std::begin(range), std::end(range), predicate, to);
}

template <class Range>
constexpr void reverse(Range &&range)
{
    std::reverse(std::begin(range), std::end(range));
}

template <class Range>
constexpr auto min_element(Range &&range)
{
    return std::min_element(std::begin(range), std::end(range));
}

template <class Range, class Projection>
constexpr auto adjacent_find(Range &&range, std::equal_to<> /*alike*/, Projection projection)
{
    const auto alike = [&projection](const auto &first, const auto &second) {
        return std::invoke(projection, first) == std::invoke(projection, second);
    };
    return std::adjacent_find(std::begin(range), std::end(range), alike);
}

template <class Projection>
constexpr auto less_by(Projection &projection)
{
    return [&projection](const auto &first, const auto &second) {
        return std::invoke(projection, first) < std::invoke(projection, second);
    };
}

/// By insertion: the lists are short, and std::stable_sort would be some kilobytes for each of them.
template <class Range, class Projection>
constexpr void stable_sort(Range &&range, std::less<> /*order*/, Projection projection)
{
    for (auto at = std::begin(range); at != std::end(range); ++at)
        std::rotate(std::upper_bound(std::begin(range), at, *at, less_by(projection)), at, std::next(at));
}

template <class Range, class Projection>
constexpr void sort(Range &&range, std::less<> /*order*/, Projection projection)
{
    std::sort(std::begin(range), std::end(range), less_by(projection));
}

} // namespace std::ranges
#endif
