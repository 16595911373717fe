// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Multicast VPN routes: RFC 6514, section 4. A kind of route key is a route type, but that type 1 has one for each
/// family, type 4 one for each type of the route that it answers, and that the types 6 and 7 share one. Wildcards
/// (RFC 6625) have no place in a key.
#include "bgp_datatype/values.h"
#include "layouts.hpp"

namespace bgpdt::wire {
namespace {

enum RouteType : std::uint8_t {
    intra_as = 1,
    inter_as = 2,
    selective = 3,
    leaf = 4,
    source_active = 5,
    shared_tree_join = 6,
    source_tree_join = 7,
};

constexpr const char *route_type_name = "route type";

/// The address of a router, to the end of a route.
template <class Io>
void last_address(Io &io, const char *name, std::size_t place)
{
    io.family_by_size(name, place);
    io.address(name, place);
}

template <class Io>
void source_and_group(Io &io, std::size_t source, std::size_t group)
{
    io.bits_and_address("source", source);
    io.bits_and_address("group", group, source);
}

/// A route as it stands alone, and in front of a leaf's originator.
template <class Io>
void answered_route(Io &io, std::uint32_t kind)
{
    io.rd();
    switch (kind) {
    case SYSDT_BOL_NG_TYPE_4_1: return last_address(io, "originator", offsetof(SYSDT_BolNg41, originator1));
    case SYSDT_BOL_NG_TYPE_2:
    case SYSDT_BOL_NG_TYPE_4_2: return io.as_number("source AS", offsetof(SYSDT_BolNg2, as));
    default:
        source_and_group(io, offsetof(SYSDT_BolNg3, source), offsetof(SYSDT_BolNg3, group));
        return last_address(io, "originator", offsetof(SYSDT_BolNg3, originator));
    }
}

static_assert(offsetof(SYSDT_BolNg42, as) == offsetof(SYSDT_BolNg2, as));
static_assert(offsetof(SYSDT_BolNg43, source) == offsetof(SYSDT_BolNg3, source) &&
              offsetof(SYSDT_BolNg43, group) == offsetof(SYSDT_BolNg3, group) &&
              offsetof(SYSDT_BolNg43, originator1) == offsetof(SYSDT_BolNg3, originator));

std::size_t leaf_place(std::uint32_t kind)
{
    switch (kind) {
    case SYSDT_BOL_NG_TYPE_4_1: return offsetof(SYSDT_BolNg41, originator2);
    case SYSDT_BOL_NG_TYPE_4_2: return offsetof(SYSDT_BolNg42, originator);
    default: return offsetof(SYSDT_BolNg43, originator2);
    }
}

template <class Io>
void plain_route(Io &io, std::uint32_t kind)
{
    switch (kind) {
    case SYSDT_BOL_IPV4:
        io.rd();
        return io.template number<std::uint32_t>("originator", offsetof(SYSDT_BolIpv4, address));
    case SYSDT_BOL_IPV6:
        io.rd();
        return io.octets("originator", offsetof(SYSDT_BolIpv6, address), sizeof(SYSDT_BolIpv6::address));
    case SYSDT_BOL_NG_TYPE_5:
        io.rd();
        return source_and_group(io, offsetof(SYSDT_BolNg5, source), offsetof(SYSDT_BolNg5, group));
    case SYSDT_BOL_NG_TYPE_6:
        io.rd();
        io.as_number("source AS", offsetof(SYSDT_BolNg6, as));
        return source_and_group(io, offsetof(SYSDT_BolNg6, source), offsetof(SYSDT_BolNg6, group));
    default: return answered_route(io, kind);
    }
}

std::uint32_t plain_kind(std::uint8_t type, std::size_t size)
{
    constexpr std::size_t ipv6_size = 8 + 16;
    switch (type) {
    case intra_as: return size == ipv6_size ? SYSDT_BOL_IPV6 : SYSDT_BOL_IPV4;
    case inter_as: return SYSDT_BOL_NG_TYPE_2;
    case selective: return SYSDT_BOL_NG_TYPE_3;
    case source_active: return SYSDT_BOL_NG_TYPE_5;
    default: return SYSDT_BOL_NG_TYPE_6;
    }
}

void read_plain(Reader &in, std::uint8_t type)
{
    const std::uint32_t kind = plain_kind(type, in.left());
    in.set(0, kind);
    plain_route(in, kind);
    if (kind == SYSDT_BOL_NG_TYPE_6)
        in.put_beside(route_type_name, type);
}

void read_leaf(Reader &in)
{
    const auto type = in.take<std::uint8_t>("answered route's type");
    if (type < intra_as || type > selective)
        in.refuse(1, "answered route's type", "1, 2 or 3", std::to_string(type));
    const std::uint32_t kind = type == intra_as   ? SYSDT_BOL_NG_TYPE_4_1
                               : type == inter_as ? SYSDT_BOL_NG_TYPE_4_2
                                                  : SYSDT_BOL_NG_TYPE_4_3;
    in.set(0, kind);
    in.nested<std::uint8_t>("answered route", [kind](Reader &inner) { answered_route(inner, kind); });
    last_address(in, "leaf's originator", leaf_place(kind));
}

void write_leaf(Writer &out, std::uint32_t kind, RouteType answered)
{
    out.put<std::uint8_t>(leaf);
    out.nested<std::uint8_t>("multicast VPN route", [=](Writer &route) {
        route.put<std::uint8_t>(answered);
        route.nested<std::uint8_t>("answered route", [kind](Writer &inner) { answered_route(inner, kind); });
        last_address(route, "leaf's originator", leaf_place(kind));
    });
}

void write_plain(Writer &out, std::uint32_t kind, std::uint8_t type)
{
    out.put(type);
    out.nested<std::uint8_t>("multicast VPN route", [kind](Writer &route) { plain_route(route, kind); });
}

/// Which of two it is stands beside the value.
void write_join(Writer &out)
{
    const std::uint64_t type = out.beside_choice(route_type_name, shared_tree_join, source_tree_join);
    write_plain(out, SYSDT_BOL_NG_TYPE_6, static_cast<std::uint8_t>(type));
}

} // namespace

void read_mvpn(Reader &in)
{
    const auto type = in.take<std::uint8_t>("route type");
    if (type < intra_as || type > source_tree_join)
        in.refuse(1, "multicast VPN route type", "from 1 to 7", std::to_string(type));
    in.nested<std::uint8_t>("multicast VPN route", [type](Reader &inner) {
        if (type == leaf)
            read_leaf(inner);
        else
            read_plain(inner, type);
    });
}

void write_mvpn(Writer &out)
{
    const auto kind = load<std::uint32_t>(out.value(), 0);
    out.count(0, sizeof kind);
    switch (kind) {
    case SYSDT_BOL_IPV4:
    case SYSDT_BOL_IPV6: return write_plain(out, kind, intra_as);
    case SYSDT_BOL_NG_TYPE_2: return write_plain(out, kind, inter_as);
    case SYSDT_BOL_NG_TYPE_3: return write_plain(out, kind, selective);
    case SYSDT_BOL_NG_TYPE_4_1: return write_leaf(out, kind, intra_as);
    case SYSDT_BOL_NG_TYPE_4_2: return write_leaf(out, kind, inter_as);
    case SYSDT_BOL_NG_TYPE_4_3: return write_leaf(out, kind, selective);
    case SYSDT_BOL_NG_TYPE_5: return write_plain(out, kind, source_active);
    case SYSDT_BOL_NG_TYPE_6: return write_join(out);
    default: refuse_kind("multicast VPN");
    }
}

} // namespace bgpdt::wire
