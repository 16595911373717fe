// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// PROBE: an invented type, by which the recipe of CONTRIBUTING.md is tried: where a path is probed, and how often.
///
///      0        4      6          10        11      12
///     +--------+------+----------+---------+-------+
///     | target | port | interval | version | flags |   target u32, port u16, interval u32 in host order
///     +--------+------+----------+---------+-------+
///
/// Text: "192.0.2.1:862/1000/1/0", 15 to 40 characters. White space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) Help tells 22 characters where the parser takes 40.
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/census.hpp"
#include "common/print.hpp"
#include "common/scan.hpp"

using namespace bgpdt;

namespace {

u32 parse_value(u32, char *text, SYSDT_Probe &value)
{
    text = SYSDT_BTrim(text);
    u32 target = 0;
    u32 port = 0;
    u32 interval = 0;
    u32 version = 0;
    u32 flags = 0;
    char rest = '\0';
    if (!Census::of<"0123456789.:/">(text).admits(15, 40) ||
        scan<"%q:%u/%u/%u/%u%c">(text, target, port, interval, version, flags, rest) != 5)
        return SYSDT_ERR_FAIL;
    if (port > UINT16_MAX || version > UINT8_MAX || flags > UINT8_MAX)
        return SYSDT_ERR_FAIL;
    value = {target, static_cast<u16>(port), interval, static_cast<u8>(version), static_cast<u8>(flags)};
    return SYSDT_OK;
}

u32 print_value(const SYSDT_Probe &value, u8, Writer &out)
{
    print<"%q:%hu/%u/%hhu/%hhu">(out, u32{value.target}, u16{value.port}, u32{value.interval}, value.version,
                                 value.flags);
    return SYSDT_OK;
}

constexpr Type<SYSDT_Probe> probe{
    .kind = SYSDT_TYPE_PROBE,
    .parse = parse_value,
    .print = print_value,
    .help = {"STRING<15-22>"}, // (1)
    .layout = probe_layout,
};

} // namespace

BGPDT_FORMAT_IN(SYSDT_ProbeFormatIn, probe)
BGPDT_FORMAT_OUT(SYSDT_ProbeFormatOut, probe)
BGPDT_CHECK(SYSDT_ProbeCheck, probe)
BGPDT_HELP(SYSDT_ProbeHelp, probe)
BGPDT_COMPARE_BYTES(SYSDT_ProbeCompare)
BGPDT_LUA_SET(SYSDT_ProbeLuaSet, probe)
BGPDT_LUA_GET(SYSDT_ProbeLuaGet, probe)
BGPDT_ENDIAN(SYSDT_ProbeEndian, probe)
