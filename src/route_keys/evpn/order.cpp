// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The order of EVPN route keys, by one piece after the other: the first difference decides. Which pieces count is told
/// in their rows.
#include "route_keys/evpn/order.hpp"

#include <utility>

#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/contract.hpp"
#include "route_keys/evpn/key.hpp"
#include "route_keys/evpn/segment.hpp"

namespace bgpdt::evpn {

namespace {

i32 compare_numbers(u32 first, u32 second) { return (first > second) - (first < second); }

i32 compare_addresses(const u8 *first, const u8 *second)
{
    return SYSDT_Ipv4Ipv6Compare(sizeof(SYSDT_EvpnAddress), first, second);
}

/// By the length, then by the address. (24)
i32 compare_ips(const u8 *first, const u8 *second)
{
    constexpr std::size_t address = offsetof(SYSDT_EvpnSizedAddress, address);
    const i32 order = compare_numbers(*first, *second);
    return order != 0 ? order : compare_addresses(first + address, second + address);
}

template <Piece piece>
i32 compare_piece(const u8 *first, const u8 *second)
{
    if (piece.rank == Rank::none) // (22)
        return 0;
    const u8 *const a = first + piece.offset;
    const u8 *const b = second + piece.offset;
    if (piece.rank == Rank::length) {
        const i32 order = compare_numbers(*a, *b);
        if (order == 0)
            compare_addresses(first + piece.asked, second + piece.asked); // (23)
        return order;
    }
    if constexpr (has_address(piece.kind))
        return compare_ips(a, b);
    switch (piece.kind) {
    case Kind::number: return compare_numbers(load<u32>(a), load<u32>(b));
    case Kind::octet: return compare_numbers(*a, *b);
    case Kind::mac: return compare_bytes(sizeof SYSDT_EvpnMacIp::mac, a, b);
    default: return compare_bytes(esi_size, a, b);
    }
}

template <const auto &route>
i32 compare_as(const u8 *first, const u8 *second)
{
    i32 order = 0;
    [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        static_cast<void>((((order = compare_piece<route.pieces[I]>(first, second)) == 0) && ...));
    }
    (std::make_index_sequence<std::size(route.pieces)>{});
    return order;
}

/// Orders two keys that a caller may not have.
i32 compare_known(u32 route_type, const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second)
{
    return first == nullptr || second == nullptr ? 0 : compare_keys(route_type, *first, *second);
}

} // namespace

i32 compare_keys(u32 route_type, const SYSDT_EvpnKey &first, const SYSDT_EvpnKey &second)
{
    return visit_route(route_type, i32{0}, [&](auto row) { // (22)
        return compare_as<row.route>(&first.routeType, &second.routeType);
    });
}

} // namespace bgpdt::evpn

using namespace bgpdt;

i32 SYSDT_EVPN_SmetCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second)
{
    return evpn::compare_known(SYSDT_EVPN_SELECTIVE, first, second);
}

i32 SYSDT_EVPN_JoinCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second)
{
    return evpn::compare_known(SYSDT_EVPN_JOIN, first, second);
}

i32 SYSDT_EVPN_LeaveCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second)
{
    return evpn::compare_known(SYSDT_EVPN_LEAVE, first, second);
}
