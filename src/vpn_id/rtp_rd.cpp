// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// RTPRD: a route distinguisher (RFC 4364) whose assigned number may be a wildcard.
///
///      0      2               8      9      10
///     +------+---------------+------+------+
///     | type | value         | form | star |   type and value in network order
///     +------+---------------+------+------+
///
/// Text: "192.0.2.1:100", "64496:100", "65536:100", "1.0:100", or any of them with "*" for the number, 1 to 21
/// characters. White space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) The forms are numbered 1 to 4, not 0 to 3 as in the plain route distinguisher.
///  (2) Zero is no exception: 0:0, 0.0:0 and 0.0.0.0:0 are all accepted and print back.
///  (3) A star anywhere makes it a wildcard: one character behind the colon is taken whatever it is, the rest is not
///      looked at.
///  (4) Mode 3 is refused on output too.
///  (5) Every pair of type and form but the four that parsing gives prints as empty text, the IPv4 type with another
///      form too; so an unset one prints as empty text in every mode.
///  (6) A type above 2 fails, yet the block is handed back.
///  (7) The star byte is a wildcard when it is 1, a number else; the number octets of a wildcard do not show.
///  (8) A script's numbers are cut to their low 8 bits, and no value is refused.
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/census.hpp"
#include "common/scan.hpp"
#include "vpn_id/rd_text.hpp"

using namespace bgpdt;

namespace {

constexpr const OctetCodes &codes = route_distinguisher_codes;

/// The forms with a wildcard, told apart by their dots. The character in the number's place is not compared. (3)
u32 parse_wildcard(const char *text, u32 dots, SYSDT_Octets &out)
{
    char any = 0;
    if (dots == 3) {
        u32 address = 0;
        if (scan<"%q:%c">(text, address, any) != 2)
            return SYSDT_ERR_FAIL;
        store_ipv4_form(out, codes, address, 0);
    } else if (dots == 1) {
        u32 high = 0;
        u32 low = 0;
        if (scan<"%u.%u:%c">(text, high, low, any) != 3 || (high | low) > UINT16_MAX)
            return SYSDT_ERR_FAIL;
        store_as4_form(out, codes, high << 16 | low, 0, VRF_RD_FORM_AS4DOT);
    } else {
        u64 as = 0;
        if (scan<"%llu:%c">(text, as, any) != 2 || as > UINT32_MAX)
            return SYSDT_ERR_FAIL;
        if (as > UINT16_MAX)
            store_as4_form(out, codes, static_cast<u32>(as), 0, VRF_RD_FORM_AS4);
        else
            store_as2_form(out, codes, static_cast<u32>(as), 0);
    }
    return SYSDT_OK;
}

u32 parse_number(const char *text, u32 dots, SYSDT_Octets &out)
{
    switch (dots) {
    case 0: return parse_as_form(text, codes, out);
    case 1: return parse_as4dot_form(text, codes, out);
    default: return parse_ipv4_form(text, codes, out);
    }
}

void print_wildcard(const SYSDT_Octets &rd, OctetSplit split, Writer &out)
{
    switch (split) {
    case OctetSplit::unknown:
    case OctetSplit::nothing: break;
    case OctetSplit::ipv4: print<"%q:*">(out, octets32(rd, 2)); break;
    case OctetSplit::as2: print<"%u:*">(out, octets16(rd, 2)); break;
    case OctetSplit::as4: print<"%u:*">(out, octets32(rd, 2)); break;
    case OctetSplit::as4dot: print<"%u.%u:*">(out, octets16(rd, 2), octets16(rd, 4)); break;
    }
}

/// The four pairs that parsing gives; every other pair has no format. (5)
constexpr OctetSplit split_of_pair(u32 type, u32 form)
{
    if (type == codes.ipv4 && form == RTP_RD_FORM_IPV4)
        return OctetSplit::ipv4;
    if (type == codes.as2 && form == RTP_RD_FORM_AS2)
        return OctetSplit::as2;
    if (type == codes.as4 && form == RTP_RD_FORM_AS4)
        return OctetSplit::as4;
    if (type == codes.as4 && form == RTP_RD_FORM_AS4DOT)
        return OctetSplit::as4dot;
    return type > 2 ? OctetSplit::unknown : OctetSplit::nothing;
}

u32 print_value(const SYSDT_RtpRd &value, u8, Writer &out)
{
    SYSDT_Octets rd{};
    std::memcpy(rd.octets, value.octets, sizeof rd.octets);
    const auto split = split_of_pair(octet_code(rd), value.form);
    (value.star == 1 ? print_wildcard : print_octets)(rd, split, out); // (7)
    return split == OctetSplit::unknown ? SYSDT_ERR_FAIL : SYSDT_OK;   // (6)
}

constexpr Type<SYSDT_RtpRd> rtp_rd{
    .kind = SYSDT_TYPE_RTPRD,
    .parse = [](u32, char *text, SYSDT_RtpRd &value) { return SYSDT_Str2RtpRd(text, &value); },
    .output = text_only_screen, // (4)
    .print = print_value,
    .help = {"STRING<3-21>"},
    .layout = rtp_rd_layout, // (8)
};

} // namespace

u32 SYSDT_Str2RtpRd(char *text, SYSDT_RtpRd *output)
{
    if (text == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = SYSDT_BTrim(text);
    const auto census = Census::of<"0123456789.:*">(text);
    const u32 dots = census.dots();
    if (!census.admits(1, 21) || census.colons() != 1 || (dots != 0 && dots != 1 && dots != 3))
        return SYSDT_ERR_FAIL;
    const bool star = census.marks() != 0;
    SYSDT_Octets rd{};
    if (const u32 status = (star ? parse_wildcard : parse_number)(text, dots, rd); status != SYSDT_OK)
        return status;
    std::memcpy(output->octets, rd.octets, sizeof rd.octets);
    output->form = static_cast<u8>(rd.form + 1); // (1)
    output->star = star ? 1 : 0;
    return SYSDT_OK;
}

u32 SYSDT_RtpRd2Str(const SYSDT_RtpRd *input, u32 *outputLength, char *buffer, u32)
{
    return print_to_buffer<rtp_rd.limit>(
        input, buffer, outputLength, [](const SYSDT_RtpRd &value, Writer &out) { return print_value(value, 0, out); });
}

BGPDT_FORMAT_IN(SYSDT_RtpRdFormatIn, rtp_rd)
BGPDT_FORMAT_OUT(SYSDT_RtpRdFormatOut, rtp_rd)
BGPDT_CHECK(SYSDT_RtpRdCheck, rtp_rd)
BGPDT_HELP(SYSDT_RtpRdHelp, rtp_rd)
BGPDT_COMPARE_BYTES(SYSDT_RtpRdCompare)
BGPDT_LUA_SET(SYSDT_RtpRdLuaSet, rtp_rd)
BGPDT_LUA_GET(SYSDT_RtpRdLuaGet, rtp_rd)
