// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Null and nonsense: every function answers a code, and touches nothing.
#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "opened.hpp"

namespace bgpdt::test {
namespace {

class Arguments : public testing::Test {
protected:
    /// The answer is told in words, too.
    void expect_no_sense(int code)
    {
        EXPECT_EQ(code, BGPDT_NO_SENSE);
        ASSERT_FALSE(error_.none());
        EXPECT_EQ(error_->code, BGPDT_NO_SENSE);
        EXPECT_EQ(string_of(error_->message), bgpdt_code_text(BGPDT_NO_SENSE));
    }

    const Library library_;
    const bgpdt_type *const type_ = library_.type("VRFRD");
    Bytes value_ = Bytes(12);
    std::size_t size_ = 0;
    int order_ = 0;
    char *json_ = nullptr;
    char text_[64] = {};
    Error error_;
};

TEST_F(Arguments, Opening)
{
    bgpdt_library *library = nullptr;
    expect_no_sense(bgpdt_open(nullptr, nullptr, error_.out()));
    bgpdt_options options{};
    expect_no_sense(bgpdt_open(&options, &library, error_.out())); // without its size
    options.struct_size = sizeof options;
    options.plugin.size = 1;
    expect_no_sense(bgpdt_open(&options, &library, error_.out()));
    options.plugin.size = 0;
    options.names.size = 1;
    expect_no_sense(bgpdt_open(&options, &library, error_.out()));
    bgpdt_close(nullptr);
    EXPECT_EQ(bgpdt_type_count(nullptr), 0U);
    EXPECT_EQ(bgpdt_type_at(nullptr, 0), nullptr);
    EXPECT_EQ(bgpdt_about(nullptr), nullptr);
    const bgpdt_type *found = type_;
    expect_no_sense(bgpdt_find(nullptr, "VRFRD", 5, &found, error_.out()));
    expect_no_sense(bgpdt_find(library_.get(), nullptr, 5, &found, error_.out()));
    expect_no_sense(bgpdt_find(library_.get(), "VRFRD", 5, nullptr, error_.out()));
    EXPECT_EQ(bgpdt_find(library_.get(), nullptr, 0, &found, error_.out()), BGPDT_NO_TYPE);
    expect_no_sense(bgpdt_load_names(nullptr, "x", 1, error_.out()));
    expect_no_sense(bgpdt_load_names(library_.get(), nullptr, 1, error_.out()));
    EXPECT_EQ(bgpdt_in_mode(nullptr, 0, &found), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_in_mode(type_, 0, nullptr), BGPDT_NO_SENSE);
}

TEST_F(Arguments, Texts)
{
    expect_no_sense(bgpdt_parse(nullptr, "1:1", 3, value_.data(), value_.size(), error_.out()));
    expect_no_sense(bgpdt_parse(type_, nullptr, 3, value_.data(), value_.size(), error_.out()));
    expect_no_sense(bgpdt_parse(type_, "1:1", 3, nullptr, value_.size(), error_.out()));
    EXPECT_EQ(bgpdt_parse(type_, nullptr, 0, value_.data(), value_.size(), error_.out()), BGPDT_REFUSED);
    expect_no_sense(bgpdt_print(nullptr, value_.data(), value_.size(), text_, sizeof text_, &size_, error_.out()));
    expect_no_sense(bgpdt_print(type_, nullptr, value_.size(), text_, sizeof text_, &size_, error_.out()));
    expect_no_sense(bgpdt_print(type_, value_.data(), value_.size(), nullptr, sizeof text_, &size_, error_.out()));
    expect_no_sense(bgpdt_print(type_, value_.data(), value_.size(), text_, sizeof text_, nullptr, error_.out()));
    EXPECT_EQ(bgpdt_print(type_, parsed(type_, "1:1").data(), 12, nullptr, 0, &size_, nullptr), BGPDT_NO_ROOM);
    EXPECT_EQ(size_, 3U);
    expect_no_sense(bgpdt_why(nullptr, "1:1", 3, error_.out()));
    expect_no_sense(bgpdt_why(type_, nullptr, 3, error_.out()));
    EXPECT_EQ(bgpdt_why(type_, "1:1", 3, nullptr), BGPDT_NO_SENSE);
}

TEST_F(Arguments, Values)
{
    const std::uint8_t *null = nullptr;
    expect_no_sense(bgpdt_check(nullptr, value_.data(), 12, error_.out()));
    expect_no_sense(bgpdt_check(type_, nullptr, 12, error_.out()));
    expect_no_sense(bgpdt_swap(nullptr, value_.data(), 12, error_.out()));
    expect_no_sense(bgpdt_swap(type_, nullptr, 12, error_.out()));
    expect_no_sense(bgpdt_compare(nullptr, value_.data(), 12, value_.data(), 12, &order_, error_.out()));
    expect_no_sense(bgpdt_compare(type_, null, 12, value_.data(), 12, &order_, error_.out()));
    expect_no_sense(bgpdt_compare(type_, value_.data(), 12, null, 12, &order_, error_.out()));
    expect_no_sense(bgpdt_compare(type_, value_.data(), 12, value_.data(), 12, nullptr, error_.out()));
    EXPECT_EQ(bgpdt_compare(type_, value_.data(), 12, value_.data(), 11, &order_, error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(bgpdt_order(nullptr, value_.data(), 12, value_.data(), 12, &order_), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_order(type_, null, 12, value_.data(), 12, &order_), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_order(type_, value_.data(), 12, null, 12, &order_), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_order(type_, value_.data(), 12, value_.data(), 12, nullptr), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_order(type_, value_.data(), 12, value_.data(), 11, &order_), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_order(type_, value_.data(), 11, value_.data(), 12, &order_), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_to_native(nullptr, value_.data(), 12), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_to_native(type_, nullptr, 12), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_to_native(type_, value_.data(), 13), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_from_native(nullptr, value_.data(), 12), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_from_native(type_, nullptr, 12), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_from_native(type_, value_.data(), 13), BGPDT_NO_SENSE);
    expect_no_sense(bgpdt_from_hex(nullptr, "00", 2, value_.data(), 12, error_.out()));
    expect_no_sense(bgpdt_from_hex(type_, nullptr, 2, value_.data(), 12, error_.out()));
    expect_no_sense(bgpdt_from_hex(type_, "00", 2, nullptr, 12, error_.out()));
    EXPECT_EQ(bgpdt_from_hex(type_, "0000fbf00000000100000001", 24, value_.data(), 11, error_.out()), BGPDT_NO_ROOM);
    EXPECT_EQ(value_, Bytes(12));
}

TEST_F(Arguments, Tables)
{
    expect_no_sense(bgpdt_explain(nullptr, value_.data(), 12, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_explain(type_, nullptr, 12, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_explain(type_, value_.data(), 12, nullptr, &size_, error_.out()));
    expect_no_sense(bgpdt_dialects(nullptr, "", 0, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_dialects(type_, nullptr, 1, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_dialects(type_, "", 0, nullptr, &size_, error_.out()));
    expect_no_sense(bgpdt_field(nullptr, value_.data(), 12, "", 0, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_field(type_, nullptr, 12, "", 0, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_field(type_, value_.data(), 12, nullptr, 1, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_field(type_, value_.data(), 12, "", 0, nullptr, &size_, error_.out()));
    EXPECT_EQ(bgpdt_field(type_, value_.data(), 12, nullptr, 0, &json_, nullptr, nullptr), BGPDT_NO_FIELD);
    bgpdt_fields *fields = nullptr;
    expect_no_sense(bgpdt_fields_of(nullptr, value_.data(), 12, &fields, error_.out()));
    expect_no_sense(bgpdt_fields_of(type_, nullptr, 12, &fields, error_.out()));
    expect_no_sense(bgpdt_fields_of(type_, value_.data(), 12, nullptr, error_.out()));
    EXPECT_EQ(bgpdt_fields_of(type_, nullptr, 0, &fields, error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(fields, nullptr);
    expect_no_sense(bgpdt_known_fields(nullptr, &fields, error_.out()));
    expect_no_sense(bgpdt_known_fields(type_, nullptr, error_.out()));
    bgpdt_fields_free(nullptr);
    expect_no_sense(bgpdt_table(nullptr, value_.data(), 12, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_table(type_, nullptr, 12, &json_, &size_, error_.out()));
    expect_no_sense(bgpdt_table(type_, value_.data(), 12, nullptr, &size_, error_.out()));
    expect_no_sense(bgpdt_read_table(nullptr, "1", 1, value_.data(), 12, error_.out()));
    expect_no_sense(bgpdt_read_table(type_, nullptr, 1, value_.data(), 12, error_.out()));
    expect_no_sense(bgpdt_read_table(type_, "1", 1, nullptr, 12, error_.out()));
    EXPECT_EQ(bgpdt_read_table(type_, "1", 1, value_.data(), 11, error_.out()), BGPDT_NO_ROOM);
    expect_no_sense(bgpdt_push_lua(type_, value_.data(), 12, nullptr, error_.out()));
    expect_no_sense(bgpdt_push_lua(nullptr, value_.data(), 12, nullptr, error_.out()));
    expect_no_sense(bgpdt_read_lua(type_, nullptr, value_.data(), 12, error_.out()));
    expect_no_sense(bgpdt_read_lua(nullptr, nullptr, value_.data(), 12, error_.out()));
    auto *const engine = reinterpret_cast<lua_State *>(text_); // not looked at
    expect_no_sense(bgpdt_push_lua(type_, nullptr, 12, engine, error_.out()));
    expect_no_sense(bgpdt_read_lua(type_, engine, nullptr, 12, error_.out()));
    EXPECT_EQ(json_, nullptr);
    bgpdt_free(nullptr);
    bgpdt_error_free(nullptr);
}

// Released numbers stay what they are.
static_assert(BGPDT_OK == 0 && BGPDT_BYTES == 1 && BGPDT_REFUSED == -1 && BGPDT_NO_TEXT == -2 &&
              BGPDT_NO_OPERATION == -3 && BGPDT_NO_TYPE == -4 && BGPDT_NO_PLUGIN == -5 && BGPDT_NO_ROOM == -6 &&
              BGPDT_NO_MEMORY == -7 && BGPDT_NO_SENSE == -8 && BGPDT_FAILED == -9);
static_assert(BGPDT_PARSE == 1 && BGPDT_PRINT == 2 && BGPDT_CHECK == 4 && BGPDT_HELP == 8 && BGPDT_COMPARE == 16 &&
              BGPDT_TABLE == 32 && BGPDT_READ_TABLE == 64 && BGPDT_SWAP == 128);

TEST_F(Arguments, Codes)
{
    for (int code = BGPDT_NUMBER; code >= BGPDT_NO_FIELD; --code)
        EXPECT_NE(bgpdt_code_text(code), nullptr) << code;
    for (const int code :
         {BGPDT_NUMBER + 1, BGPDT_NO_FIELD - 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(bgpdt_code_text(code), nullptr) << code;
    EXPECT_STREQ(bgpdt_version(), BGPDT_PROJECT_VERSION);
}

/// A column of two texts, of which a test spoils one thing.
class ColumnArguments : public Arguments {
protected:
    int parse() const
    {
        Bytes values(24);
        return bgpdt_parse_many(type_, column_, values.data(), values_room_, validity_, validity_room_, refused_);
    }

    std::uint32_t offsets_[3] = {0, 3, 6};
    bgpdt_column good_{sizeof good_, 2, offsets_, 4, "1:1x:2", 6, nullptr};
    const bgpdt_column *column_ = &good_;
    std::uint8_t bits_[1] = {};
    std::uint8_t *validity_ = bits_;
    std::size_t validity_room_ = 1;
    std::size_t values_room_ = 24;
    bgpdt_refused rows_{sizeof rows_, 0, nullptr, 0};
    bgpdt_refused *refused_ = &rows_;
};

TEST_F(ColumnArguments, Sound)
{
    EXPECT_EQ(parse(), BGPDT_OK);
    EXPECT_EQ(bits_[0], 1);
    EXPECT_EQ(rows_.count, 1U);
    validity_ = nullptr;
    refused_ = nullptr;
    EXPECT_EQ(parse(), BGPDT_OK);
    good_ = {sizeof good_, 0, offsets_, 4, nullptr, 0, nullptr};
    EXPECT_EQ(bgpdt_parse_many(type_, &good_, nullptr, 0, nullptr, 0, nullptr), BGPDT_OK);
}

TEST_F(ColumnArguments, Spoiled)
{
    const bgpdt_column good = good_;
    const auto spoiled = [&](auto spoil) {
        good_ = good;
        spoil();
        return parse();
    };
    EXPECT_EQ(spoiled([&] { good_.struct_size = 8; }), BGPDT_NO_SENSE);
    EXPECT_EQ(spoiled([&] { good_.offsets = nullptr; }), BGPDT_NO_SENSE);
    EXPECT_EQ(spoiled([&] { good_.offset_size = 2; }), BGPDT_NO_SENSE);
    EXPECT_EQ(spoiled([&] { good_.offsets = reinterpret_cast<const char *>(offsets_) + 1; }), BGPDT_NO_SENSE);
    EXPECT_EQ(spoiled([&] { good_.bytes = nullptr; }), BGPDT_NO_SENSE);
    EXPECT_EQ(spoiled([&] { good_.bytes_size = 5; }), BGPDT_NO_SENSE);
    EXPECT_EQ(spoiled([&] { good_.count = std::numeric_limits<std::size_t>::max(); }), BGPDT_NO_SENSE);
    EXPECT_EQ(spoiled([&] { validity_room_ = 0; }), BGPDT_NO_SENSE);
    validity_room_ = 1;
    EXPECT_EQ(spoiled([&] { values_room_ = 23; }), BGPDT_NO_ROOM);
    values_room_ = 24;
    EXPECT_EQ(spoiled([&] { rows_.struct_size = 0; }), BGPDT_NO_SENSE);
    rows_ = {sizeof rows_, 0, nullptr, 1};
    EXPECT_EQ(parse(), BGPDT_NO_SENSE);
    rows_.room = 0;
    offsets_[1] = 7; // more than the next
    EXPECT_EQ(parse(), BGPDT_NO_SENSE);
    offsets_[1] = 3;
    EXPECT_EQ(parse(), BGPDT_OK);
    column_ = nullptr;
    EXPECT_EQ(parse(), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_parse_many(nullptr, &good_, value_.data(), 12, nullptr, 0, nullptr), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_parse_many(library_.type("SID_STRUCTURE"), &good_, value_.data(), 12, nullptr, 0, nullptr),
              BGPDT_NO_TEXT);
    EXPECT_EQ(bgpdt_parse_many(type_, &good_, nullptr, 24, nullptr, 0, nullptr), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_parse_many(type_, &good_, nullptr, 0, nullptr, 0, nullptr), BGPDT_NO_ROOM);
}

TEST_F(ColumnArguments, Printing)
{
    const Bytes values(24);
    bgpdt_column_room room{sizeof room, offsets_, 4, text_, sizeof text_, nullptr, 0};
    const auto print = [&] {
        return bgpdt_print_many(type_, values.data(), values.size(), 2, nullptr, &room, &size_, nullptr);
    };
    EXPECT_EQ(print(), BGPDT_OK);
    EXPECT_EQ(size_, 2U);
    room.offset_size = 3;
    EXPECT_EQ(print(), BGPDT_NO_SENSE);
    room.offset_size = 4;
    room.bytes = nullptr;
    EXPECT_EQ(print(), BGPDT_NO_SENSE);
    room.bytes = text_;
    room.validity = bits_;
    EXPECT_EQ(print(), BGPDT_NO_SENSE);
    room.validity = nullptr;
    room.struct_size = 1;
    EXPECT_EQ(print(), BGPDT_NO_SENSE);
    room.struct_size = sizeof room;
    EXPECT_EQ(bgpdt_print_many(type_, values.data(), 23, 2, nullptr, &room, &size_, nullptr), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_print_many(type_, nullptr, 24, 2, nullptr, &room, &size_, nullptr), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_print_many(type_, values.data(), 24, 2, nullptr, nullptr, &size_, nullptr), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_print_many(type_, values.data(), 24, 2, nullptr, &room, nullptr, nullptr), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_print_many(nullptr, values.data(), 24, 2, nullptr, &room, &size_, nullptr), BGPDT_NO_SENSE);
    bgpdt_refused shapeless{};
    EXPECT_EQ(bgpdt_print_many(type_, values.data(), 24, 2, nullptr, &room, &size_, &shapeless), BGPDT_NO_SENSE);
    EXPECT_EQ(bgpdt_print_many(type_, nullptr, 0, 0, nullptr, &room, &size_, nullptr), BGPDT_OK);
    room.bytes = nullptr;
    room.bytes_room = 0;
    EXPECT_EQ(bgpdt_print_many(type_, nullptr, 0, 0, nullptr, &room, &size_, nullptr), BGPDT_OK);
    const bgpdt_type *const silent = library_.type("TIME_RANGE");
    EXPECT_EQ(bgpdt_print_many(silent, values.data(), size_of(silent), 1, nullptr, &room, &size_, nullptr),
              BGPDT_NO_OPERATION);
}

} // namespace
} // namespace bgpdt::test
