// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The order in which lines are sorted, over every two and three values of the vectors.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "toolkit/value_order.hpp"
#include "vector_values.hpp"

namespace {

using namespace bgpdt;
using namespace bgpdt::toolkit;
using test::session;
using test::values;

int sign(int number) { return (number > 0) - (number < 0); }

/// The keys of a type's values, and every comparison.
struct Table {
    explicit Table(const SYSDT_Record &type, const std::vector<Bytes> &list) : order(session(), type), size(list.size())
    {
        std::vector<Bytes> keys = list;
        for (std::size_t i = 0; i < size; ++i)
            keys[i].resize(order.make_key(list[i], keys[i].data()));
        for (const Bytes &first : keys)
            for (const Bytes &second : keys)
                signs.push_back(sign(order.compare(first, second)));
    }
    int at(std::size_t first, std::size_t second) const { return signs[first * size + second]; }

    ValueOrder order;
    std::size_t size;
    std::vector<int> signs;
};

/// What the type itself answers: bytes in the target's order if it compares bytes, else the machine's numbers.
int answer(const SYSDT_Record &type, Bytes first, Bytes second)
{
    if (!compares_numbers(type)) {
        turn_to_target(type, first);
        turn_to_target(type, second);
    }
    return session().host().compare(type, first, second);
}

class Order : public testing::TestWithParam<std::string> {
protected:
    const SYSDT_Record &type = session().type(GetParam());
    const std::vector<Bytes> list = values().contains(GetParam()) ? values().at(GetParam()) : std::vector<Bytes>{};
};

/// Whatever value of which layout was asked for before.
TEST_P(Order, HasKeysInTheTargetsOrder)
{
    ValueOrder order(session(), type);
    for (const Bytes &value : list) {
        Bytes wanted = value;
        turn_to_target(type, wanted);
        Bytes key(value.size(), 0xff);
        key.resize(order.make_key(value, key.data()));
        ASSERT_TRUE(key.empty() || key.back() != 0);
        key.resize(value.size());
        ASSERT_EQ(key, wanted);
    }
}

TEST_P(Order, IsTotal)
{
    const Table table(type, list);
    for (std::size_t a = 0; a < table.size; ++a) {
        for (std::size_t b = 0; b < table.size; ++b) {
            ASSERT_EQ(table.at(a, b) == 0, a == b) << a << " " << b; // the values differ
            ASSERT_EQ(table.at(a, b), -table.at(b, a)) << a << " " << b;
        }
    }
}

TEST_P(Order, IsTransitive)
{
    const Table table(type, list);
    for (std::size_t a = 0; a < table.size; ++a) {
        for (std::size_t b = 0; b < table.size; ++b)
            for (std::size_t c = 0; table.at(a, b) < 0 && c < table.size; ++c)
                ASSERT_TRUE(table.at(b, c) >= 0 || table.at(a, c) < 0) << a << " " << b << " " << c;
    }
}

TEST_P(Order, IsTheTypesOwnWhereItOrders)
{
    if (type.compare == nullptr)
        return;
    const Table table(type, list);
    for (std::size_t a = 0; a < table.size; ++a) {
        for (std::size_t b = 0; b < table.size; ++b) {
            const int own = answer(type, list[a], list[b]);
            if (own == 1 || own == -1) {
                ASSERT_EQ(table.at(a, b), own) << a << " " << b;
            }
        }
    }
}

/// The numbers of a type decide on this machine as on the target.
TEST(CompareReads, NumbersOrBytes)
{
    for (const char *numbers : {"VRFID2VRFNAME", "ASNUM", "ASNUMEXT", "VPNID", "EVNPREFIX", "L2VPNPREFIX"})
        EXPECT_TRUE(compares_numbers(session().type(numbers))) << numbers;
    if (std::endian::native == std::endian::little) {
        for (const char *bytes : {"COMMUNITY", "LARGECOMMUNITY", "VRFRD", "ASNUM_ENHANCE", "MDTPREFIX", "BGPLSPREFIX"})
            EXPECT_FALSE(compares_numbers(session().type(bytes))) << bytes;
    }
}

std::vector<std::string> type_names()
{
    std::vector<std::string> names;
    for (const SYSDT_Record *type : session().host().types())
        names.push_back(name_of(*type));
    return names;
}

/// Keys of EVPN routes are those whose Compare orders some and not others.
TEST(Vectors, HaveValuesOfEveryExtendedType)
{
    for (const std::string &name : type_names())
        if (session().type(name).baseKind != SYSDT_KIND_BINARY) {
            EXPECT_GT(values().contains(name) ? values().at(name).size() : 0, 1U) << name;
        }
    EXPECT_GT(values().at("EVNPREFIX").size(), 50U);
}

INSTANTIATE_TEST_SUITE_P(Types, Order, testing::ValuesIn(type_names()), [](const auto &test) { return test.param; });

} // namespace
