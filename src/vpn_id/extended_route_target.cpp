// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Kind 8 of the route keys, "VRFRTEXT": a route target (RFC 4360) with a wider grammar, or six octets written like a
/// MAC address (RFC 7432), printed decorated for display and plain for configuration.
///
///      0    4      6               12     16
///     +----+------+---------------+------+---- zero ----
///     |  8 | code | value         | form |   code and value in network order, the words u32 in host order
///     +----+------+---------------+------+---- zero ----
///
/// Text: "192.0.2.1:100", "64496:100", "65536:100", "1.0:100", "aabb-ccdd-eeff", 1 to 100 characters. White space at
/// the ends is cut off. Plain printing gives the same, decorated printing "RT <64496 : 100>".
///
/// Irregularities, all deliberate:
///  (1) Zero is no exception: 0:0, 0.0:0 and 0.0.0.0:0 are all accepted.
///  (2) A text ends where its last number ends: the digits, letters and hyphens behind it are not looked at.
///  (3) Since a hyphen is a character of the texts, a number may have a sign: a negative one counts modulo 2^64 in A:N
///      and modulo 2^32 in the dotted forms.
///  (4) The hyphens are counted only where there is neither a dot nor a colon.
///  (5) A MAC-like text is read two digits at a time, so three digits of a group do; its form has the number of the
///      dotted AS one.
///  (6) Modes 1, 3 and 6 print decorated, which is no text to parse; mode 2 prints plain.
///  (7) An unset one (eight zero octets, whatever the form) prints as empty text in mode 2 only; elsewhere code 0
///      prints as 2-octet AS and number, and so does any value of that code in every mode.
///  (8) With AS codes the form decides how the octets are split; one without a format prints as empty text.
///  (9) An unknown code prints as "Unknow", so spelt, and succeeds.
///  (10) Mode 3 gives the text without terminator, no copy of the value.
///  (11) The sub-kind word does not matter to printing.
///  (12) The script form has the sub-kind as "bolType", but reading does not ask for it and leaves the word alone.
///  (13) A script's numbers are cut to their low 8 bits, the form's too, and no value is refused.
#include <cstring>

#include "common/bol_row.hpp"
#include "common/census.hpp"
#include "common/scan.hpp"
#include "common/text_offer.hpp"
#include "vpn_id/rd_text.hpp"

using namespace bgpdt;

namespace {

constexpr u16 evpn_code = 0x0602;

u32 SYSDT_Str2EvpnOctecAsRT(const char *text, SYSDT_Octets &out)
{
    u16 octet[6]{};
    if (scan<"%02hx%02hx-%02hx%02hx-%02hx%02hx">(text, octet[0], octet[1], octet[2], octet[3], octet[4], octet[5]) != 6)
        return SYSDT_ERR_FAIL; // none is above 255: the two hyphens are the format's, so no number has a sign
    store_network(out.octets, evpn_code);
    for (u32 i = 0; i < 6; ++i)
        out.octets[2 + i] = static_cast<u8>(octet[i]);
    out.form = VRF_RD_FORM_AS4DOT; // (5)
    return SYSDT_OK;
}

u32 SYSDT_Str2IpAddressRT(const char *text, SYSDT_Octets &out)
{
    return parse_ipv4_form(text, route_target_codes, out);
}
u32 SYSDT_Str2TwoOctecAsRT(const char *text, SYSDT_Octets &out) { return parse_as_form(text, route_target_codes, out); }
u32 SYSDT_Str2FourOctecAsRT(const char *text, SYSDT_Octets &out)
{
    return parse_as4dot_form(text, route_target_codes, out);
}

Census count(const char *text) { return Census::of<"0123456789abcdefABCDEF.:-">(text); }

bool is_admitted(const Census &census) { return census.admits(1, 100); }

u32 parse_form(const char *text, SYSDT_Octets &out)
{
    const auto census = count(text);
    if (!is_admitted(census))
        return SYSDT_ERR_FAIL;
    if (census.colons() == 0 && census.dots() == 0 && census.marks() == 2) // (4)
        return SYSDT_Str2EvpnOctecAsRT(text, out);
    if (census.colons() != 1)
        return SYSDT_ERR_FAIL;
    switch (census.dots()) {
    case 0: return SYSDT_Str2TwoOctecAsRT(text, out);
    case 1: return SYSDT_Str2FourOctecAsRT(text, out);
    case 3: return SYSDT_Str2IpAddressRT(text, out);
    default: return SYSDT_ERR_FAIL;
    }
}

void SYSDT_VrfRtExtFormatOutRtStrNCF(const SYSDT_Octets &value, u32 code, OctetSplit split, Writer &out)
{
    const auto &o = value.octets;
    if (code == evpn_code)
        print<"%02hx%02hx-%02hx%02hx-%02hx%02hx">(out, o[2], o[3], o[4], o[5], o[6], o[7]);
    else if (split == OctetSplit::unknown)
        print<"Unknow %u:%u:%u">(out, code, octets32(value, 2), octets16(value, 6)); // (9)
    else
        print_octets(value, split, out); // of AS numbers SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStrNCF
}

void SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr(const SYSDT_Octets &value, OctetSplit split, Writer &out)
{
    switch (split) {
    case OctetSplit::as2: print<"RT <%u : %u>">(out, octets16(value, 2), octets32(value, 4)); break;
    case OctetSplit::as4: print<"RT <%u : %u>">(out, octets32(value, 2), octets16(value, 6)); break;
    case OctetSplit::as4dot:
        print<"RT <%u . %u : %u>">(out, octets16(value, 2), octets16(value, 4), octets16(value, 6));
        break;
    default: break;
    }
}

void SYSDT_VrfRtExtFormatOutRtStr(const SYSDT_Octets &value, u32 code, OctetSplit split, Writer &out)
{
    const auto &o = value.octets;
    if (code == evpn_code) {
        print<"RT <%02hx%02hx-%02hx%02hx-%02hx%02hx>">(out, o[2], o[3], o[4], o[5], o[6], o[7]);
        return;
    }
    switch (split) {
    case OctetSplit::unknown:
        print<"Unknow <%u : %u : %u>">(out, code, octets32(value, 2), octets16(value, 6)); // (9)
        break;
    case OctetSplit::ipv4: print<"RT <%q : %u>">(out, octets32(value, 2), octets16(value, 6)); break;
    default: SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr(value, split, out); break;
    }
}

u32 SYSDT_VrfRtExtFormatOutStr(const SYSDT_BolRouteTarget &value, u8 mode, Writer &out) // (11)
{
    const bool plain = mode == 2; // (6)
    if (plain && is_unset(value.rt.octets))
        return SYSDT_OK; // (7)
    const u32 code = octet_code(value.rt);
    const auto split = code == 0 ? OctetSplit::as2 : split_of(code, value.rt.form, route_target_codes); // (7) (8)
    (plain ? SYSDT_VrfRtExtFormatOutRtStrNCF : SYSDT_VrfRtExtFormatOutRtStr)(value.rt, code, split, out);
    return SYSDT_OK;
}

constexpr Type<SYSDT_BolRouteTarget> extended_route_target{
    .kind = SYSDT_TYPE_BOLPREFIX,
    .parse = [](u32, char *text, SYSDT_BolRouteTarget &value) { return SYSDT_Str2VrfRtExt(text, &value); },
    .mode3 = Mode3::bare_text, // (10)
    .print = SYSDT_VrfRtExtFormatOutStr,
    .layout = bol_route_target_layout,
};

/// What is read from scripts: all but "bolType", the last. (12)
constexpr auto read_fields = bol_route_target_layout.fields.first(2);
constexpr Layout read_layout{read_fields, SYSDT_BOL_SIZE};

/// Behind the only colon stands a number without dots; octets have neither.
constexpr bool may_be_route_target(const TextShape &shape)
{
    if (shape.colons() > 1 || shape.others != 0 || shape.dots_behind_field() != 0)
        return false;
    return shape.colons() == 1 || (shape.dots() == 0 && shape.hyphens() == 2);
}

} // namespace

u32 SYSDT_CheckVrfRtExtStr(const char *text, u32 *dots, u32 *colons, u32 *hyphens)
{
    if (text == nullptr || dots == nullptr || colons == nullptr || hyphens == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const auto census = count(text);
    if (!is_admitted(census))
        return SYSDT_ERR_FAIL;
    *dots = census.dots();
    *colons = census.colons();
    *hyphens = census.marks();
    return SYSDT_OK;
}

u32 SYSDT_Str2VrfRtExt(char *text, SYSDT_BolRouteTarget *output)
{
    if (text == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    output->subKind = SYSDT_BOL_VRFRTEXT;
    return parse_form(SYSDT_BTrim(text), output->rt); // (1) (2) (3)
}

BGPDT_MAY_READ(SYSDT_VrfRtExtFormatIn, may_be_route_target(shape))
BGPDT_FORMAT_IN(SYSDT_VrfRtExtFormatIn, extended_route_target)
BGPDT_FORMAT_OUT(SYSDT_VrfRtExtFormatOut, extended_route_target)
BGPDT_LUA_SET(SYSDT_VrfRtExtLuaSet, extended_route_target)

u32 SYSDT_VrfRtExtLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    return get_script_value(state, table, name, length, data, SYSDT_BOL_SIZE, read_layout);
}

BGPDT_SCRIPT_READER(SSYSDT_VrfRtExtNewLuaGet, read_fields)
