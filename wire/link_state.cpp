// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// BGP-LS NLRI: RFC 9552, section 5.2; speakers by RFC 9086, SRv6 SIDs by RFC 9514, SR policies by RFC 9857; in a VPN
/// behind a route distinguisher. TLVs that a key has no room for stand beside it.
#include <limits>

#include "bgp_datatype/values.h"
#include "layouts.hpp"

namespace bgpdt::wire {
namespace {

enum Tlv : std::uint16_t {
    local_node = 256,
    remote_node = 257,
    link_identifiers = 258,
    ipv4_interface = 259,
    ipv4_neighbor = 260,
    ipv6_interface = 261,
    ipv6_neighbor = 262,
    multi_topology = 263,
    ospf_route_type = 264,
    ip_reachability = 265,
    autonomous_system = 512,
    bgp_ls_identifier = 513,
    ospf_area = 514,
    igp_router_id = 515,
    bgp_router_id = 516,
    member_as = 517,
    srv6_sid = 518,
    sr_candidate_path = 554,
    ipv4_router_id = 1028,
    ipv6_router_id = 1029,
};

/// Where a field is that a key has not.
constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();

/// Where the fields of a node are.
struct NodePlaces {
    std::size_t as;
    std::size_t bgp_ls_id;
    std::size_t area = nowhere;
    std::size_t igp_router_id = nowhere;
    std::size_t bgp_router_id = nowhere;
    std::size_t member_as = nowhere;
    std::size_t ipv4_router_id = nowhere;
    std::size_t ipv6_router_id = nowhere;
};

constexpr NodePlaces plain_node(std::size_t node)
{
    return {.as = node + offsetof(SYSDT_LsNodeDesc, as),
            .bgp_ls_id = node + offsetof(SYSDT_LsNodeDesc, bgpLsId),
            .area = node + offsetof(SYSDT_LsNodeDesc, ospfArea),
            .igp_router_id = node + offsetof(SYSDT_LsNodeDesc, igpRouterId)};
}

constexpr NodePlaces member_node(std::size_t node, std::size_t bgp_router_id)
{
    return {.as = node + offsetof(SYSDT_LsMemberNodeDesc, as),
            .bgp_ls_id = node + offsetof(SYSDT_LsMemberNodeDesc, bgpLsId),
            .area = node + offsetof(SYSDT_LsMemberNodeDesc, ospfArea),
            .igp_router_id = node + offsetof(SYSDT_LsMemberNodeDesc, igpRouterId),
            .bgp_router_id = bgp_router_id,
            .member_as = node + offsetof(SYSDT_LsMemberNodeDesc, memberAs)};
}

constexpr NodePlaces local_places(std::uint32_t route)
{
    switch (route) {
    case SYSDT_LS_LINK: return member_node(offsetof(SYSDT_LsLink, local), offsetof(SYSDT_LsLink, localBgpRouterId));
    case SYSDT_LS_SRV6_SID:
        return member_node(offsetof(SYSDT_LsSrv6Sid, local), offsetof(SYSDT_LsSrv6Sid, bgpRouterId));
    case SYSDT_LS_TE_POLICY:
        return {.as = offsetof(SYSDT_LsTePolicy, as),
                .bgp_ls_id = offsetof(SYSDT_LsTePolicy, bgpLsId),
                .bgp_router_id = offsetof(SYSDT_LsTePolicy, bgpRouterId),
                .ipv4_router_id = offsetof(SYSDT_LsTePolicy, ipv4RouterId),
                .ipv6_router_id = offsetof(SYSDT_LsTePolicy, ipv6RouterId)};
    default: return plain_node(offsetof(SYSDT_LsNode, local));
    }
}

constexpr NodePlaces remote_places =
    member_node(offsetof(SYSDT_LsLink, remote), offsetof(SYSDT_LsLink, remoteBgpRouterId));

std::uint32_t protocol_of(Octets value) { return load<std::uint32_t>(value, offsetof(SYSDT_LsHead, protocolId)); }

bool is_ospf(Octets value)
{
    const std::uint32_t protocol = protocol_of(value);
    return protocol == SYSDT_LS_OSPFV2 || protocol == SYSDT_LS_OSPFV3;
}

/// A TLV of one number, or of octets, which is there where the field is not 0.
/// @param always  whether it is usually there in any case
template <class Io>
void field_tlv(Io &io, Tlv type, const char *name, std::size_t place, std::size_t size, bool always = false)
{
    if (place == nowhere)
        return;
    io.tlv(
        type, name, [&io, place, size, always] { return always || !is_zero(io.value().subspan(place, size)); },
        [=](Io &inner) {
            if (size == sizeof(std::uint32_t))
                inner.template number<std::uint32_t>(name, place);
            else
                inner.octets(name, place, size);
        });
}

template <class Io>
void as_tlv(Io &io, Tlv type, const char *name, std::size_t place)
{
    if (place == nowhere)
        return;
    io.starts_as(place + offsetof(SYSDT_AsNum, asType), SYSDT_AS_PLAIN);
    io.tlv(
        type, name, [&io, place] { return load<std::uint32_t>(io.value(), place) != 0; },
        [=](Io &inner) { inner.as_number(name, place); });
}

template <class Io>
void node(Io &io, const NodePlaces &places)
{
    constexpr std::size_t number = sizeof(std::uint32_t);
    as_tlv(io, autonomous_system, "AS number", places.as);
    field_tlv(io, bgp_ls_identifier, "BGP-LS identifier", places.bgp_ls_id, number);
    field_tlv(io, ospf_area, "OSPF area", places.area, number, is_ospf(io.value()));
    if (places.igp_router_id != nowhere) {
        io.tlv(
            igp_router_id, "IGP router identifier",
            [&] { return usual_router_id_size(io.value(), places.igp_router_id) != 0; },
            [&](Io &inner) { inner.igp_router_id(places.igp_router_id); });
    }
    field_tlv(io, bgp_router_id, "BGP router identifier", places.bgp_router_id, number);
    as_tlv(io, member_as, "member AS number", places.member_as);
    field_tlv(io, ipv4_router_id, "IPv4 router identifier", places.ipv4_router_id, number);
    field_tlv(io, ipv6_router_id, "IPv6 router identifier", places.ipv6_router_id,
              sizeof(SYSDT_LsTePolicy::ipv6RouterId));
    io.last_tlvs();
}

template <class Io>
void mt_id_tlv(Io &io, std::size_t place, std::uint32_t none = SYSDT_LS_NO_MT_ID)
{
    io.starts_as(place, none);
    io.tlv(
        multi_topology, "MT-ID", [&io, place, none] { return load<std::uint32_t>(io.value(), place) != none; },
        [place](Io &inner) { inner.mt_id(place); });
}

template <class Io>
void link(Io &io)
{
    constexpr std::size_t number = sizeof(std::uint32_t);
    constexpr std::size_t local = offsetof(SYSDT_LsLink, linkLocalId);
    constexpr std::size_t remote = offsetof(SYSDT_LsLink, linkRemoteId);
    static_assert(remote == local + number);
    io.tlv_group(remote_node, "remote node", "remote ", [](Io &inner) { node(inner, remote_places); });
    io.tlv(
        link_identifiers, "link identifiers", [&io] { return !is_zero(io.value().subspan(local, 2 * number)); },
        [](Io &inner) {
            inner.template number<std::uint32_t>("link local identifier", local);
            inner.template number<std::uint32_t>("link remote identifier", remote);
        });
    field_tlv(io, ipv4_interface, "IPv4 interface", offsetof(SYSDT_LsLink, ipv4Interface), number);
    field_tlv(io, ipv4_neighbor, "IPv4 neighbor", offsetof(SYSDT_LsLink, ipv4Neighbor), number);
    field_tlv(io, ipv6_interface, "IPv6 interface", offsetof(SYSDT_LsLink, ipv6Interface), 16);
    field_tlv(io, ipv6_neighbor, "IPv6 neighbor", offsetof(SYSDT_LsLink, ipv6Neighbor), 16);
    // The text of a BGP speaker's link has no MT-ID, and its value 0 there.
    mt_id_tlv(io, offsetof(SYSDT_LsLink, mtId), protocol_of(io.value()) == SYSDT_LS_BGP ? 0 : SYSDT_LS_NO_MT_ID);
}

/// @param prefix  reads and writes it
template <class Io, class Prefix>
void prefix_tlvs(Io &io, Prefix prefix)
{
    mt_id_tlv(io, offsetof(SYSDT_LsIpv4Prefix, mtId));
    constexpr std::size_t route_type = offsetof(SYSDT_LsIpv4Prefix, ospfRouteType);
    io.tlv(
        ospf_route_type, "OSPF route type", [&io] { return load<std::uint32_t>(io.value(), route_type) != 0; },
        [](Io &inner) { inner.small_number("OSPF route type", route_type); });
    io.tlv_group(ip_reachability, "IP reachability", {}, prefix);
}

template <class Io>
void candidate_path(Io &io)
{
    constexpr std::uint8_t ipv6_endpoint = 0x80;
    constexpr std::uint8_t ipv6_originator = 0x40;
    constexpr std::size_t flags = offsetof(SYSDT_LsTePolicy, flags);
    constexpr std::size_t endpoint = offsetof(SYSDT_LsTePolicy, endpoint);
    constexpr std::size_t originator = offsetof(SYSDT_LsTePolicy, originatorAddress);
    io.template number<std::uint8_t>("protocol origin", offsetof(SYSDT_LsTePolicy, protocolOrigin));
    io.template number<std::uint8_t>("flags", flags);
    io.template beside_reserved<std::uint16_t>("candidate path reserved bits");
    io.family_by_flag(endpoint, flags, ipv6_endpoint);
    io.address("endpoint", endpoint);
    io.template number<std::uint32_t>("colour", offsetof(SYSDT_LsTePolicy, color));
    io.as_number("originator AS", offsetof(SYSDT_LsTePolicy, originatorAs));
    io.family_by_flag(originator, flags, ipv6_originator);
    io.address("originator", originator);
    io.template number<std::uint32_t>("discriminator", offsetof(SYSDT_LsTePolicy, discriminator));
}

template <class Io>
void descriptors(Io &io, std::uint32_t route)
{
    switch (route) {
    case SYSDT_LS_NODE: return;
    case SYSDT_LS_LINK: return link(io);
    case SYSDT_LS_IPV4_PREFIX:
        return prefix_tlvs(io, [](Io &inner) {
            inner.prefix_ipv4("prefix", offsetof(SYSDT_LsIpv4Prefix, prefix),
                              offsetof(SYSDT_LsIpv4Prefix, prefixLength));
        });
    case SYSDT_LS_IPV6_PREFIX:
        return prefix_tlvs(io, [](Io &inner) {
            inner.prefix_ipv6("prefix", offsetof(SYSDT_LsIpv6Prefix, prefix),
                              offsetof(SYSDT_LsIpv6Prefix, prefixLength));
        });
    case SYSDT_LS_TE_POLICY:
        return io.tlv_group(sr_candidate_path, "candidate path", {}, [](Io &inner) { candidate_path(inner); });
    default:
        mt_id_tlv(io, offsetof(SYSDT_LsSrv6Sid, mtId));
        io.tlv_group(srv6_sid, "SRv6 SID", {}, [](Io &inner) {
            inner.octets("SID", offsetof(SYSDT_LsSrv6Sid, sid), sizeof(SYSDT_LsSrv6Sid::sid));
        });
    }
}

template <class Io>
void object(Io &io, std::uint32_t route, bool in_vpn)
{
    if (in_vpn)
        io.rd();
    io.small_number("protocol", offsetof(SYSDT_LsHead, protocolId));
    io.template number<std::uint64_t>("identifier", offsetof(SYSDT_LsHead, identifier));
    io.tlv_group(local_node, "local node", "local ", [route](Io &inner) { node(inner, local_places(route)); });
    descriptors(io, route);
    io.last_tlvs();
}

bool is_route(std::uint32_t route) { return route >= SYSDT_LS_NODE && route <= SYSDT_LS_SRV6_SID; }

void read_object(Reader &in, bool in_vpn)
{
    const auto route = in.take<std::uint16_t>("NLRI's type");
    if (!is_route(route))
        in.refuse(2, "BGP-LS NLRI's type", "from 1 to 6", std::to_string(route));
    in.set(offsetof(SYSDT_LsHead, routeType), std::uint32_t{route});
    in.nested<std::uint16_t>("BGP-LS NLRI", [=](Reader &inner) { object(inner, route, in_vpn); });
}

void write_object(Writer &out, bool in_vpn)
{
    const auto route = load<std::uint32_t>(out.value(), offsetof(SYSDT_LsHead, routeType));
    if (!is_route(route))
        refuse_kind("BGP-LS");
    out.count(offsetof(SYSDT_LsHead, routeType), sizeof route);
    out.put(static_cast<std::uint16_t>(route));
    out.nested<std::uint16_t>("BGP-LS NLRI", [=](Writer &inner) { object(inner, route, in_vpn); });
}

} // namespace

void read_link_state(Reader &in) { read_object(in, false); }

void read_vpn_link_state(Reader &in) { read_object(in, true); }

void write_link_state(Writer &out) { write_object(out, false); }

void write_vpn_link_state(Writer &out) { write_object(out, true); }

} // namespace bgpdt::wire
