// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The way back of reader.hpp: makes octets of the fields of a value and of what is told beside it.
#pragma once

#include <concepts>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "item.hpp"
#include "numbers.hpp"

namespace bgpdt::wire {

/// What is told beside a value, by its names. Whatever is not asked for is one too many.
class Given {
public:
    explicit Given(const std::vector<NamedValue> &values) : values_(values), used_(values.size()) {}

    const NamedValue *find(const std::string &name);
    /// @param example  a text of it
    /// @throws NotSent
    const std::string &text(const std::string &name, const std::string &example);
    std::optional<std::uint64_t> number(const std::string &name, std::uint64_t largest);
    /// TLVs whose octets are told, by type; below the type, none of them before.
    std::vector<std::pair<std::uint32_t, Bytes>> tlvs(const std::string &group, std::uint32_t from,
                                                      std::uint32_t below);
    /// @throws NotSent
    void require_all_used() const;

private:
    const std::vector<NamedValue> &values_;
    std::vector<bool> used_;
    std::set<std::string> asked_;
};

class Writer {
public:
    /// @param sent  takes the fields of the value that have been sent
    Writer(Octets value, Bytes &sent, Given &given, std::string_view group = {})
        : value_(value), sent_(sent), given_(given), group_(group)
    {
    }

    const Bytes &octets() const { return octets_; }
    Octets value() const { return value_; }

    template <std::unsigned_integral Number>
    void put(Number number)
    {
        append_number(octets_, number, sizeof number);
    }
    /// Counts fields as sent.
    void count(std::size_t place, std::size_t size);

    // Steps of layouts.

    template <std::unsigned_integral Number>
    void number(const char *, std::size_t place)
    {
        put(load<Number>(value_, place));
        count(place, sizeof(Number));
    }
    void small_number(const char *name, std::size_t place);
    void as_number(const char *name, std::size_t place)
    {
        number<std::uint32_t>(name, place);
        count(place + sizeof(std::uint32_t), sizeof(std::uint32_t));
    }
    void octets(const char *name, std::size_t place, std::size_t size);
    void fixed(const char *name, std::size_t place, std::uint8_t expected);

    void rd();
    void beside_esi(const char *name);
    template <std::unsigned_integral Number>
    void beside_number(const char *name)
    {
        given_.text(name, "0");
        put(static_cast<Number>(*given_.number(name, static_cast<Number>(~Number{0}))));
    }
    template <std::unsigned_integral Number>
    void beside_reserved(const char *name)
    {
        put(static_cast<Number>(given_.number(name, static_cast<Number>(~Number{0})).value_or(0)));
    }
    /// One of the numbers from the first to the last.
    std::uint64_t beside_choice(const char *name, std::uint64_t first, std::uint64_t last);
    void beside_label(const char *name);
    void beside_second_label(const char *name);
    void beside_address(const char *name, std::size_t place);

    void family_by_size(const char *name, std::size_t place, std::size_t ipv4 = 4, std::size_t ipv6 = 16);
    void family_by_flag(std::size_t place, std::size_t flags, std::uint8_t bit);
    void address(const char *name, std::size_t place);
    void sized_address(const char *name, std::size_t place);
    void bits_and_address(const char *name, std::size_t place);
    void bits_and_address(const char *name, std::size_t place, std::size_t other);
    void prefix_ipv4(const char *name, std::size_t place, std::size_t length);
    void prefix_ipv6(const char *name, std::size_t place, std::size_t length);

    template <std::unsigned_integral Length, class Body>
    void nested(const char *, Body body)
    {
        Writer inner(value_, sent_, given_, group_);
        body(inner);
        put_length<Length>(inner.octets().size());
        append(inner.octets());
    }

    template <class Body>
    void nested_bits(const char *, Body body)
    {
        Writer inner(value_, sent_, given_, group_);
        body(inner);
        put_length<std::uint8_t>(8 * inner.octets().size());
        append(inner.octets());
    }

    template <class Body>
    void nested_prefix(const char *, std::size_t head, std::size_t size, Body body)
    {
        Writer inner(value_, sent_, given_, group_);
        body(inner);
        put_length<std::uint8_t>(8 * head + inner.beside_prefix(size));
        append(inner.octets());
    }

    template <class Usual, class Body>
    void tlv(std::uint16_t type, const char *name, Usual usual, Body body)
    {
        put_others(type);
        if (is_there(type, usual()))
            put_tlv(type, name, body, group_);
    }
    template <class Body>
    void tlv_group(std::uint16_t type, const char *name, std::string_view group, Body body)
    {
        put_others(type);
        put_tlv(type, name, body, group);
    }
    void last_tlvs() { put_others(beyond_tlvs); }
    void igp_router_id(std::size_t place);
    void mt_id(std::size_t place);
    void starts_as(std::size_t place, std::uint32_t number)
    {
        if (load<std::uint32_t>(value_, place) == number)
            count(place, sizeof number);
    }

private:
    template <std::unsigned_integral Length>
    void put_length(std::size_t length)
    {
        if (length > static_cast<Length>(~Length{0}))
            throw NotSent("more would be sent than a length of " + std::to_string(sizeof(Length)) + " bytes can say");
        put(static_cast<Length>(length));
    }
    void append(Octets octets) { octets_.insert(octets_.end(), octets.begin(), octets.end()); }
    bool is_ipv6(const char *name, std::size_t place);
    bool is_there(std::uint16_t type, bool usual);
    void put_others(std::uint32_t below);
    std::size_t beside_prefix(std::size_t size);
    void put_prefix(const char *name, std::size_t length, Octets address);

    template <class Body>
    void put_tlv(std::uint16_t type, const char *, Body body, std::string_view group)
    {
        Writer inner(value_, sent_, given_, group);
        body(inner);
        put(type);
        put_length<std::uint16_t>(inner.octets().size());
        append(inner.octets());
    }

    Octets value_;
    Bytes &sent_;
    Given &given_;
    std::string_view group_;
    Bytes octets_;
    std::uint32_t next_tlv_ = 0;
};

} // namespace bgpdt::wire
