// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The pieces of an EVPN route key, in their order: one row for each route type, from which its text is read and printed
/// and its place in the order is found.
///
///      0   4   5
///     +---+---+--------------------------------------------------------------------------------------------------
///     | 1 | 1 | ESI 10 | tag                                                             Ethernet auto-discovery
///     | 1 | 2 | tag | MAC length | MAC 6 | length | address                              MAC/IP advertisement
///     | 1 | 3 | tag | length | address                                                   inclusive multicast
///     | 1 | 4 | ESI | length | address                                                   Ethernet segment
///     | 1 | 5 | tag | length | address                                                   IP prefix
///     | 1 | 6 | tag | length | source | length | group | length | originator             selective multicast
///     | 1 | 7 | ESI | tag | length | source | length | group | length | originator       join synchronisation
///     | 1 | 8 | ESI | tag | length | source | length | group | length | originator | sequence number   leave
///     +---+---+--------------------------------------------------------------------------------------------------
///
/// The sub-kind, the Ethernet tag and the sequence number are u32 in host order, lengths are bytes, and an address is
/// 21 bytes: IPv4 as u32 in host order, IPv6, family (0 or 1). What a route type does not use is zero.
///
/// In a text colons stand between the pieces, and between a length and its address:
///
///     1  0011.2233.4455.6677.8899:100         2  100:48:0000-5e00-5301:32:192.0.2.1
///     3  100:128:[2001:db8::1]                4  0011.2233.4455.6677.8899:32:192.0.2.1, or the ESI alone
///     5  100:192.0.2.0:24                     6  100:32:192.0.2.1:32:233.252.0.1:128:[2001:db8::1]
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (4) A lenient reader takes an ESI of any type, but never in the route types 7 and 8.
///  (8) An IP prefix has its length behind the address, with any number of leading zeros.
///  (12) The length of a source may be 0, that of a group or an originator not.
///  (22) An ESI does not count in the order of the route type 1; in route type 4, and in those that are none, nothing
///      does.
///  (23) Nor does the address in the route types 2, 3 and 5, though the host is asked for the order; in 3 about the
///      place where 2 has its address.
///  (24) In the route types 6 to 8 addresses count, in the order that the host gives them.
#pragma once

#include <algorithm>

#include "bgp_datatype/values.h"
#include "common/types.hpp"

namespace bgpdt::evpn {

/// What a piece is.
enum class Kind : u8 {
    number, ///< u32
    octet,
    mac,
    segment,           ///< an ESI
    discovery_segment, ///< an ESI as an auto-discovery route has it
    sync_segment,      ///< an ESI that is always read strictly (4)
    ip,                ///< a length and an address, a text's end
    prefix,            ///< the same, in texts the address first (8)
    member,            ///< a length and an address, anywhere in a text
};

constexpr bool has_address(Kind kind) { return kind == Kind::ip || kind == Kind::prefix || kind == Kind::member; }

/// What of a piece counts in the order.
enum class Rank : u8 { all, length, none };

struct Piece {
    Kind kind;
    u8 offset; ///< in the key
    Rank rank = Rank::all;
    u8 asked = 0; ///< where the address stands that the host is asked about in vain (23)
    u8 least = 0; ///< the lowest length of a member
};

template <std::size_t Size>
struct Route {
    u8 type;
    Piece pieces[Size];
};

template <std::size_t Size>
Route(u32, const Piece (&)[Size]) -> Route<Size>;

/// The route whose pieces stand in several rows.
template <std::size_t... Sizes>
constexpr auto joined(u8 type, const Piece (&...row)[Sizes])
{
    Route<(Sizes + ...)> route{type, {}};
    Piece *to = route.pieces;
    ((to = std::copy_n(row, Sizes, to)), ...);
    return route;
}

#define AT(member) offsetof(SYSDT_EvpnKey, member)

/// Who wants which multicast flow. (24)
template <std::size_t at>
inline constexpr Piece membership[] = {
    {Kind::number, at + offsetof(SYSDT_EvpnMembership, tag)},
    {.kind = Kind::member, .offset = at + offsetof(SYSDT_EvpnMembership, source), .least = 0},     // (12)
    {.kind = Kind::member, .offset = at + offsetof(SYSDT_EvpnMembership, group), .least = 1},      // (12)
    {.kind = Kind::member, .offset = at + offsetof(SYSDT_EvpnMembership, originator), .least = 1}, // (12)
};

inline constexpr Route auto_discovery{
    SYSDT_EVPN_AUTO_DISCOVERY,
    {
        {Kind::discovery_segment, AT(autoDiscovery.esi), Rank::none}, // (22)
        {Kind::number, AT(autoDiscovery.tag)},
    },
};

inline constexpr Route mac_ip{
    SYSDT_EVPN_MAC_IP,
    {
        {Kind::number, AT(macIp.tag)},
        {Kind::octet, AT(macIp.macLength)},
        {Kind::mac, AT(macIp.mac)},
        {.kind = Kind::ip, .offset = AT(macIp.ip), .rank = Rank::length, .asked = AT(macIp.ip.address)}, // (23)
    },
};

inline constexpr Route inclusive{
    SYSDT_EVPN_INCLUSIVE,
    {
        {Kind::number, AT(inclusive.tag)},
        {.kind = Kind::ip, .offset = AT(inclusive.ip), .rank = Rank::length, .asked = AT(macIp.ip.address)}, // (23)
    },
};

inline constexpr Route segment{
    SYSDT_EVPN_SEGMENT,
    {
        {Kind::segment, AT(segment.esi), Rank::none}, // (22)
        {Kind::ip, AT(segment.ip), Rank::none},       // (22)
    },
};

inline constexpr Route ip_prefix{
    SYSDT_EVPN_IP_PREFIX,
    {
        {Kind::number, AT(prefix.tag)},
        {.kind = Kind::prefix, .offset = AT(prefix.ip), .rank = Rank::length, .asked = AT(prefix.ip.address)}, // (23)
    },
};

inline constexpr auto selective = joined(SYSDT_EVPN_SELECTIVE, membership<AT(selective)>);

inline constexpr auto join_sync =
    joined(SYSDT_EVPN_JOIN, {{Kind::sync_segment, AT(sync.esi)}}, membership<AT(sync.membership)>);

inline constexpr auto leave_sync = joined(SYSDT_EVPN_LEAVE, join_sync.pieces, {{Kind::number, AT(sync.sequence)}});

#undef AT

/// A route as an argument.
template <const auto &of>
struct Row {
    static constexpr const auto &route = of;
};

/// Calls `visit` with the row of the route type; `none` if there is no such type.
template <class Result, class Visit>
constexpr Result visit_route(u32 type, Result none, Visit visit)
{
    switch (type) {
    case auto_discovery.type: return visit(Row<auto_discovery>{});
    case mac_ip.type: return visit(Row<mac_ip>{});
    case inclusive.type: return visit(Row<inclusive>{});
    case segment.type: return visit(Row<segment>{});
    case ip_prefix.type: return visit(Row<ip_prefix>{});
    case selective.type: return visit(Row<selective>{});
    case join_sync.type: return visit(Row<join_sync>{});
    case leave_sync.type: return visit(Row<leave_sync>{});
    default: return none;
    }
}

} // namespace bgpdt::evpn
