// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// L2VPNPREFIX, and kind 9 of the route keys: a VPLS block (RFC 4761).
///
///      0    4         6              8
///     +----+---------+--------------+---- zero ----
///     |  9 | site id | label offset |   all in host order
///     +----+---------+--------------+---- zero ----
///
/// Printed as "5/8". It is never entered as text.
///
/// Irregularities, all deliberate:
///  (1) FormatIn does nothing and answers 0.
///  (2) A value of another sub-kind does not print.
///  (3) Check, Help and Compare are those of the IPv4 key, so two values never compare equal.
///  (4) The registered size is 4, but every callback works on 89 bytes.
#include "common/bol_row.hpp"
#include "common/print.hpp"

using namespace bgpdt;

namespace {

void SYSDT_L2VPNPrefix2Str(const SYSDT_BolL2Vpn &value, Writer &out)
{
    print<"%u/%u">(out, u32{value.siteId}, u32{value.labelOffset});
}

u32 SYSDT_L2VPNPrefixFormatOutEx(const SYSDT_BolL2Vpn &value, u8, Writer &out)
{
    if (value.subKind != SYSDT_BOL_L2VPN)
        return SYSDT_ERR_FAIL; // (2)
    SYSDT_L2VPNPrefix2Str(value, out);
    return SYSDT_OK;
}

constexpr auto l2vpn_prefix = [] {
    auto type = bol_row<SYSDT_BolL2Vpn>();
    type.print = SYSDT_L2VPNPrefixFormatOutEx;
    type.layout = bol_l2vpn_layout;
    return type;
}();

} // namespace

u32 SYSDT_L2VPNPrefixFormatIn(Context *, u32, u32, char *, u16 *, u16 *, void **) { return SYSDT_OK; } // (1)

BGPDT_FORMAT_OUT(SYSDT_L2VPNPrefixFormatOut, l2vpn_prefix)
BGPDT_LUA_SET(SYSDT_L2VPNPrefixLuaSet, l2vpn_prefix)
BGPDT_BOL_LUA_GET(SYSDT_L2VPNPrefixLuaGet, bol_l2vpn_layout, SYSDT_BOL_L2VPN)
BGPDT_SCRIPT_READER(SYSDT_L2VPNPrefixNewLuaGet, key_fields(bol_l2vpn_layout))
