// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Takes octets from the wire to the fields of a value, and beside it what it has no room for. A layout is told once,
/// as a template over Reader and Writer: both have the same steps. Names are what the fields are called in refusals;
/// places are offsets in the value.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "item.hpp"
#include "numbers.hpp"

namespace bgpdt::wire {

/// The offset of the family behind an address in a value.
inline constexpr std::size_t family_offset = 20;
inline constexpr std::size_t ipv6_offset = 4;

class Reader {
public:
    /// @param at     where the octets begin on the wire
    /// @param group  stands in front of the names of TLVs
    Reader(Octets octets, std::size_t at, Item &item, std::string_view group = {})
        : octets_(octets), at_(at), item_(item), group_(group)
    {
    }

    std::size_t left() const { return octets_.size(); }
    std::size_t at() const { return at_; }
    Octets value() const { return item_.value; }
    /// The octets that are left must be none.
    void end(const char *name) const;

    template <std::unsigned_integral Number>
    Number take(const char *name)
    {
        return static_cast<Number>(number_in(take_octets(name, sizeof(Number))));
    }
    Octets take_octets(const char *name, std::size_t size);
    /// @throws BadBytes: of the last octets taken
    [[noreturn]] void refuse(std::size_t size, const std::string &name, const std::string &expected,
                             const std::string &found) const;

    template <std::unsigned_integral Number>
    void set(std::size_t place, Number number)
    {
        store<Number>(item_.value, place, number);
    }
    void put_beside(const std::string &name, const std::string &text) { item_.beside.push_back({name, text}); }
    void put_beside(const std::string &name, std::uint64_t number)
    {
        item_.beside.push_back({name, std::to_string(number), number});
    }

    // Steps of layouts.

    template <std::unsigned_integral Number>
    void number(const char *name, std::size_t place)
    {
        set(place, take<Number>(name));
    }
    /// A number that is one octet on the wire and 32 bits in the value.
    void small_number(const char *name, std::size_t place) { set(place, std::uint32_t{take<std::uint8_t>(name)}); }
    /// An AS number, whose notation behind it is not on the wire.
    void as_number(const char *name, std::size_t place) { number<std::uint32_t>(name, place); }
    void octets(const char *name, std::size_t place, std::size_t size);
    /// A number that the value has too, and that is always the same.
    void fixed(const char *name, std::size_t place, std::uint8_t expected);

    void rd();
    void beside_esi(const char *name);
    template <std::unsigned_integral Number>
    void beside_number(const char *name)
    {
        put_beside(name, take<Number>(name));
    }
    /// What is beside the value only if it is not 0.
    template <std::unsigned_integral Number>
    void beside_reserved(const char *name)
    {
        if (const Number number = take<Number>(name); number != 0)
            put_beside(name, number);
    }
    /// Three octets: a VNI (RFC 8365), or an MPLS label in the upper 20 bits (RFC 3032).
    void beside_label(const char *name);
    void beside_second_label(const char *name)
    {
        if (left() != 0)
            beside_label(name);
    }
    /// Of the family of the one at the place.
    void beside_address(const char *name, std::size_t place);

    /// The family that the number of octets left tells.
    void family_by_size(const char *name, std::size_t place, std::size_t ipv4 = 4, std::size_t ipv6 = 16);
    /// The family that a bit of the value's flags tells.
    void family_by_flag(std::size_t place, std::size_t flags, std::uint8_t bit);
    /// Of the family that is known.
    void address(const char *name, std::size_t place);
    /// Behind its length in bits, which may be 0; the value has both.
    void sized_address(const char *name, std::size_t place);
    /// Behind its length in bits; the value has the address alone.
    void bits_and_address(const char *name, std::size_t place);
    /// The same, of the family of the one at the other place.
    void bits_and_address(const char *name, std::size_t place, std::size_t other);
    /// At most 16 octets, as many as the length in bits in front of them needs.
    void prefix_ipv4(const char *name, std::size_t place, std::size_t length);
    void prefix_ipv6(const char *name, std::size_t place, std::size_t length);

    /// What stands behind its length.
    template <std::unsigned_integral Length, class Body>
    void nested(const char *name, Body body)
    {
        Reader inner = part(name, take<Length>(name), sizeof(Length));
        body(inner);
        inner.end(name);
    }

    /// What stands behind its length in bits, in one octet.
    template <class Body>
    void nested_bits(const char *name, Body body)
    {
        const std::size_t bits = take<std::uint8_t>(name);
        if (bits % 8 != 0)
            refuse(1, "length in bits of the " + std::string(name), "a multiple of 8", std::to_string(bits));
        Reader inner = part(name, bits / 8, 1);
        body(inner);
        inner.end(name);
    }

    /// A prefix behind what the body takes, both under one length in bits; it stands beside the value.
    /// @param head      the size of what the body takes
    /// @param size      of a whole address
    template <class Body>
    void nested_prefix(const char *name, std::size_t head, std::size_t size, Body body)
    {
        const std::size_t bits = take<std::uint8_t>(name);
        if (bits < 8 * head || bits > 8 * (head + size)) {
            refuse(1, "length in bits of the " + std::string(name),
                   "from " + std::to_string(8 * head) + " to " + std::to_string(8 * (head + size)),
                   std::to_string(bits));
        }
        Reader inner = part(name, (bits + 7) / 8, 1);
        body(inner);
        inner.beside_prefix(bits - 8 * head, size);
    }

    // BGP-LS: TLVs in ascending order, each once (RFC 9552, section 5.1).

    /// @param usual  whether a value such as this has one: where it is otherwise, that stands beside the value
    template <class Usual, class Body>
    void tlv(std::uint16_t type, const char *name, Usual usual, Body body)
    {
        const bool there = reach(type);
        if (there)
            read_tlv(name, body, {});
        if (there != usual())
            put_beside(tlv_name(type), there ? "present" : "absent");
    }
    /// One that must be there; its own TLVs are of the group.
    template <class Body>
    void tlv_group(std::uint16_t type, const char *name, std::string_view group, Body body)
    {
        if (!reach(type))
            refuse_missing(type, name);
        read_tlv(name, body, group);
    }
    /// The others, which the value has no room for.
    void last_tlvs() { reach(beyond_tlvs); }
    /// Its usual size follows from the protocol and the octets.
    void igp_router_id(std::size_t place);
    void mt_id(std::size_t place);
    /// A field has the number until its TLV is found.
    void starts_as(std::size_t place, std::uint32_t number) { set(place, number); }

private:
    Reader part(const char *name, std::size_t size, std::size_t length_size, std::string_view group = {});
    std::size_t take_bits(const char *name, bool ipv4, bool ipv6, bool none);
    bool reach(std::uint32_t type);
    std::string grouped(const std::string &name) const { return std::string(group_) + name; }
    std::string tlv_name(std::uint32_t type) const { return grouped("TLV " + std::to_string(type)); }
    std::uint32_t take_tlv_type();
    [[noreturn]] void refuse_missing(std::uint16_t type, const char *name) const;
    void beside_prefix(std::size_t bits, std::size_t size);
    void take_prefix(const char *name, std::size_t length, std::span<std::uint8_t> address);

    template <class Body>
    void read_tlv(const char *name, Body body, std::string_view group)
    {
        take_tlv_type();
        Reader inner = part(name, take<std::uint16_t>(name), sizeof(std::uint16_t), group);
        body(inner);
        inner.end(name);
    }

    Octets octets_;
    std::size_t at_;
    Item &item_;
    std::string_view group_;
    std::uint32_t last_tlv_ = 0;
    bool any_tlv_ = false;
};

/// The octets of an IGP router identifier that it usually has (RFC 9552, section 5.2.1.4): of IS-IS 6, 7 with a
/// pseudonode, else 4, 8 with a designated router's interface; 0 for none.
std::size_t usual_router_id_size(Octets value, std::size_t place);
bool is_zero(Octets octets);

} // namespace bgpdt::wire
