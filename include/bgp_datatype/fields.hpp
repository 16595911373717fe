// SPDX-License-Identifier: Apache-2.0
/// @file
/// The fields of every binary form as tables: what stands where, how it is read by people, and under which key scripts
/// see it. Byte swap, script access and every dump of a value walk these tables, so a layout is told once.
#ifndef BGP_DATATYPE_FIELDS_HPP
#define BGP_DATATYPE_FIELDS_HPP

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "bgp_datatype/values.h"

namespace bgpdt {

/// What a field means to a reader. The first two are numbers in the processor's byte order, the others network order.
enum class Form : std::uint8_t {
    number, ///< a number, or an array of numbers
    ipv4,   ///< an IPv4 address kept as a number, its first octet in the top byte
    bytes,  ///< opaque bytes, shown in hexadecimal
    ipv6,   ///< an IPv6 address
    mac,    ///< an Ethernet MAC address
    esi,    ///< an Ethernet segment identifier (RFC 7432)
};

/// One field of a binary form.
struct Field {
    const char *name{};         ///< the field's name in its RFC
    const char *key{};          ///< the script field; null when scripts do not see it
    std::uint16_t offset{};     ///< from the start of the value, in bytes
    std::uint8_t width{};       ///< size of one element in bytes: 1, 2, 4 or 8
    std::uint8_t count{};       ///< number of elements; an array is a table in scripts; 0: known to scripts alone
    Form form{};                ///< how it is read
    std::uint8_t script_bits{}; ///< how many low bits of a script's number are kept
    const char *table{};        ///< the script table within the value's own that holds the field, if any

    constexpr bool host_order() const { return form == Form::number || form == Form::ipv4; }
    constexpr std::size_t size() const { return std::size_t{width} * count; }
};

/// A binary form: `repeat` entries of `stride` bytes, each with the same fields.
struct Layout {
    std::span<const Field> fields; ///< in the order in which scripts see them
    std::uint16_t stride;          ///< bytes from one entry to the next
    std::uint16_t repeat = 1;      ///< number of entries
    const char *key = nullptr;     ///< of a list: the script field that holds the array of entries

    constexpr std::size_t size() const { return std::size_t{stride} * repeat; }
};

/// The row of a member: width and count come from its type.
template <class Member>
constexpr Field field(const char *name, std::size_t offset, Form form, const char *key, int script_bits = 0)
{
    using Element = std::remove_all_extents_t<Member>;
    constexpr std::size_t count = std::is_array_v<Member> ? std::extent_v<Member> : 1;
    const int bits = script_bits != 0 ? script_bits : 8 * static_cast<int>(sizeof(Element));
    return {name,  key,  static_cast<std::uint16_t>(offset), sizeof(Element),
            count, form, static_cast<std::uint8_t>(bits)};
}

/// BGPDT_FIELD(structure, member, name, form, script key[, script bits])
#define BGPDT_FIELD(structure, member, name, ...)                                                                      \
    ::bgpdt::field<decltype(structure::member)>(name, offsetof(structure, member), __VA_ARGS__)

/// The row of a field in a script table of its own or with others, moved by the offset of the part that it is of.
constexpr Field within(const char *table, Field row, std::size_t offset = 0)
{
    row.table = table;
    row.offset = static_cast<std::uint16_t>(row.offset + offset);
    return row;
}

/// Rows that go together are made by functions: join() puts them and single rows into one table.
template <std::size_t Count>
using Rows = std::array<Field, Count>;

template <class Part>
inline constexpr std::size_t row_count = 1;
template <std::size_t Count>
inline constexpr std::size_t row_count<Rows<Count>> = Count;

constexpr Field *copy_rows(Field *to, const Field &row)
{
    *to = row;
    return to + 1;
}

template <std::size_t Count>
constexpr Field *copy_rows(Field *to, const Rows<Count> &rows)
{
    return std::copy(rows.begin(), rows.end(), to);
}

template <class... Parts>
constexpr auto join(const Parts &...parts)
{
    Rows<(0 + ... + row_count<Parts>)> rows{};
    Field *to = rows.data();
    ((to = copy_rows(to, parts)), ...);
    return rows;
}

/// The rows of an address that is kept in both families (SYSDT_EvpnAddress). Scripts see it in a form of its own.
// NOLINTBEGIN(bugprone-macro-parentheses): a member's name cannot stand in any
#define BGPDT_ADDRESS_FIELDS(structure, member, name)                                                                  \
    BGPDT_FIELD(structure, member.ipv4, name " IPv4", Form::ipv4, nullptr),                                            \
        BGPDT_FIELD(structure, member.ipv6, name " IPv6", Form::ipv6, nullptr),                                        \
        BGPDT_FIELD(structure, member.family, name " family", Form::number, nullptr)
// NOLINTEND(bugprone-macro-parentheses)

inline constexpr Field as_number_fields[] = {
    BGPDT_FIELD(SYSDT_AsNum, asNumValue, "AS number", Form::number, "asNumValue"),
    BGPDT_FIELD(SYSDT_AsNum, asType, "notation", Form::number, "asType"),
};

inline constexpr Field as_list_entry_fields[] = {
    BGPDT_FIELD(SYSDT_AsNumEntry, asType, "notation", Form::number, "asType"),
    BGPDT_FIELD(SYSDT_AsNumEntry, asNumValue, "AS number", Form::number, "asNumValue"),
};

inline constexpr Field community_fields[] = {
    BGPDT_FIELD(SYSDT_Community, community, "community", Form::number, "community"),
    BGPDT_FIELD(SYSDT_Community, type, "notation", Form::number, "type"),
};

inline constexpr Field community_list_entry_fields[] = {
    BGPDT_FIELD(SYSDT_CommunityEntry, community, "community", Form::number, "community"),
    BGPDT_FIELD(SYSDT_CommunityEntry, type, "notation", Form::number, "type"),
};

inline constexpr Field large_community_fields[] = {
    BGPDT_FIELD(SYSDT_LargeCommunity, largeCommunity, "administrator, local data", Form::number, "largeCommunity"),
    BGPDT_FIELD(SYSDT_LargeCommunity, type, "type", Form::number, "type"),
};

inline constexpr Field extended_community_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::bytes, "extcommunity"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Form::number, "type", 8),
};

inline constexpr Field bandwidth_community_fields[] = {
    BGPDT_FIELD(SYSDT_ExtCommunityBw, bitMask, "type and sub-type", Form::number, "bitMask"),
    BGPDT_FIELD(SYSDT_ExtCommunityBw, asnNn, "AS number", Form::number, "asnNn"),
    BGPDT_FIELD(SYSDT_ExtCommunityBw, bandwidth, "bandwidth", Form::number, "bandwidth"),
};

inline constexpr Field route_distinguisher_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::bytes, "RdValue"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Form::number, "RdType", 8),
};

inline constexpr Field route_target_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::bytes, "RtValue"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Form::number, "RtType", 8),
};

inline constexpr Field site_of_origin_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::bytes, "SooValue"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Form::number, "SooType", 8),
};

inline constexpr Field ipv6_route_target_fields[] = {
    BGPDT_FIELD(SYSDT_VrfRtV6, octets, "code, address, local number", Form::bytes, "RtV6Value"),
    BGPDT_FIELD(SYSDT_VrfRtV6, type, "type", Form::number, "RtV6Type", 8),
};

inline constexpr Field rtp_rd_fields[] = {
    BGPDT_FIELD(SYSDT_RtpRd, octets, "type and value", Form::bytes, "rdValue"),
    BGPDT_FIELD(SYSDT_RtpRd, form, "text form", Form::number, "type"),
    BGPDT_FIELD(SYSDT_RtpRd, star, "wildcard", Form::number, "star"),
};

inline constexpr Field vpn_id_fields[] = {
    BGPDT_FIELD(SYSDT_VpnId, oui, "OUI", Form::number, "ouiValue"),
    BGPDT_FIELD(SYSDT_VpnId, index, "VPN index", Form::number, "index"),
};

/// Scripts see the route distinguisher as a table of its own, under "RdValue", with the same two names inside.
inline constexpr Field bol_rd_fields[] = {
    BGPDT_FIELD(SYSDT_BolRd, subKind, "sub-kind", Form::number, "RdType", 8),
    BGPDT_FIELD(SYSDT_BolRd, rd.octets, "type and value", Form::bytes, "RdValue"),
    BGPDT_FIELD(SYSDT_BolRd, rd.form, "text form", Form::number, "RdType", 8),
};

inline constexpr Field bol_ipv4_fields[] = {
    BGPDT_FIELD(SYSDT_BolIpv4, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolIpv4, address, "IPv4 address", Form::ipv4, "bolPrefix"),
};

inline constexpr Field bol_ipv6_fields[] = {
    BGPDT_FIELD(SYSDT_BolIpv6, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolIpv6, address, "IPv6 address", Form::ipv6, "bolPrefix"),
};

inline constexpr Field bol_route_target_fields[] = {
    BGPDT_FIELD(SYSDT_BolRouteTarget, rt.octets, "type and value", Form::bytes, "RtValue"),
    BGPDT_FIELD(SYSDT_BolRouteTarget, rt.form, "text form", Form::number, "RtType", 8),
    BGPDT_FIELD(SYSDT_BolRouteTarget, subKind, "sub-kind", Form::number, "bolType"),
};

inline constexpr Field bol_l2vpn_fields[] = {
    BGPDT_FIELD(SYSDT_BolL2Vpn, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolL2Vpn, siteId, "site identifier", Form::number, "bolSiteId"),
    BGPDT_FIELD(SYSDT_BolL2Vpn, labelOffset, "label offset", Form::number, "bolLabelOffSet"),
};

inline constexpr Field bol_vpnv4_mcast_fields[] = {
    BGPDT_FIELD(SYSDT_BolVpnv4Mcast, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolVpnv4Mcast, prefix.prefix, "IPv4 prefix", Form::ipv4, "bolVpnv4McastPrefix"),
    BGPDT_FIELD(SYSDT_BolVpnv4Mcast, prefix.maskLength, "mask length", Form::number, "bolVpnv4McastMaskLen"),
};

inline constexpr Field bol_mdt_fields[] = {
    BGPDT_FIELD(SYSDT_BolMdt, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolMdt, prefix.prefix, "IPv4 prefix", Form::ipv4, "bolMdtPrefix"),
    BGPDT_FIELD(SYSDT_BolMdt, prefix.group, "group address", Form::ipv4, "bolMdtGrpAddr"),
    BGPDT_FIELD(SYSDT_BolMdt, prefix.maskLength, "mask length", Form::number, "bolMdtMaskLen"),
};

inline constexpr Field bol_rpd_fields[] = {
    BGPDT_FIELD(SYSDT_BolRpd, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolRpd, key.policyType, "policy type", Form::number, "bolRpdPolicyType"),
    BGPDT_FIELD(SYSDT_BolRpd, key.peer, "peer", Form::ipv4, "bolRpdPeerAddr"),
    BGPDT_FIELD(SYSDT_BolRpd, key.distinguisher, "distinguisher", Form::number, "bolRpdDistinguisher"),
};

inline constexpr Field bol_sr_policy_fields[] = {
    BGPDT_FIELD(SYSDT_BolSrPolicy, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.distinguisher, "distinguisher", Form::number, "bolSrPolicyDistinguisher"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.colour, "colour", Form::number, "bolSrPolicyPolicyColor"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.ipv4, "IPv4 endpoint", Form::ipv4, "bolSrPolicyEndpointv4"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.ipv6, "IPv6 endpoint", Form::ipv6, "bolSrPolicyEndpointv6"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.family, "family", Form::number, "bolSrPolicyPolicyType"),
};

inline constexpr Field bol_sdwan_fields[] = {
    BGPDT_FIELD(SYSDT_BolSdwan, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.routeType, "route type", Form::number, "bolSdwanType"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.portLocalId, "port local identifier", Form::number, "bolSdwanPortLocalID"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.siteId, "site identifier", Form::number, "bolSdwanSiteID"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.ipv4, "IPv4 node", Form::ipv4, "bolSdwanNodeIDv4"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.ipv6, "IPv6 node", Form::ipv6, "bolSdwanNodeIDv6"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.family, "family", Form::number, "bolSdwanPrefixType"),
};

/// The script fields of a multicast-VPN key. An address stands there as a number or as a table of 16, as the field of its
/// family tells: none of its rows is what scripts see.
struct NgKeys {
    static constexpr char as_number[] = "bolNgAsNumValue";
    static constexpr char notation[] = "bolNgAsNumType";
    static constexpr char source[] = "bolNgPrefixCS";
    static constexpr char source_family[] = "bolNgCSIpType";
    static constexpr char group[] = "bolNgPrefixCG";
    static constexpr char group_family[] = "bolNgCGIpType";
    static constexpr char originator[] = "bolNgPrefixOriIP"; ///< the only one
    static constexpr char originator1[] = "bolNgPrefixOriIP1";
    static constexpr char originator2[] = "bolNgPrefixOriIP2";
    static constexpr char originator_family[] = "bolNgOriIpType"; ///< the first's where there are two
};

#define BGPDT_NG_AS_FIELDS(structure)                                                                                  \
    BGPDT_FIELD(structure, as.asNumValue, "AS number", Form::number, NgKeys::as_number),                               \
        BGPDT_FIELD(structure, as.asType, "notation", Form::number, NgKeys::notation)

inline constexpr Field bol_ng2_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg2, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_NG_AS_FIELDS(SYSDT_BolNg2),
};

inline constexpr Field bol_ng3_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg3, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg3, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg3, group, "group"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg3, originator, "originator"),
};

inline constexpr Field bol_ng42_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg42, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_NG_AS_FIELDS(SYSDT_BolNg42),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg42, originator, "originator"),
};

inline constexpr Field bol_ng43_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg43, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, group, "group"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, originator1, "originator 1"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, originator2, "originator 2"),
};

inline constexpr Field bol_ng5_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg5, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg5, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg5, group, "group"),
};

inline constexpr Field bol_ng6_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg6, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_NG_AS_FIELDS(SYSDT_BolNg6),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg6, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg6, group, "group"),
};

inline constexpr Field bol_ng41_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg41, subKind, "sub-kind", Form::number, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg41, originator1, "originator 1"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg41, originator2, "originator 2"),
};

/// A key of a kind that has no fields of its own here: its sub-kind word alone.
inline constexpr Field bol_fields[] = {
    BGPDT_FIELD(SYSDT_BolValue, subKind, "sub-kind", Form::number, "bolType"),
};

// Scripts see an EVPN key as text, beside its sub-kind and its route type.
#define BGPDT_EVPN_HEAD_FIELDS                                                                                         \
    BGPDT_FIELD(SYSDT_BolEvpn, subKind, "sub-kind", Form::number, "bolType"),                                          \
        BGPDT_FIELD(SYSDT_BolEvpn, key.routeType, "route type", Form::number, "bolPrefixRtType")

// NOLINTBEGIN(bugprone-macro-parentheses): a member's name cannot stand in any
#define BGPDT_EVPN_FIELD(member, name, form) BGPDT_FIELD(SYSDT_BolEvpn, key.member, name, form, nullptr)

#define BGPDT_EVPN_ADDRESS_FIELDS(member, name)                                                                        \
    BGPDT_EVPN_FIELD(member.length, name " length", Form::number),                                                     \
        BGPDT_ADDRESS_FIELDS(SYSDT_BolEvpn, key.member.address, name)

#define BGPDT_EVPN_MEMBERSHIP_FIELDS(member)                                                                           \
    BGPDT_EVPN_FIELD(member.tag, "Ethernet tag", Form::number), BGPDT_EVPN_ADDRESS_FIELDS(member.source, "source"),    \
        BGPDT_EVPN_ADDRESS_FIELDS(member.group, "group"), BGPDT_EVPN_ADDRESS_FIELDS(member.originator, "originator")
// NOLINTEND(bugprone-macro-parentheses)

inline constexpr Field evpn_fields[] = {BGPDT_EVPN_HEAD_FIELDS};

inline constexpr Field evpn_auto_discovery_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_FIELD(autoDiscovery.esi, "ESI", Form::esi),
    BGPDT_EVPN_FIELD(autoDiscovery.tag, "Ethernet tag", Form::number),
};

inline constexpr Field evpn_mac_ip_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_FIELD(macIp.tag, "Ethernet tag", Form::number),
    BGPDT_EVPN_FIELD(macIp.macLength, "MAC length", Form::number),
    BGPDT_EVPN_FIELD(macIp.mac, "MAC address", Form::mac),
    BGPDT_EVPN_ADDRESS_FIELDS(macIp.ip, "IP address"),
};

inline constexpr Field evpn_inclusive_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_FIELD(inclusive.tag, "Ethernet tag", Form::number),
    BGPDT_EVPN_ADDRESS_FIELDS(inclusive.ip, "originator"),
};

inline constexpr Field evpn_segment_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_FIELD(segment.esi, "ESI", Form::esi),
    BGPDT_EVPN_ADDRESS_FIELDS(segment.ip, "originator"),
};

inline constexpr Field evpn_ip_prefix_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_FIELD(prefix.tag, "Ethernet tag", Form::number),
    BGPDT_EVPN_ADDRESS_FIELDS(prefix.ip, "prefix"),
};

inline constexpr Field evpn_selective_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_MEMBERSHIP_FIELDS(selective),
};

inline constexpr Field evpn_join_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_FIELD(sync.esi, "ESI", Form::esi),
    BGPDT_EVPN_MEMBERSHIP_FIELDS(sync.membership),
};

inline constexpr Field evpn_leave_fields[] = {
    BGPDT_EVPN_HEAD_FIELDS,
    BGPDT_EVPN_FIELD(sync.esi, "ESI", Form::esi),
    BGPDT_EVPN_MEMBERSHIP_FIELDS(sync.membership),
    BGPDT_EVPN_FIELD(sync.sequence, "leave sequence number", Form::number),
};

// The short forms that Endian works on; scripts do not see them.
inline constexpr Field vpnv4_mcast_fields[] = {
    BGPDT_FIELD(SYSDT_Vpnv4Mcast, prefix, "IPv4 prefix", Form::ipv4, nullptr),
    BGPDT_FIELD(SYSDT_Vpnv4Mcast, maskLength, "mask length", Form::number, nullptr),
};

inline constexpr Field mdt_fields[] = {
    BGPDT_FIELD(SYSDT_Mdt, prefix, "IPv4 prefix", Form::ipv4, nullptr),
    BGPDT_FIELD(SYSDT_Mdt, group, "group address", Form::ipv4, nullptr),
    BGPDT_FIELD(SYSDT_Mdt, maskLength, "mask length", Form::number, nullptr),
};

inline constexpr Field time_range_fields[] = {
    BGPDT_FIELD(SYSDT_TimeRange, seconds, "seconds", Form::number, nullptr),
};

inline constexpr Field attr_bitmap_fields[] = {
    BGPDT_FIELD(SYSDT_AttrIdBitmap, bits, "identifiers", Form::bytes, nullptr),
};

/// A value is the name alone; the number stands behind it where it is displayed.
inline constexpr Field client_vrf_name_fields[] = {
    BGPDT_FIELD(SYSDT_CVrfName, name, "name", Form::bytes, nullptr),
    BGPDT_FIELD(SYSDT_CVrfName, number, "number", Form::number, nullptr),
    BGPDT_FIELD(SYSDT_CVrfName, hasNumber, "has a number", Form::number, nullptr),
};

inline constexpr Field sid_structure_fields[] = {
    BGPDT_FIELD(SYSDT_SidStructure, field, "lengths and offset", Form::number, nullptr),
    BGPDT_FIELD(SYSDT_SidStructure, exists, "exists", Form::number, "strcExist"),
};

inline constexpr Layout as_number_layout{as_number_fields, sizeof(SYSDT_AsNum)};
inline constexpr Layout as_list_layout{as_list_entry_fields, sizeof(SYSDT_AsNumEntry), SYSDT_AS_LIST_ENTRIES,
                                       "stAsNum"};
inline constexpr Layout community_layout{community_fields, sizeof(SYSDT_Community)};
inline constexpr Layout community_list_layout{community_list_entry_fields, sizeof(SYSDT_CommunityEntry),
                                              SYSDT_COMMUNITY_LIST_ENTRIES, "stCmnty"};
inline constexpr Layout large_community_layout{large_community_fields, sizeof(SYSDT_LargeCommunity)};
inline constexpr Layout extended_community_layout{extended_community_fields, sizeof(SYSDT_Octets)};
inline constexpr Layout bandwidth_community_layout{bandwidth_community_fields, sizeof(SYSDT_ExtCommunityBw)};
inline constexpr Layout route_distinguisher_layout{route_distinguisher_fields, sizeof(SYSDT_Octets)};
inline constexpr Layout route_target_layout{route_target_fields, sizeof(SYSDT_Octets)};
inline constexpr Layout site_of_origin_layout{site_of_origin_fields, sizeof(SYSDT_Octets)};
inline constexpr Layout ipv6_route_target_layout{ipv6_route_target_fields, sizeof(SYSDT_VrfRtV6)};
inline constexpr Layout rtp_rd_layout{rtp_rd_fields, sizeof(SYSDT_RtpRd)};
inline constexpr Layout vpn_id_layout{vpn_id_fields, sizeof(SYSDT_VpnId)};
inline constexpr Layout bol_rd_layout{bol_rd_fields, sizeof(SYSDT_BolRd)};
inline constexpr Layout bol_ipv4_layout{bol_ipv4_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_ipv6_layout{bol_ipv6_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_route_target_layout{bol_route_target_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_l2vpn_layout{bol_l2vpn_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_vpnv4_mcast_layout{bol_vpnv4_mcast_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_mdt_layout{bol_mdt_fields, SYSDT_BOL_SIZE};
inline constexpr Layout time_range_layout{time_range_fields, sizeof(SYSDT_TimeRange)};
inline constexpr Layout attr_bitmap_layout{attr_bitmap_fields, sizeof(SYSDT_AttrIdBitmap)};
inline constexpr Layout client_vrf_name_layout{std::span(client_vrf_name_fields).first(1), SYSDT_CVRF_NAME_SIZE};
inline constexpr Layout displayed_client_vrf_layout{client_vrf_name_fields, sizeof(SYSDT_CVrfName)};
inline constexpr Layout sid_structure_layout{sid_structure_fields, sizeof(SYSDT_SidStructure)};
inline constexpr Layout bol_rpd_layout{bol_rpd_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_sr_policy_layout{bol_sr_policy_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_sdwan_layout{bol_sdwan_fields, SYSDT_BOL_SIZE};
inline constexpr Layout vpnv4_mcast_layout{vpnv4_mcast_fields, sizeof(SYSDT_Vpnv4Mcast)};
inline constexpr Layout mdt_layout{mdt_fields, sizeof(SYSDT_Mdt)};

inline constexpr Layout bol_ng2_layout{bol_ng2_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_ng3_layout{bol_ng3_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_ng42_layout{bol_ng42_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_ng43_layout{bol_ng43_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_ng5_layout{bol_ng5_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_ng6_layout{bol_ng6_fields, SYSDT_BOL_SIZE};
inline constexpr Layout bol_ng41_layout{bol_ng41_fields, SYSDT_BOL_SIZE};

/// By the route type.
inline constexpr Layout evpn_layouts[] = {
    {evpn_fields, SYSDT_BOL_SIZE},           {evpn_auto_discovery_fields, SYSDT_BOL_SIZE},
    {evpn_mac_ip_fields, SYSDT_BOL_SIZE},    {evpn_inclusive_fields, SYSDT_BOL_SIZE},
    {evpn_segment_fields, SYSDT_BOL_SIZE},   {evpn_ip_prefix_fields, SYSDT_BOL_SIZE},
    {evpn_selective_fields, SYSDT_BOL_SIZE}, {evpn_join_fields, SYSDT_BOL_SIZE},
    {evpn_leave_fields, SYSDT_BOL_SIZE},
};

/// The layout of an EVPN key; what all route types have where its own says nothing.
constexpr const Layout &evpn_layout_of(std::span<const std::uint8_t> value)
{
    constexpr std::size_t at = offsetof(SYSDT_BolEvpn, key.routeType);
    return evpn_layouts[at < value.size() && value[at] < std::size(evpn_layouts) ? value[at] : 0];
}

inline constexpr Layout bol_layout{bol_fields, SYSDT_BOL_SIZE};

/// The layout of a route key, by its sub-kind and what else selects it.
constexpr const Layout &bol_layout_of(std::uint32_t sub_kind, std::span<const std::uint8_t> value)
{
    switch (sub_kind) {
    case SYSDT_BOL_IPV4: return bol_ipv4_layout;
    case SYSDT_BOL_EVN: return evpn_layout_of(value);
    case SYSDT_BOL_IPV6: return bol_ipv6_layout;
    case SYSDT_BOL_NG_TYPE_2: return bol_ng2_layout;
    case SYSDT_BOL_NG_TYPE_3: return bol_ng3_layout;
    case SYSDT_BOL_NG_TYPE_4_2: return bol_ng42_layout;
    case SYSDT_BOL_NG_TYPE_4_3: return bol_ng43_layout;
    case SYSDT_BOL_NG_TYPE_5: return bol_ng5_layout;
    case SYSDT_BOL_NG_TYPE_6: return bol_ng6_layout;
    case SYSDT_BOL_NG_TYPE_4_1: return bol_ng41_layout;
    case SYSDT_BOL_VRFRTEXT: return bol_route_target_layout;
    case SYSDT_BOL_L2VPN: return bol_l2vpn_layout;
    case SYSDT_BOL_VPNV4MCAST: return bol_vpnv4_mcast_layout;
    case SYSDT_BOL_MDT: return bol_mdt_layout;
    case SYSDT_BOL_RPD: return bol_rpd_layout;
    case SYSDT_BOL_SRPOLICY: return bol_sr_policy_layout;
    case SYSDT_BOL_SDWAN: return bol_sdwan_layout;
    default: return bol_layout;
    }
}

// BGP-LS keys. Rows with the same table stand together.

constexpr Rows<2> ls_as(const char *name, std::size_t offset, const char *table)
{
    return {within(table, BGPDT_FIELD(SYSDT_AsNum, asNumValue, name, Form::number, "asNumValue"), offset),
            within(table, BGPDT_FIELD(SYSDT_AsNum, asType, "notation", Form::number, "asType"), offset)};
}

constexpr Rows<3> ls_address(const char *name, std::size_t offset, const char *table)
{
    return {within(table, BGPDT_FIELD(LsIpAddr, ipv4, name, Form::ipv4, "ipv4Addr"), offset),
            within(table, BGPDT_FIELD(LsIpAddr, ipv6, name, Form::ipv6, "ipv6Addr"), offset),
            within(table, BGPDT_FIELD(LsIpAddr, family, "family", Form::number, "flag"), offset)};
}

/// Scripts see the identifier as a string, and beside it a length that is worked out from it.
constexpr Rows<2> ls_router_id(const char *name, std::size_t offset, const char *key, const char *length_key)
{
    Field length{.key = length_key, .offset = static_cast<std::uint16_t>(offset), .width = 1, .script_bits = 8};
    return {field<std::uint8_t[SYSDT_LS_ROUTER_ID_SIZE]>(name, offset, Form::bytes, key), length};
}

/// Scripts see the identifier as a table of its high and its low 32 bits.
inline constexpr Field ls_identifier =
    BGPDT_FIELD(SYSDT_LsHead, identifier, "identifier", Form::number, "uiIdentifier");
inline constexpr Field ls_protocol = BGPDT_FIELD(SYSDT_LsHead, protocolId, "protocol", Form::number, "uiProtocolId");
inline constexpr Field ls_route_type = BGPDT_FIELD(SYSDT_LsHead, routeType, "route type", Form::number, "uiRouteType");

inline constexpr Field ls_unknown_fields[] = {ls_route_type};

/// What nodes and prefixes begin with, for scripts as in the key.
inline constexpr auto ls_plain_node_fields =
    join(ls_identifier, ls_as("AS", offsetof(SYSDT_LsNode, local.as), "stLocalAs"),
         BGPDT_FIELD(SYSDT_LsNode, local.bgpLsId, "BGP-LS identifier", Form::ipv4, "stLocalBgpLsId"),
         BGPDT_FIELD(SYSDT_LsNode, local.ospfArea, "OSPF area", Form::ipv4, "uiLocOspfAreaId"),
         ls_router_id("IGP router identifier", offsetof(SYSDT_LsNode, local.igpRouterId), "stLocIgpRtId",
                      "uiLocIgpRtIdLen"));

inline constexpr auto ls_node_fields = join(ls_plain_node_fields, ls_protocol, ls_route_type);

inline constexpr auto ls_link_fields =
    join(ls_identifier, ls_as("local AS", offsetof(SYSDT_LsLink, local.as), "stLocalAs"),
         BGPDT_FIELD(SYSDT_LsLink, local.bgpLsId, "local BGP-LS identifier", Form::ipv4, "stLocalBgpLsId"),
         BGPDT_FIELD(SYSDT_LsLink, localBgpRouterId, "local BGP router identifier", Form::ipv4, "uiLocalBgpRtId"),
         BGPDT_FIELD(SYSDT_LsLink, local.ospfArea, "local OSPF area", Form::ipv4, "uiLocOspfAreaId"),
         ls_router_id("local IGP router identifier", offsetof(SYSDT_LsLink, local.igpRouterId), "stLocIgpRtId",
                      "uiLocIgpRtIdLen"),
         ls_as("local member AS", offsetof(SYSDT_LsLink, local.memberAs), "localMemberAs"),
         ls_as("remote AS", offsetof(SYSDT_LsLink, remote.as), "stRemoteAs"),
         BGPDT_FIELD(SYSDT_LsLink, remote.bgpLsId, "remote BGP-LS identifier", Form::ipv4, "stRemoteBgpLsId"),
         BGPDT_FIELD(SYSDT_LsLink, remoteBgpRouterId, "remote BGP router identifier", Form::ipv4, "uiRemoteBgpRtId"),
         BGPDT_FIELD(SYSDT_LsLink, remote.ospfArea, "remote OSPF area", Form::ipv4, "uiRemOspfAreaId"),
         ls_router_id("remote IGP router identifier", offsetof(SYSDT_LsLink, remote.igpRouterId), "stRemIgpRtId",
                      "uiRmtIgpRtIdLen"),
         ls_as("remote member AS", offsetof(SYSDT_LsLink, remote.memberAs), "remoteMemberAs"),
         BGPDT_FIELD(SYSDT_LsLink, linkLocalId, "link local identifier", Form::ipv4, "uiLinkLocId"),
         BGPDT_FIELD(SYSDT_LsLink, linkRemoteId, "link remote identifier", Form::ipv4, "uiLinkRemId"),
         BGPDT_FIELD(SYSDT_LsLink, ipv4Interface, "IPv4 interface", Form::ipv4, "stIpv4IntfAddr"),
         BGPDT_FIELD(SYSDT_LsLink, ipv4Neighbor, "IPv4 neighbor", Form::ipv4, "stIpv4PeerAddr"),
         BGPDT_FIELD(SYSDT_LsLink, ipv6Interface, "IPv6 interface", Form::ipv6, "stIpv6IntfAddr"),
         BGPDT_FIELD(SYSDT_LsLink, ipv6Neighbor, "IPv6 neighbor", Form::ipv6, "stIpv6PeerAddr"),
         BGPDT_FIELD(SYSDT_LsLink, mtId, "MT-ID", Form::number, "uiMtId"), ls_protocol, ls_route_type);

inline constexpr auto ls_ipv4_prefix_fields =
    join(ls_plain_node_fields, BGPDT_FIELD(SYSDT_LsIpv4Prefix, mtId, "MT-ID", Form::number, "uiMtId"),
         BGPDT_FIELD(SYSDT_LsIpv4Prefix, ospfRouteType, "OSPF route type", Form::number, "uiOspfRtType"),
         within("Prefix", BGPDT_FIELD(SYSDT_LsIpv4Prefix, prefix, "IPv4 prefix", Form::ipv4, "stIpv4Prefix")),
         within("Prefix", BGPDT_FIELD(SYSDT_LsIpv4Prefix, prefixLength, "prefix length", Form::number, "uiPrefixLen")),
         ls_protocol, ls_route_type);

inline constexpr auto ls_ipv6_prefix_fields =
    join(ls_plain_node_fields, BGPDT_FIELD(SYSDT_LsIpv6Prefix, mtId, "MT-ID", Form::number, "uiMtId"),
         BGPDT_FIELD(SYSDT_LsIpv6Prefix, ospfRouteType, "OSPF route type", Form::number, "uiOspfRtType"),
         within("Prefix", BGPDT_FIELD(SYSDT_LsIpv6Prefix, prefix, "IPv6 prefix", Form::ipv6, "stIpv6Prefix")),
         within("Prefix", BGPDT_FIELD(SYSDT_LsIpv6Prefix, prefixLength, "prefix length", Form::number, "uiPrefixLen")),
         ls_protocol, ls_route_type);

inline constexpr auto ls_te_policy_fields =
    join(ls_identifier, ls_as("AS", offsetof(SYSDT_LsTePolicy, as), "stLocalAs"),
         BGPDT_FIELD(SYSDT_LsTePolicy, discriminator, "discriminator", Form::number, "discriminator"),
         ls_address("originator", offsetof(SYSDT_LsTePolicy, originatorAddress), "originatorAddr"),
         ls_as("originator AS", offsetof(SYSDT_LsTePolicy, originatorAs), "originatorAs"),
         BGPDT_FIELD(SYSDT_LsTePolicy, color, "color", Form::number, "color"),
         ls_address("endpoint", offsetof(SYSDT_LsTePolicy, endpoint), "endpoint"),
         BGPDT_FIELD(SYSDT_LsTePolicy, flags, "flags", Form::number, "flags"),
         BGPDT_FIELD(SYSDT_LsTePolicy, protocolOrigin, "protocol origin", Form::number, "protocolOrigin"),
         BGPDT_FIELD(SYSDT_LsTePolicy, ipv6RouterId, "IPv6 router identifier", Form::ipv6, "ipv6TeRouterId"),
         BGPDT_FIELD(SYSDT_LsTePolicy, ipv4RouterId, "IPv4 router identifier", Form::ipv4, "teRouterId"),
         BGPDT_FIELD(SYSDT_LsTePolicy, bgpRouterId, "BGP router identifier", Form::ipv4, "uiLocalBgpRtId"),
         BGPDT_FIELD(SYSDT_LsTePolicy, bgpLsId, "BGP-LS identifier", Form::ipv4, "stLocalBgpLsId"), ls_protocol,
         ls_route_type);

inline constexpr auto ls_srv6_sid_fields =
    join(ls_identifier, ls_as("AS", offsetof(SYSDT_LsSrv6Sid, local.as), "stLocalAs"),
         BGPDT_FIELD(SYSDT_LsSrv6Sid, local.bgpLsId, "BGP-LS identifier", Form::ipv4, "stLocalBgpLsId"),
         BGPDT_FIELD(SYSDT_LsSrv6Sid, bgpRouterId, "BGP router identifier", Form::ipv4, "uiLocalBgpRtId"),
         BGPDT_FIELD(SYSDT_LsSrv6Sid, local.ospfArea, "OSPF area", Form::ipv4, "uiLocOspfAreaId"),
         ls_as("member AS", offsetof(SYSDT_LsSrv6Sid, local.memberAs), "localMemberAs"),
         ls_router_id("IGP router identifier", offsetof(SYSDT_LsSrv6Sid, local.igpRouterId), "stLocIgpRtId",
                      "uiLocIgpRtIdLen"),
         BGPDT_FIELD(SYSDT_LsSrv6Sid, mtId, "MT-ID", Form::number, "uiMtId"),
         BGPDT_FIELD(SYSDT_LsSrv6Sid, sid, "SID", Form::ipv6, "srv6SidInfo"), ls_protocol, ls_route_type);

/// By the route type.
inline constexpr Layout ls_layouts[SYSDT_LS_ROUTE_TYPES] = {
    {ls_unknown_fields, SYSDT_LS_SIZE},     {ls_node_fields, SYSDT_LS_SIZE},
    {ls_link_fields, SYSDT_LS_SIZE},        {ls_ipv4_prefix_fields, SYSDT_LS_SIZE},
    {ls_ipv6_prefix_fields, SYSDT_LS_SIZE}, {ls_te_policy_fields, SYSDT_LS_SIZE},
    {ls_srv6_sid_fields, SYSDT_LS_SIZE},
};

/// The layout of a BGP-LS key; the route type word alone where that says nothing.
constexpr const Layout &ls_layout_of(std::uint32_t route_type)
{
    return ls_layouts[route_type < SYSDT_LS_ROUTE_TYPES ? route_type : 0];
}

/// A selecting word of a value, 0 where the value ends before it.
inline std::uint32_t selecting_word(std::span<const std::uint8_t> value, std::endian order)
{
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < sizeof word; ++i) {
        const std::uint32_t byte = i < value.size() ? value[i] : 0;
        word |= byte << 8 * (order == std::endian::big ? sizeof word - 1 - i : i);
    }
    return word;
}

inline constexpr Layout no_layout{};

/// The layout of a value of the given type.
///
/// @param type_id  a registered type's id
/// @param value    the value; its selecting words decide where a type has several layouts
/// @param order    the byte order that the value's host-order numbers are in
/// @return the layout; without fields when the type is unknown
inline const Layout &layout_of(std::uint16_t type_id, std::span<const std::uint8_t> value, std::endian order)
{
    switch (type_id) {
    case SYSDT_TYPE_ASNUM:
    case SYSDT_TYPE_ASNUMEXT: return as_number_layout;
    case SYSDT_TYPE_ASNUM_ENHANCE: return as_list_layout;
    case SYSDT_TYPE_COMMUNITY: return community_layout;
    case SYSDT_TYPE_CMNTY_ENHANCE: return community_list_layout;
    case SYSDT_TYPE_LARGECOMMUNITY: return large_community_layout;
    case SYSDT_TYPE_EXTCOMMUNITY: return extended_community_layout;
    case SYSDT_TYPE_EXTCOMMUNITY_BW: return bandwidth_community_layout;
    case SYSDT_TYPE_VRFRD: return route_distinguisher_layout;
    case SYSDT_TYPE_VRFRT: return route_target_layout;
    case SYSDT_TYPE_SOO: return site_of_origin_layout;
    case SYSDT_TYPE_VRFRTV6: return ipv6_route_target_layout;
    case SYSDT_TYPE_RTPRD: return rtp_rd_layout;
    case SYSDT_TYPE_VPNID: return vpn_id_layout;
    case SYSDT_TYPE_BOLRD: return bol_rd_layout;
    case SYSDT_TYPE_EVNPREFIX: return evpn_layout_of(value);
    case SYSDT_TYPE_L2VPNPREFIX: return bol_l2vpn_layout;
    case SYSDT_TYPE_VPNV4MCPREFIX:
        return value.size() == sizeof(SYSDT_Vpnv4Mcast) ? vpnv4_mcast_layout : bol_vpnv4_mcast_layout;
    case SYSDT_TYPE_MDTPREFIX: return value.size() == sizeof(SYSDT_Mdt) ? mdt_layout : bol_mdt_layout;
    case SYSDT_TYPE_TIME_RANGE: return time_range_layout;
    case SYSDT_TYPE_ATTRIDBITMAP: return attr_bitmap_layout;
    case SYSDT_TYPE_CVRFNAME:
        return value.size() > SYSDT_CVRF_NAME_SIZE ? displayed_client_vrf_layout : client_vrf_name_layout;
    case SYSDT_TYPE_SID_STRUCTURE: return sid_structure_layout;
    case SYSDT_TYPE_BOLPREFIX: return bol_layout_of(selecting_word(value, order), value);
    case SYSDT_TYPE_BGPLSPREFIX: return ls_layout_of(selecting_word(value, order) & 0xFF); // as it prints
    default: return no_layout;
    }
}

/// Reverses the bytes of every host-order number of the layout in place, as far as the value reaches.
inline void reverse_numbers(const Layout &layout, std::span<std::uint8_t> value)
{
    for (std::size_t entry = 0; entry < layout.repeat; ++entry) {
        for (const Field &field : layout.fields) {
            std::size_t at = entry * layout.stride + field.offset;
            if (!field.host_order() || at + field.size() > value.size())
                continue;
            for (std::size_t i = 0; i < field.count; ++i, at += field.width)
                std::reverse(value.data() + at, value.data() + at + field.width);
        }
    }
}

/// The size of the values that a type's callbacks convert. The record declares another one for some types, which is the
/// size that their Endian works on.
constexpr std::size_t value_size(const SYSDT_Record &record)
{
    switch (record.typeId) {
    case SYSDT_TYPE_EVNPREFIX:
    case SYSDT_TYPE_L2VPNPREFIX:
    case SYSDT_TYPE_VPNV4MCPREFIX:
    case SYSDT_TYPE_MDTPREFIX: return SYSDT_BOL_SIZE;
    default: return record.dataLength;
    }
}

} // namespace bgpdt

#endif
