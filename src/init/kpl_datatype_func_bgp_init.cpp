// SPDX-License-Identifier: Apache-2.0
/// @file
/// Registration: the records of all types in the order in which the host receives them, and the module's entry.
#include <algorithm>
#include <span>

#include "bgp_datatype/bgp_datatype.h"
#include "common/print.hpp"

using namespace bgpdt;

namespace {

/// A 32-bit index that the host maps to a name: every callback is the host's.
template <std::size_t Size>
constexpr SYSDT_Record name_index(u16 type_id, const char (&name)[Size])
{
    SYSDT_Record record{.typeId = type_id,
                        .dataLength = sizeof(u32),
                        .baseKind = SYSDT_KIND_BINARY,
                        .name = {},
                        .formatIn = SYS_DT_UINT32IndexFormatIn,
                        .formatOut = SYS_DT_IndexFormatOut,
                        .check = nullptr,
                        .help = nullptr,
                        .compare = SYSDT_Uint32Compare,
                        .reserved = nullptr,
                        .luaSet = SYSDT_Uint32LuaSet,
                        .luaGet = SYSDT_Uint32LuaGet,
                        .endian = nullptr};
    std::copy_n(name, Size, record.name);
    return record;
}

constexpr char source_name[] = "kpl_datatype_func_bgp_init";

/// Offers every record to the host; one that it rejects is reported, and the next is offered.
template <FixedString Message>
void register_types(u32 handle, std::span<const SYSDT_Record> records, u32 line)
{
    for (const SYSDT_Record &record : records) {
        const u32 status = SYS_Drm_RegisterDataType(handle, &record);
        if (status == SYSDT_OK)
            continue;
        char message[128];
        Writer out(message, sizeof message);
        print<Message>(out, status);
        out.finish();
        KPL_Assert(source_name, line, message);
    }
}

} // namespace

constinit const SYSDT_Record g_astBgpDataTypeNameIndexDefineTbl[SYSDT_NAME_INDEX_TYPE_COUNT] = {
    name_index(0x6003, "VRFID2VRFNAME"),  name_index(0x600E, "BGPPEERGROUPID"), name_index(0x601B, "FLOWROUTEID"),
    name_index(0x6052, "VRFID2CVRFNAME"), name_index(0x605C, "BGPID2BGPNAME"),  name_index(0x606A, "ALIASID2NAME"),
    name_index(0x6077, "SETID2SETNAME"),  name_index(0x6083, "PDID2PDNAME"),
};

// Where a type names another family's callback, the sharing is meant. The sixth slot is reserved.
constinit const SYSDT_Record g_astBgpDataTypeExtendDefineTbl[SYSDT_EXTEND_TYPE_COUNT] = {
    {SYSDT_TYPE_ASNUM, 8, SYSDT_KIND_EXTEND, "ASNUM", SYSDT_AsNumFormatIn, SYSDT_AsNumFormatOut, SYSDT_AsNumCheck,
     SYSDT_AsNumHelp, SYSDT_Uint32Compare, nullptr, SYSDT_AsNumLuaSet, SYSDT_AsNumLuaGet, SYSDT_AsNumLuaEndian},
    {SYSDT_TYPE_COMMUNITY, 8, SYSDT_KIND_EXTEND, "COMMUNITY", SYSDT_CommunityFormatIn, SYSDT_CommunityFormatOut,
     SYSDT_CommunityCheck, SYSDT_CommunityHelp, SYSDT_CommunityCompare, nullptr, SYSDT_CommunityLuaSet,
     SYSDT_CommunityLuaGet, SYSDT_CommunityEndian},
    {SYSDT_TYPE_LARGECOMMUNITY, 16, SYSDT_KIND_EXTEND, "LARGECOMMUNITY", SYSDT_LargeCommunityFormatIn,
     SYSDT_LargeCommunityFormatOut, SYSDT_LargeCommunityCheck, SYSDT_LargeCommunityHelp, SYSDT_LargeCommunityCompare,
     nullptr, SYSDT_LargeCommunityLuaSet, SYSDT_LargeCommunityLuaGet, SYSDT_LargeCommunityEndian},
    {SYSDT_TYPE_EXTCOMMUNITY, 12, SYSDT_KIND_EXTEND, "EXTCOMMUNITY", SYSDT_ExtCommunityFormatIn,
     SYSDT_ExtCommunityFormatOut, SYSDT_ExtCommunityCheck, SYSDT_ExtCommunityHelp, SYSDT_ExtCommunityCompare, nullptr,
     SYSDT_ExtCommunityLuaSet, SYSDT_ExtCommunityLuaGet, SYSDT_EXTCommunityEndian},
    {SYSDT_TYPE_BGPLSPREFIX, 224, SYSDT_KIND_EXTEND, "BGPLSPREFIX", SYSDT_LSPrefixFormatIn, SYSDT_LSPrefixFormatOut,
     SYSDT_LSPrefixCheck, SYSDT_LSPrefixHelp, SYSDT_LSPrefixCompare, nullptr, SYSDT_LSPrefixLuaSet,
     SYSDT_LSPrefixLuaGet, SYSDT_LSPrefixEndian},
    {SYSDT_TYPE_VRFRT, 12, SYSDT_KIND_EXTEND, "VRFRT", SYSDT_VrfRtFormatIn, SYSDT_VrfRtFormatOut, SYSDT_VrfRtCheck,
     SYSDT_VrfRtHelp, SYSDT_VrfRtCompare, nullptr, SYSDT_VrfRtLuaSet, SYSDT_VrfRtLuaGet, SYSDT_VrfRtEndian},
    {SYSDT_TYPE_VRFRD, 12, SYSDT_KIND_EXTEND, "VRFRD", SYSDT_VrfRdFormatIn, SYSDT_VrfRdFormatOut, SYSDT_VrfRdCheck,
     SYSDT_VrfRdHelp, SYSDT_VrfRdCompare, nullptr, SYSDT_VrfRdLuaSet, SYSDT_VrfRdLuaGet, SYSDT_VrfRdEndian},
    {SYSDT_TYPE_SOO, 12, SYSDT_KIND_EXTEND, "SOO", SYSDT_SooFormatIn, SYSDT_SooFormatOut, SYSDT_SooCheck, SYSDT_SooHelp,
     SYSDT_SooCompare, nullptr, SYSDT_SooLuaSet, SYSDT_SooLuaGet, SYSDT_SooEndian},
    {SYSDT_TYPE_BOLPREFIX, 89, SYSDT_KIND_EXTEND, "BOLPREFIX", SYSDT_BolPrefixFormatIn, SYSDT_BolPrefixFormatOut,
     SYSDT_BolPrefixCheck, SYSDT_BolPrefixHelp, SYSDT_BolPrefixCompare, nullptr, SYSDT_BolPrefixLuaSet,
     SYSDT_BolPrefixLuaGet, nullptr},
    {SYSDT_TYPE_BOLRD, 16, SYSDT_KIND_EXTEND, "BOLRD", SYSDT_BolRdFormatIn, SYSDT_BolRdFormatOut, SYSDT_BolRdCheck,
     SYSDT_BolRdHelp, SYSDT_BolRdCompare, nullptr, SYSDT_BolRdLuaSet, SYSDT_BolRdLuaGet, nullptr},
    {SYSDT_TYPE_VPNV4MCPREFIX, 8, SYSDT_KIND_EXTEND, "VPNV4MCPREFIX", SYSDT_VPNV4MCASTPrefixFormatIn,
     SYSDT_VPNV4MCASTPrefixFormatOut, SYSDT_VPNV4MCASTPrefixCheck, SYSDT_VPNV4MCASTPrefixHelp,
     SYSDT_VPNV4MCASTPrefixCompare, nullptr, SYSDT_VPNV4MCASTPrefixLuaSet, SYSDT_VPNV4MCASTPrefixLuaGet,
     SYSDT_VPNV4MCASTLuaEndian},
    {SYSDT_TYPE_MDTPREFIX, 12, SYSDT_KIND_EXTEND, "MDTPREFIX", SYSDT_MdtPrefixFormatIn, SYSDT_MdtPrefixFormatOut,
     SYSDT_MdtPrefixCheck, SYSDT_MdtPrefixHelp, SYSDT_MdtPrefixCompare, nullptr, SYSDT_MdtPrefixLuaSet,
     SYSDT_MdtPrefixLuaGet, SYSDT_MdtLuaEndian},
    {SYSDT_TYPE_L2VPNPREFIX, 4, SYSDT_KIND_EXTEND, "L2VPNPREFIX", SYSDT_L2VPNPrefixFormatIn, SYSDT_L2VPNPrefixFormatOut,
     SYSDT_VplsAdPrefixCheck, SYSDT_VplsAdPrefixHelp, SYSDT_VplsAdPrefixCompare, nullptr, SYSDT_L2VPNPrefixLuaSet,
     SYSDT_L2VPNPrefixLuaGet, nullptr},
    {SYSDT_TYPE_TIME_RANGE, 4, SYSDT_KIND_BINARY, "TIME_RANGE", SYSDT_TimeRangeFormatIn, nullptr, nullptr,
     SYSDT_TimeRangeHelp, nullptr, nullptr, SYSDT_TimeRangeLuaSet, SYSDT_TimeRangeLuaGet, nullptr},
    {SYSDT_TYPE_ASNUMEXT, 8, SYSDT_KIND_EXTEND, "ASNUMEXT", SYSDT_AsNumExtFormatIn, SYSDT_AsNumExtFormatOut,
     SYSDT_AsNumExtCheck, SYSDT_AsNumHelp, SYSDT_Uint32Compare, nullptr, SYSDT_AsNumLuaSet, SYSDT_AsNumLuaGet,
     SYSDT_AsNumLuaEndian},
    {SYSDT_TYPE_ATTRIDBITMAP, 32, SYSDT_KIND_EXTEND, "ATTRIDBITMAP", nullptr, SYSDT_AttrIdBitmapFormatOut,
     SYSDT_AttrIdBitmapCheck, SYSDT_AttrIdBitmapHelp, SYSDT_AttrIdBitmapCompare, nullptr, SYSDT_AttrIdBitmapLuaSet,
     SYSDT_AttrIdBitmapLuaGet, SYSDT_AttrIdBitmapEndian},
    {SYSDT_TYPE_CVRFNAME, 32, SYSDT_KIND_STRING, "CVRFNAME", SYSDT_StringFormatIn, SYS_DT_APPCVRFNAME_FormatOut,
     nullptr, SYSDT_StringHelp, SYSDT_StringCompare, nullptr, SYSDT_StringLuaSet, SYSDT_StringLuaGet, nullptr},
    {SYSDT_TYPE_VPNID, 8, SYSDT_KIND_EXTEND, "VPNID", SYSDT_VpnIdFormatIn, SYSDT_VpnIdFormatOut, SYSDT_VpnIdCheck,
     SYSDT_VpnIdHelp, SYSDT_VpnIdCompare, nullptr, SYSDT_VpnIdLuaSet, SYSDT_VpnIdLuaGet, SYSDT_VpnIdEndian},
    {SYSDT_TYPE_VRFRTV6, 24, SYSDT_KIND_EXTEND, "VRFRTV6", SYSDT_VrfRtV6FormatIn, SYSDT_VrfRtV6FormatOut,
     SYSDT_VrfRtV6Check, SYSDT_VrfRtV6Help, SYSDT_VrfRtV6Compare, nullptr, SYSDT_VrfRtV6LuaSet, SYSDT_VrfRtV6LuaGet,
     SYSDT_VrfRtV6Endian},
    {SYSDT_TYPE_ASNUM_ENHANCE, 1280, SYSDT_KIND_EXTEND, "ASNUM_ENHANCE", SYSDT_AsNumEnhanceFormatIn,
     SYSDT_AsNumEnhanceFormatOut, SYSDT_AsNumEnhanceCheck, SYSDT_AsNumEnhanceHelp, SYSDT_BlockCompare, nullptr,
     SYSDT_AsNumEnLuaSet, SYSDT_AsNumEnLuaGet, SYSDT_AsNumEnhanceLuaEndian},
    {SYSDT_TYPE_CMNTY_ENHANCE, 160, SYSDT_KIND_EXTEND, "CMNTY_ENHANCE", SYSDT_CMNTYEnhanceFormatIn,
     SYSDT_CMNTYEnhanceFormatOut, SYSDT_CMNTYEnhanceCheck, SYSDT_CMNTYEnhanceHelp, SYSDT_BlockCompare, nullptr,
     SYSDT_CmntyEnLuaSet, SYSDT_CmntyEnLuaGet, SYSDT_CmntyEnhanceLuaEndian},
    {SYSDT_TYPE_RTPRD, 10, SYSDT_KIND_EXTEND, "RTPRD", SYSDT_RtpRdFormatIn, SYSDT_RtpRdFormatOut, SYSDT_RtpRdCheck,
     SYSDT_RtpRdHelp, SYSDT_RtpRdCompare, nullptr, SYSDT_RtpRdLuaSet, SYSDT_RtpRdLuaGet, nullptr},
    {SYSDT_TYPE_SID_STRUCTURE, 7, SYSDT_KIND_EXTEND, "SID_STRUCTURE", nullptr, SYSDT_PrefixSidStructureFormatOut,
     nullptr, nullptr, nullptr, nullptr, SYSDT_PrefixSidStructureLuaSet, nullptr, nullptr},
    {SYSDT_TYPE_EVNPREFIX, 85, SYSDT_KIND_EXTEND, "EVNPREFIX", SYSDT_EVNPrefixFormatIn, SYSDT_EVNPrefixFormatOut,
     SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp, SYSDT_EVNPrefixCompare, nullptr, SYSDT_EVNPrefixLuaSet,
     SYSDT_EVNPrefixLuaGet, nullptr},
    {SYSDT_TYPE_EXTCOMMUNITY_BW, 12, SYSDT_KIND_EXTEND, "EXTCOMMUNITY_BW", nullptr, SYSDT_ExtCommunityBwFormatOut,
     SYSDT_ExtCommunityBwCheck, SYSDT_ExtCommunityBwHelp, SYSDT_ExtCommunityBwCompare, nullptr,
     SYSDT_ExtCommunityBwLuaSet, SYSDT_ExtCommunityBwLuaGet, SYSDT_EXTCommunityBwEndian},
};

u32 BGP_RegisterDataType(u32 handle)
{
    register_types<"RegisterDataType Ret:%u">(handle, g_astBgpDataTypeNameIndexDefineTbl, 197);
    return SYSDT_OK;
}

u32 BGP_RegisterExtendDataType(u32 handle)
{
    register_types<"RegisterDataTypeExt Ret:%u">(handle, g_astBgpDataTypeExtendDefineTbl, 210);
    return SYSDT_OK;
}

u32 Bgp_InitDataType(u32 handle)
{
    BGP_RegisterDataType(handle);
    BGP_RegisterExtendDataType(handle);
    return SYSDT_OK;
}
