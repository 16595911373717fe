// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// An invented kind of route key, "PATH", by which the recipe of CONTRIBUTING.md is tried: an AS number and how many hops
/// away it is.
///
///      0      4      8      12
///     +------+------+------+---- zero ----
///     | kind | AS   | hops |   all u32 in host order
///     +------+------+------+---- zero ----
///
/// Text: "<64496><3>", 6 to 24 characters. White space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) Every mode but 4 reads and prints text; what does not parse is a wrong parameter.
///  (2) LuaGet wants "bolType" to be the kind; what it stored before a failure stays.
#include "common/bol_row.hpp"
#include "common/census.hpp"
#include "common/print.hpp"
#include "common/scan.hpp"
#include "common/text_offer.hpp"

using namespace bgpdt;

namespace {

u32 parse_value(u32, char *text, SYSDT_BolPath &value)
{
    text = SYSDT_BTrim(text);
    u32 as = 0;
    u32 hops = 0;
    char end = '\0';
    char rest = '\0';
    if (!Census::of<"0123456789<>">(text).admits(6, 24) || scan<"<%u><%u%c%c">(text, as, hops, end, rest) != 3 ||
        end != '>')
        return SYSDT_ERR_FAIL;
    value.subKind = SYSDT_BOL_PATH;
    value.as = as;
    value.hops = hops;
    return SYSDT_OK;
}

u32 print_value(const SYSDT_BolPath &value, u8, Writer &out)
{
    print<"<%u><%u>">(out, u32{value.as}, u32{value.hops});
    return SYSDT_OK;
}

constexpr auto path = [] {
    auto type = bol_row<SYSDT_BolPath>(); // (1)
    type.parse = parse_value;
    type.print = print_value;
    type.help = {"<X><X>"};
    type.layout = bol_path_layout;
    return type;
}();

} // namespace

BGPDT_MAY_READ(SYSDT_PathFormatIn, shape.first() == '<')
BGPDT_FORMAT_IN(SYSDT_PathFormatIn, path)
BGPDT_FORMAT_OUT(SYSDT_PathFormatOut, path)
BGPDT_CHECK(SYSDT_PathCheck, path)
BGPDT_HELP(SYSDT_PathHelp, path)
BGPDT_COMPARE_BYTES(SYSDT_PathCompare)
BGPDT_LUA_SET(SYSDT_PathLuaSet, path)
BGPDT_BOL_LUA_GET(SYSDT_PathLuaGet, bol_path_layout, SYSDT_BOL_PATH) // (2)
BGPDT_SCRIPT_READER(SYSDT_PathNewLuaGet, key_fields(bol_path_layout))
