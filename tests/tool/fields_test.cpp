// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fields of one value after another: what was read of those before says nothing of the next.
#include <cstddef>
#include <random>
#include <set>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "toolkit/fields.hpp"
#include "vector_values.hpp"

namespace {

using namespace bgpdt;
using namespace bgpdt::toolkit;
using test::session;

std::string told(std::span<const NamedValue> fields)
{
    std::string text;
    for (const NamedValue &field : fields)
        text += field.name + "=" + field.text + (field.number ? " " + std::to_string(*field.number) : "") + "\n";
    return text;
}

TEST(Fields, AreThoseOfEachValueAlone)
{
    std::mt19937 random(1);
    std::size_t fields = 0;
    for (const auto &[name, list] : test::values()) {
        const SYSDT_Record &type = session().type(name);
        ValueFields reader(session(), type);
        for (std::size_t turn = 0; turn < 4 * list.size(); ++turn) {
            const Bytes &value = list[random() % list.size()];
            const std::vector<NamedValue> alone = named_values(session(), type, value);
            const auto after_others = reader.of(value);
            ASSERT_EQ(told(after_others), told(alone)) << name;
            std::set<std::string> names;
            for (const NamedValue &field : after_others)
                ASSERT_TRUE(names.insert(field.name).second) << name << ": " << field.name;
            fields += names.size();
        }
    }
    EXPECT_GT(fields, 5000U);
}

/// A number's text is it in decimal, which JSON takes as it is.
TEST(Fields, TellNumbersInDecimal)
{
    std::size_t numbers = 0;
    for (const auto &[name, list] : test::values()) {
        ValueFields reader(session(), session().type(name));
        for (const Bytes &value : list) {
            for (const NamedValue &field : reader.of(value)) {
                if (field.number) {
                    ASSERT_EQ(field.text, std::to_string(*field.number)) << name << ": " << field.name;
                    ++numbers;
                }
            }
        }
    }
    EXPECT_GT(numbers, 1000U);
}

} // namespace
