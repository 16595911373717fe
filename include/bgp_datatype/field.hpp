// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a field of a binary form is, what a layout of fields is, and what follows from a layout alone: the byte swap.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

namespace bgpdt {

/// What a field means to a reader. The first two are numbers in the processor's byte order, the others network order.
enum class Form : std::uint8_t {
    number,    ///< a number, or an array of numbers
    ipv4,      ///< an IPv4 address kept as a number, its first octet in the top byte
    bytes,     ///< opaque bytes, shown in hexadecimal
    text,      ///< characters up to a NUL
    bits,      ///< a set of numbers: n is in it where octet n / 8 has bit n % 8
    ipv6,      ///< an IPv6 address
    mac,       ///< an Ethernet MAC address
    esi,       ///< an Ethernet segment identifier (RFC 7432)
    rd,        ///< a route distinguisher: its type and six octets that the type splits (RFC 4364, section 4.2)
    community, ///< an extended community: its type, sub-type and six octets (RFC 4360, section 3)
};

/// What a field's numbers stand for: one of the lists of words beside the fields, which alone know which there are. A
/// number, not a pointer, so that who needs the fields alone holds no words.
enum class Words : std::uint8_t;

/// One field of a binary form.
struct Field {
    const char *name{};         ///< the field's name in its RFC
    const char *key{};          ///< the script field; null when scripts do not see it
    std::uint16_t offset{};     ///< from the start of the value, in bytes
    std::uint8_t width{};       ///< size of one element in bytes: 1, 2, 4 or 8
    std::uint8_t count{};       ///< number of elements; an array is a table in scripts; 0: known to scripts alone
    Form form{};                ///< how it is read
    std::uint8_t script_bits{}; ///< how many low bits of a script's number are kept
    Words words{};              ///< what its number stands for, if anything
    const char *table{};        ///< the script table within the value's own that holds the field, if any

    constexpr bool host_order() const { return form == Form::number || form == Form::ipv4; }
    constexpr std::size_t size() const { return std::size_t{width} * count; }
};

/// A binary form: `repeat` entries of `stride` bytes, each with the same fields.
struct Layout {
    std::span<const Field> fields; ///< in the order in which scripts see them
    std::uint16_t stride;          ///< bytes from one entry to the next
    std::uint16_t repeat = 1;      ///< number of entries
    const char *key = nullptr;     ///< of a list: the script field that holds the array of entries

    constexpr std::size_t size() const { return std::size_t{stride} * repeat; }
};

/// The row of a member: width and count come from its type.
template <class Member>
constexpr Field field(const char *name, std::size_t offset, Form form, const char *key, int script_bits = 0)
{
    using Element = std::remove_all_extents_t<Member>;
    constexpr std::size_t count = std::is_array_v<Member> ? std::extent_v<Member> : 1;
    const int bits = script_bits != 0 ? script_bits : 8 * static_cast<int>(sizeof(Element));
    return {name,  key,  static_cast<std::uint16_t>(offset), sizeof(Element),
            count, form, static_cast<std::uint8_t>(bits)};
}

/// The row of a member that is a number with words.
template <class Member>
constexpr Field field(const char *name, std::size_t offset, Words words, const char *key, int script_bits = 0)
{
    Field row = field<Member>(name, offset, Form::number, key, script_bits);
    row.words = words;
    return row;
}

/// BGPDT_FIELD(structure, member, name, form or words, script key[, script bits])
#define BGPDT_FIELD(structure, member, name, ...)                                                                      \
    ::bgpdt::field<decltype(structure::member)>(name, offsetof(structure, member), __VA_ARGS__)

/// The row of a field in a script table of its own or with others, moved by the offset of the part that it is of.
constexpr Field within(const char *table, Field row, std::size_t offset = 0)
{
    row.table = table;
    row.offset = static_cast<std::uint16_t>(row.offset + offset);
    return row;
}

/// Rows that go together are made by functions: join() puts them and single rows into one table.
template <std::size_t Count>
using Rows = std::array<Field, Count>;

template <class Part>
inline constexpr std::size_t row_count = 1;
template <std::size_t Count>
inline constexpr std::size_t row_count<Rows<Count>> = Count;

constexpr Field *copy_rows(Field *to, const Field &row)
{
    *to = row;
    return to + 1;
}

template <std::size_t Count>
constexpr Field *copy_rows(Field *to, const Rows<Count> &rows)
{
    return std::copy(rows.begin(), rows.end(), to);
}

template <class... Parts>
constexpr auto join(const Parts &...parts)
{
    Rows<(0 + ... + row_count<Parts>)> rows{};
    Field *to = rows.data();
    ((to = copy_rows(to, parts)), ...);
    return rows;
}

/// Reverses the bytes of every host-order number of the layout in place, as far as the value reaches.
inline void reverse_numbers(const Layout &layout, std::span<std::uint8_t> value)
{
    for (std::size_t entry = 0; entry < layout.repeat; ++entry) {
        for (const Field &field : layout.fields) {
            std::size_t at = entry * layout.stride + field.offset;
            if (!field.host_order() || at + field.size() > value.size())
                continue;
            for (std::size_t i = 0; i < field.count; ++i, at += field.width)
                std::reverse(value.data() + at, value.data() + at + field.width);
        }
    }
}

} // namespace bgpdt
