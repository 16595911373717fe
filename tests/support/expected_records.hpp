// SPDX-License-Identifier: Apache-2.0
/// @file
/// Every record that the plug-in registers, in order.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "bgp_datatype/host.h"

namespace bgpdt::test {

/// A record; of each callback the exported name, null for an empty slot.
struct ExpectedRecord {
    struct {
        std::uint16_t type_id;
        std::uint16_t length;
        std::uint16_t kind;
        std::string_view name;
    } head;
    /// FormatIn, FormatOut, Check, Help, Compare, LuaSet, LuaGet, Endian.
    std::array<const char *, 8> callbacks;
};

namespace expected {

inline constexpr std::uint16_t binary = SYSDT_KIND_BINARY;
inline constexpr std::uint16_t string = SYSDT_KIND_STRING;
inline constexpr std::uint16_t extend = SYSDT_KIND_EXTEND;
inline constexpr const char *none = nullptr;

constexpr ExpectedRecord name_index(std::uint16_t type_id, std::string_view name)
{
    return {{type_id, 4, binary, name},
            {"SYS_DT_UINT32IndexFormatIn", "SYS_DT_IndexFormatOut", none, none, "SYSDT_Uint32Compare",
             "SYSDT_Uint32LuaSet", "SYSDT_Uint32LuaGet", none}};
}

inline constexpr std::array<ExpectedRecord, 8> name_index_records{
    name_index(0x6003, "VRFID2VRFNAME"),  name_index(0x600E, "BGPPEERGROUPID"), name_index(0x601B, "FLOWROUTEID"),
    name_index(0x6052, "VRFID2CVRFNAME"), name_index(0x605C, "BGPID2BGPNAME"),  name_index(0x606A, "ALIASID2NAME"),
    name_index(0x6077, "SETID2SETNAME"),  name_index(0x6083, "PDID2PDNAME"),
};

inline constexpr std::array<ExpectedRecord, 25> extended_records{{
    {{0x00FF, 8, extend, "ASNUM"},
     {"SYSDT_AsNumFormatIn", "SYSDT_AsNumFormatOut", "SYSDT_AsNumCheck", "SYSDT_AsNumHelp", "SYSDT_Uint32Compare",
      "SYSDT_AsNumLuaSet", "SYSDT_AsNumLuaGet", "SYSDT_AsNumLuaEndian"}},
    {{0x0100, 8, extend, "COMMUNITY"},
     {"SYSDT_CommunityFormatIn", "SYSDT_CommunityFormatOut", "SYSDT_CommunityCheck", "SYSDT_CommunityHelp",
      "SYSDT_CommunityCompare", "SYSDT_CommunityLuaSet", "SYSDT_CommunityLuaGet", "SYSDT_CommunityEndian"}},
    {{0x0141, 16, extend, "LARGECOMMUNITY"},
     {"SYSDT_LargeCommunityFormatIn", "SYSDT_LargeCommunityFormatOut", "SYSDT_LargeCommunityCheck",
      "SYSDT_LargeCommunityHelp", "SYSDT_LargeCommunityCompare", "SYSDT_LargeCommunityLuaSet",
      "SYSDT_LargeCommunityLuaGet", "SYSDT_LargeCommunityEndian"}},
    {{0x0101, 12, extend, "EXTCOMMUNITY"},
     {"SYSDT_ExtCommunityFormatIn", "SYSDT_ExtCommunityFormatOut", "SYSDT_ExtCommunityCheck", "SYSDT_ExtCommunityHelp",
      "SYSDT_ExtCommunityCompare", "SYSDT_ExtCommunityLuaSet", "SYSDT_ExtCommunityLuaGet", "SYSDT_EXTCommunityEndian"}},
    {{0x0513, 224, extend, "BGPLSPREFIX"},
     {"SYSDT_LSPrefixFormatIn", "SYSDT_LSPrefixFormatOut", "SYSDT_LSPrefixCheck", "SYSDT_LSPrefixHelp",
      "SYSDT_LSPrefixCompare", "SYSDT_LSPrefixLuaSet", "SYSDT_LSPrefixLuaGet", "SYSDT_LSPrefixEndian"}},
    {{0x0102, 12, extend, "VRFRT"},
     {"SYSDT_VrfRtFormatIn", "SYSDT_VrfRtFormatOut", "SYSDT_VrfRtCheck", "SYSDT_VrfRtHelp", "SYSDT_VrfRtCompare",
      "SYSDT_VrfRtLuaSet", "SYSDT_VrfRtLuaGet", "SYSDT_VrfRtEndian"}},
    {{0x0103, 12, extend, "VRFRD"},
     {"SYSDT_VrfRdFormatIn", "SYSDT_VrfRdFormatOut", "SYSDT_VrfRdCheck", "SYSDT_VrfRdHelp", "SYSDT_VrfRdCompare",
      "SYSDT_VrfRdLuaSet", "SYSDT_VrfRdLuaGet", "SYSDT_VrfRdEndian"}},
    {{0x0104, 12, extend, "SOO"},
     {"SYSDT_SooFormatIn", "SYSDT_SooFormatOut", "SYSDT_SooCheck", "SYSDT_SooHelp", "SYSDT_SooCompare",
      "SYSDT_SooLuaSet", "SYSDT_SooLuaGet", "SYSDT_SooEndian"}},
    {{0x0117, 89, extend, "BOLPREFIX"},
     {"SYSDT_BolPrefixFormatIn", "SYSDT_BolPrefixFormatOut", "SYSDT_BolPrefixCheck", "SYSDT_BolPrefixHelp",
      "SYSDT_BolPrefixCompare", "SYSDT_BolPrefixLuaSet", "SYSDT_BolPrefixLuaGet", none}},
    {{0x0118, 16, extend, "BOLRD"},
     {"SYSDT_BolRdFormatIn", "SYSDT_BolRdFormatOut", "SYSDT_BolRdCheck", "SYSDT_BolRdHelp", "SYSDT_BolRdCompare",
      "SYSDT_BolRdLuaSet", "SYSDT_BolRdLuaGet", none}},
    {{0x0127, 8, extend, "VPNV4MCPREFIX"},
     {"SYSDT_VPNV4MCASTPrefixFormatIn", "SYSDT_VPNV4MCASTPrefixFormatOut", "SYSDT_VPNV4MCASTPrefixCheck",
      "SYSDT_VPNV4MCASTPrefixHelp", "SYSDT_VPNV4MCASTPrefixCompare", "SYSDT_VPNV4MCASTPrefixLuaSet",
      "SYSDT_VPNV4MCASTPrefixLuaGet", "SYSDT_VPNV4MCASTLuaEndian"}},
    {{0x0128, 12, extend, "MDTPREFIX"},
     {"SYSDT_MdtPrefixFormatIn", "SYSDT_MdtPrefixFormatOut", "SYSDT_MdtPrefixCheck", "SYSDT_MdtPrefixHelp",
      "SYSDT_MdtPrefixCompare", "SYSDT_MdtPrefixLuaSet", "SYSDT_MdtPrefixLuaGet", "SYSDT_MdtLuaEndian"}},
    {{0x0126, 4, extend, "L2VPNPREFIX"},
     {"SYSDT_L2VPNPrefixFormatIn", "SYSDT_L2VPNPrefixFormatOut", "SYSDT_VplsAdPrefixCheck", "SYSDT_VplsAdPrefixHelp",
      "SYSDT_VplsAdPrefixCompare", "SYSDT_L2VPNPrefixLuaSet", "SYSDT_L2VPNPrefixLuaGet", none}},
    {{0x011C, 4, binary, "TIME_RANGE"},
     {"SYSDT_TimeRangeFormatIn", none, none, "SYSDT_TimeRangeHelp", none, "SYSDT_TimeRangeLuaSet",
      "SYSDT_TimeRangeLuaGet", none}},
    {{0x011D, 8, extend, "ASNUMEXT"},
     {"SYSDT_AsNumExtFormatIn", "SYSDT_AsNumExtFormatOut", "SYSDT_AsNumExtCheck", "SYSDT_AsNumHelp",
      "SYSDT_Uint32Compare", "SYSDT_AsNumLuaSet", "SYSDT_AsNumLuaGet", "SYSDT_AsNumLuaEndian"}},
    {{0x0122, 32, extend, "ATTRIDBITMAP"},
     {none, "SYSDT_AttrIdBitmapFormatOut", "SYSDT_AttrIdBitmapCheck", "SYSDT_AttrIdBitmapHelp",
      "SYSDT_AttrIdBitmapCompare", "SYSDT_AttrIdBitmapLuaSet", "SYSDT_AttrIdBitmapLuaGet", "SYSDT_AttrIdBitmapEndian"}},
    {{0x0124, 32, string, "CVRFNAME"},
     {"SYSDT_StringFormatIn", "SYS_DT_APPCVRFNAME_FormatOut", none, "SYSDT_StringHelp", "SYSDT_StringCompare",
      "SYSDT_StringLuaSet", "SYSDT_StringLuaGet", none}},
    {{0x012F, 8, extend, "VPNID"},
     {"SYSDT_VpnIdFormatIn", "SYSDT_VpnIdFormatOut", "SYSDT_VpnIdCheck", "SYSDT_VpnIdHelp", "SYSDT_VpnIdCompare",
      "SYSDT_VpnIdLuaSet", "SYSDT_VpnIdLuaGet", "SYSDT_VpnIdEndian"}},
    {{0x0140, 24, extend, "VRFRTV6"},
     {"SYSDT_VrfRtV6FormatIn", "SYSDT_VrfRtV6FormatOut", "SYSDT_VrfRtV6Check", "SYSDT_VrfRtV6Help",
      "SYSDT_VrfRtV6Compare", "SYSDT_VrfRtV6LuaSet", "SYSDT_VrfRtV6LuaGet", "SYSDT_VrfRtV6Endian"}},
    {{0x0145, 1280, extend, "ASNUM_ENHANCE"},
     {"SYSDT_AsNumEnhanceFormatIn", "SYSDT_AsNumEnhanceFormatOut", "SYSDT_AsNumEnhanceCheck", "SYSDT_AsNumEnhanceHelp",
      "SYSDT_BlockCompare", "SYSDT_AsNumEnLuaSet", "SYSDT_AsNumEnLuaGet", "SYSDT_AsNumEnhanceLuaEndian"}},
    {{0x0146, 160, extend, "CMNTY_ENHANCE"},
     {"SYSDT_CMNTYEnhanceFormatIn", "SYSDT_CMNTYEnhanceFormatOut", "SYSDT_CMNTYEnhanceCheck", "SYSDT_CMNTYEnhanceHelp",
      "SYSDT_BlockCompare", "SYSDT_CmntyEnLuaSet", "SYSDT_CmntyEnLuaGet", "SYSDT_CmntyEnhanceLuaEndian"}},
    {{0x0116, 10, extend, "RTPRD"},
     {"SYSDT_RtpRdFormatIn", "SYSDT_RtpRdFormatOut", "SYSDT_RtpRdCheck", "SYSDT_RtpRdHelp", "SYSDT_RtpRdCompare",
      "SYSDT_RtpRdLuaSet", "SYSDT_RtpRdLuaGet", none}},
    {{0x0148, 7, extend, "SID_STRUCTURE"},
     {none, "SYSDT_PrefixSidStructureFormatOut", none, none, none, "SYSDT_PrefixSidStructureLuaSet", none, none}},
    {{0x0119, 85, extend, "EVNPREFIX"},
     {"SYSDT_EVNPrefixFormatIn", "SYSDT_EVNPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_EVNPrefixLuaSet", "SYSDT_EVNPrefixLuaGet", none}},
    {{0x0149, 12, extend, "EXTCOMMUNITY_BW"},
     {none, "SYSDT_ExtCommunityBwFormatOut", "SYSDT_ExtCommunityBwCheck", "SYSDT_ExtCommunityBwHelp",
      "SYSDT_ExtCommunityBwCompare", "SYSDT_ExtCommunityBwLuaSet", "SYSDT_ExtCommunityBwLuaGet",
      "SYSDT_EXTCommunityBwEndian"}},
}};

} // namespace expected

} // namespace bgpdt::test
