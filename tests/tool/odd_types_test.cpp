// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Types that the router has none of, and values and texts at the edge of what there is room for.
#include <algorithm>
#include <bit>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <lua.hpp>

#include "toolkit/conversions.hpp"
#include "toolkit/display_record.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/stream_values.hpp"
#include "toolkit/value_order.hpp"
#include "vector_values.hpp"

namespace {

using namespace bgpdt;
using namespace bgpdt::toolkit;
using test::session;

SYSDT_Record type_of(std::uint16_t kind, std::uint16_t length)
{
    SYSDT_Record type{};
    type.typeId = 0x7abc;
    type.dataLength = length;
    type.baseKind = kind;
    std::ranges::copy(std::string_view("ODD"), type.name);
    return type;
}

/// What the work refuses, and why.
template <class Work>
std::string refusal_of(Work work)
{
    try {
        work();
    } catch (const Refusal &refusal) {
        return refusal.what();
    }
    return "nothing is refused";
}

std::string line_of(ValueWriter &writer, const Bytes &value)
{
    Buffer out;
    return writer.write(value, out) ? std::string(out.text()) : writer.refusal();
}

// ------------------------------------------------------------------------------------------------ texts

std::uint32_t print_octets(SYSDT_Context *, std::uint32_t, std::uint32_t, const void *, std::uint16_t *kind,
                           std::uint16_t *length, void **data)
{
    *kind = SYSDT_KIND_BINARY;
    *length = 1;
    *data = SYS_DataTypeMalloc(1);
    return SYSDT_OK;
}

std::uint32_t refuse_print(SYSDT_Context *, std::uint32_t, std::uint32_t, const void *, std::uint16_t *,
                           std::uint16_t *, void **)
{
    return SYSDT_ERR_FAIL;
}

TEST(OddType, HasNoTextWhereItPrintsNone)
{
    SYSDT_Record type = type_of(SYSDT_KIND_EXTEND, 2);
    EXPECT_EQ(refusal_of([&] { const ValueReader reader(session(), type, Format::text); }), "ODD takes no text");
    EXPECT_EQ(refusal_of([&] { const ValueWriter writer(session(), type, Format::text); }), "ODD prints no text");
    for (SYSDT_FormatOut *const print : {static_cast<SYSDT_FormatOut *>(nullptr), print_octets, refuse_print}) {
        type.formatOut = print;
        ValueWriter rows(session(), type, Format::csv, {"text", "hex"});
        EXPECT_EQ(line_of(rows, {1, 2}), ",0102\n");
    }
}

std::uint32_t refuse_text(SYSDT_Context *, std::uint32_t, std::uint32_t, char *, std::uint16_t *, std::uint16_t *,
                          void **)
{
    return SYSDT_ERR_INVALID_VALUE;
}

TEST(OddType, IsRefusedWithoutAdviceWhereNothingIsKnown)
{
    SYSDT_Record type = type_of(SYSDT_KIND_EXTEND, 2);
    type.formatIn = refuse_text;
    EXPECT_EQ(text_refusal(session(), type, "x", 2, SYSDT_ERR_INVALID_VALUE).what(),
              std::string(R"(ODD refuses "x": it is no text of the type (SYSDT_ERR_INVALID_VALUE))"));
}

// ------------------------------------------------------------------------------------------------ values

TEST(OddType, HasAnIndexOfASizeThatNumbersHave)
{
    const auto name_of_whole = [](std::uint16_t kind, std::uint16_t size) {
        return named_values(session(), type_of(kind, size), Bytes(size)).at(0).name;
    };
    for (const std::uint16_t size : std::initializer_list<std::uint16_t>{1, 2, 4, 8}) {
        EXPECT_EQ(name_of_whole(SYSDT_KIND_BINARY, size), "index") << size;
        EXPECT_EQ(name_of_whole(SYSDT_KIND_EXTEND, size), "value") << size;
    }
    for (const std::uint16_t size : std::initializer_list<std::uint16_t>{3, 12, 16})
        EXPECT_EQ(name_of_whole(SYSDT_KIND_BINARY, size), "value") << size;
}

TEST(OddType, IsWrittenAsLongAsItsValue)
{
    const SYSDT_Record type = type_of(SYSDT_KIND_EXTEND, 4);
    ValueWriter writer(session(), type, Format::hex);
    EXPECT_EQ(line_of(writer, {1, 2, 3, 4}), "01020304\n");
    EXPECT_EQ(line_of(writer, {5, 6}), "0506\n");
    EXPECT_EQ(line_of(writer, {7, 8, 9, 10}), "0708090a\n");
}

TEST(OddType, IsReadAsLongAsAStringMayBe)
{
    const SYSDT_Record type = type_of(SYSDT_KIND_STRING, 4);
    ValueReader reader(session(), type, Format::hex);
    const auto read = [&reader](std::string line) {
        const Value value = reader.read(line);
        return value.data() != nullptr ? to_hex(value) : reader.refusal(line).what();
    };
    EXPECT_EQ(read("61626300"), "61626300");
    EXPECT_EQ(read("0x61626300"), "61626300");
    EXPECT_EQ(read("6162"), "61620000"); // what is missing is filled up
    EXPECT_EQ(read("6162636400"), "ODD has values of another length: 5 bytes, must be 4");
}

TEST(OddType, ComparesNumbersIfTheMachinesOrderDecides)
{
    SYSDT_Record type = type_of(SYSDT_KIND_BINARY, 4);
    EXPECT_FALSE(compares_numbers(type));
    type.compare = SYSDT_Uint32Compare;
    EXPECT_TRUE(compares_numbers(type));
    type.baseKind = SYSDT_KIND_EXTEND; // no field of it is known
    EXPECT_FALSE(compares_numbers(type));
    SYSDT_Record byte = type_of(SYSDT_KIND_BINARY, 1);
    byte.compare = SYSDT_BlockCompare;
    EXPECT_FALSE(compares_numbers(byte));
}

TEST(OddType, ComparesValuesOfOneLength)
{
    SYSDT_Record type = type_of(SYSDT_KIND_BINARY, 4);
    type.compare = SYSDT_BlockCompare;
    const auto compare = [&](const Bytes &first, const Bytes &second) {
        return refusal_of([&] { compare_values(session(), type, first, second); });
    };
    EXPECT_EQ(compare({1}, {1, 2}), "ODD compares values of one length only: the first has 1 byte, the second 2");
    EXPECT_EQ(compare({1, 2}, {1, 2}), "nothing is refused");
}

/// A shorter value is none whose numbers are known.
TEST(OddType, HasKeysOfShorterValuesAsTheyStand)
{
    const SYSDT_Record type = type_of(SYSDT_KIND_BINARY, 4);
    ValueOrder order(session(), type);
    const auto key_of = [&order](const Bytes &value) {
        Bytes key(4);
        key.resize(order.make_key(value, key.data()));
        return key;
    };
    EXPECT_EQ(key_of({1, 2}), (Bytes{1, 2}));
    const bool turned = std::endian::native == std::endian::little;
    EXPECT_EQ(key_of({1, 2, 0, 0}), turned ? (Bytes{0, 0, 2, 1}) : (Bytes{1, 2}));
    EXPECT_EQ(key_of({1, 2, 0}), (Bytes{1, 2}));
    EXPECT_EQ(key_of({0, 0, 0, 0}), Bytes());
}

template <std::uint32_t Status>
std::uint32_t refuse_table(void *, std::int32_t, const char *, std::uint32_t, std::uint32_t, void *)
{
    return Status;
}

TEST(OddType, SaysOfAFieldThatItIsRefused)
{
    SYSDT_Record type = type_of(SYSDT_KIND_EXTEND, 2);
    const LuaState lua = new_lua_state();
    lua_newtable(lua.get());
    const auto refused = [&](SYSDT_LuaGet *read) {
        type.luaGet = read;
        return refusal_of([&] { read_table(session(), lua.get(), type); });
    };
    const std::string field = "ODD refuses the script table: a field is missing, of another kind or not allowed ";
    EXPECT_EQ(refused(refuse_table<SYSDT_ERR_PARAM>), field + "(SYSDT_ERR_PARAM)");
    EXPECT_EQ(refused(refuse_table<SYSDT_ERR_FAIL>), field + "(SYSDT_ERR_FAIL)");
    EXPECT_EQ(refused(refuse_table<SYSDT_ERR_INVALID_VALUE>), field + "(SYSDT_ERR_INVALID_VALUE)");
    EXPECT_EQ(refused(refuse_table<SYSDT_ERR_TOO_LONG>),
              "ODD refuses the script table: a string is longer than its field (SYSDT_ERR_TOO_LONG)");
}

/// Of the fields that are asked for a value may have none.
TEST(Json, HasNoFieldsWhereAValueHasNone)
{
    const SYSDT_Record &type = session().type("BOLPREFIX");
    const Bytes value = parse_text(session(), type, "192.0.2.1", session().mode_for(type)).data;
    ValueWriter writer(session(), type, Format::json, {"Ethernet tag"});
    const std::string line = line_of(writer, value);
    EXPECT_EQ(line.find("\"fields\""), std::string::npos) << line;
    EXPECT_NE(line.find("\"hex\""), std::string::npos) << line;
    EXPECT_EQ(line_of(writer, value), line); // with the memory of the line before
}

// ------------------------------------------------------------------------------------------------ room

TEST(DisplayRecord, CountsItsValuesInTwoBytes)
{
    const auto refused = [](std::size_t count) {
        const std::vector<DisplayValue> display_values(count, DisplayValue{SYSDT_KIND_BINARY, {}});
        return refusal_of([&] { bitmap_record(Bytes(16), default_template, display_values); });
    };
    EXPECT_EQ(refused(65533), "nothing is refused"); // the template and the bitmap are two more
    EXPECT_EQ(refused(65534), "a display record holds at most 65533 values");
}

/// A line begins and ends with whole characters, wherever its place is.
TEST(ShownText, IsCutBetweenCharacters)
{
    const auto repeated = [](const char *character, std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i)
            text += character;
        return text;
    };
    for (const char *const character : {"\xc3\xa4", "\xe2\x82\xac", "\xf0\x9d\x84\x9e"}) { // of two, three, four bytes
        const std::string text = repeated(character, 1000);
        const std::size_t size = std::string_view(character).size();
        for (std::size_t front = 0; front < size; ++front) {
            const std::string lines = underlined(std::string(front, 'x') + text, front + 500 * size, size);
            EXPECT_EQ(lines.find('\\'), std::string::npos) << lines;
            EXPECT_NE(lines.find('^'), std::string::npos) << lines;
        }
    }
    const std::string strays = underlined(std::string(400, '\x80'), 320, 1);
    EXPECT_NE(strays.find("\\x80"), std::string::npos) << strays;
    EXPECT_NE(strays.find('^'), std::string::npos) << strays;
}

} // namespace
