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

/// Without those at the end, which are looked for a machine word at a time.
std::size_t size_without_zeros(Value value)
{
    std::size_t size = value.size();
    for (std::uint64_t word = 0; size >= sizeof word; size -= sizeof word) {
        std::memcpy(&word, value.data() + size - sizeof word, sizeof word);
        if (word != 0)
            break;
    }
    while (size != 0 && value[size - 1] == 0)
        --size;
    return size;
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
      reads_numbers_(asks_ && compares_numbers(type)), target_(type, false)
{
}

std::size_t ValueOrder::make_key(Value value, std::uint8_t *room)
{
    const std::uint16_t *const positions = target_.positions(value);
    const std::size_t size = std::min(size_, size_without_zeros(value) + target_.reach());
    for (std::size_t i = 0; i < size; ++i)
        room[i] = value[positions[i]];
    std::memset(room + size, 0, size_ - size);
    return size_without_zeros({room, size});
}

void ValueOrder::write_asked(Key key, std::uint8_t *room) const
{
    std::memcpy(room, key.data(), key.size());
    std::memset(room + key.size(), 0, size_ - key.size());
    if (reads_numbers_)
        turn_to_native(type_, {room, size_});
}

const std::uint8_t *ValueOrder::asked(Key key, std::uint8_t *room) const
{
    if (!reads_numbers_ && key.size() == size_)
        return key.data();
    write_asked(key, room);
    return room;
}

int ValueOrder::answer(const std::uint8_t *first, const std::uint8_t *second) const
{
    const int order = compared(type_, first, second);
    return order == 1 || order == -1 ? order : 0;
}

int ValueOrder::compare(Key first, Key second) const
{
    if (asks_) {
        Room<usual_size> rooms[] = {Room<usual_size>(size_), Room<usual_size>(size_)};
        const int order = answer(asked(first, rooms[0].data()), asked(second, rooms[1].data()));
        if (order != 0)
            return order;
    }
    return compare_keys(first, second);
}

int compare_keys(ValueOrder::Key first, ValueOrder::Key second)
{
    const int order = std::memcmp(first.data(), second.data(), std::min(first.size(), second.size()));
    return order != 0 ? order : (first.size() > second.size()) - (first.size() < second.size());
}

} // namespace bgpdt::toolkit
