// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// VRFRD: a route distinguisher (RFC 4364) that prints back in the form it was written in.
///
///      0      2               8      12
///     +------+---------------+------+
///     | type | value         | form |   type and value in network order, form u32 in host order
///     +------+---------------+------+
///
/// Text: "192.0.2.1:100" (type 1), "64496:100" (type 0), "65536:100" and "1.0:100" (type 2), 1 to 21 characters. White
/// space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) The counts of dots and colons alone choose the form, and the administrator alone chooses between two and four
///      octets: 65536:65536 fails though 65535:65536 does not.
///  (2) The all-zero value is refused as 0:0 and 0.0:0, but accepted as 0.0.0.0:0.
///  (3) Mode 3 gives the text without terminator, no copy of the value.
///  (4) An unset one (eight zero octets, whatever the form) prints as empty text in mode 2 only.
///  (5) The form decides how the octets are split when printed, with a 2-octet type too; it does not matter to the IPv4
///      type; a pair without a format prints as empty text.
///  (6) A type above 2 fails, yet the block is handed back.
///  (7) Compare looks at the form too: one value written in two ways is unequal to itself.
///  (8) The script field RdType is the form; the type is the first two entries of RdValue.
///  (9) A script's numbers are cut to their low 8 bits, the form's too, and no value is refused.
///  (10) Endian turns the form word only.
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "vpn_id/rd_text.hpp"

namespace bgpdt {

u32 parse_rd(char *text, const OctetCodes &codes, SYSDT_Octets *out)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (const u32 status = parse_octets(text, codes, *out); status != SYSDT_OK) // (1)
        return status;
    const bool zero = octets32(*out, 2) == 0 && octets16(*out, 6) == 0;
    return zero && out->form != VRF_RD_FORM_IPV4 ? SYSDT_ERR_FAIL : SYSDT_OK; // (2)
}

u32 print_rd(const SYSDT_Octets &value, const OctetCodes &codes, Writer &out)
{
    const auto split = split_of(octet_code(value), value.form, codes); // (5)
    print_octets(value, split, out);
    return split == OctetSplit::unknown ? SYSDT_ERR_FAIL : SYSDT_OK;
}

} // namespace bgpdt

using namespace bgpdt;

namespace {

u32 SYSDT_VrfRdFormatOutEx(const SYSDT_Octets &value, u8 mode, Writer &out)
{
    return mode == 2 && is_unset(value.octets) ? SYSDT_OK : print_rd(value, route_distinguisher_codes, out); // (4)
}

constexpr Type<SYSDT_Octets> route_distinguisher{
    .kind = SYSDT_TYPE_VRFRD,
    .parse = [](u32, char *text, SYSDT_Octets &value) { return SYSDT_Str2VrfRd(text, &value); },
    .no_memory_clears_data = true,
    .mode3 = Mode3::bare_text,       // (3)
    .print = SYSDT_VrfRdFormatOutEx, // (6): the block is handed back unless the declaration says otherwise
    .help = {"STRING<3-21>"},
    .layout = route_distinguisher_layout, // (8) (9) (10)
};

} // namespace

u32 SYSDT_IsInValidRdOrRt(const u8 bytes[8]) { return is_unset(bytes) ? 0 : 1; }

u32 SYSDT_Str2VrfRd(char *text, SYSDT_Octets *output) { return parse_rd(text, route_distinguisher_codes, output); }

u32 SYSDT_VrfRd2Str(const SYSDT_Octets *input, u32 *outputLength, char *buffer)
{
    return print_to_buffer<route_distinguisher.limit>(
        input, buffer, outputLength,
        [](const SYSDT_Octets &value, Writer &out) { return print_rd(value, route_distinguisher_codes, out); });
}

BGPDT_FORMAT_IN(SYSDT_VrfRdFormatIn, route_distinguisher)
BGPDT_FORMAT_OUT(SYSDT_VrfRdFormatOut, route_distinguisher)
BGPDT_CHECK(SYSDT_VrfRdCheck, route_distinguisher)
BGPDT_HELP(SYSDT_VrfRdHelp, route_distinguisher)
BGPDT_COMPARE_BYTES(SYSDT_VrfRdCompare) // (7)
BGPDT_LUA_SET(SYSDT_VrfRdLuaSet, route_distinguisher)
BGPDT_LUA_GET(SYSDT_VrfRdLuaGet, route_distinguisher)
BGPDT_ENDIAN(SYSDT_VrfRdEndian, route_distinguisher)
