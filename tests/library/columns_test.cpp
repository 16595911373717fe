// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Columns: what one at a time answers, many do too.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "opened.hpp"

namespace bgpdt::test {
namespace {

/// A column of texts, with offsets of either width.
template <class Offset>
struct Column {
    explicit Column(const std::vector<std::string> &texts)
    {
        for (const std::string &text : texts) {
            bytes += text;
            offsets.push_back(static_cast<Offset>(bytes.size()));
        }
    }
    bgpdt_column get(const std::uint8_t *validity = nullptr) const
    {
        return {sizeof(bgpdt_column), offsets.size() - 1, offsets.data(), sizeof(Offset),
                bytes.data(),         bytes.size(),       validity};
    }

    std::vector<Offset> offsets{0};
    std::string bytes;
};

template <class Offset>
class Columns : public testing::Test {
protected:
    /// Where texts are printed to.
    struct Room {
        Room(std::size_t rows, std::size_t room) : offsets(rows + 1), bytes(room, '?'), validity(rows / 8 + 1) {}
        bgpdt_column_room get()
        {
            return {sizeof(bgpdt_column_room), offsets.data(), sizeof(Offset), bytes.data(), bytes.size(),
                    validity.data(),           validity.size()};
        }
        std::string text(std::size_t row) const
        {
            return bytes.substr(static_cast<std::size_t>(offsets[row]),
                                static_cast<std::size_t>(offsets[row + 1] - offsets[row]));
        }
        std::vector<Offset> offsets;
        std::string bytes;
        Bytes validity;
    };

    const Library library_;
};

using Widths = testing::Types<std::uint32_t, std::uint64_t>;
TYPED_TEST_SUITE(Columns, Widths);

bool has_bit(const Bytes &bits, std::size_t row) { return (bits[row / 8] >> row % 8 & 1) != 0; }

/// Samples of the type, wrong texts, and long ones.
std::vector<std::string> texts_for(const bgpdt_type *type)
{
    std::vector<std::string> texts;
    const bgpdt_info &info = *bgpdt_about(type);
    for (std::size_t i = 0; i < info.sample_count; ++i) {
        const std::string sample = string_of(info.samples[i]);
        for (const std::string &text :
             {sample, sample + "?", std::string(), " " + sample, sample + '\0', std::string(70000, ' ') + sample})
            texts.push_back(text);
    }
    return texts;
}

TYPED_TEST(Columns, AnswerAsOneAtATime)
{
    for (std::size_t i = 0; i < bgpdt_type_count(this->library_.get()); ++i) {
        const bgpdt_type *type = bgpdt_type_at(this->library_.get(), i);
        const std::vector<std::string> texts = texts_for(type);
        SCOPED_TRACE(string_of(bgpdt_about(type)->name));
        if ((bgpdt_about(type)->operations & BGPDT_PARSE) == 0 || texts.empty())
            continue;
        const std::size_t size = size_of(type);
        const Column<TypeParam> column(texts);
        const bgpdt_column given = column.get();
        Bytes values(texts.size() * size, 0xee);
        Bytes validity(texts.size() / 8 + 1, 0xee);
        std::vector<std::size_t> rows(3);
        bgpdt_refused refused{sizeof refused, 99, rows.data(), rows.size()};
        ASSERT_EQ(
            bgpdt_parse_many(type, &given, values.data(), values.size(), validity.data(), validity.size(), &refused),
            BGPDT_OK);
        std::vector<std::size_t> wrong;
        for (std::size_t row = 0; row < texts.size(); ++row) {
            const Bytes one = parsed(type, texts[row]);
            const Bytes there(values.begin() + static_cast<std::ptrdiff_t>(row * size),
                              values.begin() + static_cast<std::ptrdiff_t>((row + 1) * size));
            EXPECT_EQ(has_bit(validity, row), !one.empty()) << row;
            EXPECT_EQ(there, one.empty() ? Bytes(size) : one) << row;
            if (one.empty())
                wrong.push_back(row);
        }
        EXPECT_EQ(refused.count, wrong.size());
        wrong.resize(std::min(wrong.size(), rows.size()));
        rows.resize(wrong.size());
        EXPECT_EQ(rows, wrong);
    }
}

TYPED_TEST(Columns, RowsThatAreNotThere)
{
    const bgpdt_type *type = this->library_.type("ASNUM");
    const Column<TypeParam> column({"1", "2", "x", "x", "5", "6", "7", "8", "9"});
    const Bytes there = {0b11110101, 0b1};
    const bgpdt_column given = column.get(there.data());
    Bytes values(9 * 8);
    Bytes validity(2);
    std::size_t row = 99;
    bgpdt_refused refused{sizeof refused, 0, &row, 1};
    ASSERT_EQ(bgpdt_parse_many(type, &given, values.data(), values.size(), validity.data(), validity.size(), &refused),
              BGPDT_OK);
    EXPECT_EQ(validity, (Bytes{0b11110001, 0b1}));
    EXPECT_EQ(refused.count, 1U);
    EXPECT_EQ(row, 2U);

    typename TestFixture::Room room(9, 100);
    const bgpdt_column_room to = room.get();
    std::size_t printed_rows = 0;
    ASSERT_EQ(bgpdt_print_many(type, values.data(), values.size(), 9, validity.data(), &to, &printed_rows, &refused),
              BGPDT_OK);
    EXPECT_EQ(printed_rows, 9U);
    EXPECT_EQ(refused.count, 0U);
    EXPECT_EQ(room.validity, validity);
    EXPECT_EQ(room.text(0) + "," + room.text(1) + "," + room.text(7) + "," + room.text(8), "1,,8,9");
}

TYPED_TEST(Columns, PrintAsOneAtATime)
{
    for (const char *name : {"ASNUM", "VRFRD", "BOLPREFIX", "CVRFNAME", "ATTRIDBITMAP", "BGPLSPREFIX"}) {
        SCOPED_TRACE(name);
        const bgpdt_type *type = this->library_.type(name);
        Bytes values;
        std::vector<std::string> texts;
        for (int i = 0; i < 20; ++i) {
            Bytes value(size_of(type));
            value[3] = static_cast<std::uint8_t>(i); // refused by some types, and as a sub-kind
            value.back() = static_cast<std::uint8_t>(i % 3);
            values.insert(values.end(), value.begin(), value.end());
            texts.push_back(printed(type, value));
        }
        typename TestFixture::Room room(20, 20000);
        const bgpdt_column_room to = room.get();
        std::size_t rows = 0;
        bgpdt_refused refused{sizeof refused, 0, nullptr, 0};
        ASSERT_EQ(bgpdt_print_many(type, values.data(), values.size(), 20, nullptr, &to, &rows, &refused), BGPDT_OK);
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < 20; ++i) {
            const bool refuses = texts[i].starts_with("code ");
            EXPECT_EQ(room.text(i), refuses ? "" : texts[i]) << i;
            EXPECT_EQ(has_bit(room.validity, i), !refuses) << i;
            wrong += refuses ? 1 : 0;
        }
        EXPECT_EQ(refused.count, wrong);
    }
}

TYPED_TEST(Columns, GoOnWhereThereWasNoRoom)
{
    const bgpdt_type *type = this->library_.type("ASNUM");
    Bytes values;
    for (const char *text : {"100", "200", "300", "400"}) {
        const Bytes value = parsed(type, text);
        values.insert(values.end(), value.begin(), value.end());
    }
    typename TestFixture::Room room(4, 8);
    const bgpdt_column_room to = room.get();
    std::size_t rows = 0;
    EXPECT_EQ(bgpdt_print_many(type, values.data(), values.size(), 4, nullptr, &to, &rows, nullptr), BGPDT_NO_ROOM);
    EXPECT_EQ(rows, 2U);
    EXPECT_EQ(room.text(0) + room.text(1), "100200");
    EXPECT_EQ(room.bytes.substr(6), "??");
    EXPECT_EQ(bgpdt_print_many(type, values.data() + 16, 16, 2, nullptr, &to, &rows, nullptr), BGPDT_OK);
    EXPECT_EQ(room.text(0) + room.text(1), "300400");
}

} // namespace
} // namespace bgpdt::test
