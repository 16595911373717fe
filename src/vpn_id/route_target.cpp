// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// VRFRT: a route target, SOO: a site of origin (RFC 4360, 4364, 5668), each in the form it was written in.
///
///      0      2               8      12
///     +------+---------------+------+
///     | code | value         | form |   code and value in network order, form u32 in host order
///     +------+---------------+------+
///
/// Text and printed form are the route distinguisher's, its irregularities (1), (2), (5) to (10) included; the codes
/// are 0x0102, 0x0002, 0x0202 for a route target and 0x0103, 0x0003, 0x0203 for a site of origin.
///
/// What differs, all deliberate:
///  (3) VRFRT: mode 3 gives the text without terminator. SOO: mode 3 gives the text as every other mode does.
///  (4) VRFRT: eight zero octets print as empty text in mode 2 only; elsewhere their code 0 is an unknown one. SOO:
///      twelve zero bytes print as empty text in every mode; with a form set the eight zero octets are an unknown code.
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "vpn_id/rd_text.hpp"

using namespace bgpdt;

namespace {

u32 print_route_target(const SYSDT_Octets &value, u8 mode, Writer &out)
{
    return mode == 2 && is_unset(value.octets) ? SYSDT_OK : print_rd(value, route_target_codes, out); // (4)
}

u32 print_site_of_origin(const SYSDT_Octets &value, u8, Writer &out)
{
    return is_unset(value.octets) && value.form == 0 ? SYSDT_OK : print_rd(value, site_of_origin_codes, out); // (4)
}

constexpr HelpText help_text{"STRING<3-21>"};

constexpr Type<SYSDT_Octets> route_target{
    .kind = SYSDT_TYPE_VRFRT,
    .parse = [](u32, char *text, SYSDT_Octets &value) { return SYSDT_Str2VrfRt(text, &value); },
    .no_memory_clears_data = true,
    .mode3 = Mode3::bare_text, // (3)
    .print = print_route_target,
    .help = help_text,
    .layout = route_target_layout,
};

constexpr Type<SYSDT_Octets> site_of_origin{
    .kind = SYSDT_TYPE_SOO,
    .parse = [](u32, char *text, SYSDT_Octets &value) { return SYSDT_Str2Soo(text, &value); },
    .no_memory_clears_data = true,
    .mode3 = Mode3::text, // (3)
    .print = print_site_of_origin,
    .help = help_text,
    .layout = site_of_origin_layout,
};

} // namespace

u32 SYSDT_Str2VrfRt(char *text, SYSDT_Octets *output) { return parse_rd(text, route_target_codes, output); }
u32 SYSDT_Str2Soo(char *text, SYSDT_Octets *output) { return parse_rd(text, site_of_origin_codes, output); }

BGPDT_FORMAT_IN(SYSDT_VrfRtFormatIn, route_target)
BGPDT_FORMAT_OUT(SYSDT_VrfRtFormatOut, route_target)
BGPDT_CHECK(SYSDT_VrfRtCheck, route_target)
BGPDT_HELP(SYSDT_VrfRtHelp, route_target)
BGPDT_COMPARE_BYTES(SYSDT_VrfRtCompare)
BGPDT_LUA_SET(SYSDT_VrfRtLuaSet, route_target)
BGPDT_LUA_GET(SYSDT_VrfRtLuaGet, route_target)
BGPDT_ENDIAN(SYSDT_VrfRtEndian, route_target)

BGPDT_FORMAT_IN(SYSDT_SooFormatIn, site_of_origin)
BGPDT_FORMAT_OUT(SYSDT_SooFormatOut, site_of_origin)
BGPDT_CHECK(SYSDT_SooCheck, site_of_origin)
BGPDT_HELP(SYSDT_SooHelp, site_of_origin)
BGPDT_COMPARE_BYTES(SYSDT_SooCompare)
BGPDT_LUA_SET(SYSDT_SooLuaSet, site_of_origin)
BGPDT_LUA_GET(SYSDT_SooLuaGet, site_of_origin)
BGPDT_ENDIAN(SYSDT_SooEndian, site_of_origin)
