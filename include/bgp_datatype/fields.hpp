// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The fields of every binary form as tables: what stands where, how it is read by people, what its numbers stand for,
/// and under which key scripts see it. Byte swap, script access and every dump of a value walk these tables, so a layout
/// is told once.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "bgp_datatype/field.hpp"
#include "bgp_datatype/values.h"

namespace bgpdt {

enum class Words : std::uint8_t {
    none,
    as_notation,
    community_notation,
    rd_form,
    rtp_rd_form,
    target_form, ///< as rd_form, but the octets go before it: written like a MAC address they have the last one's number
    wildcard,
    existence,
    family,
    sub_kind, ///< what the plug-in's dispatch table names the kind
    evpn_route,
    ls_route,
    ls_protocol,
    mt_id,
};

/// A number that stands for something.
struct Word {
    std::uint32_t number;
    const char *text;
};

namespace words {

inline constexpr Word as_notations[] = {{SYSDT_AS_PLAIN, "asplain"}, {SYSDT_AS_DOTTED, "asdot+"}};
inline constexpr Word community_notations[] = {{SYSDT_COMMUNITY_NUMBER, "number or well-known community"},
                                               {SYSDT_COMMUNITY_PAIR, "pair of 16-bit numbers"},
                                               {SYSDT_COMMUNITY_EMPTY, "unused entry"}};
inline constexpr Word rd_forms[] = {{VRF_RD_FORM_IPV4, "IPv4 address and number"},
                                    {VRF_RD_FORM_AS2, "2-octet AS and number"},
                                    {VRF_RD_FORM_AS4, "4-octet AS and number"},
                                    {VRF_RD_FORM_AS4DOT, "dotted 4-octet AS and number"}};
inline constexpr Word rtp_rd_forms[] = {{RTP_RD_FORM_IPV4, rd_forms[0].text},
                                        {RTP_RD_FORM_AS2, rd_forms[1].text},
                                        {RTP_RD_FORM_AS4, rd_forms[2].text},
                                        {RTP_RD_FORM_AS4DOT, rd_forms[3].text}};
inline constexpr Word wildcards[] = {{0, "none: the number counts"}, {1, "any number"}};
inline constexpr Word existence[] = {{0, "there is none"}, {1, "there is one"}};
inline constexpr Word families[] = {{0, "IPv4"}, {1, "IPv6"}};
inline constexpr Word evpn_routes[] = {{SYSDT_EVPN_AUTO_DISCOVERY, "Ethernet auto-discovery"},
                                       {SYSDT_EVPN_MAC_IP, "MAC/IP advertisement"},
                                       {SYSDT_EVPN_INCLUSIVE, "inclusive multicast"},
                                       {SYSDT_EVPN_SEGMENT, "Ethernet segment"},
                                       {SYSDT_EVPN_IP_PREFIX, "IP prefix"},
                                       {SYSDT_EVPN_SELECTIVE, "selective multicast"},
                                       {SYSDT_EVPN_JOIN, "multicast join synchronisation"},
                                       {SYSDT_EVPN_LEAVE, "multicast leave synchronisation"}};
inline constexpr Word ls_routes[] = {{SYSDT_LS_NODE, "node"},
                                     {SYSDT_LS_LINK, "link"},
                                     {SYSDT_LS_IPV4_PREFIX, "IPv4 prefix"},
                                     {SYSDT_LS_IPV6_PREFIX, "IPv6 prefix"},
                                     {SYSDT_LS_TE_POLICY, "TE policy"},
                                     {SYSDT_LS_SRV6_SID, "SRv6 SID"}};
inline constexpr Word ls_protocols[] = {{SYSDT_LS_ISIS_LEVEL_1, "IS-IS level 1"},
                                        {SYSDT_LS_ISIS_LEVEL_2, "IS-IS level 2"},
                                        {SYSDT_LS_OSPFV2, "OSPFv2"},
                                        {SYSDT_LS_DIRECT, "direct"},
                                        {SYSDT_LS_STATIC, "static"},
                                        {SYSDT_LS_OSPFV3, "OSPFv3"},
                                        {SYSDT_LS_BGP, "BGP"},
                                        {SYSDT_LS_SEGMENT_ROUTING, "segment routing"}};
inline constexpr Word mt_ids[] = {{SYSDT_LS_NO_MT_ID, "none"}};

} // namespace words

constexpr std::span<const Word> words_of(Words words)
{
    switch (words) {
    case Words::as_notation: return words::as_notations;
    case Words::community_notation: return words::community_notations;
    case Words::rd_form:
    case Words::target_form: return words::rd_forms;
    case Words::rtp_rd_form: return words::rtp_rd_forms;
    case Words::wildcard: return words::wildcards;
    case Words::existence: return words::existence;
    case Words::family: return words::families;
    case Words::evpn_route: return words::evpn_routes;
    case Words::ls_route: return words::ls_routes;
    case Words::ls_protocol: return words::ls_protocols;
    case Words::mt_id: return words::mt_ids;
    case Words::sub_kind:
    case Words::none: break;
    }
    return {};
}

/// What the number of a field stands for.
///
/// @return null for a number that stands for nothing but itself, as most MT-IDs do; "unknown" for one that should stand
///         for something
constexpr const char *word_for(Words words, std::uint64_t number)
{
    for (const Word &word : words_of(words))
        if (word.number == number)
            return word.text;
    return words == Words::none || words == Words::mt_id ? nullptr : "unknown";
}

/// The rows of an address that is kept in both families (SYSDT_EvpnAddress). Scripts see it in a form of its own.
// NOLINTBEGIN(bugprone-macro-parentheses): a member's name cannot stand in any
#define BGPDT_ADDRESS_FIELDS(structure, member, name)                                                                  \
    BGPDT_FIELD(structure, member.ipv4, name " IPv4", Form::ipv4, nullptr),                                            \
        BGPDT_FIELD(structure, member.ipv6, name " IPv6", Form::ipv6, nullptr),                                        \
        BGPDT_FIELD(structure, member.family, name " family", Words::family, nullptr)
// NOLINTEND(bugprone-macro-parentheses)

inline constexpr Field as_number_fields[] = {
    BGPDT_FIELD(SYSDT_AsNum, asNumValue, "AS number", Form::number, "asNumValue"),
    BGPDT_FIELD(SYSDT_AsNum, asType, "notation", Words::as_notation, "asType"),
};
inline constexpr Layout as_number_layout{as_number_fields, sizeof(SYSDT_AsNum)};

inline constexpr Field as_list_entry_fields[] = {
    BGPDT_FIELD(SYSDT_AsNumEntry, asType, "notation", Words::as_notation, "asType"),
    BGPDT_FIELD(SYSDT_AsNumEntry, asNumValue, "AS number", Form::number, "asNumValue"),
};
inline constexpr Layout as_list_layout{as_list_entry_fields, sizeof(SYSDT_AsNumEntry), SYSDT_AS_LIST_ENTRIES,
                                       "stAsNum"};

inline constexpr Field community_fields[] = {
    BGPDT_FIELD(SYSDT_Community, community, "community", Form::number, "community"),
    BGPDT_FIELD(SYSDT_Community, type, "notation", Words::community_notation, "type"),
};
inline constexpr Layout community_layout{community_fields, sizeof(SYSDT_Community)};

inline constexpr Field community_list_entry_fields[] = {
    BGPDT_FIELD(SYSDT_CommunityEntry, community, "community", Form::number, "community"),
    BGPDT_FIELD(SYSDT_CommunityEntry, type, "notation", Words::community_notation, "type"),
};
inline constexpr Layout community_list_layout{community_list_entry_fields, sizeof(SYSDT_CommunityEntry),
                                              SYSDT_COMMUNITY_LIST_ENTRIES, "stCmnty"};

inline constexpr Field large_community_fields[] = {
    BGPDT_FIELD(SYSDT_LargeCommunity, largeCommunity, "administrator, local data", Form::number, "largeCommunity"),
    BGPDT_FIELD(SYSDT_LargeCommunity, type, "type", Form::number, "type"),
};
inline constexpr Layout large_community_layout{large_community_fields, sizeof(SYSDT_LargeCommunity)};

inline constexpr Field extended_community_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::community, "extcommunity"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Words::rd_form, "type", 8),
};
inline constexpr Layout extended_community_layout{extended_community_fields, sizeof(SYSDT_Octets)};

inline constexpr Field bandwidth_community_fields[] = {
    BGPDT_FIELD(SYSDT_ExtCommunityBw, bitMask, "type and sub-type", Form::number, "bitMask"),
    BGPDT_FIELD(SYSDT_ExtCommunityBw, asnNn, "AS number", Form::number, "asnNn"),
    BGPDT_FIELD(SYSDT_ExtCommunityBw, bandwidth, "bandwidth", Form::number, "bandwidth"),
};
inline constexpr Layout bandwidth_community_layout{bandwidth_community_fields, sizeof(SYSDT_ExtCommunityBw)};

inline constexpr Field route_distinguisher_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::rd, "RdValue"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Words::rd_form, "RdType", 8),
};
inline constexpr Layout route_distinguisher_layout{route_distinguisher_fields, sizeof(SYSDT_Octets)};

inline constexpr Field route_target_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::community, "RtValue"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Words::rd_form, "RtType", 8),
};
inline constexpr Layout route_target_layout{route_target_fields, sizeof(SYSDT_Octets)};

inline constexpr Field site_of_origin_fields[] = {
    BGPDT_FIELD(SYSDT_Octets, octets, "type and value", Form::community, "SooValue"),
    BGPDT_FIELD(SYSDT_Octets, form, "text form", Words::rd_form, "SooType", 8),
};
inline constexpr Layout site_of_origin_layout{site_of_origin_fields, sizeof(SYSDT_Octets)};

inline constexpr Field ipv6_route_target_fields[] = {
    BGPDT_FIELD(SYSDT_VrfRtV6, octets, "code, address, local number", Form::bytes, "RtV6Value"),
    BGPDT_FIELD(SYSDT_VrfRtV6, type, "type", Form::number, "RtV6Type", 8),
};
inline constexpr Layout ipv6_route_target_layout{ipv6_route_target_fields, sizeof(SYSDT_VrfRtV6)};

inline constexpr Field rtp_rd_fields[] = {
    BGPDT_FIELD(SYSDT_RtpRd, octets, "type and value", Form::rd, "rdValue"),
    BGPDT_FIELD(SYSDT_RtpRd, form, "text form", Words::rtp_rd_form, "type"),
    BGPDT_FIELD(SYSDT_RtpRd, star, "wildcard", Words::wildcard, "star"),
};
inline constexpr Layout rtp_rd_layout{rtp_rd_fields, sizeof(SYSDT_RtpRd)};

inline constexpr Field vpn_id_fields[] = {
    BGPDT_FIELD(SYSDT_VpnId, oui, "OUI", Form::number, "ouiValue"),
    BGPDT_FIELD(SYSDT_VpnId, index, "VPN index", Form::number, "index"),
};
inline constexpr Layout vpn_id_layout{vpn_id_fields, sizeof(SYSDT_VpnId)};

/// Scripts see the route distinguisher as a table of its own, under "RdValue", with the same two names inside.
inline constexpr Field bol_rd_fields[] = {
    BGPDT_FIELD(SYSDT_BolRd, subKind, "sub-kind", Words::sub_kind, "RdType", 8),
    BGPDT_FIELD(SYSDT_BolRd, rd.octets, "type and value", Form::rd, "RdValue"),
    BGPDT_FIELD(SYSDT_BolRd, rd.form, "text form", Words::rd_form, "RdType", 8),
};
inline constexpr Layout bol_rd_layout{bol_rd_fields, sizeof(SYSDT_BolRd)};

inline constexpr Field bol_ipv4_fields[] = {
    BGPDT_FIELD(SYSDT_BolIpv4, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolIpv4, address, "IPv4 address", Form::ipv4, "bolPrefix"),
};
inline constexpr Layout bol_ipv4_layout{bol_ipv4_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_ipv6_fields[] = {
    BGPDT_FIELD(SYSDT_BolIpv6, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolIpv6, address, "IPv6 address", Form::ipv6, "bolPrefix"),
};
inline constexpr Layout bol_ipv6_layout{bol_ipv6_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_route_target_fields[] = {
    BGPDT_FIELD(SYSDT_BolRouteTarget, rt.octets, "type and value", Form::community, "RtValue"),
    BGPDT_FIELD(SYSDT_BolRouteTarget, rt.form, "text form", Words::target_form, "RtType", 8),
    BGPDT_FIELD(SYSDT_BolRouteTarget, subKind, "sub-kind", Words::sub_kind, "bolType"),
};
inline constexpr Layout bol_route_target_layout{bol_route_target_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_l2vpn_fields[] = {
    BGPDT_FIELD(SYSDT_BolL2Vpn, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolL2Vpn, siteId, "site identifier", Form::number, "bolSiteId"),
    BGPDT_FIELD(SYSDT_BolL2Vpn, labelOffset, "label offset", Form::number, "bolLabelOffSet"),
};
inline constexpr Layout bol_l2vpn_layout{bol_l2vpn_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_vpnv4_mcast_fields[] = {
    BGPDT_FIELD(SYSDT_BolVpnv4Mcast, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolVpnv4Mcast, prefix.prefix, "IPv4 prefix", Form::ipv4, "bolVpnv4McastPrefix"),
    BGPDT_FIELD(SYSDT_BolVpnv4Mcast, prefix.maskLength, "mask length", Form::number, "bolVpnv4McastMaskLen"),
};
inline constexpr Layout bol_vpnv4_mcast_layout{bol_vpnv4_mcast_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_mdt_fields[] = {
    BGPDT_FIELD(SYSDT_BolMdt, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolMdt, prefix.prefix, "IPv4 prefix", Form::ipv4, "bolMdtPrefix"),
    BGPDT_FIELD(SYSDT_BolMdt, prefix.group, "group address", Form::ipv4, "bolMdtGrpAddr"),
    BGPDT_FIELD(SYSDT_BolMdt, prefix.maskLength, "mask length", Form::number, "bolMdtMaskLen"),
};
inline constexpr Layout bol_mdt_layout{bol_mdt_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_rpd_fields[] = {
    BGPDT_FIELD(SYSDT_BolRpd, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolRpd, key.policyType, "policy type", Form::number, "bolRpdPolicyType"),
    BGPDT_FIELD(SYSDT_BolRpd, key.peer, "peer", Form::ipv4, "bolRpdPeerAddr"),
    BGPDT_FIELD(SYSDT_BolRpd, key.distinguisher, "distinguisher", Form::number, "bolRpdDistinguisher"),
};
inline constexpr Layout bol_rpd_layout{bol_rpd_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_sr_policy_fields[] = {
    BGPDT_FIELD(SYSDT_BolSrPolicy, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.distinguisher, "distinguisher", Form::number, "bolSrPolicyDistinguisher"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.colour, "colour", Form::number, "bolSrPolicyPolicyColor"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.ipv4, "IPv4 endpoint", Form::ipv4, "bolSrPolicyEndpointv4"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.ipv6, "IPv6 endpoint", Form::ipv6, "bolSrPolicyEndpointv6"),
    BGPDT_FIELD(SYSDT_BolSrPolicy, key.family, "family", Words::family, "bolSrPolicyPolicyType"),
};
inline constexpr Layout bol_sr_policy_layout{bol_sr_policy_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_sdwan_fields[] = {
    BGPDT_FIELD(SYSDT_BolSdwan, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.routeType, "route type", Form::number, "bolSdwanType"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.portLocalId, "port local identifier", Form::number, "bolSdwanPortLocalID"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.siteId, "site identifier", Form::number, "bolSdwanSiteID"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.ipv4, "IPv4 node", Form::ipv4, "bolSdwanNodeIDv4"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.ipv6, "IPv6 node", Form::ipv6, "bolSdwanNodeIDv6"),
    BGPDT_FIELD(SYSDT_BolSdwan, key.family, "family", Words::family, "bolSdwanPrefixType"),
};
inline constexpr Layout bol_sdwan_layout{bol_sdwan_fields, SYSDT_BOL_SIZE};

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
        BGPDT_FIELD(structure, as.asType, "notation", Words::as_notation, NgKeys::notation)

inline constexpr Field bol_ng2_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg2, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_NG_AS_FIELDS(SYSDT_BolNg2),
};
inline constexpr Layout bol_ng2_layout{bol_ng2_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_ng3_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg3, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg3, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg3, group, "group"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg3, originator, "originator"),
};
inline constexpr Layout bol_ng3_layout{bol_ng3_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_ng42_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg42, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_NG_AS_FIELDS(SYSDT_BolNg42),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg42, originator, "originator"),
};
inline constexpr Layout bol_ng42_layout{bol_ng42_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_ng43_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg43, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, group, "group"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, originator1, "originator 1"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg43, originator2, "originator 2"),
};
inline constexpr Layout bol_ng43_layout{bol_ng43_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_ng5_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg5, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg5, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg5, group, "group"),
};
inline constexpr Layout bol_ng5_layout{bol_ng5_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_ng6_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg6, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_NG_AS_FIELDS(SYSDT_BolNg6),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg6, source, "source"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg6, group, "group"),
};
inline constexpr Layout bol_ng6_layout{bol_ng6_fields, SYSDT_BOL_SIZE};

inline constexpr Field bol_ng41_fields[] = {
    BGPDT_FIELD(SYSDT_BolNg41, subKind, "sub-kind", Words::sub_kind, "bolType"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg41, originator1, "originator 1"),
    BGPDT_ADDRESS_FIELDS(SYSDT_BolNg41, originator2, "originator 2"),
};
inline constexpr Layout bol_ng41_layout{bol_ng41_fields, SYSDT_BOL_SIZE};

/// A key of a kind that has no fields of its own here: its sub-kind word alone.
inline constexpr Field bol_fields[] = {
    BGPDT_FIELD(SYSDT_BolValue, subKind, "sub-kind", Words::sub_kind, "bolType"),
};
inline constexpr Layout bol_layout{bol_fields, SYSDT_BOL_SIZE};

// The short forms that Endian works on; scripts do not see them.
inline constexpr Field vpnv4_mcast_fields[] = {
    BGPDT_FIELD(SYSDT_Vpnv4Mcast, prefix, "IPv4 prefix", Form::ipv4, nullptr),
    BGPDT_FIELD(SYSDT_Vpnv4Mcast, maskLength, "mask length", Form::number, nullptr),
};
inline constexpr Layout vpnv4_mcast_layout{vpnv4_mcast_fields, sizeof(SYSDT_Vpnv4Mcast)};

constexpr const Layout &vpnv4_mcast_layout_of(std::span<const std::uint8_t> value)
{
    return value.size() == sizeof(SYSDT_Vpnv4Mcast) ? vpnv4_mcast_layout : bol_vpnv4_mcast_layout;
}

inline constexpr Field mdt_fields[] = {
    BGPDT_FIELD(SYSDT_Mdt, prefix, "IPv4 prefix", Form::ipv4, nullptr),
    BGPDT_FIELD(SYSDT_Mdt, group, "group address", Form::ipv4, nullptr),
    BGPDT_FIELD(SYSDT_Mdt, maskLength, "mask length", Form::number, nullptr),
};
inline constexpr Layout mdt_layout{mdt_fields, sizeof(SYSDT_Mdt)};

constexpr const Layout &mdt_layout_of(std::span<const std::uint8_t> value)
{
    return value.size() == sizeof(SYSDT_Mdt) ? mdt_layout : bol_mdt_layout;
}

inline constexpr Field time_range_fields[] = {
    BGPDT_FIELD(SYSDT_TimeRange, seconds, "seconds", Form::number, nullptr),
};
inline constexpr Layout time_range_layout{time_range_fields, sizeof(SYSDT_TimeRange)};

inline constexpr Field attr_bitmap_fields[] = {
    BGPDT_FIELD(SYSDT_AttrIdBitmap, bits, "identifiers", Form::bits, nullptr),
};
inline constexpr Layout attr_bitmap_layout{attr_bitmap_fields, sizeof(SYSDT_AttrIdBitmap)};

/// A value is the name alone; the number stands behind it where it is displayed.
inline constexpr Field client_vrf_name_fields[] = {
    BGPDT_FIELD(SYSDT_CVrfName, name, "name", Form::text, nullptr),
    BGPDT_FIELD(SYSDT_CVrfName, number, "number", Form::number, nullptr),
    BGPDT_FIELD(SYSDT_CVrfName, hasNumber, "has a number", Words::existence, nullptr),
};
inline constexpr Layout client_vrf_name_layout{std::span(client_vrf_name_fields).first(1), SYSDT_CVRF_NAME_SIZE};
inline constexpr Layout displayed_client_vrf_layout{client_vrf_name_fields, sizeof(SYSDT_CVrfName)};

constexpr const Layout &client_vrf_layout_of(std::span<const std::uint8_t> value)
{
    return value.size() > SYSDT_CVRF_NAME_SIZE ? displayed_client_vrf_layout : client_vrf_name_layout;
}

inline constexpr Field sid_structure_fields[] = {
    BGPDT_FIELD(SYSDT_SidStructure, field, "lengths and offset", Form::number, nullptr),
    BGPDT_FIELD(SYSDT_SidStructure, exists, "exists", Words::existence, "strcExist"),
};
inline constexpr Layout sid_structure_layout{sid_structure_fields, sizeof(SYSDT_SidStructure)};

// Scripts see an EVPN key as text, beside its sub-kind and its route type.
#define BGPDT_EVPN_HEAD_FIELDS                                                                                         \
    BGPDT_FIELD(SYSDT_BolEvpn, subKind, "sub-kind", Words::sub_kind, "bolType"),                                       \
        BGPDT_FIELD(SYSDT_BolEvpn, key.routeType, "route type", Words::evpn_route, "bolPrefixRtType")

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

/// The layout of a route key, by its sub-kind and what else selects it.
constexpr const Layout &bol_layout_of(std::uint32_t sub_kind, std::span<const std::uint8_t> value)
{
#define BGPDT_LAYOUT(kind, name, layout, reader, about, texts, slots)                                                  \
    case SYSDT_BOL_##kind: return layout;

    switch (sub_kind) {
        SYSDT_BOL_ROWS(BGPDT_LAYOUT, )
    default: return bol_layout;
    }
#undef BGPDT_LAYOUT
}

// BGP-LS keys. Rows with the same table stand together.

constexpr Rows<2> ls_as(const char *name, std::size_t offset, const char *table)
{
    return {within(table, BGPDT_FIELD(SYSDT_AsNum, asNumValue, name, Form::number, "asNumValue"), offset),
            within(table, BGPDT_FIELD(SYSDT_AsNum, asType, "notation", Words::as_notation, "asType"), offset)};
}

constexpr Rows<3> ls_address(const char *name, std::size_t offset, const char *table)
{
    return {within(table, BGPDT_FIELD(LsIpAddr, ipv4, name, Form::ipv4, "ipv4Addr"), offset),
            within(table, BGPDT_FIELD(LsIpAddr, ipv6, name, Form::ipv6, "ipv6Addr"), offset),
            within(table, BGPDT_FIELD(LsIpAddr, family, "family", Words::family, "flag"), offset)};
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
inline constexpr Field ls_protocol =
    BGPDT_FIELD(SYSDT_LsHead, protocolId, "protocol", Words::ls_protocol, "uiProtocolId");
inline constexpr Field ls_route_type =
    BGPDT_FIELD(SYSDT_LsHead, routeType, "route type", Words::ls_route, "uiRouteType");

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
         BGPDT_FIELD(SYSDT_LsLink, mtId, "MT-ID", Words::mt_id, "uiMtId"), ls_protocol, ls_route_type);

inline constexpr auto ls_ipv4_prefix_fields =
    join(ls_plain_node_fields, BGPDT_FIELD(SYSDT_LsIpv4Prefix, mtId, "MT-ID", Words::mt_id, "uiMtId"),
         BGPDT_FIELD(SYSDT_LsIpv4Prefix, ospfRouteType, "OSPF route type", Form::number, "uiOspfRtType"),
         within("Prefix", BGPDT_FIELD(SYSDT_LsIpv4Prefix, prefix, "IPv4 prefix", Form::ipv4, "stIpv4Prefix")),
         within("Prefix", BGPDT_FIELD(SYSDT_LsIpv4Prefix, prefixLength, "prefix length", Form::number, "uiPrefixLen")),
         ls_protocol, ls_route_type);

inline constexpr auto ls_ipv6_prefix_fields =
    join(ls_plain_node_fields, BGPDT_FIELD(SYSDT_LsIpv6Prefix, mtId, "MT-ID", Words::mt_id, "uiMtId"),
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
         BGPDT_FIELD(SYSDT_LsSrv6Sid, mtId, "MT-ID", Words::mt_id, "uiMtId"),
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
#define BGPDT_LAYOUT(name, id, kind, size, layout, about, grammar, texts, slots)                                       \
    case SYSDT_TYPE_##name: return layout;

    switch (type_id) {
        SYSDT_EXTEND_TYPES(BGPDT_LAYOUT, )
    default: return no_layout;
    }
#undef BGPDT_LAYOUT
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
