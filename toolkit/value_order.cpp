// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "value_order.hpp"

#include <algorithm>
#include <bit>
#include <cstring>

#include "kinds.hpp"
#include "room.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::size_t usual_size = 1280; ///< in bytes, of a value with room for more

/// A value of zeros but for one of its numbers, in the machine's order; empty if it has no number of two bytes or more.
Bytes with_number(const SYSDT_Record &type, std::uint16_t number)
{
    Bytes value(value_size(type));
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    const auto field =
        std::ranges::find_if(layout.fields, [](const Field &row) { return row.host_order() && row.width > 1; });
    const bool plain = layout.fields.empty() && type.baseKind == SYSDT_KIND_BINARY && value.size() > 1;
    if (field == layout.fields.end() && !plain)
        return {};
    const std::size_t end = plain ? value.size() : std::size_t{field->offset} + field->width;
    value[end - 2] = static_cast<std::uint8_t>(number >> 8);
    value[end - 1] = static_cast<std::uint8_t>(number);
    if (std::endian::native == std::endian::little)
        std::reverse(value.data() + (plain ? 0 : field->offset), value.data() + end);
    return value;
}

/// How many of the bytes are left without the blocks at the end that are zeros.
template <std::size_t block>
std::size_t size_without_zeros(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::uint8_t zeros[block] = {};
    while (size >= block && std::memcmp(bytes + size - block, zeros, block) == 0)
        size -= block;
    return size;
}

std::size_t size_without_zeros(Value value)
{
    std::size_t size = size_without_zeros<64>(value.data(), value.size());
    size = size_without_zeros<8>(value.data(), size);
    return size_without_zeros<1>(value.data(), size);
}

/// Writes a number's bytes the other way round.
void copy_turned(const std::uint8_t *from, std::size_t width, std::uint8_t *to)
{
    std::uint32_t usual = 0;
    if (width != sizeof usual) {
        std::reverse_copy(from, from + width, to);
        return;
    }
    std::memcpy(&usual, from, sizeof usual);
    usual = __builtin_bswap32(usual);
    std::memcpy(to, &usual, sizeof usual);
}

int compared(const SYSDT_Record &type, const void *first, const void *second)
{
    return type.compare(&type, static_cast<std::uint32_t>(value_size(type)), first, second);
}

} // namespace

bool compares_numbers(const SYSDT_Record &type)
{
    const Bytes one = with_number(type, 1);
    const Bytes two = with_number(type, 2);
    const Bytes more = with_number(type, 0x0100); // its low byte is less than theirs
    return type.compare != nullptr && !one.empty() &&
           compared(type, one.data(), two.data()) == compared(type, one.data(), more.data());
}

ValueOrder::ValueOrder(Session &session, const SYSDT_Record &type)
    : type_(type), size_(value_size(type)), asks_(type.compare != nullptr && !has_kinds(session, type)),
      reads_numbers_(asks_ && compares_numbers(type))
{
}

const std::vector<ValueOrder::Number> &ValueOrder::numbers_of(Value value)
{
    const Layout &layout = layout_of(type_.typeId, value, std::endian::native);
    const auto known = std::ranges::find_if(
        numbers_, [&](const Numbers &numbers) { return numbers.layout == &layout && numbers.size == value.size(); });
    if (known != numbers_.end())
        return known->numbers;
    std::vector<Number> &numbers = numbers_.emplace_back(Numbers{&layout, value.size(), {}}).numbers;
    ByteOrder target(type_, false);
    const std::uint16_t *const positions = target.positions(value);
    for (std::size_t at = 0, width = 1; at < value.size(); at += width) {
        width = std::size_t{1} + positions[at] - at; // the byte that comes first is the number's last
        if (width > 1)
            numbers.push_back({static_cast<std::uint16_t>(at), static_cast<std::uint16_t>(width)});
    }
    return numbers;
}

std::size_t ValueOrder::make_key(Value value, std::uint8_t *room)
{
    const std::size_t size = size_without_zeros(value);
    std::size_t end = 0;
    std::memcpy(room, value.data(), size);
    for (const auto [at, width] : numbers_of(value)) {
        if (at >= size)
            break;
        copy_turned(value.data() + at, width, room + at);
        end = std::size_t{at} + width;
    }
    return size_without_zeros<1>(room, std::max(size, end)); // fewer than a number has bytes
}

ValueOrder::Asked ValueOrder::asked(Key key, std::uint8_t *room) const
{
    if (!reads_numbers_ && key.size() == size_)
        return {key, key.data()};
    std::memcpy(room, key.data(), key.size());
    std::memset(room + key.size(), 0, size_ - key.size());
    if (reads_numbers_)
        turn_to_native(type_, {room, size_});
    return {key, room};
}

int ValueOrder::compare(Asked first, Asked second) const
{
    const int order = compared(type_, first.bytes, second.bytes);
    return order == 1 || order == -1 ? order : compare_keys(first.key, second.key);
}

int ValueOrder::compare(Key first, Key second) const
{
    if (!asks_)
        return compare_keys(first, second);
    Room<usual_size> rooms[] = {Room<usual_size>(size_), Room<usual_size>(size_)};
    return compare(asked(first, rooms[0].data()), asked(second, rooms[1].data()));
}

int compare_keys(ValueOrder::Key first, ValueOrder::Key second)
{
    const int order = std::memcmp(first.data(), second.data(), std::min(first.size(), second.size()));
    return order != 0 ? order : (first.size() > second.size()) - (first.size() < second.size());
}

} // namespace bgpdt::toolkit
