// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "value_order.hpp"

#include <algorithm>
#include <bit>
#include <cstring>

#include "kinds.hpp"

namespace bgpdt::toolkit {
namespace {

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

void ValueOrder::make_key(Value value, std::uint8_t *key)
{
    const std::uint16_t *const positions = target_.positions(value);
    for (std::size_t i = 0; i < size_; ++i)
        key[i] = value[positions[i]];
    if (reads_numbers_)
        std::memcpy(key + size_, value.data(), size_);
}

ValueOrder::Key ValueOrder::key_of_target(const std::uint8_t *value, std::uint8_t *room) const
{
    if (!reads_numbers_)
        return Key(value);
    std::memcpy(room, value, size_);
    std::memcpy(room + size_, value, size_);
    turn_to_native(type_, {room + size_, size_});
    return Key(room);
}

int ValueOrder::compare(Key first, Key second) const
{
    if (asks_) {
        const int order = compared(type_, first.compared(*this), second.compared(*this));
        if (order == 1 || order == -1)
            return order;
    }
    return std::memcmp(first.target(), second.target(), size_);
}

bool ValueOrder::same(Key first, Key second) const { return std::memcmp(first.target(), second.target(), size_) == 0; }

} // namespace bgpdt::toolkit
