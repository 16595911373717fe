// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Values in C++: their laws over all samples, and what each function gives.
#include <algorithm>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bgpdt/bgpdt.hpp"

namespace bgpdt {
namespace {

class Values : public testing::Test {
protected:
    Type type(std::string_view name) const { return library_.type(name).value(); }
    Value value(std::string_view name, std::string_view text) const { return type(name).parse(text).value(); }

    /// Of all samples of all types; each a second time, made of its bytes.
    std::vector<Value> all() const
    {
        std::vector<Value> values;
        for (const Type &type : library_.types()) {
            for (const bgpdt_text &sample : std::span(type.info().samples, type.info().sample_count)) {
                if (const std::optional<Value> value = type.try_parse(view(sample))) {
                    values.push_back(*value);
                    values.push_back(type.from_bytes(value->bytes()));
                }
            }
        }
        return values;
    }

    const Library library_ = Library::open().value();
};

TEST_F(Values, GoToTextAndBack)
{
    const Value rd = value("VRFRD", "192.0.2.1:7");
    EXPECT_EQ(rd.text().value(), "192.0.2.1:7");
    EXPECT_EQ(rd.hex(), "0001c0000201000700000000");
    EXPECT_EQ(rd.type().name(), "VRFRD");
    EXPECT_EQ(rd, rd.type().from_hex("0x" + rd.hex()).value());
    EXPECT_EQ(rd, rd.type().from_table(rd.table().value()).value());
    EXPECT_NE(rd.explain().value().find("IPv4 address"), std::string::npos);
    EXPECT_EQ(rd.field("assigned number").value()->text, "7");
    EXPECT_TRUE(rd.field("assigned number").value()->is_number);
    EXPECT_FALSE(rd.field("administrator").value()->is_number);
    EXPECT_EQ(rd.field("no name").error().code(), BGPDT_NO_FIELD);
    EXPECT_FALSE(value("EVNPREFIX", "100:32:192.0.2.1").field("ESI").value());
    EXPECT_FALSE(rd.check());
    EXPECT_TRUE(value("ASNUM", "1").type().from_bytes(std::vector<std::uint8_t>(8)).check());
    EXPECT_THROW(static_cast<void>(rd.type().from_bytes(std::vector<std::uint8_t>(8))), std::invalid_argument);
    std::ostringstream out;
    out << rd << " " << type("SID_STRUCTURE").from_hex("00000000000000").value();
    EXPECT_EQ(out.str().substr(0, 12), "192.0.2.1:7 ");
    EXPECT_EQ(format_as(type("TIME_RANGE").from_hex("00000005").value()), "0x00000005");
}

TEST_F(Values, RefusalsAreData)
{
    const result<Value> wrong = type("VRFRD").parse("192.0.2.1:70000");
    ASSERT_FALSE(wrong);
    const Refusal &refusal = wrong.error();
    EXPECT_EQ(refusal.code(), BGPDT_REFUSED);
    EXPECT_EQ(refusal.status(), 0x80170DU);
    EXPECT_EQ(refusal.reason(), "70000 is too large here: at most 65535");
    EXPECT_EQ(refusal.at(), 10U);
    EXPECT_EQ(refusal.length(), 5U);
    EXPECT_EQ(refusal.change(), BGPDT_VALUE);
    EXPECT_TRUE(type("VRFRD").parse(refusal.repair()));
    EXPECT_FALSE(type("VRFRD").try_parse("192.0.2.1:70000"));
    EXPECT_THROW(static_cast<void>(wrong.value()), BadResult);
    const Refusal other = type("VRFRD").parse("64496:1:1").error();
    for (const std::string_view name : other.other_types())
        EXPECT_TRUE(type(name).try_parse("64496:1:1")) << name;
    EXPECT_FALSE(other.other_types().empty());
    EXPECT_EQ(library_.type("VRFRB").error().code(), BGPDT_NO_TYPE);
    EXPECT_EQ(value("VRFRD", "1:1").type().in_mode(5).parse("1:1").error().code(), BGPDT_REFUSED);
    EXPECT_THROW(static_cast<void>(type("VRFRD").in_mode(256)), std::invalid_argument);
    EXPECT_EQ(Library::open("/nowhere/plugin.so").error().code(), BGPDT_NO_PLUGIN);
}

TEST_F(Values, EqualityAndHashAreOfTypeAndBytes)
{
    const std::vector<Value> values = all();
    ASSERT_GT(values.size(), 200U);
    for (const Value &a : values) {
        for (const Value &b : values) {
            const bool same = a.type().name() == b.type().name() && a.hex() == b.hex();
            EXPECT_EQ(a == b, same);
            EXPECT_TRUE(!same || std::hash<Value>()(a) == std::hash<Value>()(b));
            EXPECT_EQ(a <=> b == 0, same);
            EXPECT_EQ(a <=> b == 0, b <=> a == 0);
            EXPECT_EQ(a<b, b> a);
        }
    }
    EXPECT_EQ(std::unordered_set<Value>(values.begin(), values.end()).size(), values.size() / 2);
}

TEST_F(Values, OrdersAreTotal)
{
    std::vector<Value> values = all();
    std::ranges::sort(values);
    for (std::size_t i = 1; i < values.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_LE(values[j], values[i]); // as only a transitive order has it
    for (const Type &type : library_.types()) {
        std::vector<Value> own;
        std::ranges::copy_if(values, std::back_inserter(own), [&](const Value &value) { return value.type() == type; });
        std::ranges::sort(own, [](const Value &a, const Value &b) { return a.order(b) < 0; });
        for (std::size_t i = 1; i < own.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_TRUE(own[j].order(own[i]) <= 0);
                EXPECT_EQ(own[j].order(own[i]) == 0, own[j] == own[i]);
            }
        }
    }
}

TEST_F(Values, TheRouterCompares)
{
    const Value plain = value("ASNUM", "65537");
    const Value dotted = value("ASNUM", "1.1");
    EXPECT_TRUE(plain.compare(dotted) == std::weak_ordering::equivalent);
    EXPECT_NE(plain, dotted);
    EXPECT_TRUE(value("ASNUM", "1").compare(plain) == std::weak_ordering::less);
    EXPECT_FALSE(value("EVNPREFIX", "100:32:192.0.2.1").compare(value("EVNPREFIX", "100:192.0.2.0:24")));
    EXPECT_THROW(static_cast<void>(plain.compare(value("VRFRD", "1:1"))), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(plain.order(value("VRFRD", "1:1"))), std::invalid_argument);
}

TEST_F(Values, CopiesOutliveTheFirst)
{
    for (const char *name : {"VRFRD", "BOLPREFIX", "ASNUM_ENHANCE"}) {
        const Type kept = type(name);
        std::vector<Value> copies;
        {
            const Value first = kept.try_parse(view(kept.info().samples[0])).value();
            copies.assign(3, first);
        }
        Value moved = std::move(copies[0]);
        EXPECT_EQ(moved, copies[2]);
        EXPECT_EQ(moved.bytes().size(), kept.value_size());
    }
}

TEST_F(Values, TheLibraryStaysOpenWithItsCopies)
{
    const auto opened = [] {
        const Library copy = Library::open().value();
        return Library(copy);
    }();
    EXPECT_TRUE(opened.type("VRFRD").value().try_parse("1:1"));
}

} // namespace
} // namespace bgpdt
