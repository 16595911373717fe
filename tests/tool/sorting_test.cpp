// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lines sorted in memory and in files, beside a sort that asks for the order of every two values.
#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tool/sorting.hpp"
#include "toolkit/value_order.hpp"
#include "vector_values.hpp"

namespace {

using namespace bgpdt;
using namespace bgpdt::toolkit;
using test::session;

using Lines = std::vector<std::string>;
using Settings = tool::Sorter::Settings;

constexpr std::uint64_t plenty = std::uint64_t{1} << 30;
constexpr std::uint64_t little = 1; // as little as can be

Lines sorted(const SYSDT_Record &type, const std::vector<Bytes> &values, Settings settings)
{
    tool::Sorter sorter(session(), type, settings);
    for (std::size_t i = 0; i < values.size(); ++i)
        sorter.add(values[i], std::to_string(i));
    Lines lines;
    sorter.finish([&lines](std::string_view line) { lines.emplace_back(line); });
    return lines;
}

Lines expected(const SYSDT_Record &type, const std::vector<Bytes> &values, Settings settings)
{
    ValueOrder order(session(), type);
    std::vector<Bytes> keys = values;
    for (std::size_t i = 0; i < values.size(); ++i)
        keys[i].resize(order.make_key(values[i], keys[i].data()));
    std::vector<std::size_t> places(values.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    const auto compare = [&](std::size_t first, std::size_t second) {
        return order.compare(keys[first], keys[second]);
    };
    std::ranges::stable_sort(places, [&](std::size_t first, std::size_t second) {
        return settings.reverse ? compare(first, second) > 0 : compare(first, second) < 0;
    });
    const auto same = [&](std::size_t first, std::size_t second) { return compare(first, second) == 0; };
    if (settings.unique)
        places.erase(std::unique(places.begin(), places.end(), same), places.end());
    Lines lines;
    for (const std::size_t place : places)
        lines.push_back(std::to_string(place));
    return lines;
}

void expect_sorted(const SYSDT_Record &type, const std::vector<Bytes> &values)
{
    for (const std::uint64_t memory : {plenty, little}) {
        for (const bool unique : {false, true}) {
            for (const bool reverse : {false, true}) {
                const Settings settings{memory, unique, reverse};
                ASSERT_EQ(sorted(type, values, settings), expected(type, values, settings))
                    << name_of(type) << " memory " << memory << " unique " << unique << " reverse " << reverse;
            }
        }
    }
}

class Sorting : public testing::Test {
protected:
    template <class Value>
    std::vector<Value> picked(const std::vector<Value> &from, std::size_t count)
    {
        std::vector<Value> some;
        for (std::size_t i = 0; i < count; ++i)
            some.push_back(from[below(from.size())]);
        return some;
    }
    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_); }

    std::mt19937 random_{7};
};

TEST_F(Sorting, IsTheOrderOfEveryType)
{
    constexpr std::size_t count = 3000; // more than the least memory holds
    for (const auto &[name, list] : test::values())
        expect_sorted(session().type(name), picked(list, count));
}

/// Where numbers stand in the order, which is their own but for a few.
std::array<std::uint16_t, 257> ranks;

int order_of(std::size_t first, std::size_t second)
{
    return (ranks[first] > ranks[second]) - (ranks[first] < ranks[second]);
}

std::int32_t compare_octets(const void *, std::uint32_t, const void *first, const void *second)
{
    return order_of(*static_cast<const std::uint8_t *>(first), *static_cast<const std::uint8_t *>(second));
}

std::int32_t compare_numbers(const void *, std::uint32_t, const void *first, const void *second)
{
    std::uint32_t numbers[2];
    std::memcpy(&numbers[0], first, sizeof numbers[0]);
    std::memcpy(&numbers[1], second, sizeof numbers[1]);
    return order_of(numbers[0], numbers[1]);
}

SYSDT_Record type_of(std::uint16_t kind, SYSDT_Compare *compare)
{
    SYSDT_Record type{};
    type.typeId = 0x7abc;
    type.dataLength = 4;
    type.baseKind = kind;
    type.compare = compare;
    return type;
}

/// Values that pass many others, some of them, or none, on their way from the order of their bytes.
TEST_F(Sorting, FindsTheFewThatAreMisplaced)
{
    const SYSDT_Record octets = type_of(SYSDT_KIND_EXTEND, compare_octets);
    const SYSDT_Record numbers = type_of(SYSDT_KIND_BINARY, compare_numbers);
    constexpr std::size_t first_moved = 3; // those below tell that numbers are read
    for (std::size_t swaps = 0; swaps < 60; ++swaps) {
        std::iota(ranks.begin(), ranks.end(), std::uint16_t{0});
        for (std::size_t i = 0; i < swaps % 5; ++i)
            std::swap(ranks[first_moved + below(253)], ranks[first_moved + below(253)]);
        std::vector<Bytes> of_octets;
        std::vector<Bytes> of_numbers;
        for (std::size_t i = 0, count = 2 + below(300); i < count; ++i) {
            const auto number = static_cast<std::uint32_t>(below(256));
            of_octets.push_back({static_cast<std::uint8_t>(number), 0, static_cast<std::uint8_t>(below(3)), 0});
            of_numbers.emplace_back(sizeof number);
            std::memcpy(of_numbers.back().data(), &number, sizeof number);
        }
        ASSERT_TRUE(compares_numbers(numbers));
        expect_sorted(octets, of_octets);
        expect_sorted(numbers, of_numbers);
    }
}

std::size_t questions = 0;

int sign_of(int number) { return (number > 0) - (number < 0); }

/// By the last byte, then by the second, the greater first.
std::int32_t compare_two_bytes(const void *, std::uint32_t, const void *first, const void *second)
{
    ++questions;
    const auto *a = static_cast<const std::uint8_t *>(first);
    const auto *b = static_cast<const std::uint8_t *>(second);
    return a[3] != b[3] ? sign_of(a[3] - b[3]) : sign_of(b[1] - a[1]);
}

/// By the last byte, which tells what decides then.
std::int32_t compare_in_turn(const void *, std::uint32_t, const void *first, const void *second)
{
    const auto *a = static_cast<const std::uint8_t *>(first);
    const auto *b = static_cast<const std::uint8_t *>(second);
    const std::size_t then = (a[3] & 2) != 0 ? 1 : 2;
    return a[3] != b[3] ? sign_of(a[3] - b[3]) : sign_of(a[then] - b[then]);
}

/// Where other bytes decide than the first, they are found, and neighbours alone are asked about.
TEST_F(Sorting, LearnsWhichBytesDecide)
{
    constexpr std::size_t count = 20000;
    const SYSDT_Record type = type_of(SYSDT_KIND_EXTEND, compare_two_bytes);
    const auto some = [this] { return static_cast<std::uint8_t>(below(256)); };
    std::vector<Bytes> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back({some(), some(), some(), some()});
    for (const bool reverse : {false, true}) {
        questions = 0;
        sorted(type, values, {plenty, false, reverse});
        EXPECT_LT(questions, 2 * count + 1000);
    }
    expect_sorted(type, values);
}

/// No order of the bytes is that of such values.
TEST_F(Sorting, AsksWhereNothingIsLearned)
{
    const SYSDT_Record type = type_of(SYSDT_KIND_EXTEND, compare_in_turn);
    const auto some = [this] { return static_cast<std::uint8_t>(below(8)); };
    std::vector<Bytes> values;
    for (std::size_t i = 0; i < 3000; ++i)
        values.push_back({some(), some(), some(), some()});
    expect_sorted(type, values);
}

/// What an order of the bytes from the greatest to the least is taken for in one run need not hold in the next.
TEST_F(Sorting, LearnsFromRunToRun)
{
    constexpr std::size_t count = 20000;
    const SYSDT_Record octets = type_of(SYSDT_KIND_EXTEND, compare_octets);
    for (std::size_t i = 0; i < ranks.size(); ++i)
        ranks[i] = static_cast<std::uint16_t>(ranks.size() - i);
    std::vector<Bytes> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back({static_cast<std::uint8_t>(below(256)), 0, 0, 0});
    expect_sorted(octets, values);
    std::swap(ranks[0], ranks[1]);
    for (std::size_t i = 0; i < count / 2; ++i)
        values[i][0] |= 2;
    expect_sorted(octets, values);
}

} // namespace
