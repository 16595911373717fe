// SPDX-License-Identifier: Apache-2.0
/// @file
/// The text of each EVPN route type, field by field.
///
///     1  auto-discovery       ESI:tag                       0011.2233.4455.6677.8899:100
///     2  MAC/IP               tag:length:MAC:length:IP      100:48:0000-5e00-5301:32:192.0.2.1
///     3  inclusive multicast  tag:length:IP                 100:128:[2001:db8::1]
///     4  Ethernet segment     ESI:length:IP, or ESI alone   0011.2233.4455.6677.8899:32:192.0.2.1
///     5  IP prefix            tag:IP:length                 100:192.0.2.0:24
///     6  selective multicast  tag, then length:IP of source, group and originator
///     7  join                 ESI, then as 6
///     8  leave                as 7, then a sequence number
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (4) A lenient reader takes an ESI of any type, but never in the route types 7 and 8.
///  (5) In an auto-discovery route an ESI of zeros is read, wherever among its twenty zeros the four dots stand.
///  (6) An ESI alone is an Ethernet segment route with length 0 and address 0.0.0.0.
///  (7) A length ahead of an IPv4 address goes up to 255, but in the route types 6 to 8 up to 128; that of an IP prefix
///      goes up to 255 for both families, and a MAC length too.
///  (8) An IP prefix has its length behind the address, with any number of leading zeros.
///  (9) One character behind the bracket of an IPv6 prefix is skipped, whatever it is.
///  (10) The route types 6 to 8 read an IPv6 address in their last field only.
///  (11) What follows the bracket there is not looked at.
///  (12) The length of a source may be 0, that of a group or an originator not.
#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "common/bytes.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;
using namespace bgpdt::evpn;

namespace {

// ------------------------------------------------------------------------------------------------ the fields

/// What a field of a text is.
enum class Field : u8 {
    number, ///< u32
    length, ///< u8
    mac,
    esi,
    strict_esi,         ///< (4)
    auto_discovery_esi, ///< (5)
    address,
    prefix_address, ///< IPv6; not the last field, but the character behind it is not looked at (9)
    sized_address,  ///< a length and an address, all the rest of the text
};

/// One field of a text.
struct Piece {
    Field field;
    u8 offset;       ///< in the 89 bytes
    Limits limits{}; ///< of a number
};

/// Where a text is being read.
struct Reading {
    char *at;
    bool last; ///< the field is the text's last
    u32 lenient;
};

u32 take_mac(char *&at, u8 *to)
{
    char *const end = end_of_field(at, 14);
    if (end == nullptr)
        return SYSDT_ERR_FAIL;
    const Cut mac(at, end);
    at = end;
    return SMP_Str2Mac(mac.get(), to);
}

u32 take_auto_discovery_esi(char *&at, u32 lenient, u8 *to)
{
    const char *const esi = at;
    const u32 status = take_esi(at, false, types_of(lenient, EsiTypes::to_05), to);
    if (status == SYSDT_OK || std::count(esi, static_cast<const char *>(at), '0') != 20)
        return status;
    std::memset(to, 0, sizeof(SYSDT_EvpnAutoDiscovery::esi)); // (5): the reader has refused it
    return SYSDT_OK;
}

u32 take_prefix_address(char *&at, SYSDT_EvpnAddress &to)
{
    char *const end = read_bracketed(at, to);
    at = end;
    return end == nullptr || *end == '\0' ? SYSDT_ERR_FAIL : SYSDT_OK; // (9)
}

u32 take_number(Reading &in, const Piece &piece, u8 *to)
{
    u32 number = 0;
    const u32 status =
        in.last ? read_last_number(in.at, piece.limits, number) : take_number(in.at, piece.limits, number);
    if (status != SYSDT_OK)
        return status;
    if (piece.field == Field::number)
        store(to, number);
    else
        *to = static_cast<u8>(number);
    return SYSDT_OK;
}

/// Reads the field at the cursor and leaves the cursor at the separator behind it.
u32 read_piece(Reading &in, const Piece &piece, u8 *to)
{
    switch (piece.field) {
    case Field::number:
    case Field::length: return take_number(in, piece, to);
    case Field::mac: return take_mac(in.at, to);
    case Field::esi: return take_esi(in.at, in.last, types_of(in.lenient, EsiTypes::to_01), to);
    case Field::strict_esi: return take_esi(in.at, in.last, EsiTypes::to_01, to); // (4)
    case Field::auto_discovery_esi: return take_auto_discovery_esi(in.at, in.lenient, to);
    case Field::address:
        if (take_address(in.at, in.last, *reinterpret_cast<SYSDT_EvpnAddress *>(to)) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
        return in.last || *in.at == ':' ? SYSDT_OK : SYSDT_ERR_FAIL; // (10) (11)
    case Field::prefix_address: return take_prefix_address(in.at, *reinterpret_cast<SYSDT_EvpnAddress *>(to));
    case Field::sized_address: break;
    }
    return read_sized(in.at, Families::either, *reinterpret_cast<SYSDT_EvpnSizedAddress *>(to));
}

// ------------------------------------------------------------------------------------------------ the route types

#define AT(member) offsetof(SYSDT_BolEvpn, key.member)

constexpr Piece number(u8 offset) { return {Field::number, offset, {10, 0, UINT32_MAX}}; }

constexpr Piece length(u8 offset, u32 lowest, u32 highest) { return {Field::length, offset, {3, lowest, highest}}; }

constexpr Piece prefix_length{Field::length, AT(prefix.ip.length), {unlimited, 0, UINT8_MAX}}; // (7) (8)

constexpr Piece auto_discovery[] = {
    {Field::auto_discovery_esi, AT(autoDiscovery.esi)},
    number(AT(autoDiscovery.tag)),
};

constexpr Piece mac_ip[] = {
    number(AT(macIp.tag)),
    length(AT(macIp.macLength), 0, UINT8_MAX), // (7)
    {Field::mac, AT(macIp.mac)},
    {Field::sized_address, AT(macIp.ip)},
};

constexpr Piece inclusive[] = {
    number(AT(inclusive.tag)),
    {Field::sized_address, AT(inclusive.ip)},
};

constexpr Piece segment[] = {
    {Field::esi, AT(segment.esi)},
    {Field::sized_address, AT(segment.ip)},
};

constexpr Piece ipv4_prefix[] = {
    number(AT(prefix.tag)),
    {Field::address, AT(prefix.ip.address)},
    prefix_length,
};

constexpr Piece ipv6_prefix[] = {
    number(AT(prefix.tag)),
    {Field::prefix_address, AT(prefix.ip.address)},
    prefix_length,
};

/// Tag, source, group and originator. (7) (12)
template <std::size_t base>
constexpr std::array<Piece, 7> membership{
    number(base + offsetof(SYSDT_EvpnMembership, tag)),
    length(base + offsetof(SYSDT_EvpnMembership, source.length), 0, 128),
    {Field::address, base + offsetof(SYSDT_EvpnMembership, source.address)},
    length(base + offsetof(SYSDT_EvpnMembership, group.length), 1, 128),
    {Field::address, base + offsetof(SYSDT_EvpnMembership, group.address)},
    length(base + offsetof(SYSDT_EvpnMembership, originator.length), 1, 128),
    {Field::address, base + offsetof(SYSDT_EvpnMembership, originator.address)},
};

constexpr const auto &selective = membership<AT(selective)>;

constexpr auto leave = [] {
    std::array<Piece, 9> pieces{{{Field::strict_esi, AT(sync.esi)}}};
    std::ranges::copy(membership<AT(sync.membership)>, pieces.begin() + 1);
    pieces.back() = number(AT(sync.sequence));
    return pieces;
}();

constexpr auto join = std::span(leave).first<8>();

#undef AT

/// Reads a text field by field, and stores the route type.
u32 read_key(u32 route_type, std::span<const Piece> pieces, char *text, SYSDT_BolEvpn *value, u32 lenient = 0)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Reading in{text, false, lenient};
    for (const Piece &piece : pieces) {
        in.last = &piece == &pieces.back();
        if (read_piece(in, piece, reinterpret_cast<u8 *>(value) + piece.offset) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
        ++in.at;
    }
    value->key.routeType = static_cast<u8>(route_type);
    return SYSDT_OK;
}

/// As read_key, of a text with an IPv6 address.
u32 read_ipv6_key(u32 route_type, std::span<const Piece> pieces, char *text, SYSDT_BolEvpn *value, u32 lenient = 0)
{
    if (text != nullptr && value != nullptr && !has_ipv6(text))
        return SYSDT_ERR_FAIL;
    return read_key(route_type, pieces, text, value, lenient);
}

} // namespace

u32 evpn::read_segment_alone(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    return read_key(SYSDT_EVPN_SEGMENT, std::span(segment).first(1), text, value, lenient); // (6)
}

u32 SYSDT_Str2Ad(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    return read_key(SYSDT_EVPN_AUTO_DISCOVERY, auto_discovery, text, value, lenient);
}

u32 SYSDT_Str2EvnMac(char *text, SYSDT_BolEvpn *value) { return read_key(SYSDT_EVPN_MAC_IP, mac_ip, text, value); }

u32 SYSDT_Str2Ipv6EvnMac(char *text, SYSDT_BolEvpn *value)
{
    return read_ipv6_key(SYSDT_EVPN_MAC_IP, mac_ip, text, value);
}

u32 SYSDT_Str2Ipv6EvnMacFillPrefix(char *text, SYSDT_BolEvpn *value)
{
    return text == nullptr || value == nullptr ? SYSDT_ERR_NULL_PTR
                                               : read_sized(text, Families::ipv6, value->key.macIp.ip);
}

u32 SYSDT_Str2Inclusive(char *text, SYSDT_BolEvpn *value)
{
    return read_key(SYSDT_EVPN_INCLUSIVE, inclusive, text, value);
}

u32 SYSDT_Str2Ipv6EvnInc(char *text, SYSDT_BolEvpn *value)
{
    return read_ipv6_key(SYSDT_EVPN_INCLUSIVE, inclusive, text, value);
}

u32 SYSDT_Str2Es(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    return read_key(SYSDT_EVPN_SEGMENT, segment, text, value, lenient);
}

u32 SYSDT_Str2Ipv6EvpnEs(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    return read_ipv6_key(SYSDT_EVPN_SEGMENT, segment, text, value, lenient);
}

u32 SYSDT_Str2EsDetail(char *text, SYSDT_BolEvpn *value)
{
    return text == nullptr || value == nullptr ? SYSDT_ERR_NULL_PTR
                                               : read_sized(text, Families::ipv4, value->key.segment.ip);
}

u32 SYSDT_Str2IpPrefix(char *text, SYSDT_BolEvpn *value)
{
    return read_key(SYSDT_EVPN_IP_PREFIX, ipv4_prefix, text, value);
}

u32 SYSDT_Str2Ipv6Prefix(char *text, SYSDT_BolEvpn *value)
{
    return read_key(SYSDT_EVPN_IP_PREFIX, ipv6_prefix, text, value);
}

u32 SYSDT_Str2EvpnSmetRoute(char *text, SYSDT_BolEvpn *value)
{
    return read_key(SYSDT_EVPN_SELECTIVE, selective, text, value);
}

u32 SYSDT_Str2EvpnJoinRoute(char *text, SYSDT_BolEvpn *value) { return read_key(SYSDT_EVPN_JOIN, join, text, value); }

u32 SYSDT_Str2EvpnLeaveRoute(char *text, SYSDT_BolEvpn *value)
{
    return read_key(SYSDT_EVPN_LEAVE, leave, text, value);
}
