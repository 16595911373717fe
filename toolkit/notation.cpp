// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "notation.hpp"

#include <bit>
#include <cstddef>
#include <cstring>

#include "bgp_datatype/fields.hpp"

namespace bgpdt::toolkit {
namespace {

using Entry = std::span<std::uint8_t>;

/// A number of one, two or four bytes in the machine's order.
std::uint32_t load(Entry bytes)
{
    std::uint32_t number = 0;
    auto *const to = reinterpret_cast<std::uint8_t *>(&number);
    std::memcpy(std::endian::native == std::endian::big ? to + sizeof number - bytes.size() : to, bytes.data(),
                bytes.size());
    return number;
}

void store(Entry bytes, std::uint32_t number)
{
    const auto *const from = reinterpret_cast<const std::uint8_t *>(&number);
    std::memcpy(bytes.data(), std::endian::native == std::endian::big ? from + sizeof number - bytes.size() : from,
                bytes.size());
}

/// The AS number that the notation is of stands next to it.
std::uint32_t number_beside(const Layout &layout, const Field &notation, Entry entry)
{
    for (const Field &field : layout.fields) {
        const bool beside =
            field.offset + field.size() == notation.offset || notation.offset + notation.size() == field.offset;
        if (beside && field.form == Form::number && field.words == Words::none && field.size() == 4)
            return load(entry.subspan(field.offset, field.size()));
    }
    return 0;
}

/// What the notation's number is to be; the same for what is no notation of a number of four bytes.
std::uint32_t changed(const Layout &layout, const Field &field, Entry entry, bool dotted)
{
    constexpr std::uint32_t largest_of_two_bytes = 0xffff;
    const std::uint32_t now = load(entry.subspan(field.offset, field.size()));
    switch (field.words) {
    case Words::as_notation:
        return dotted && number_beside(layout, field, entry) > largest_of_two_bytes ? SYSDT_AS_DOTTED : SYSDT_AS_PLAIN;
    case Words::target_form:
        if (entry[offsetof(SYSDT_BolRouteTarget, rt.octets)] == 6) // of Ethernet: six octets, whatever the number
            return now;
        [[fallthrough]];
    case Words::rd_form:
        if (now == VRF_RD_FORM_AS4 || now == VRF_RD_FORM_AS4DOT)
            return dotted ? VRF_RD_FORM_AS4DOT : VRF_RD_FORM_AS4;
        return now;
    case Words::rtp_rd_form:
        if (now == RTP_RD_FORM_AS4 || now == RTP_RD_FORM_AS4DOT)
            return dotted ? RTP_RD_FORM_AS4DOT : RTP_RD_FORM_AS4;
        return now;
    default: return now;
    }
}

} // namespace

void set_notation(const SYSDT_Record &type, std::span<std::uint8_t> value, Notation notation)
{
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    for (std::size_t at = 0; at + layout.stride <= value.size() && at < layout.size(); at += layout.stride) {
        const Entry entry = value.subspan(at, layout.stride);
        for (const Field &field : layout.fields) {
            if (field.words != Words::none && field.size() != 0 && field.size() <= 4)
                store(entry.subspan(field.offset, field.size()),
                      changed(layout, field, entry, notation == Notation::dotted));
        }
    }
}

} // namespace bgpdt::toolkit
