// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// EXTCOMMUNITY: an extended community (RFC 4360), entered like a route target, printed by its type.
///
///      0      2               8      12
///     +------+---------------+------+
///     | type | value         | form |   type and value in network order, form u32 in host order
///     +------+---------------+------+
///
/// Text: "192.0.2.1:100", "64496:100", "65536:100", "1.0:100", 1 to 21 characters. White space at the ends is cut off.
///
/// EXTCOMMUNITY_BW: a link-bandwidth community as numbers; it takes no text.
///
///      0           2    4           12
///     +-----------+----+-----------+
///     | type      | AS | bandwidth |   u16, u16, u64 in host order
///     +-----------+----+-----------+
///
/// Irregularities, all deliberate:
///  (1) No value is refused for being zero.
///  (2) A small AS number with a number beyond 32 bits is refused; the 4-octet reading is not tried.
///  (3) The parts of an address are plain numbers: leading zeros are read.
///  (4) A 4-octet AS route target prints by its text form, and nothing for a form that is not its own.
///  (5) A 4-octet AS site of origin prints dotted whatever its form.
///  (6) An OSPF route type prints its last octet before the one ahead of it.
///  (7) AS_TRANS prints as a word in a bandwidth community, as a number elsewhere.
///  (8) Scripts keep the low 8 bits of the form, and see the bandwidth as a signed number.
///  (9) What is printed with a word or a bracket cannot be entered.
///  (10) EXTCOMMUNITY_BW: a bandwidth of 0 prints as nothing; the type is neither printed nor checked; help tells of a
///      text though none is taken.
#include <span>

#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/octets.hpp"

using namespace bgpdt;

namespace {

constexpr u32 as_trans = 23456; // RFC 6793

/// How the communities of one type print, some behind a label.
struct Shown {
    u16 type;
    void (*print)(const SYSDT_Octets &value, const char *label, Writer &out);
    const char *label = nullptr;
};

void print_nothing(const SYSDT_Octets &, const char *, Writer &) {}

template <OctetSplit split>
void print_split(const SYSDT_Octets &value, const char *, Writer &out)
{
    print_octets(value, split, out);
}

void print_as4(const SYSDT_Octets &value, const char *, Writer &out) // (4)
{
    print_octets(value, split_of(route_target_codes.as4, value.form, route_target_codes), out);
}

void print_labelled_as2(const SYSDT_Octets &value, const char *label, Writer &out)
{
    print<"%s <%u : %u>">(out, label, octets16(value, 2), octets32(value, 4));
}

void print_labelled_as4(const SYSDT_Octets &value, const char *label, Writer &out)
{
    print<"%s <%u.%u : %u>">(out, label, octets16(value, 2), octets16(value, 4), octets16(value, 6));
}

void print_labelled_ipv4(const SYSDT_Octets &value, const char *label, Writer &out)
{
    print<"%s <%q : %u>">(out, label, octets32(value, 2), octets16(value, 6));
}

void print_ospf_route_type(const SYSDT_Octets &value, const char *label, Writer &out)
{
    const auto &o = value.octets;
    print<"%s <%q : %u : %u>">(out, label, octets32(value, 2), o[7], o[6]); // (6)
}

void print_bandwidth(const SYSDT_Octets &value, const char *label, Writer &out)
{
    if (const u32 as = octets16(value, 2); as == as_trans)
        print<"%s:%u">(out, label, octets32(value, 4));
    else
        print<"%u:%u">(out, as, octets32(value, 4));
}

constexpr char soo[] = "SoO";
constexpr char ospf_domain[] = "OSPF DOMAIN ID";
constexpr char ospf_router[] = "OSPF ROUTER ID";
constexpr char ospf_route_type[] = "OSPF RT";
constexpr char trans[] = "as-trans";

constexpr Shown shown_types[] = {
    {0x0000, print_nothing},
    {0x0002, print_split<OctetSplit::as2>},
    {0x0003, print_labelled_as2, soo},
    {0x0005, print_labelled_ipv4, ospf_domain},
    {0x0102, print_split<OctetSplit::ipv4>},
    {0x0103, print_labelled_ipv4, soo},
    {0x0105, print_labelled_ipv4, ospf_domain},
    {0x0107, print_labelled_ipv4, ospf_router},
    {0x0202, print_as4},
    {0x0203, print_labelled_as4, soo},
    {0x0205, print_labelled_ipv4, ospf_domain},
    {0x0306, print_ospf_route_type, ospf_route_type},
    {0x030B, print_split<OctetSplit::as2>},
    {0x030E, print_bandwidth, trans},
    {0x8000, print_ospf_route_type, ospf_route_type},
    {0x8001, print_labelled_ipv4, ospf_router},
    {0x8005, print_labelled_ipv4, ospf_domain},
};

u32 print_value(const SYSDT_Octets &value, u8, Writer &out)
{
    for (const Shown &shown : shown_types) {
        if (shown.type == octet_code(value)) {
            shown.print(value, shown.label, out);
            return SYSDT_OK;
        }
    }
    return SYSDT_ERR_FAIL;
}

u32 print_bandwidth_value(const SYSDT_ExtCommunityBw &value, u8, Writer &out)
{
    if (value.bandwidth == 0) // (10)
        return SYSDT_OK;
    if (value.asnNn == as_trans)
        print<"%s:%llu">(out, trans, u64{value.bandwidth});
    else
        print<"%u:%llu">(out, u32{value.asnNn}, u64{value.bandwidth});
    return SYSDT_OK;
}

constexpr HelpText help_text{"STRING<3-21>"};

constexpr Type<SYSDT_Octets> extended_community{
    .kind = SYSDT_TYPE_EXTCOMMUNITY,
    .parse = [](u32, char *text, SYSDT_Octets &value) { return SYSDT_Str2ExtCommunity(text, &value); },
    .output = text_only_screen,
    .print = print_value,
    .on_print_failure = OnPrintFailure::release_own,
    .help = help_text,
    .layout = extended_community_layout, // (8)
};

constexpr Type<SYSDT_ExtCommunityBw> bandwidth_community{
    .kind = SYSDT_TYPE_EXTCOMMUNITY_BW,
    .output = text_only_screen,
    .print = print_bandwidth_value,
    .help = help_text,
    .layout = bandwidth_community_layout,
};

} // namespace

u32 SYSDT_Str2ExtCommunity(char *text, SYSDT_Octets *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return parse_octets(text, route_target_codes, *value); // (1) (2) (3)
}

u32 SYSDT_ExtCommunity2StrRT4AS(const SYSDT_Octets *value, u32 *length, char *buffer)
{
    return print_to_buffer<extended_community.limit>(value, buffer, length,
                                                     [](const SYSDT_Octets &octets, Writer &out) {
                                                         print_as4(octets, nullptr, out);
                                                         return u32{SYSDT_OK};
                                                     });
}

u32 SYSDT_ExtCommunity2StrBW(const SYSDT_Octets *value, u32 *length, char *buffer)
{
    return print_to_buffer<extended_community.limit>(value, buffer, length,
                                                     [](const SYSDT_Octets &octets, Writer &out) {
                                                         print_bandwidth(octets, trans, out);
                                                         return u32{SYSDT_OK};
                                                     });
}

BGPDT_FORMAT_IN(SYSDT_ExtCommunityFormatIn, extended_community)
BGPDT_FORMAT_OUT(SYSDT_ExtCommunityFormatOut, extended_community)
BGPDT_CHECK(SYSDT_ExtCommunityCheck, extended_community)
BGPDT_HELP(SYSDT_ExtCommunityHelp, extended_community)
BGPDT_COMPARE_BYTES(SYSDT_ExtCommunityCompare)
BGPDT_LUA_SET(SYSDT_ExtCommunityLuaSet, extended_community)
BGPDT_LUA_GET(SYSDT_ExtCommunityLuaGet, extended_community)
BGPDT_ENDIAN(SYSDT_EXTCommunityEndian, extended_community)

BGPDT_FORMAT_OUT(SYSDT_ExtCommunityBwFormatOut, bandwidth_community)
BGPDT_CHECK(SYSDT_ExtCommunityBwCheck, bandwidth_community)
BGPDT_HELP(SYSDT_ExtCommunityBwHelp, bandwidth_community)
BGPDT_COMPARE_BYTES(SYSDT_ExtCommunityBwCompare)
BGPDT_LUA_SET(SYSDT_ExtCommunityBwLuaSet, bandwidth_community)
BGPDT_LUA_GET(SYSDT_ExtCommunityBwLuaGet, bandwidth_community)
BGPDT_ENDIAN(SYSDT_EXTCommunityBwEndian, bandwidth_community)
