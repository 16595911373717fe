// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Columns answer what one value at a time does, and refuse what makes no sense.
///
/// A payload for parsing: a byte for how many rows there are, two for which of them, a byte for the length of each, one
/// for the wild offset's place and one for what it is, then the texts.
#include <limits>
#include <vector>

#include "library_fuzzer.hpp"

namespace bgpdt::fuzzing {

namespace {

constexpr std::size_t most_rows = 16;
using Bits = Room;

bool has_bit(Bytes bits, std::size_t row) { return (bits[row / 8] >> row % 8 & 1) != 0; }

Room bits_for(std::size_t rows) { return Room(rows / 8 + (rows % 8 != 0 ? 1 : 0)); }

/// A column of texts as the input tells it.
template <class Offset>
struct Column {
    explicit Column(const LibraryCase &input) : rest(input.payload), count(next() % (most_rows + 1))
    {
        const Bytes rows = taken(rest, 2);
        there.assign(rows.begin(), rows.end());
        there.resize(2);
        offsets.assign(count + 1, 0);
        for (std::size_t row = 0; row < count; ++row)
            offsets[row + 1] = static_cast<Offset>(offsets[row] + next());
        const std::size_t place = next();
        const std::uint8_t wild = next();
        if (input.has(wild_offset))
            offsets[place % offsets.size()] =
                wild < 128 ? Offset{wild} : static_cast<Offset>(std::numeric_limits<Offset>::max() - (255U - wild));
    }

    std::uint8_t next()
    {
        const Bytes one = taken(rest, 1);
        return one.empty() ? std::uint8_t{0} : one[0];
    }
    bool makes_sense() const { return std::ranges::is_sorted(offsets) && offsets.back() <= rest.size(); }
    std::string_view text(std::size_t row) const
    {
        return text_of(rest).substr(static_cast<std::size_t>(offsets[row]),
                                    static_cast<std::size_t>(offsets[row + 1] - offsets[row]));
    }

    Bytes rest;
    std::size_t count;
    std::vector<std::uint8_t> there;
    std::vector<Offset> offsets;
};

/// The row is what the text alone gives; zeros, if it is not there or refused. Whether it is a value.
bool require_row(const LibraryCase &input, std::string_view text, bool there, Bytes row)
{
    Room value(row.size());
    const bool taken =
        there && bgpdt_parse(input.type, text.data(), text.size(), value.data(), value.size(), nullptr) == BGPDT_OK;
    if (!taken)
        std::fill_n(value.data(), value.size(), std::uint8_t{0});
    require(std::ranges::equal(value.bytes(), row), "a row of a column is what its text alone gives");
    return taken;
}

template <class Offset>
void parse_column(const LibraryCase &input)
{
    const Column<Offset> column(input);
    const std::size_t shift = input.has(odd_place) ? 1 : 0;
    Room offsets(column.offsets.size() * sizeof(Offset) + shift);
    std::memcpy(offsets.data() + shift, column.offsets.data(), offsets.size() - shift);
    Room bytes(column.rest);
    const Bits there{Bytes(column.there)};
    const bgpdt_column given{sizeof given,
                             column.count,
                             offsets.data() + shift,
                             sizeof(Offset),
                             bytes.text(),
                             bytes.size(),
                             input.has(some_rows) ? there.bytes().data() : nullptr};
    const std::size_t short_of = input.has(wrong_size) && column.count * input.size() != 0 ? 1 : 0;
    Room values(column.count * input.size() - short_of);
    Bits valid = bits_for(column.count);
    std::size_t rows[4];
    bgpdt_refused refused{sizeof refused, 0, rows, std::size(rows)};
    const int code =
        bgpdt_parse_many(input.type, &given, values.data(), values.size(), valid.data(), valid.size(), &refused);
    const bool can = (bgpdt_about(input.type)->operations & BGPDT_PARSE) != 0;
    const int must = shift != 0 || !column.makes_sense() ? BGPDT_NO_SENSE
                     : !can                              ? BGPDT_NO_TEXT
                     : short_of != 0                     ? BGPDT_NO_ROOM
                                                         : BGPDT_OK;
    require(code == must, "a column is parsed exactly if it makes sense and has room");
    std::size_t wrong = 0;
    for (std::size_t row = 0; code == BGPDT_OK && row < column.count; ++row) {
        const bool is_there = !input.has(some_rows) || has_bit(there.bytes(), row);
        const bool is_value =
            require_row(input, column.text(row), is_there, values.bytes().subspan(row * input.size(), input.size()));
        require(has_bit(valid.bytes(), row) == is_value, "the bits tell which rows have a value");
        if (is_there && !is_value && wrong++ < std::size(rows))
            require(rows[wrong - 1] == row, "the first refused rows are told");
    }
    require(code != BGPDT_OK || refused.count == wrong, "refused rows are counted");
}

/// The text of a value alone; empty if there is none.
std::string printed(const LibraryCase &input, Bytes value)
{
    std::string text(BGPDT_TEXT_ROOM, '\0');
    std::size_t size = 0;
    const int code = bgpdt_print(input.type, value.data(), value.size(), text.data(), text.size(), &size, nullptr);
    text.resize(code == BGPDT_OK ? size : 0);
    return text;
}

template <class Offset>
void print_column(const LibraryCase &input)
{
    Bytes rest = input.payload;
    std::uint16_t bytes_room = 0;
    const Bytes told = taken(rest, sizeof bytes_room);
    std::memcpy(&bytes_room, told.data(), told.size());
    const std::size_t count = std::min(rest.size() / input.size(), most_rows);
    Room values(rest.first(count * input.size()));
    const std::size_t shift = input.has(odd_place) ? 1 : 0;
    Room offsets((count + 1) * sizeof(Offset) + shift);
    Room bytes(bytes_room);
    Bits valid = bits_for(count);
    const bgpdt_column_room room{sizeof room,  offsets.data() + shift, sizeof(Offset), bytes.text(),
                                 bytes.size(), valid.data(),           valid.size()};
    std::size_t rows = 0;
    const int code = bgpdt_print_many(input.type, values.data(), values.size(), count, nullptr, &room, &rows, nullptr);
    const bool can = (bgpdt_about(input.type)->operations & BGPDT_PRINT) != 0;
    if (shift != 0 || !can) {
        require(code == (shift != 0 ? BGPDT_NO_SENSE : BGPDT_NO_OPERATION), "only what makes sense is printed");
        return;
    }
    std::string all;
    std::size_t fitting = 0;
    for (; fitting < count; ++fitting) {
        const std::string text = printed(input, values.bytes().subspan(fitting * input.size(), input.size()));
        if (all.size() + text.size() > bytes.size())
            break;
        all += text;
        Offset end = 0;
        std::memcpy(&end, offsets.data() + (fitting + 1) * sizeof end, sizeof end);
        require(fitting >= rows || end == all.size(), "a row of a column ends where its text alone does");
    }
    require(rows == fitting && code == (fitting == count ? BGPDT_OK : BGPDT_NO_ROOM),
            "rows are printed that have room");
    require(text_of(bytes.bytes()).starts_with(all), "a column holds the texts that its values alone print");
}

} // namespace

void fuzz_parse_many(const LibraryCase &input)
{
    input.has(wide) ? parse_column<std::uint64_t>(input) : parse_column<std::uint32_t>(input);
}

void fuzz_print_many(const LibraryCase &input)
{
    input.has(wide) ? print_column<std::uint64_t>(input) : print_column<std::uint32_t>(input);
}

} // namespace bgpdt::fuzzing
