// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "byte_order.hpp"

#include <algorithm>
#include <bit>

#include "bgp_datatype/fields.hpp"

namespace bgpdt::test {

namespace {

constexpr std::uint16_t attribute_bitmap = 0x0122;
constexpr std::uint16_t client_vrf_name = 0x0124;

/// Turns numbers of a value in the order given, from place to place.
class Turner {
public:
    explicit Turner(Bytes &value, std::endian order = std::endian::big) : value_(value), order_(order) {}

    bool has(std::size_t count) const { return place_ + count <= value_.size(); }
    void skip(std::size_t count) { place_ = std::min(place_ + count, value_.size()); }
    /// The number, turned where it stands.
    std::uint32_t turn(std::size_t width)
    {
        const auto begin = value_.begin() + static_cast<std::ptrdiff_t>(place_);
        const auto end = begin + static_cast<std::ptrdiff_t>(width);
        if (order_ == std::endian::little)
            std::reverse(begin, end);
        std::uint32_t number = 0;
        std::for_each(begin, end, [&](std::uint8_t byte) { number = number << 8 | byte; });
        if (order_ == std::endian::big)
            std::reverse(begin, end);
        place_ += width;
        return number;
    }

private:
    Bytes &value_;
    std::endian order_;
    std::size_t place_ = 0;
};

/// The number in front of an entry of that kind: its width, 0 where there is none.
std::size_t number_width(std::uint32_t kind)
{
    switch (kind) {
    case 4: return 2;
    case 6:
    case 21:
    case 38: return 4;
    default: return 0;
    }
}

/// A display record: an entry count at byte 24, and from byte 44 entries of kind, length and so many bytes.
void turn_display_record(Bytes &record)
{
    Turner turner(record);
    turner.skip(24);
    if (turner.has(2))
        turner.turn(2);
    turner.skip(18);
    while (turner.has(4)) {
        const std::uint32_t kind = turner.turn(2);
        const std::uint32_t length = turner.turn(2);
        const std::size_t width = number_width(kind);
        const bool whole = width > 0 && length >= width && turner.has(width);
        if (whole)
            turner.turn(width);
        turner.skip(length - (whole ? width : 0));
    }
}

/// A client VRF name's structured form: items of kind, length and so many characters.
Bytes turned_items(Bytes items, std::endian order)
{
    Turner turner(items, order);
    while (turner.has(4)) {
        turner.turn(2);
        turner.skip(turner.turn(2));
    }
    return items;
}

/// A client VRF name as the host has it: 32 characters, the number, whether there is one.
void turn_client_name(Bytes &record)
{
    Turner turner(record);
    turner.skip(32);
    while (turner.has(4))
        turner.turn(4);
}

Layout layout(const Form &form, Bytes value, std::endian order)
{
    if (form.sub_kind && value.size() >= sizeof(std::uint32_t))
        for (std::size_t i = 0; i < sizeof(std::uint32_t); ++i)
            value[order == std::endian::big ? 3 - i : i] = static_cast<std::uint8_t>(*form.sub_kind >> (8 * i));
    return layout_of(form.kind, value, order);
}

constexpr bool is_big_endian = std::endian::native == std::endian::big;

} // namespace

Bytes to_native(const Form &form, const Bytes &value)
{
    Bytes turned = value;
    if (!is_big_endian)
        reverse_numbers(layout(form, value, std::endian::big), turned);
    return turned;
}

Bytes to_target(const Form &form, const Bytes &value)
{
    Bytes turned = value;
    if (!is_big_endian)
        reverse_numbers(layout(form, value, std::endian::native), turned);
    return turned;
}

Bytes turned_like(const Form &form, const Bytes &first, const Bytes &second, const Bytes &value)
{
    Bytes turned = value;
    if (!is_big_endian) {
        const Layout own = layout(form, first, std::endian::big);
        reverse_numbers(own.fields.empty() ? layout(form, second, std::endian::big) : own, turned);
    }
    return turned;
}

Bytes shown_to_native(const Form &form, const Bytes &data)
{
    Bytes turned = data;
    if (is_big_endian || (form.kind != attribute_bitmap && form.kind != client_vrf_name))
        return to_native(form, data);
    if (form.kind == attribute_bitmap)
        turn_display_record(turned);
    else
        turn_client_name(turned);
    return turned;
}

Bytes copy_to_native(const Form &form, const Bytes &copy)
{
    if (is_big_endian || form.kind != client_vrf_name)
        return to_native(form, copy);
    return turned_items(copy, std::endian::big);
}

Bytes copy_to_target(const Form &form, const Bytes &copy)
{
    if (is_big_endian || form.kind != client_vrf_name)
        return to_target(form, copy);
    return turned_items(copy, std::endian::native);
}

} // namespace bgpdt::test
