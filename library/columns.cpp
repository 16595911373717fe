// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <limits>

#include "answer.hpp"
#include "values.hpp"

using namespace bgpdt;
using namespace bgpdt::library;

namespace {

constexpr std::size_t bytes_for_bits(std::size_t count) { return count / 8 + (count % 8 != 0 ? 1 : 0); }

bool has_bit(const std::uint8_t *bits, std::size_t row)
{
    return bits == nullptr || (bits[row / 8] >> row % 8 & 1) != 0;
}

/// Bits that are written row by row.
class Bits {
public:
    /// @param bits  of rows; null: nobody wants them
    Bits(std::uint8_t *bits, std::size_t count) : bits_(bits)
    {
        if (bits != nullptr)
            std::fill_n(bits, bytes_for_bits(count), std::uint8_t{0});
    }
    void set(std::size_t row)
    {
        if (bits_ != nullptr)
            bits_[row / 8] = static_cast<std::uint8_t>(bits_[row / 8] | 1U << row % 8);
    }

private:
    std::uint8_t *bits_;
};

bool makes_sense(const std::uint8_t *bits, std::size_t room, std::size_t count)
{
    return bits == nullptr || room >= bytes_for_bits(count);
}

bool makes_sense(const bgpdt_refused *refused)
{
    return refused == nullptr ||
           (refused->struct_size >= sizeof *refused && (refused->rows != nullptr || refused->room == 0));
}

bool has_room(const bgpdt_type &type, std::size_t count, std::size_t room)
{
    return count == 0 || room / std::max<std::size_t>(type.size, 1) >= count;
}

/// Whether an array of so many offsets of the size may stand at the address.
bool is_offsets(const void *offsets, std::size_t size)
{
    return offsets != nullptr && (size == sizeof(std::uint32_t) || size == sizeof(std::uint64_t)) &&
           reinterpret_cast<std::uintptr_t>(offsets) % size == 0;
}

template <class Offset>
bool makes_sense(const bgpdt_column &column)
{
    const auto *offsets = static_cast<const Offset *>(column.offsets);
    return std::is_sorted(offsets, offsets + column.count + 1) && offsets[column.count] <= column.bytes_size;
}

bool makes_sense(const bgpdt_column *column)
{
    if (column == nullptr || column->struct_size < sizeof *column ||
        !is_offsets(column->offsets, column->offset_size) || (column->bytes == nullptr && column->bytes_size != 0) ||
        column->count == std::numeric_limits<std::size_t>::max())
        return false;
    return column->offset_size == sizeof(std::uint32_t) ? makes_sense<std::uint32_t>(*column)
                                                        : makes_sense<std::uint64_t>(*column);
}

void refuse(bgpdt_refused *refused, std::size_t row)
{
    if (refused == nullptr)
        return;
    if (refused->count < refused->room)
        refused->rows[refused->count] = row;
    ++refused->count;
}

template <class Offset>
std::size_t longest_text(const bgpdt_column &column)
{
    const auto *offsets = static_cast<const Offset *>(column.offsets);
    Offset longest = 0;
    for (std::size_t row = 0; row < column.count; ++row)
        longest = std::max<Offset>(longest, offsets[row + 1] - offsets[row]);
    return static_cast<std::size_t>(longest);
}

/// A text as types take it: with a NUL behind it, and theirs to change.
std::span<char> copied(std::string_view text, std::vector<char> &room)
{
    std::copy(text.begin(), text.end(), room.data());
    room[text.size()] = '\0';
    return {room.data(), text.size()};
}

template <class Offset>
int parse_rows(const bgpdt_type &type, const bgpdt_column &column, std::uint8_t *values, Bits valid,
               bgpdt_refused *refused)
{
    const auto *offsets = static_cast<const Offset *>(column.offsets);
    std::vector<char> room(longest_text<Offset>(column) + 1);
    Parser parser(type);
    for (std::size_t row = 0; row < column.count; ++row, values += type.size) {
        const auto begin = static_cast<std::size_t>(offsets[row]);
        const std::string_view text(column.bytes + begin, static_cast<std::size_t>(offsets[row + 1]) - begin);
        int code = BGPDT_REFUSED;
        const bool there = has_bit(column.validity, row);
        if (there && !holds_nul(text))
            code = parser.parse(copied(text, room), values);
        if (code == BGPDT_NO_MEMORY)
            return code;
        if (code == BGPDT_OK) {
            valid.set(row);
            continue;
        }
        std::memset(values, 0, type.size);
        if (there)
            refuse(refused, row);
    }
    return BGPDT_OK;
}

/// What is written of one column.
template <class Offset>
class Writer {
public:
    explicit Writer(const bgpdt_column_room &room)
        : offsets_(static_cast<Offset *>(room.offsets)), bytes_(room.bytes), room_(most(room.bytes_room))
    {
        offsets_[0] = 0;
    }

    /// The next row. False if it has no room.
    bool write(std::string_view text)
    {
        if (text.size() > room_ - size_)
            return false;
        std::copy(text.begin(), text.end(), bytes_ + size_);
        size_ += text.size();
        *++offsets_ = static_cast<Offset>(size_);
        return true;
    }

private:
    /// Of the room as much as offsets reach.
    static std::size_t most(std::uint64_t room)
    {
        return static_cast<std::size_t>(std::min<std::uint64_t>(room, std::numeric_limits<Offset>::max()));
    }

    Offset *offsets_; ///< the last that is written
    char *bytes_;
    std::size_t size_ = 0;
    std::size_t room_;
};

struct Values {
    const std::uint8_t *bytes;
    std::size_t count;
    const std::uint8_t *validity;
};

template <class Offset>
int print_rows(const bgpdt_type &type, const Values &values, const bgpdt_column_room &room, std::size_t &row,
               bgpdt_refused *refused)
{
    Printer printer(type);
    Writer<Offset> writer(room);
    Bits valid(room.validity, values.count);
    for (row = 0; row < values.count; ++row) {
        const bool there = has_bit(values.validity, row);
        const host::Delivery printed = there ? printer.print(values.bytes + row * type.size) : host::Delivery();
        if (printed.status == SYSDT_ERR_NO_MEMORY)
            return BGPDT_NO_MEMORY;
        const bool has_text = printed.ok() && printed.kind == SYSDT_KIND_STRING && !printed.data.empty();
        if (!writer.write(has_text ? printed.text() : std::string_view()))
            return BGPDT_NO_ROOM;
        if (has_text)
            valid.set(row);
        else if (there)
            refuse(refused, row);
    }
    return BGPDT_OK;
}

} // namespace

int bgpdt_parse_many(const bgpdt_type *type, const bgpdt_column *column, uint8_t *values, size_t values_room,
                     uint8_t *validity, size_t validity_room, bgpdt_refused *refused)
{
    const bool sense = type != nullptr && makes_sense(column) && (values != nullptr || values_room == 0) &&
                       makes_sense(validity, validity_room, column->count) && makes_sense(refused);
    return answer({.type = type}, sense, [&]() -> int {
        if (!type->does(BGPDT_PARSE))
            return BGPDT_NO_TEXT;
        if (!has_room(*type, column->count, values_room))
            return BGPDT_NO_ROOM;
        if (refused != nullptr)
            refused->count = 0;
        const auto rows =
            column->offset_size == sizeof(std::uint32_t) ? parse_rows<std::uint32_t> : parse_rows<std::uint64_t>;
        return rows(*type, *column, values, Bits(validity, column->count), refused);
    });
}

int bgpdt_print_many(const bgpdt_type *type, const uint8_t *values, size_t values_size, size_t count,
                     const uint8_t *validity, const bgpdt_column_room *room, size_t *printed, bgpdt_refused *refused)
{
    const bool sense = type != nullptr && (values != nullptr || values_size == 0) && room != nullptr &&
                       room->struct_size >= sizeof *room && is_offsets(room->offsets, room->offset_size) &&
                       (room->bytes != nullptr || room->bytes_room == 0) &&
                       makes_sense(room->validity, room->validity_room, count) && printed != nullptr &&
                       makes_sense(refused) && has_room(*type, count, values_size);
    return answer({.type = type}, sense, [&]() -> int {
        *printed = 0;
        if (!type->does(BGPDT_PRINT))
            return BGPDT_NO_OPERATION;
        if (refused != nullptr)
            refused->count = 0;
        const auto rows =
            room->offset_size == sizeof(std::uint32_t) ? print_rows<std::uint32_t> : print_rows<std::uint64_t>;
        return rows(*type, {values, count, validity}, *room, *printed, refused);
    });
}
