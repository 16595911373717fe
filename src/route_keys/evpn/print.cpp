// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The text that an EVPN route key prints as, in the forms in which texts are read.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (14) An address prints with its length by its family; one of a family other than 0 and 1 prints not at all, with no
///      length either, and is no failure.
///  (15) An ESI alone prints as with length 0 and address 0.0.0.0, and one of zeros prints too.
///  (16) An IPv6 source or group, and the IPv6 originator of a leave, print in brackets, where no text may have them.
///  (17) No number is refused: lengths up to 255 everywhere, 0 for a group or an originator.
#include "route_keys/evpn/print.hpp"

#include <cstring>
#include <utility>

#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/ipv4.hpp"
#include "common/print.hpp"
#include "route_keys/evpn/key.hpp"

namespace bgpdt::evpn {

namespace {

bool prints(const SYSDT_EvpnAddress &address) { return address.family <= family_ipv6; } // (14)

char *write_octet(char *to, u8 octet) { return write<":%u">(to, octet); }

char *write_mac(char *to, const u8 *mac)
{
    return write<":%.2x%.2x-%.2x%.2x-%.2x%.2x">(to, mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
}

char *write_address(char *to, const SYSDT_EvpnAddress &address)
{
    *to++ = ':';
    if (address.family == family_ipv4)
        return write_ipv4_address(to, address.ipv4);
    *to++ = '[';
    PAL_Inet_ntoa_b_ipv6(address.ipv6, to);
    to += std::strlen(to);
    *to++ = ']';
    return to;
}

char *write_prefix(char *to, const SYSDT_EvpnSizedAddress &prefix)
{
    return prints(prefix.address) ? write_octet(write_address(to, prefix.address), prefix.length) : to; // (14)
}

template <Piece piece, bool first>
char *write_piece(char *to, const u8 *key)
{
    const u8 *const at = key + piece.offset;
    const auto &ip = *reinterpret_cast<const SYSDT_EvpnSizedAddress *>(at);
    switch (piece.kind) {
    case Kind::number: return write_number(to, load<u32>(at), first);
    case Kind::octet: return write_octet(to, *at);
    case Kind::mac: return write_mac(to, at);
    case Kind::segment:
    case Kind::discovery_segment:
    case Kind::sync_segment: return write_esi(to, at); // (15)
    case Kind::ip:
    case Kind::member: return write_ip(to, ip.length, ip.address); // (15) (16)
    case Kind::prefix: break;
    }
    return write_prefix(to, ip);
}

/// Writes the key as one of the route and returns the end.
template <const auto &route>
char *write_as(char *to, const u8 *key)
{
    [&]<std::size_t... I>(std::index_sequence<I...>) { ((to = write_piece<route.pieces[I], I == 0>(to, key)), ...); }
    (std::make_index_sequence<std::size(route.pieces)>{});
    return to;
}

constexpr std::size_t most_characters(Kind kind)
{
    switch (kind) {
    case Kind::number: return most_number_characters;
    case Kind::octet: return most_octet_characters;
    case Kind::mac: return sizeof ":0000-5e00-5301" - 1;
    case Kind::segment:
    case Kind::discovery_segment:
    case Kind::sync_segment: return esi_text_length;
    case Kind::ip:
    case Kind::member:
    case Kind::prefix: break;
    }
    return most_ip_characters;
}

constexpr std::size_t most_characters(u32 route_type)
{
    return visit_route(route_type, std::size_t{0}, [](auto row) {
        std::size_t length = 0;
        for (const Piece &piece : row.route.pieces)
            length += most_characters(piece.kind);
        return length;
    });
}

constexpr std::size_t longest_key = [] {
    std::size_t longest = 0;
    for (u32 type = SYSDT_EVPN_AUTO_DISCOVERY; type <= SYSDT_EVPN_LEAVE; ++type)
        longest = std::max(longest, most_characters(type));
    return longest;
}();

} // namespace

u32 print_key(u32 route_type, const SYSDT_EvpnKey &key, Writer &out)
{
    u32 status = SYSDT_OK;
    out.put_at_most<longest_key>([&](char *to) {
        char *const none = nullptr;
        char *const end =
            visit_route(route_type, none, [&](auto row) { return write_as<row.route>(to, &key.routeType); });
        status = end == nullptr ? SYSDT_ERR_FAIL : SYSDT_OK;
        return end == nullptr ? to : end;
    });
    return status;
}

char *write_esi(char *to, const u8 *esi)
{
    return write<"%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x">(to, esi[0], esi[1], esi[2], esi[3], esi[4], esi[5],
                                                                 esi[6], esi[7], esi[8], esi[9]);
}

char *write_number(char *to, u32 number, bool first)
{
    return first ? write<"%u">(to, number) : write<":%u">(to, number);
}

char *write_ip(char *to, u8 length, const SYSDT_EvpnAddress &address)
{
    return prints(address) ? write_address(write_octet(to, length), address) : to; // (14)
}

} // namespace bgpdt::evpn
