/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The binary forms of the data types, byte by byte.
 *
 * Structures are packed: a value may stand at any address. Numbers are in the processor's own byte order; arrays of
 * bytes are in network order on every processor, and no Endian callback moves them.
 */
#pragma once

#include "bgp_datatype/host.h"

#define SYSDT_PACKED __attribute__((packed))

/* ------------------------------------------------------------------------------------------------ the types */

/*
 * The tables of the types and of the kinds of route key. What there is of either follows from them: ids and counts here,
 * declarations, records and rows, layouts, and what the tool says of each. A table is given two macros: what becomes of a
 * row, and of each slot that the row fills; a slot that it does not name is no operation. Texts stand one a line: one of
 * each form. A grammar says which there are, in the mode in which they go both ways.
 */

/* clang-format off */

#define SYSDT_PAIR_TEXTS "64496:1\n65551:1\n1.15:1\n192.0.2.1:1"
#define SYSDT_ANY_PAIR_TEXTS "64496:*\n65551:*\n1.15:*\n192.0.2.1:*"
#define SYSDT_PAIR_GRAMMAR                                                                                             \
    "A:N, H.L:N or IPV4:N. N is up to 4294967295 behind an A up to 65535, else up to 65535; A is up to 4294967295, "   \
    "H and L are up to 65535"
#define SYSDT_NONZERO_PAIR_GRAMMAR SYSDT_PAIR_GRAMMAR "; 0:0 and 0.0:0 are refused"
#define SYSDT_EVPN_TEXTS                                                                                               \
    "0011.2233.4455.6677.8899:100\n"                                                                                   \
    "100:48:0000-5e00-5301:32:192.0.2.1\n"                                                                             \
    "100:48:0000-5e00-5301:128:[2001:db8::1]\n"                                                                        \
    "100:32:192.0.2.1\n"                                                                                               \
    "100:128:[2001:db8::1]\n"                                                                                          \
    "0011.2233.4455.6677.8899\n"                                                                                       \
    "0011.2233.4455.6677.8899:32:192.0.2.1\n"                                                                          \
    "0011.2233.4455.6677.8899:128:[2001:db8::1]\n"                                                                     \
    "100:192.0.2.0:24\n"                                                                                               \
    "100:[2001:db8::]:64\n"                                                                                            \
    "100:32:192.0.2.1:32:233.252.0.1:32:192.0.2.2\n"                                                                   \
    "100:32:192.0.2.1:32:233.252.0.1:128:[2001:db8::1]\n"                                                              \
    "0011.2233.4455.6677.8899:100:32:192.0.2.1:32:233.252.0.1:32:192.0.2.2\n"                                          \
    "0011.2233.4455.6677.8899:100:32:192.0.2.1:32:233.252.0.1:128:[2001:db8::1]\n"                                     \
    "0011.2233.4455.6677.8899:100:32:192.0.2.1:32:233.252.0.1:32:192.0.2.2:100"
#define SYSDT_LS_SPEAKER_TEXT "[as64496][bgp-ls-identifier192.0.2.1]"
#define SYSDT_LS_NODE_TEXT SYSDT_LS_SPEAKER_TEXT "[ospf-area-id0.0.0.0]"
#define SYSDT_LS_TEXTS                                                                                                 \
    "[NODE][OSPFv2][IDENTIFIER0][LOCAL" SYSDT_LS_NODE_TEXT "[igp-router-id192.0.2.2]]\n"                               \
    "[NODE][ISIS-LEVEL-1][IDENTIFIER0][LOCAL" SYSDT_LS_NODE_TEXT "[igp-router-id0000.0000.0001.00]]\n"                 \
    "[LINK][OSPFv2][IDENTIFIER0][LOCAL" SYSDT_LS_NODE_TEXT "[igp-router-id192.0.2.2]][REMOTE" SYSDT_LS_NODE_TEXT       \
    "[igp-router-id192.0.2.3]][LINK[if-address192.0.2.4][peer-address192.0.2.5][mt-id0]]\n"                            \
    "[LINK][BGP][IDENTIFIER5][LOCAL" SYSDT_LS_SPEAKER_TEXT "[bgp-router-id192.0.2.1]][REMOTE" SYSDT_LS_SPEAKER_TEXT    \
    "[bgp-router-id192.0.2.2]][LINK[identifier0.0.0.1.0.0.0.2][local198.51.100.1][remote198.51.100.2]]\n"              \
    "[IPV4-PREFIX][OSPFv2][IDENTIFIER0][LOCAL" SYSDT_LS_NODE_TEXT                                                      \
    "[igp-router-id192.0.2.2]][PREFIX[mt-id0][ospf-route-type1][prefix192.0.2.0/24]]\n"                                \
    "[IPV6-PREFIX][OSPFv3][IDENTIFIER0][LOCAL" SYSDT_LS_NODE_TEXT                                                      \
    "[igp-router-id192.0.2.2]][PREFIX[mt-id0][ospf-route-type1][prefix2001:db8::/32]]\n"                               \
    "[TEPOLICY][SEGMENT-ROUTING][IDENTIFIER0][LOCAL" SYSDT_LS_SPEAKER_TEXT                                             \
    "[bgp-router-id192.0.2.2][ipv4-router-id192.0.2.3][ipv6-router-id2001:db8::3]]"                                    \
    "[TE[protocol-origin2][Flag128][endpoint192.0.2.9][color100][originator-as64496]"                                  \
    "[originator-address192.0.2.1][discriminator7]]\n"                                                                 \
    "[SRV6-SID][ISIS-LEVEL-2][IDENTIFIER0][LOCAL" SYSDT_LS_NODE_TEXT                                                   \
    "[igp-router-id0000.0000.0001.00]][SID[mt-id2][sid2001:db8::1]]"

/* TYPE(name, id, what it is): a 32-bit index that the host maps to a name. */
#define SYSDT_NAME_INDEX_TYPES(TYPE)                                                                                   \
    TYPE(VRFID2VRFNAME, 0x6003, "index or name of a VRF")                                                              \
    TYPE(BGPPEERGROUPID, 0x600E, "index or name of a BGP peer group")                                                  \
    TYPE(FLOWROUTEID, 0x601B, "index or name of a flow route")                                                         \
    TYPE(VRFID2CVRFNAME, 0x6052, "index or name of a client VRF")                                                      \
    TYPE(BGPID2BGPNAME, 0x605C, "index or name of a BGP instance")                                                     \
    TYPE(ALIASID2NAME, 0x606A, "index or name of an alias")                                                            \
    TYPE(SETID2SETNAME, 0x6077, "index or name of a set")                                                              \
    TYPE(PDID2PDNAME, 0x6083, "index or name of a PD")

/*
 * TYPE(name, id, base kind, size that its record declares, layout of a value in an order, what it is, grammar, texts,
 * slots), in the order of registration. Where a type names another family's callback, the sharing is meant.
 */
#define SYSDT_EXTEND_TYPES(TYPE, SLOT)                                                                                 \
    TYPE(ASNUM, 0x00FF, EXTEND, sizeof(SYSDT_AsNum), as_number_layout,                                                 \
         "AS number", "a number from 1 to 4294967295, or H.L, both up to 65535 and H not 0", "64496\n1.10",            \
         SLOT(formatIn, SYSDT_AsNumFormatIn) SLOT(formatOut, SYSDT_AsNumFormatOut) SLOT(check, SYSDT_AsNumCheck)       \
         SLOT(help, SYSDT_AsNumHelp) SLOT(compare, SYSDT_Uint32Compare) SLOT(luaSet, SYSDT_AsNumLuaSet)                \
         SLOT(luaGet, SYSDT_AsNumLuaGet) SLOT(endian, SYSDT_AsNumLuaEndian))                                           \
    TYPE(COMMUNITY, 0x0100, EXTEND, sizeof(SYSDT_Community), community_layout,                                         \
         "community",                                                                                                  \
         "A:N, both up to 65535; a number up to 4294967295; or internet, no-export, no-advertise, "                    \
         "no-export-subconfed", "64496:1\n4226809857\nno-export",                                                      \
         SLOT(formatIn, SYSDT_CommunityFormatIn) SLOT(formatOut, SYSDT_CommunityFormatOut)                             \
         SLOT(check, SYSDT_CommunityCheck) SLOT(help, SYSDT_CommunityHelp) SLOT(compare, SYSDT_CommunityCompare)       \
         SLOT(luaSet, SYSDT_CommunityLuaSet) SLOT(luaGet, SYSDT_CommunityLuaGet) SLOT(endian, SYSDT_CommunityEndian))  \
    TYPE(LARGECOMMUNITY, 0x0141, EXTEND, sizeof(SYSDT_LargeCommunity), large_community_layout,                         \
         "large community", "A:N:M, each up to 4294967295", "64496:1:2",                                               \
         SLOT(formatIn, SYSDT_LargeCommunityFormatIn) SLOT(formatOut, SYSDT_LargeCommunityFormatOut)                   \
         SLOT(check, SYSDT_LargeCommunityCheck) SLOT(help, SYSDT_LargeCommunityHelp)                                   \
         SLOT(compare, SYSDT_LargeCommunityCompare) SLOT(luaSet, SYSDT_LargeCommunityLuaSet)                           \
         SLOT(luaGet, SYSDT_LargeCommunityLuaGet) SLOT(endian, SYSDT_LargeCommunityEndian))                            \
    TYPE(EXTCOMMUNITY, 0x0101, EXTEND, sizeof(SYSDT_Octets), extended_community_layout,                                \
         "extended community", SYSDT_PAIR_GRAMMAR, SYSDT_PAIR_TEXTS,                                                   \
         SLOT(formatIn, SYSDT_ExtCommunityFormatIn) SLOT(formatOut, SYSDT_ExtCommunityFormatOut)                       \
         SLOT(check, SYSDT_ExtCommunityCheck) SLOT(help, SYSDT_ExtCommunityHelp)                                       \
         SLOT(compare, SYSDT_ExtCommunityCompare) SLOT(luaSet, SYSDT_ExtCommunityLuaSet)                               \
         SLOT(luaGet, SYSDT_ExtCommunityLuaGet) SLOT(endian, SYSDT_EXTCommunityEndian))                                \
    TYPE(BGPLSPREFIX, 0x0513, EXTEND, sizeof(SYSDT_LsPrefix), ls_layout_of(selecting_word(value, order) & 0xFF),       \
         "BGP-LS route key",                                                                                           \
         "groups in brackets: [TYPE][PROTOCOL][IDENTIFIERn][LOCAL[...]], then [REMOTE[...]][LINK[...]], "              \
         "[PREFIX[...]], [TE[...]] or [SID[...]] as the type has it", SYSDT_LS_TEXTS,                                  \
         SLOT(formatIn, SYSDT_LSPrefixFormatIn) SLOT(formatOut, SYSDT_LSPrefixFormatOut)                               \
         SLOT(check, SYSDT_LSPrefixCheck) SLOT(help, SYSDT_LSPrefixHelp) SLOT(compare, SYSDT_LSPrefixCompare)          \
         SLOT(luaSet, SYSDT_LSPrefixLuaSet) SLOT(luaGet, SYSDT_LSPrefixLuaGet) SLOT(endian, SYSDT_LSPrefixEndian))     \
    TYPE(VRFRT, 0x0102, EXTEND, sizeof(SYSDT_Octets), route_target_layout,                                             \
         "route target", SYSDT_NONZERO_PAIR_GRAMMAR, SYSDT_PAIR_TEXTS,                                                 \
         SLOT(formatIn, SYSDT_VrfRtFormatIn) SLOT(formatOut, SYSDT_VrfRtFormatOut) SLOT(check, SYSDT_VrfRtCheck)       \
         SLOT(help, SYSDT_VrfRtHelp) SLOT(compare, SYSDT_VrfRtCompare) SLOT(luaSet, SYSDT_VrfRtLuaSet)                 \
         SLOT(luaGet, SYSDT_VrfRtLuaGet) SLOT(endian, SYSDT_VrfRtEndian))                                              \
    TYPE(VRFRD, 0x0103, EXTEND, sizeof(SYSDT_Octets), route_distinguisher_layout,                                      \
         "route distinguisher", SYSDT_NONZERO_PAIR_GRAMMAR, SYSDT_PAIR_TEXTS,                                          \
         SLOT(formatIn, SYSDT_VrfRdFormatIn) SLOT(formatOut, SYSDT_VrfRdFormatOut) SLOT(check, SYSDT_VrfRdCheck)       \
         SLOT(help, SYSDT_VrfRdHelp) SLOT(compare, SYSDT_VrfRdCompare) SLOT(luaSet, SYSDT_VrfRdLuaSet)                 \
         SLOT(luaGet, SYSDT_VrfRdLuaGet) SLOT(endian, SYSDT_VrfRdEndian))                                              \
    TYPE(SOO, 0x0104, EXTEND, sizeof(SYSDT_Octets), site_of_origin_layout,                                             \
         "site of origin", SYSDT_NONZERO_PAIR_GRAMMAR, SYSDT_PAIR_TEXTS,                                               \
         SLOT(formatIn, SYSDT_SooFormatIn) SLOT(formatOut, SYSDT_SooFormatOut) SLOT(check, SYSDT_SooCheck)             \
         SLOT(help, SYSDT_SooHelp) SLOT(compare, SYSDT_SooCompare) SLOT(luaSet, SYSDT_SooLuaSet)                       \
         SLOT(luaGet, SYSDT_SooLuaGet) SLOT(endian, SYSDT_SooEndian))                                                  \
    TYPE(BOLPREFIX, 0x0117, EXTEND, sizeof(SYSDT_BolValue), bol_layout_of(selecting_word(value, order), value),        \
         "route key of any kind",                                                                                      \
         "what its kinds take: IPV4 or IPV6; an EVPN route; a route target; AS numbers and addresses of a multicast "  \
         "VPN route with \":\" between them, with \"-\" if one is IPv6; TYPE/IPV4/N; TYPE-PORT-SITE-IP; "              \
         "[N][COLOUR][IP]", "",                                                                                        \
         SLOT(formatIn, SYSDT_BolPrefixFormatIn) SLOT(formatOut, SYSDT_BolPrefixFormatOut)                             \
         SLOT(check, SYSDT_BolPrefixCheck) SLOT(help, SYSDT_BolPrefixHelp) SLOT(compare, SYSDT_BolPrefixCompare)       \
         SLOT(luaSet, SYSDT_BolPrefixLuaSet) SLOT(luaGet, SYSDT_BolPrefixLuaGet))                                      \
    TYPE(BOLRD, 0x0118, EXTEND, sizeof(SYSDT_BolRd), bol_rd_layout,                                                    \
         "route distinguisher behind its kind", SYSDT_NONZERO_PAIR_GRAMMAR, "",                                        \
         SLOT(formatIn, SYSDT_BolRdFormatIn) SLOT(formatOut, SYSDT_BolRdFormatOut) SLOT(check, SYSDT_BolRdCheck)       \
         SLOT(help, SYSDT_BolRdHelp) SLOT(compare, SYSDT_BolRdCompare) SLOT(luaSet, SYSDT_BolRdLuaSet)                 \
         SLOT(luaGet, SYSDT_BolRdLuaGet))                                                                              \
    TYPE(VPNV4MCPREFIX, 0x0127, EXTEND, sizeof(SYSDT_Vpnv4Mcast), vpnv4_mcast_layout_of(value),                        \
         "VPNv4 multicast route key", "IPV4/LENGTH, the length up to 32", "192.0.2.0/24",                              \
         SLOT(formatIn, SYSDT_VPNV4MCASTPrefixFormatIn) SLOT(formatOut, SYSDT_VPNV4MCASTPrefixFormatOut)               \
         SLOT(check, SYSDT_VPNV4MCASTPrefixCheck) SLOT(help, SYSDT_VPNV4MCASTPrefixHelp)                               \
         SLOT(compare, SYSDT_VPNV4MCASTPrefixCompare) SLOT(luaSet, SYSDT_VPNV4MCASTPrefixLuaSet)                       \
         SLOT(luaGet, SYSDT_VPNV4MCASTPrefixLuaGet) SLOT(endian, SYSDT_VPNV4MCASTLuaEndian))                           \
    TYPE(MDTPREFIX, 0x0128, EXTEND, sizeof(SYSDT_Mdt), mdt_layout_of(value),                                           \
         "multicast distribution tree route key", "IPV4/LENGTH, the length up to 32", "192.0.2.0/24",                  \
         SLOT(formatIn, SYSDT_MdtPrefixFormatIn) SLOT(formatOut, SYSDT_MdtPrefixFormatOut)                             \
         SLOT(check, SYSDT_MdtPrefixCheck) SLOT(help, SYSDT_MdtPrefixHelp) SLOT(compare, SYSDT_MdtPrefixCompare)       \
         SLOT(luaSet, SYSDT_MdtPrefixLuaSet) SLOT(luaGet, SYSDT_MdtPrefixLuaGet) SLOT(endian, SYSDT_MdtLuaEndian))     \
    TYPE(L2VPNPREFIX, 0x0126, EXTEND, 2 * sizeof(uint16_t), bol_l2vpn_layout,                                          \
         "L2VPN route key", "", "",                                                                                    \
         SLOT(formatIn, SYSDT_L2VPNPrefixFormatIn) SLOT(formatOut, SYSDT_L2VPNPrefixFormatOut)                         \
         SLOT(check, SYSDT_VplsAdPrefixCheck) SLOT(help, SYSDT_VplsAdPrefixHelp)                                       \
         SLOT(compare, SYSDT_VplsAdPrefixCompare) SLOT(luaSet, SYSDT_L2VPNPrefixLuaSet)                                \
         SLOT(luaGet, SYSDT_L2VPNPrefixLuaGet))                                                                        \
    TYPE(TIME_RANGE, 0x011C, BINARY, sizeof(SYSDT_TimeRange), time_range_layout,                                       \
         "duration", "days, hours, minutes and seconds, all named: up to 10000d23h59m59s, in 8 to 15 characters",      \
         "1d2h3m4s",                                                                                                   \
         SLOT(formatIn, SYSDT_TimeRangeFormatIn) SLOT(help, SYSDT_TimeRangeHelp) SLOT(luaSet, SYSDT_TimeRangeLuaSet)   \
         SLOT(luaGet, SYSDT_TimeRangeLuaGet))                                                                          \
    TYPE(ASNUMEXT, 0x011D, EXTEND, sizeof(SYSDT_AsNum), as_number_layout,                                              \
         "AS number or 0", "a number from 0 to 4294967295, or H.L, both up to 65535 and H not 0", "0\n64496\n1.10",    \
         SLOT(formatIn, SYSDT_AsNumExtFormatIn) SLOT(formatOut, SYSDT_AsNumExtFormatOut)                               \
         SLOT(check, SYSDT_AsNumExtCheck) SLOT(help, SYSDT_AsNumHelp) SLOT(compare, SYSDT_Uint32Compare)               \
         SLOT(luaSet, SYSDT_AsNumLuaSet) SLOT(luaGet, SYSDT_AsNumLuaGet) SLOT(endian, SYSDT_AsNumLuaEndian))           \
    TYPE(ATTRIDBITMAP, 0x0122, EXTEND, sizeof(SYSDT_AttrIdBitmap), attr_bitmap_layout,                                 \
         "set of attribute identifiers", "", "",                                                                       \
         SLOT(formatOut, SYSDT_AttrIdBitmapFormatOut) SLOT(check, SYSDT_AttrIdBitmapCheck)                             \
         SLOT(help, SYSDT_AttrIdBitmapHelp) SLOT(compare, SYSDT_AttrIdBitmapCompare)                                   \
         SLOT(luaSet, SYSDT_AttrIdBitmapLuaSet) SLOT(luaGet, SYSDT_AttrIdBitmapLuaGet)                                 \
         SLOT(endian, SYSDT_AttrIdBitmapEndian))                                                                       \
    TYPE(CVRFNAME, 0x0124, STRING, SYSDT_CVRF_NAME_SIZE, client_vrf_layout_of(value),                                  \
         "client VRF name", "a name of up to 31 characters", "vpn1",                                                   \
         SLOT(formatIn, SYSDT_StringFormatIn) SLOT(formatOut, SYS_DT_APPCVRFNAME_FormatOut)                            \
         SLOT(help, SYSDT_StringHelp) SLOT(compare, SYSDT_StringCompare) SLOT(luaSet, SYSDT_StringLuaSet)              \
         SLOT(luaGet, SYSDT_StringLuaGet))                                                                             \
    TYPE(VPNID, 0x012F, EXTEND, sizeof(SYSDT_VpnId), vpn_id_layout,                                                    \
         "global VPN identifier in hexadecimal",                                                                       \
         "X:X, hexadecimal in small letters, up to ffffff and up to ffffffff; 0:0 is refused", "5e:1f",                \
         SLOT(formatIn, SYSDT_VpnIdFormatIn) SLOT(formatOut, SYSDT_VpnIdFormatOut) SLOT(check, SYSDT_VpnIdCheck)       \
         SLOT(help, SYSDT_VpnIdHelp) SLOT(compare, SYSDT_VpnIdCompare) SLOT(luaSet, SYSDT_VpnIdLuaSet)                 \
         SLOT(luaGet, SYSDT_VpnIdLuaGet) SLOT(endian, SYSDT_VpnIdEndian))                                              \
    TYPE(VRFRTV6, 0x0140, EXTEND, sizeof(SYSDT_VrfRtV6), ipv6_route_target_layout,                                     \
         "IPv6 route target", "IPV6.N, N being 0 or 1", "2001:db8::1.1",                                               \
         SLOT(formatIn, SYSDT_VrfRtV6FormatIn) SLOT(formatOut, SYSDT_VrfRtV6FormatOut) SLOT(check, SYSDT_VrfRtV6Check) \
         SLOT(help, SYSDT_VrfRtV6Help) SLOT(compare, SYSDT_VrfRtV6Compare) SLOT(luaSet, SYSDT_VrfRtV6LuaSet)           \
         SLOT(luaGet, SYSDT_VrfRtV6LuaGet) SLOT(endian, SYSDT_VrfRtV6Endian))                                          \
    TYPE(ASNUM_ENHANCE, 0x0145, EXTEND, sizeof(SYSDT_AsNumList), as_list_layout,                                       \
         "list of up to 256 AS numbers", "1 to 256 AS numbers as ASNUM takes them, blanks between them", "64496 1.10", \
         SLOT(formatIn, SYSDT_AsNumEnhanceFormatIn) SLOT(formatOut, SYSDT_AsNumEnhanceFormatOut)                       \
         SLOT(check, SYSDT_AsNumEnhanceCheck) SLOT(help, SYSDT_AsNumEnhanceHelp) SLOT(compare, SYSDT_BlockCompare)     \
         SLOT(luaSet, SYSDT_AsNumEnLuaSet) SLOT(luaGet, SYSDT_AsNumEnLuaGet)                                           \
         SLOT(endian, SYSDT_AsNumEnhanceLuaEndian))                                                                    \
    TYPE(CMNTY_ENHANCE, 0x0146, EXTEND, sizeof(SYSDT_CommunityList), community_list_layout,                            \
         "list of up to 32 communities", "1 to 32 communities as COMMUNITY takes them, blanks between them",           \
         "64496:1 4226809857 no-export",                                                                               \
         SLOT(formatIn, SYSDT_CMNTYEnhanceFormatIn) SLOT(formatOut, SYSDT_CMNTYEnhanceFormatOut)                       \
         SLOT(check, SYSDT_CMNTYEnhanceCheck) SLOT(help, SYSDT_CMNTYEnhanceHelp) SLOT(compare, SYSDT_BlockCompare)     \
         SLOT(luaSet, SYSDT_CmntyEnLuaSet) SLOT(luaGet, SYSDT_CmntyEnLuaGet)                                           \
         SLOT(endian, SYSDT_CmntyEnhanceLuaEndian))                                                                    \
    TYPE(RTPRD, 0x0116, EXTEND, sizeof(SYSDT_RtpRd), rtp_rd_layout,                                                    \
         "route distinguisher, any number of it", SYSDT_PAIR_GRAMMAR "; * for N is any number",                        \
         SYSDT_PAIR_TEXTS "\n" SYSDT_ANY_PAIR_TEXTS,                                                                   \
         SLOT(formatIn, SYSDT_RtpRdFormatIn) SLOT(formatOut, SYSDT_RtpRdFormatOut) SLOT(check, SYSDT_RtpRdCheck)       \
         SLOT(help, SYSDT_RtpRdHelp) SLOT(compare, SYSDT_RtpRdCompare) SLOT(luaSet, SYSDT_RtpRdLuaSet)                 \
         SLOT(luaGet, SYSDT_RtpRdLuaGet))                                                                              \
    TYPE(SID_STRUCTURE, 0x0148, EXTEND, sizeof(SYSDT_SidStructure), sid_structure_layout,                              \
         "structure of an SRv6 SID", "", "",                                                                           \
         SLOT(formatOut, SYSDT_PrefixSidStructureFormatOut) SLOT(luaSet, SYSDT_PrefixSidStructureLuaSet))              \
    TYPE(EVNPREFIX, 0x0119, EXTEND, sizeof(SYSDT_EvpnKey), evpn_layout_of(value),                                      \
         "EVPN route key",                                                                                             \
         "the parts of a route, colons between them: ESI:TAG; TAG:LENGTH:MAC:LENGTH:IP; TAG:LENGTH:IP; "               \
         "ESI:LENGTH:IP; ESI; TAG:IP:LENGTH; the three addresses of a multicast route, a LENGTH in front of each. "    \
         "IPv6 addresses stand in brackets, an ESI is five groups of hexadecimal digits, a MAC three",                 \
         SYSDT_EVPN_TEXTS,                                                                                             \
         SLOT(formatIn, SYSDT_EVNPrefixFormatIn) SLOT(formatOut, SYSDT_EVNPrefixFormatOut)                             \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_EVNPrefixLuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                      \
    TYPE(EXTCOMMUNITY_BW, 0x0149, EXTEND, sizeof(SYSDT_ExtCommunityBw), bandwidth_community_layout,                    \
         "link bandwidth community", "", "",                                                                           \
         SLOT(formatOut, SYSDT_ExtCommunityBwFormatOut) SLOT(check, SYSDT_ExtCommunityBwCheck)                         \
         SLOT(help, SYSDT_ExtCommunityBwHelp) SLOT(compare, SYSDT_ExtCommunityBwCompare)                               \
         SLOT(luaSet, SYSDT_ExtCommunityBwLuaSet) SLOT(luaGet, SYSDT_ExtCommunityBwLuaGet)                             \
         SLOT(endian, SYSDT_EXTCommunityBwEndian))

/*
 * ROW(kind, name, layout of a value, reader of its script table, what it is, texts, slots): what stands behind a route
 * key's sub-kind word, which is the number of its row. RFC 6514 has the route types of multicast VPNs.
 */
#define SYSDT_BOL_ROWS(ROW, SLOT)                                                                                      \
    ROW(IPV4, "IPV4", bol_ipv4_layout, SYSDT_VplsAdPrefixNewLuaGet,                                                    \
         "originating router by its IPv4 address: VPLS auto-discovery, multicast VPN type 1", "192.0.2.1",             \
         SLOT(formatIn, SYSDT_VplsAdPrefixFormatIn) SLOT(formatOut, SYSDT_VplsAdPrefixFormatOut)                       \
         SLOT(check, SYSDT_VplsAdPrefixCheck) SLOT(help, SYSDT_VplsAdPrefixHelp)                                       \
         SLOT(compare, SYSDT_VplsAdPrefixCompare) SLOT(luaSet, SYSDT_VplsAdPrefixLuaSet)                               \
         SLOT(luaGet, SYSDT_VplsAdPrefixLuaGet))                                                                       \
    ROW(EVN, "EVN", evpn_layout_of(value), SYSDT_EVNPrefixNewLuaGet,                                                   \
         "EVPN route", SYSDT_EVPN_TEXTS,                                                                               \
         SLOT(formatIn, SYSDT_EVNPrefixFormatIn) SLOT(formatOut, SYSDT_EVNPrefixFormatOut)                             \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_EVNPrefixLuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                      \
    ROW(NG_TYPE_2, "NG_TYPE_2", bol_ng2_layout, SYSDT_NGPrefix2NewLuaGet,                                              \
         "multicast VPN type 2, inter-AS: AS number", "64496\n1.10",                                                   \
         SLOT(formatIn, SYSDT_NGPrefixFormatIn) SLOT(formatOut, SYSDT_NGPrefixFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_NGPrefix2LuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                      \
    ROW(NG_TYPE_3, "NG_TYPE_3", bol_ng3_layout, SYSDT_NGPrefix3NewLuaGet,                                              \
         "multicast VPN type 3, selective tunnel: source, group, originator",                                          \
         "192.0.2.1:233.252.0.1:192.0.2.9\n2001:db8::1-ff0e::db8:0:1-2001:db8::9",                                     \
         SLOT(formatIn, SYSDT_NGPrefixFormatIn) SLOT(formatOut, SYSDT_NGPrefixFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_NGPrefix3LuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                      \
    ROW(NG_TYPE_4_2, "NG_TYPE_4_2", bol_ng42_layout, SYSDT_NGPrefix42NewLuaGet,                                        \
         "multicast VPN type 4, leaf of a type 2: AS number, originator", "64496:192.0.2.1\n64496-2001:db8::1",        \
         SLOT(formatIn, SYSDT_NGPrefixFormatIn) SLOT(formatOut, SYSDT_NGPrefixFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_NGPrefix42LuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                     \
    ROW(NG_TYPE_4_3, "NG_TYPE_4-3", bol_ng43_layout, SYSDT_NGPrefix43NewLuaGet,                                        \
         "multicast VPN type 4, leaf of a type 3: source, group, originators",                                         \
         "192.0.2.1:233.252.0.1:192.0.2.9:192.0.2.10\n2001:db8::1-ff0e::db8:0:1-2001:db8::9-2001:db8::a",              \
         SLOT(formatIn, SYSDT_NGPrefixFormatIn) SLOT(formatOut, SYSDT_NGPrefixFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_NGPrefix43LuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                     \
    ROW(NG_TYPE_5, "NG_TYPE_5", bol_ng5_layout, SYSDT_NGPrefix5NewLuaGet,                                              \
         "multicast VPN type 5, active source: source, group", "192.0.2.1:233.252.0.1\n2001:db8::1-ff0e::db8:0:1",     \
         SLOT(formatIn, SYSDT_NGPrefixFormatIn) SLOT(formatOut, SYSDT_NGPrefixFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_NGPrefix5LuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                      \
    ROW(NG_TYPE_6, "NG_TYPE_6", bol_ng6_layout, SYSDT_NGPrefix6NewLuaGet,                                              \
         "multicast VPN types 6 and 7, join of a shared or source tree: AS number, source, group",                     \
         "64496:192.0.2.1:233.252.0.1\n64496-2001:db8::1-ff0e::db8:0:1",                                               \
         SLOT(formatIn, SYSDT_NGPrefixFormatIn) SLOT(formatOut, SYSDT_NGPrefixFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_NGPrefix6LuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                      \
    ROW(VRFRTEXT, "VRFRTEXT", bol_route_target_layout, SSYSDT_VrfRtExtNewLuaGet,                                       \
         "route target", SYSDT_PAIR_TEXTS "\naabb-ccdd-eeff",                                                          \
         SLOT(formatIn, SYSDT_VrfRtExtFormatIn) SLOT(formatOut, SYSDT_VrfRtExtFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_VrfRtHelp) SLOT(compare, SYSDT_VrfRtCompare)               \
         SLOT(luaSet, SYSDT_VrfRtExtLuaSet) SLOT(luaGet, SYSDT_VrfRtExtLuaGet))                                        \
    ROW(L2VPN, "L2VPN", bol_l2vpn_layout, SYSDT_L2VPNPrefixNewLuaGet,                                                  \
         "L2VPN route: site, label offset", "",                                                                        \
         SLOT(formatOut, SYSDT_L2VPNPrefixFormatOut) SLOT(check, SYSDT_VplsAdPrefixCheck)                              \
         SLOT(help, SYSDT_VplsAdPrefixHelp) SLOT(compare, SYSDT_VplsAdPrefixCompare)                                   \
         SLOT(luaSet, SYSDT_L2VPNPrefixLuaSet) SLOT(luaGet, SYSDT_L2VPNPrefixLuaGet))                                  \
    ROW(VPNV4MCAST, "VPNV4MCAST", bol_vpnv4_mcast_layout, SYSDT_VPNV4MCASTPrefixNewLuaGet,                             \
         "VPNv4 multicast route: prefix", "",                                                                          \
         SLOT(formatOut, SYSDT_VPNV4MCASTPrefixFormatOut) SLOT(check, SYSDT_VPNV4MCASTPrefixCheck)                     \
         SLOT(help, SYSDT_VPNV4MCASTPrefixHelp) SLOT(compare, SYSDT_VPNV4MCASTPrefixCompare)                           \
         SLOT(luaSet, SYSDT_VPNV4MCASTPrefixLuaSet) SLOT(luaGet, SYSDT_VPNV4MCASTPrefixLuaGet))                        \
    ROW(MDT, "MDT", bol_mdt_layout, SYSDT_MdtPrefixNewLuaGet,                                                          \
         "multicast distribution tree: prefix, group", "",                                                             \
         SLOT(formatOut, SYSDT_MdtPrefixFormatOut) SLOT(check, SYSDT_MdtPrefixCheck) SLOT(help, SYSDT_MdtPrefixHelp)   \
         SLOT(compare, SYSDT_MdtPrefixCompare) SLOT(luaSet, SYSDT_MdtPrefixLuaSet)                                     \
         SLOT(luaGet, SYSDT_MdtPrefixLuaGet))                                                                          \
    ROW(RPD, "RPD", bol_rpd_layout, SYSDT_RpdPrefixNewLuaGet,                                                          \
         "route policy distribution: policy type, peer, distinguisher", "1/192.0.2.1/100",                             \
         SLOT(formatIn, SYSDT_RpdPrefixFormatIn) SLOT(formatOut, SYSDT_RpdPrefixFormatOut)                             \
         SLOT(check, SYSDT_RpdPrefixCheck) SLOT(help, SYSDT_RpdPrefixHelp) SLOT(compare, SYSDT_RpdPrefixCompare)       \
         SLOT(luaSet, SYSDT_RpdPrefixLuaSet) SLOT(luaGet, SYSDT_RpdPrefixLuaGet))                                      \
    ROW(NG_TYPE_4_1, "NG_TYPE_4-1", bol_ng41_layout, SYSDT_NGPrefix41NewLuaGet,                                        \
         "multicast VPN type 4, leaf of a type 1: originators", "192.0.2.1:192.0.2.2\n2001:db8::1-2001:db8::2",        \
         SLOT(formatIn, SYSDT_NGPrefixFormatIn) SLOT(formatOut, SYSDT_NGPrefixFormatOut)                               \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_NGPrefix41LuaSet) SLOT(luaGet, SYSDT_EVNPrefixLuaGet))                                     \
    ROW(SRPOLICY, "SRPOLICY", bol_sr_policy_layout, SYSDT_SrPolicyPrefixNewLuaGet,                                     \
         "SR policy: distinguisher, colour, endpoint", "[1][2][192.0.2.1]\n[1][2][2001:db8::1]",                       \
         SLOT(formatIn, SYSDT_SrPolicyPrefixFormatIn) SLOT(formatOut, SYSDT_SrPolicyPrefixFormatOut)                   \
         SLOT(check, SYSDT_SrPolicyPrefixCheck) SLOT(help, SYSDT_SrPolicyPrefixHelp)                                   \
         SLOT(compare, SYSDT_SrPolicyPrefixCompare) SLOT(luaSet, SYSDT_SrPolicyPrefixLuaSet))                          \
    ROW(IPV6, "IPV6", bol_ipv6_layout, SYSDT_Ipv6BolPrefixNewLuaGet,                                                   \
         "originating router by its IPv6 address: multicast VPN type 1", "2001:db8::1",                                \
         SLOT(formatIn, SYSDT_Ipv6BolPrefixFormatIn) SLOT(formatOut, SYSDT_Ipv6BolPrefixFormatOut)                     \
         SLOT(check, SYSDT_EVNPrefixCheck) SLOT(help, SYSDT_EVNPrefixHelp) SLOT(compare, SYSDT_EVNPrefixCompare)       \
         SLOT(luaSet, SYSDT_Ipv6BolPrefixLuaSet))                                                                      \
    ROW(SDWAN, "SD-WAN", bol_sdwan_layout, SYSDT_SdwanPrefixNewLuaGet,                                                 \
         "SD-WAN route: route type, port, site, node", "1-2-3-192.0.2.1\n1-2-3-2001:db8::1",                           \
         SLOT(formatIn, SYSDT_SdwanPrefixFormatIn) SLOT(formatOut, SYSDT_SdwanPrefixFormatOut)                         \
         SLOT(check, SYSDT_SdwanPrefixCheck) SLOT(help, SYSDT_SdwanPrefixHelp) SLOT(compare, SYSDT_SdwanPrefixCompare) \
         SLOT(luaSet, SYSDT_SdwanPrefixLuaSet))

/* ROW(kind, name, what it is, texts, slots): what stands behind BOLRD's, likewise. */
#define SYSDT_BOLRD_ROWS(ROW, SLOT)                                                                                    \
    ROW(RT, "RT", "VPLS route distinguisher", SYSDT_PAIR_TEXTS,                                                        \
         SLOT(formatIn, SYSDT_VplsRDFormatIn) SLOT(formatOut, SYSDT_VplsRDFormatOut) SLOT(check, SYSDT_VplsRDCheck)    \
         SLOT(help, SYSDT_VplsRDHelp) SLOT(compare, SYSDT_VplsRDCompare) SLOT(luaSet, SYSDT_VplsRDLuaSet)              \
         SLOT(luaGet, SYSDT_VplsRDLuaGet))

/* clang-format on */

#ifdef __cplusplus
#define SYSDT_ENUM(name) enum name : uint32_t
#else
#define SYSDT_ENUM(name) enum name
#endif

#define SYSDT_TYPE_OF_ROW(name, id, ...) SYSDT_TYPE_##name = (id),
#define SYSDT_BOL_OF_ROW(kind, ...) SYSDT_BOL_##kind,
#define SYSDT_BOLRD_OF_ROW(kind, ...) SYSDT_BOLRD_##kind,
#define SYSDT_ONE_MORE(...) +1 /* NOLINT(bugprone-macro-parentheses): a summand */

/** SYSDT_TYPE_VRFRD and its like. */
SYSDT_ENUM(SYSDT_TypeId){SYSDT_NAME_INDEX_TYPES(SYSDT_TYPE_OF_ROW) SYSDT_EXTEND_TYPES(SYSDT_TYPE_OF_ROW, )};
/** SYSDT_BOL_EVN and its like. */
SYSDT_ENUM(SYSDT_BolKind){SYSDT_BOL_ROWS(SYSDT_BOL_OF_ROW, ) SYSDT_BOL_KINDS};
SYSDT_ENUM(SYSDT_BolRdKind){SYSDT_BOLRD_ROWS(SYSDT_BOLRD_OF_ROW, ) SYSDT_BOLRD_KINDS};
SYSDT_ENUM(SYSDT_TypeCount){
    SYSDT_NAME_INDEX_TYPE_COUNT = SYSDT_NAME_INDEX_TYPES(SYSDT_ONE_MORE),
    SYSDT_EXTEND_TYPE_COUNT = SYSDT_EXTEND_TYPES(SYSDT_ONE_MORE, ),
};

#undef SYSDT_TYPE_OF_ROW
#undef SYSDT_BOL_OF_ROW
#undef SYSDT_BOLRD_OF_ROW
#undef SYSDT_ONE_MORE

/* ------------------------------------------------------------------------------------------------ AS number */

#define SYSDT_AS_PLAIN 0u  /**< asplain: one decimal number. */
#define SYSDT_AS_DOTTED 1u /**< asdot+: high and low 16 bits as two decimal numbers. */

/** An AS number (RFC 6793) and the notation (RFC 5396) that it was written in. 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_AsNum {
    uint32_t asNumValue; /**< 0 is no AS number. */
    uint32_t asType;     /**< SYSDT_AS_PLAIN, or anything else for SYSDT_AS_DOTTED. */
} SYSDT_AsNum;

/** One AS number of a list. 5 bytes. */
typedef struct SYSDT_PACKED SYSDT_AsNumEntry {
    uint32_t asNumValue; /**< 0 marks an unused entry. */
    uint8_t asType;      /**< As in SYSDT_AsNum. */
} SYSDT_AsNumEntry;

#define SYSDT_AS_LIST_ENTRIES 256

/** AS numbers in the order of the text; the rest is zero. 1280 bytes. */
typedef struct SYSDT_PACKED SYSDT_AsNumList {
    SYSDT_AsNumEntry entry[SYSDT_AS_LIST_ENTRIES];
} SYSDT_AsNumList;

/* ------------------------------------------------------------------------------------------------ communities */

#define SYSDT_COMMUNITY_NUMBER 0u /**< A plain number, or a well-known community. */
#define SYSDT_COMMUNITY_PAIR 1u   /**< aa:nn, two 16-bit numbers. */
#define SYSDT_COMMUNITY_EMPTY 2u  /**< An unused entry of a list. */

/** A community (RFC 1997) and the notation that it was written in. 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_Community {
    uint32_t community;
    uint32_t type; /**< SYSDT_COMMUNITY_NUMBER, _PAIR or _EMPTY. */
} SYSDT_Community;

/** One community of a list. 5 bytes. */
typedef struct SYSDT_PACKED SYSDT_CommunityEntry {
    uint32_t community;
    uint8_t type; /**< As in SYSDT_Community. */
} SYSDT_CommunityEntry;

#define SYSDT_COMMUNITY_LIST_ENTRIES 32

/** Communities in the order of the text; the rest is SYSDT_COMMUNITY_EMPTY. 160 bytes. */
typedef struct SYSDT_PACKED SYSDT_CommunityList {
    SYSDT_CommunityEntry entry[SYSDT_COMMUNITY_LIST_ENTRIES];
} SYSDT_CommunityList;

/** A large community (RFC 8092). 16 bytes. */
typedef struct SYSDT_PACKED SYSDT_LargeCommunity {
    uint32_t largeCommunity[3]; /**< Global administrator, local data 1, local data 2. */
    uint32_t type;              /**< 0 after parsing. */
} SYSDT_LargeCommunity;

/* How a route distinguisher, a route target or an extended community was written. */
#define VRF_RD_FORM_IPV4 0u   /**< IPv4 address and number: 192.0.2.1:100 */
#define VRF_RD_FORM_AS2 1u    /**< 2-octet AS number and number: 64496:100 */
#define VRF_RD_FORM_AS4 2u    /**< 4-octet AS number and number: 65536:100 */
#define VRF_RD_FORM_AS4DOT 3u /**< Dotted 4-octet AS number and number: 1.0:100 */

/** An extended community (RFC 4360) or a route distinguisher (RFC 4364), and the form it was written in. 12 bytes. */
typedef struct SYSDT_PACKED SYSDT_Octets {
    uint8_t octets[8]; /**< Two octets of type, six of value, network order. */
    uint32_t form;     /**< VRF_RD_FORM_..., host order. */
} SYSDT_Octets;

/** A link-bandwidth extended community as numbers. 12 bytes. */
typedef struct SYSDT_PACKED SYSDT_ExtCommunityBw {
    uint16_t bitMask; /**< Type and sub-type. */
    uint16_t asnNn;   /**< AS number; AS_TRANS (RFC 6793) stands for one of four octets. */
    uint64_t bandwidth;
} SYSDT_ExtCommunityBw;

/* ------------------------------------------------------------------------------------------------ VPN identifiers */

/** An IPv6-address-specific route target (RFC 5701). 24 bytes. */
typedef struct SYSDT_PACKED SYSDT_VrfRtV6 {
    uint8_t octets[20]; /**< Code (2), IPv6 address (16), local number (2), network order. */
    uint32_t type;      /**< 0 after parsing, host order. */
} SYSDT_VrfRtV6;

/* How an RTP route distinguisher was written: the VRF_RD_FORM_... of the same form, plus one. */
#define RTP_RD_FORM_IPV4 1u
#define RTP_RD_FORM_AS2 2u
#define RTP_RD_FORM_AS4 3u
#define RTP_RD_FORM_AS4DOT 4u

/** A route distinguisher (RFC 4364) whose assigned number may be a wildcard. 10 bytes. */
typedef struct SYSDT_PACKED SYSDT_RtpRd {
    uint8_t octets[8]; /**< Type (2) and value (6), network order; the number is 0 behind a wildcard. */
    uint8_t form;      /**< RTP_RD_FORM_... */
    uint8_t star;      /**< 1: the number is the wildcard. */
} SYSDT_RtpRd;

/** A global VPN identifier (RFC 2685). 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_VpnId {
    uint32_t oui;   /**< Organizationally unique identifier, at most 0xFFFFFF. */
    uint32_t index; /**< VPN index. */
} SYSDT_VpnId;

/** A route distinguisher behind a sub-kind word. 16 bytes. */
typedef struct SYSDT_PACKED SYSDT_BolRd {
    uint32_t subKind; /**< 0. */
    SYSDT_Octets rd;
} SYSDT_BolRd;

/* ------------------------------------------------------------------------------------------------ route keys */

#define SYSDT_BOL_SIZE 89

/** A route key of any kind. Bytes that a kind does not use are zero. 89 bytes, as all that follow. */
typedef struct SYSDT_PACKED SYSDT_BolValue {
    uint32_t subKind; /**< SYSDT_BOL_... */
    uint8_t key[SYSDT_BOL_SIZE - 4];
} SYSDT_BolValue;

/** An IP address in a key of EVPN (RFC 7432) or of multicast VPN (RFC 6514). 21 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnAddress {
    uint32_t ipv4;    /**< Family 0, first octet in the top byte; else 0. */
    uint8_t ipv6[16]; /**< Family 1, network order; else 0. */
    uint8_t family;   /**< 0: IPv4, 1: IPv6. */
} SYSDT_EvpnAddress;

typedef struct SYSDT_PACKED SYSDT_BolIpv4 {
    uint32_t subKind;
    uint32_t address; /**< First octet in the top byte. */
    uint8_t zero[SYSDT_BOL_SIZE - 8];
} SYSDT_BolIpv4;

typedef struct SYSDT_PACKED SYSDT_BolIpv6 {
    uint32_t subKind;
    uint8_t address[16]; /**< Network order. */
    uint8_t zero[SYSDT_BOL_SIZE - 20];
} SYSDT_BolIpv6;

/* The route types of EVPN: RFC 7432, section 7; RFC 9136, section 3; RFC 9251, section 9. */
#define SYSDT_EVPN_AUTO_DISCOVERY 1u /**< Ethernet auto-discovery. */
#define SYSDT_EVPN_MAC_IP 2u         /**< MAC/IP advertisement. */
#define SYSDT_EVPN_INCLUSIVE 3u      /**< Inclusive multicast Ethernet tag. */
#define SYSDT_EVPN_SEGMENT 4u        /**< Ethernet segment. */
#define SYSDT_EVPN_IP_PREFIX 5u      /**< IP prefix. */
#define SYSDT_EVPN_SELECTIVE 6u      /**< Selective multicast Ethernet tag. */
#define SYSDT_EVPN_JOIN 7u           /**< Multicast membership report (join) synchronisation. */
#define SYSDT_EVPN_LEAVE 8u          /**< Multicast leave synchronisation. */

/** An address behind its length in bits. 22 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnSizedAddress {
    uint8_t length;
    SYSDT_EvpnAddress address;
} SYSDT_EvpnSizedAddress;

typedef struct SYSDT_PACKED SYSDT_EvpnAutoDiscovery {
    uint8_t esi[10]; /**< Ethernet segment identifier, network order. */
    uint32_t tag;    /**< Ethernet tag. */
} SYSDT_EvpnAutoDiscovery;

typedef struct SYSDT_PACKED SYSDT_EvpnMacIp {
    uint32_t tag;
    uint8_t macLength; /**< In bits. */
    uint8_t mac[6];    /**< Network order. */
    SYSDT_EvpnSizedAddress ip;
} SYSDT_EvpnMacIp;

/** The route types 3, with the originator's address, and 5, with the prefix. */
typedef struct SYSDT_PACKED SYSDT_EvpnTaggedAddress {
    uint32_t tag;
    SYSDT_EvpnSizedAddress ip;
} SYSDT_EvpnTaggedAddress;

typedef struct SYSDT_PACKED SYSDT_EvpnSegment {
    uint8_t esi[10];
    SYSDT_EvpnSizedAddress ip; /**< The originator. */
} SYSDT_EvpnSegment;

/** Who wants which multicast flow. 70 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnMembership {
    uint32_t tag;
    SYSDT_EvpnSizedAddress source;
    SYSDT_EvpnSizedAddress group;
    SYSDT_EvpnSizedAddress originator;
} SYSDT_EvpnMembership;

/** The route types 7 and 8. */
typedef struct SYSDT_PACKED SYSDT_EvpnSync {
    uint8_t esi[10];
    SYSDT_EvpnMembership membership;
    uint32_t sequence; /**< Route type 8: leave group synchronisation number. */
} SYSDT_EvpnSync;

/** The key of an EVPN route. 85 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnKey {
    uint8_t routeType; /**< SYSDT_EVPN_... */
    union {
        uint8_t bytes[SYSDT_BOL_SIZE - 5];
        SYSDT_EvpnAutoDiscovery autoDiscovery;
        SYSDT_EvpnMacIp macIp;
        SYSDT_EvpnTaggedAddress inclusive;
        SYSDT_EvpnSegment segment;
        SYSDT_EvpnTaggedAddress prefix;
        SYSDT_EvpnMembership selective;
        SYSDT_EvpnSync sync;
    };
} SYSDT_EvpnKey;

typedef struct SYSDT_PACKED SYSDT_BolEvpn {
    uint32_t subKind;
    SYSDT_EvpnKey key;
} SYSDT_BolEvpn;

/** A route target (RFC 4360), or one made of six written octets. */
typedef struct SYSDT_PACKED SYSDT_BolRouteTarget {
    uint32_t subKind;
    SYSDT_Octets rt;
    uint8_t zero[SYSDT_BOL_SIZE - 16];
} SYSDT_BolRouteTarget;

/** A VPLS block (RFC 4761). */
typedef struct SYSDT_PACKED SYSDT_BolL2Vpn {
    uint32_t subKind;
    uint16_t siteId;
    uint16_t labelOffset;
    uint8_t zero[SYSDT_BOL_SIZE - 8];
} SYSDT_BolL2Vpn;

/* The multicast-VPN keys (RFC 6514), by row. */

typedef struct SYSDT_PACKED SYSDT_BolNg2 {
    uint32_t subKind;
    SYSDT_AsNum as;
    uint8_t zero[SYSDT_BOL_SIZE - 12];
} SYSDT_BolNg2;

typedef struct SYSDT_PACKED SYSDT_BolNg3 {
    uint32_t subKind;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    SYSDT_EvpnAddress originator;
    uint8_t zero[SYSDT_BOL_SIZE - 67];
} SYSDT_BolNg3;

typedef struct SYSDT_PACKED SYSDT_BolNg42 {
    uint32_t subKind;
    SYSDT_AsNum as;
    SYSDT_EvpnAddress originator;
    uint8_t zero[SYSDT_BOL_SIZE - 33];
} SYSDT_BolNg42;

typedef struct SYSDT_PACKED SYSDT_BolNg43 {
    uint32_t subKind;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    SYSDT_EvpnAddress originator1;
    SYSDT_EvpnAddress originator2;
    uint8_t zero[SYSDT_BOL_SIZE - 88];
} SYSDT_BolNg43;

typedef struct SYSDT_PACKED SYSDT_BolNg5 {
    uint32_t subKind;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    uint8_t zero[SYSDT_BOL_SIZE - 46];
} SYSDT_BolNg5;

typedef struct SYSDT_PACKED SYSDT_BolNg6 {
    uint32_t subKind;
    SYSDT_AsNum as;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    uint8_t zero[SYSDT_BOL_SIZE - 54];
} SYSDT_BolNg6;

typedef struct SYSDT_PACKED SYSDT_BolNg41 {
    uint32_t subKind;
    SYSDT_EvpnAddress originator1;
    SYSDT_EvpnAddress originator2;
    uint8_t zero[SYSDT_BOL_SIZE - 46];
} SYSDT_BolNg41;

/** What Endian of the VPNv4 multicast prefix swaps. 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_Vpnv4Mcast {
    uint32_t prefix;     /**< IPv4 address, first octet in the top byte. */
    uint32_t maskLength; /**< 0 to 32. */
} SYSDT_Vpnv4Mcast;

typedef struct SYSDT_PACKED SYSDT_BolVpnv4Mcast {
    uint32_t subKind;
    SYSDT_Vpnv4Mcast prefix;
    uint8_t zero[SYSDT_BOL_SIZE - 12];
} SYSDT_BolVpnv4Mcast;

/** What Endian of the MDT prefix swaps. 12 bytes. */
typedef struct SYSDT_PACKED SYSDT_Mdt {
    uint32_t prefix;     /**< IPv4 address, first octet in the top byte. */
    uint32_t group;      /**< IPv4 multicast address, likewise. */
    uint32_t maskLength; /**< 0 to 32. */
} SYSDT_Mdt;

/** A multicast distribution tree (RFC 6037). */
typedef struct SYSDT_PACKED SYSDT_BolMdt {
    uint32_t subKind;
    SYSDT_Mdt prefix;
    uint8_t zero[SYSDT_BOL_SIZE - 16];
} SYSDT_BolMdt;

/** The key of a route-policy-distribution route. 27 bytes. */
typedef struct SYSDT_PACKED SYSDT_Rpd {
    uint8_t policyType; /**< 0 or 1. */
    uint8_t zero;
    uint32_t distinguisher;
    uint32_t peer; /**< IPv4 address, first octet in the top byte. */
    uint8_t rest[17];
} SYSDT_Rpd;

typedef struct SYSDT_PACKED SYSDT_BolRpd {
    uint32_t subKind;
    SYSDT_Rpd key;
    uint8_t zero[SYSDT_BOL_SIZE - 31];
} SYSDT_BolRpd;

/** The key of a segment routing policy (RFC 9256). 29 bytes. */
typedef struct SYSDT_PACKED SYSDT_SrPolicy {
    uint32_t distinguisher;
    uint32_t colour;
    uint32_t ipv4;    /**< Endpoint, first octet in the top byte. */
    uint8_t ipv6[16]; /**< Endpoint, network order. */
    uint8_t family;   /**< 0: the endpoint is IPv4; anything else: IPv6. */
} SYSDT_SrPolicy;

typedef struct SYSDT_PACKED SYSDT_BolSrPolicy {
    uint32_t subKind;
    SYSDT_SrPolicy key;
    uint8_t zero[SYSDT_BOL_SIZE - 33];
} SYSDT_BolSrPolicy;

/** The key of an SD-WAN route. 33 bytes. */
typedef struct SYSDT_PACKED SYSDT_Sdwan {
    uint16_t routeType;
    uint16_t zero;
    uint32_t portLocalId;
    uint32_t siteId;
    uint32_t ipv4;    /**< Node, first octet in the top byte. */
    uint8_t ipv6[16]; /**< Node, network order. */
    uint8_t family;   /**< 0: the node is IPv4; anything else: IPv6. */
} SYSDT_Sdwan;

typedef struct SYSDT_PACKED SYSDT_BolSdwan {
    uint32_t subKind;
    SYSDT_Sdwan key;
    uint8_t zero[SYSDT_BOL_SIZE - 37];
} SYSDT_BolSdwan;

/* ------------------------------------------------------------------------------------------------ BGP-LS keys */

/* What a BGP-LS key describes: its route type. */
#define SYSDT_LS_NODE 1u
#define SYSDT_LS_LINK 2u
#define SYSDT_LS_IPV4_PREFIX 3u
#define SYSDT_LS_IPV6_PREFIX 4u
#define SYSDT_LS_TE_POLICY 5u
#define SYSDT_LS_SRV6_SID 6u
#define SYSDT_LS_ROUTE_TYPES 7 /**< 0 included, which describes nothing. */

/* Where the object was learnt: the protocol identifiers (RFC 9552). */
#define SYSDT_LS_ISIS_LEVEL_1 1u
#define SYSDT_LS_ISIS_LEVEL_2 2u
#define SYSDT_LS_OSPFV2 3u
#define SYSDT_LS_DIRECT 4u
#define SYSDT_LS_STATIC 5u
#define SYSDT_LS_OSPFV3 6u
#define SYSDT_LS_BGP 7u
#define SYSDT_LS_SEGMENT_ROUTING 9u

#define SYSDT_LS_NO_MT_ID 0xFFFFFFFFu /**< In place of a multi-topology identifier: none was given. */
#define SYSDT_LS_ROUTER_ID_SIZE 50
#define SYSDT_LS_SIZE 224

/** An IP address of a TE policy. 21 bytes. */
typedef struct SYSDT_PACKED LsIpAddr {
    uint32_t ipv4;    /**< First octet in the top byte. */
    uint8_t ipv6[16]; /**< Network order. */
    uint8_t family;   /**< 0: IPv4, 1: IPv6. */
} LsIpAddr;

/** What every key begins with. 16 bytes. */
typedef struct SYSDT_PACKED SYSDT_LsHead {
    uint32_t routeType;  /**< SYSDT_LS_NODE ... SYSDT_LS_SRV6_SID. */
    uint32_t protocolId; /**< SYSDT_LS_ISIS_LEVEL_1 ... SYSDT_LS_SEGMENT_ROUTING. */
    uint64_t identifier; /**< The routing universe or the instance. */
} SYSDT_LsHead;

/**
 * A node (RFC 9552). Its router identifier is, network order and padded with zeros: for IS-IS the system identifier
 * (6) and the pseudonode (1), for OSPF the router identifier (4) and of a pseudonode the designated router's interface
 * (4). 66 bytes.
 */
typedef struct SYSDT_PACKED SYSDT_LsNodeDesc {
    SYSDT_AsNum as;    /**< Number 0: none. */
    uint32_t bgpLsId;  /**< BGP-LS identifier, written as an IPv4 address. */
    uint32_t ospfArea; /**< Likewise. */
    uint8_t igpRouterId[SYSDT_LS_ROUTER_ID_SIZE];
} SYSDT_LsNodeDesc;

/** A node that may be a BGP speaker's, with a member AS (RFC 9086). 74 bytes. */
typedef struct SYSDT_PACKED SYSDT_LsMemberNodeDesc {
    SYSDT_AsNum as;
    uint32_t bgpLsId;
    SYSDT_AsNum memberAs; /**< Number 0: none. */
    uint32_t ospfArea;
    uint8_t igpRouterId[SYSDT_LS_ROUTER_ID_SIZE];
} SYSDT_LsMemberNodeDesc;

typedef struct SYSDT_PACKED SYSDT_LsNode {
    SYSDT_LsHead head;
    SYSDT_LsNodeDesc local;
} SYSDT_LsNode;

typedef struct SYSDT_PACKED SYSDT_LsLink {
    SYSDT_LsHead head;
    SYSDT_LsMemberNodeDesc local;
    SYSDT_LsMemberNodeDesc remote;
    uint32_t linkLocalId; /**< Link identifiers, written as IPv4 addresses. */
    uint32_t linkRemoteId;
    uint32_t ipv4Interface;
    uint32_t ipv4Neighbor;
    uint8_t ipv6Interface[16];
    uint8_t ipv6Neighbor[16];
    uint32_t mtId; /**< Multi-topology identifier, or SYSDT_LS_NO_MT_ID. */
    uint32_t localBgpRouterId;
    uint32_t remoteBgpRouterId;
} SYSDT_LsLink;

typedef struct SYSDT_PACKED SYSDT_LsIpv4Prefix {
    SYSDT_LsHead head;
    SYSDT_LsNodeDesc local;
    uint32_t mtId;
    uint32_t ospfRouteType;
    uint32_t prefix;
    uint8_t prefixLength;
} SYSDT_LsIpv4Prefix;

typedef struct SYSDT_PACKED SYSDT_LsIpv6Prefix {
    SYSDT_LsHead head;
    SYSDT_LsNodeDesc local;
    uint32_t mtId;
    uint32_t ospfRouteType;
    uint8_t prefix[16];
    uint8_t prefixLength;
} SYSDT_LsIpv6Prefix;

/** An SR policy candidate path (RFC 9857). */
typedef struct SYSDT_PACKED SYSDT_LsTePolicy {
    SYSDT_LsHead head;
    SYSDT_AsNum as;
    uint32_t bgpLsId;
    uint32_t bgpRouterId;
    uint32_t ipv4RouterId; /**< TE router identifiers of the head end. */
    uint8_t ipv6RouterId[16];
    uint8_t protocolOrigin;
    uint8_t flags;
    LsIpAddr endpoint;
    uint32_t color;
    SYSDT_AsNum originatorAs;
    LsIpAddr originatorAddress;
    uint32_t discriminator;
} SYSDT_LsTePolicy;

/** An SRv6 SID (RFC 9514). */
typedef struct SYSDT_PACKED SYSDT_LsSrv6Sid {
    SYSDT_LsHead head;
    SYSDT_LsMemberNodeDesc local;
    uint32_t mtId;
    uint8_t sid[16];
    uint32_t bgpRouterId;
} SYSDT_LsSrv6Sid;

/** The key of a BGP-LS object (RFC 9552): the route type tells which member holds it, and the rest is zero. */
typedef union SYSDT_LsPrefix {
    uint8_t bytes[SYSDT_LS_SIZE];
    SYSDT_LsHead head;
    SYSDT_LsNode node;
    SYSDT_LsLink link;
    SYSDT_LsIpv4Prefix ipv4Prefix;
    SYSDT_LsIpv6Prefix ipv6Prefix;
    SYSDT_LsTePolicy tePolicy;
    SYSDT_LsSrv6Sid srv6Sid;
} SYSDT_LsPrefix;

/* ------------------------------------------------------------------------------------------------ attributes */

/** A duration. 4 bytes. */
typedef struct SYSDT_PACKED SYSDT_TimeRange {
    uint32_t seconds;
} SYSDT_TimeRange;

/** A set of attribute identifiers: identifier n is bit n mod 8, the least significant first, of byte n div 8. */
typedef struct SYSDT_PACKED SYSDT_AttrIdBitmap {
    uint8_t bits[32];
} SYSDT_AttrIdBitmap;

#define SYSDT_CVRF_NAME_SIZE 32

/** A client VRF as its name is displayed. 40 bytes; the value itself is the name alone. */
typedef struct SYSDT_PACKED SYSDT_CVrfName {
    char name[SYSDT_CVRF_NAME_SIZE]; /**< NUL-terminated unless it fills the field; empty: no name. */
    uint32_t number;
    uint32_t hasNumber; /**< 1: the number counts. */
} SYSDT_CVrfName;

/** The structure of an SRv6 SID (RFC 9252): the fields of its sub-sub-TLV. 7 bytes. */
typedef struct SYSDT_PACKED SYSDT_SidStructure {
    uint8_t field[6]; /**< Lengths of locator block, locator node, function, argument; transposition length, offset. */
    uint8_t exists;   /**< 1: there is a structure. */
} SYSDT_SidStructure;

#ifdef __cplusplus
static_assert(sizeof(SYSDT_AsNum) == 8 && offsetof(SYSDT_AsNum, asType) == 4);
static_assert(sizeof(SYSDT_AsNumList) == 1280 && offsetof(SYSDT_AsNumEntry, asType) == 4);
static_assert(sizeof(SYSDT_Community) == 8 && offsetof(SYSDT_Community, type) == 4);
static_assert(sizeof(SYSDT_CommunityList) == 160 && offsetof(SYSDT_CommunityEntry, type) == 4);
static_assert(sizeof(SYSDT_LargeCommunity) == 16 && offsetof(SYSDT_LargeCommunity, type) == 12);
static_assert(sizeof(SYSDT_Octets) == 12 && offsetof(SYSDT_Octets, form) == 8);
static_assert(sizeof(SYSDT_ExtCommunityBw) == 12 && offsetof(SYSDT_ExtCommunityBw, bandwidth) == 4);
static_assert(sizeof(SYSDT_VrfRtV6) == 24 && offsetof(SYSDT_VrfRtV6, type) == 20);
static_assert(sizeof(SYSDT_RtpRd) == 10 && offsetof(SYSDT_RtpRd, form) == 8);
static_assert(sizeof(SYSDT_VpnId) == 8 && offsetof(SYSDT_VpnId, index) == 4);
static_assert(sizeof(SYSDT_BolRd) == 16 && offsetof(SYSDT_BolRd, rd) == 4);
static_assert(sizeof(SYSDT_BolNg2) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolNg3) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolNg42) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolNg43) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolNg5) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolNg6) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolNg41) == SYSDT_BOL_SIZE);
static_assert(sizeof(SYSDT_EvpnAddress) == 21 && offsetof(SYSDT_EvpnAddress, family) == 20);
static_assert(sizeof(SYSDT_BolEvpn) == SYSDT_BOL_SIZE && offsetof(SYSDT_BolEvpn, key.autoDiscovery.esi) == 5 &&
              offsetof(SYSDT_BolEvpn, key.autoDiscovery.tag) == 15 &&
              offsetof(SYSDT_BolEvpn, key.macIp.ip.address) == 17 &&
              offsetof(SYSDT_BolEvpn, key.inclusive.ip.address) == 10 &&
              offsetof(SYSDT_BolEvpn, key.segment.ip.address) == 16 &&
              offsetof(SYSDT_BolEvpn, key.selective.originator.address) == 54 &&
              offsetof(SYSDT_BolEvpn, key.sync.membership.tag) == 15 &&
              offsetof(SYSDT_BolEvpn, key.sync.sequence) == 85);
static_assert(sizeof(SYSDT_BolValue) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolIpv4) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolIpv6) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolRouteTarget) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolL2Vpn) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolVpnv4Mcast) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolMdt) == SYSDT_BOL_SIZE);
static_assert(sizeof(SYSDT_TimeRange) == 4 && sizeof(SYSDT_AttrIdBitmap) == 32 && sizeof(SYSDT_SidStructure) == 7);
static_assert(sizeof(SYSDT_CVrfName) == 40 && offsetof(SYSDT_CVrfName, hasNumber) == 36);
static_assert(sizeof(SYSDT_BolRpd) == SYSDT_BOL_SIZE && sizeof(SYSDT_Rpd) == 27 && offsetof(SYSDT_Rpd, peer) == 6);
static_assert(sizeof(SYSDT_BolSrPolicy) == SYSDT_BOL_SIZE && sizeof(SYSDT_SrPolicy) == 29 &&
              offsetof(SYSDT_SrPolicy, family) == 28);
static_assert(sizeof(SYSDT_BolSdwan) == SYSDT_BOL_SIZE && sizeof(SYSDT_Sdwan) == 33 &&
              offsetof(SYSDT_Sdwan, portLocalId) == 4 && offsetof(SYSDT_Sdwan, family) == 32);
static_assert(sizeof(LsIpAddr) == 21 && offsetof(LsIpAddr, ipv6) == 4 && offsetof(LsIpAddr, family) == 20);
static_assert(sizeof(SYSDT_LsNodeDesc) == 66 && sizeof(SYSDT_LsMemberNodeDesc) == 74);
static_assert(sizeof(SYSDT_LsPrefix) == SYSDT_LS_SIZE && alignof(SYSDT_LsPrefix) == 1);
static_assert(offsetof(SYSDT_LsHead, protocolId) == 4 && offsetof(SYSDT_LsHead, identifier) == 8);
static_assert(offsetof(SYSDT_LsNode, local.as) == 16 && offsetof(SYSDT_LsNode, local.bgpLsId) == 24 &&
              offsetof(SYSDT_LsNode, local.ospfArea) == 28 && offsetof(SYSDT_LsNode, local.igpRouterId) == 32 &&
              sizeof(SYSDT_LsNode) == 82);
static_assert(offsetof(SYSDT_LsLink, local.as) == 16 && offsetof(SYSDT_LsLink, local.bgpLsId) == 24 &&
              offsetof(SYSDT_LsLink, local.memberAs) == 28 && offsetof(SYSDT_LsLink, local.ospfArea) == 36 &&
              offsetof(SYSDT_LsLink, local.igpRouterId) == 40 && offsetof(SYSDT_LsLink, remote.as) == 90 &&
              offsetof(SYSDT_LsLink, remote.bgpLsId) == 98 && offsetof(SYSDT_LsLink, remote.memberAs) == 102 &&
              offsetof(SYSDT_LsLink, remote.ospfArea) == 110 && offsetof(SYSDT_LsLink, remote.igpRouterId) == 114);
static_assert(offsetof(SYSDT_LsLink, linkLocalId) == 164 && offsetof(SYSDT_LsLink, linkRemoteId) == 168 &&
              offsetof(SYSDT_LsLink, ipv4Interface) == 172 && offsetof(SYSDT_LsLink, ipv4Neighbor) == 176 &&
              offsetof(SYSDT_LsLink, ipv6Interface) == 180 && offsetof(SYSDT_LsLink, ipv6Neighbor) == 196 &&
              offsetof(SYSDT_LsLink, mtId) == 212 && offsetof(SYSDT_LsLink, localBgpRouterId) == 216 &&
              offsetof(SYSDT_LsLink, remoteBgpRouterId) == 220);
static_assert(offsetof(SYSDT_LsIpv4Prefix, local) == offsetof(SYSDT_LsNode, local) &&
              offsetof(SYSDT_LsIpv4Prefix, mtId) == 82 && offsetof(SYSDT_LsIpv4Prefix, ospfRouteType) == 86 &&
              offsetof(SYSDT_LsIpv4Prefix, prefix) == 90 && offsetof(SYSDT_LsIpv4Prefix, prefixLength) == 94);
static_assert(offsetof(SYSDT_LsIpv6Prefix, local) == offsetof(SYSDT_LsNode, local) &&
              offsetof(SYSDT_LsIpv6Prefix, mtId) == 82 && offsetof(SYSDT_LsIpv6Prefix, ospfRouteType) == 86 &&
              offsetof(SYSDT_LsIpv6Prefix, prefix) == 90 && offsetof(SYSDT_LsIpv6Prefix, prefixLength) == 106);
static_assert(offsetof(SYSDT_LsTePolicy, as) == 16 && offsetof(SYSDT_LsTePolicy, bgpLsId) == 24 &&
              offsetof(SYSDT_LsTePolicy, bgpRouterId) == 28 && offsetof(SYSDT_LsTePolicy, ipv4RouterId) == 32 &&
              offsetof(SYSDT_LsTePolicy, ipv6RouterId) == 36 && offsetof(SYSDT_LsTePolicy, protocolOrigin) == 52 &&
              offsetof(SYSDT_LsTePolicy, flags) == 53 && offsetof(SYSDT_LsTePolicy, endpoint) == 54 &&
              offsetof(SYSDT_LsTePolicy, color) == 75 && offsetof(SYSDT_LsTePolicy, originatorAs) == 79 &&
              offsetof(SYSDT_LsTePolicy, originatorAddress) == 87 && offsetof(SYSDT_LsTePolicy, discriminator) == 108);
static_assert(offsetof(SYSDT_LsSrv6Sid, local) == offsetof(SYSDT_LsLink, local) &&
              offsetof(SYSDT_LsSrv6Sid, mtId) == 90 && offsetof(SYSDT_LsSrv6Sid, sid) == 94 &&
              offsetof(SYSDT_LsSrv6Sid, bgpRouterId) == 110);
#endif
