// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// EVPN routes: RFC 7432, section 7; RFC 9136, section 3.1; RFC 9251, section 9.
#include "bgp_datatype/values.h"
#include "layouts.hpp"

namespace bgpdt::wire {
namespace {

constexpr std::size_t route_type_offset = offsetof(SYSDT_BolEvpn, key.routeType);

/// @param place  of what the value has of it, as of the route types 6
template <class Io>
void membership(Io &io, std::size_t place)
{
    io.template number<std::uint32_t>("Ethernet tag", place + offsetof(SYSDT_EvpnMembership, tag));
    io.sized_address("source", place + offsetof(SYSDT_EvpnMembership, source));
    io.sized_address("group", place + offsetof(SYSDT_EvpnMembership, group));
    io.sized_address("originator", place + offsetof(SYSDT_EvpnMembership, originator));
}

template <class Io>
void mac_ip(Io &io)
{
    io.beside_esi("ESI");
    io.template number<std::uint32_t>("Ethernet tag", offsetof(SYSDT_BolEvpn, key.macIp.tag));
    io.fixed("MAC length", offsetof(SYSDT_BolEvpn, key.macIp.macLength), 48);
    io.octets("MAC address", offsetof(SYSDT_BolEvpn, key.macIp.mac), 6);
    io.sized_address("IP address", offsetof(SYSDT_BolEvpn, key.macIp.ip));
    io.beside_label("label");
    io.beside_second_label("second label");
}

/// The prefix is whole on the wire, whatever its length; the family shows in the number of octets alone.
template <class Io>
void ip_prefix(Io &io)
{
    constexpr std::size_t label = 3;
    constexpr std::size_t place = offsetof(SYSDT_BolEvpn, key.prefix.ip.address);
    io.beside_esi("ESI");
    io.template number<std::uint32_t>("Ethernet tag", offsetof(SYSDT_BolEvpn, key.prefix.tag));
    io.template number<std::uint8_t>("prefix length", offsetof(SYSDT_BolEvpn, key.prefix.ip.length));
    io.family_by_size("prefix with its gateway and label", place, 4 + 4 + label, 16 + 16 + label);
    io.address("prefix", place);
    io.beside_address("gateway", place);
    io.beside_label("label");
}

template <class Io>
void sync(Io &io)
{
    io.octets("ESI", offsetof(SYSDT_BolEvpn, key.sync.esi), sizeof(SYSDT_EvpnSync::esi));
    membership(io, offsetof(SYSDT_BolEvpn, key.sync.membership));
}

template <class Io>
void route(Io &io, unsigned type)
{
    io.rd();
    switch (type) {
    case SYSDT_EVPN_AUTO_DISCOVERY:
        io.octets("ESI", offsetof(SYSDT_BolEvpn, key.autoDiscovery.esi), sizeof(SYSDT_EvpnAutoDiscovery::esi));
        io.template number<std::uint32_t>("Ethernet tag", offsetof(SYSDT_BolEvpn, key.autoDiscovery.tag));
        return io.beside_label("label");
    case SYSDT_EVPN_MAC_IP: return mac_ip(io);
    case SYSDT_EVPN_INCLUSIVE:
        io.template number<std::uint32_t>("Ethernet tag", offsetof(SYSDT_BolEvpn, key.inclusive.tag));
        return io.sized_address("originator", offsetof(SYSDT_BolEvpn, key.inclusive.ip));
    case SYSDT_EVPN_SEGMENT:
        io.octets("ESI", offsetof(SYSDT_BolEvpn, key.segment.esi), sizeof(SYSDT_EvpnSegment::esi));
        return io.sized_address("originator", offsetof(SYSDT_BolEvpn, key.segment.ip));
    case SYSDT_EVPN_IP_PREFIX: return ip_prefix(io);
    case SYSDT_EVPN_SELECTIVE: membership(io, offsetof(SYSDT_BolEvpn, key.selective)); break;
    case SYSDT_EVPN_JOIN: sync(io); break;
    default:
        sync(io);
        io.template number<std::uint32_t>("leave sequence number", offsetof(SYSDT_BolEvpn, key.sync.sequence));
        io.template beside_number<std::uint8_t>("maximum response time");
        break;
    }
    io.template beside_number<std::uint8_t>("flags");
}

bool is_route_type(unsigned type) { return type >= SYSDT_EVPN_AUTO_DISCOVERY && type <= SYSDT_EVPN_LEAVE; }

} // namespace

void read_evpn(Reader &in)
{
    in.set(0, std::uint32_t{SYSDT_BOL_EVN});
    in.number<std::uint8_t>("route type", route_type_offset);
    const unsigned type = in.value()[route_type_offset];
    if (!is_route_type(type))
        in.refuse(1, "EVPN route type", "from 1 to 8", std::to_string(type));
    in.nested<std::uint8_t>("EVPN route", [type](Reader &inner) { route(inner, type); });
}

void write_evpn(Writer &out)
{
    const unsigned type = out.value()[route_type_offset];
    if (load<std::uint32_t>(out.value(), 0) != SYSDT_BOL_EVN || !is_route_type(type))
        refuse_kind("EVPN");
    out.count(0, sizeof(std::uint32_t));
    out.number<std::uint8_t>("route type", route_type_offset);
    out.nested<std::uint8_t>("EVPN route", [type](Writer &inner) { route(inner, type); });
}

} // namespace bgpdt::wire
