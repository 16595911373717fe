// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// EVNPREFIX, and kind 1 of the route keys, "EVN": the key of a BGP EVPN route (RFC 7432, section 7; RFC 9136, section
/// 3; RFC 9251, section 9). Its bytes and its text are told in key.hpp.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (1) What is handed back is a BOL prefix value: kind 0x0117, 89 bytes, though the type is 0x0119 with 85.
///  (2) All modes but 4 parse, and a text that does not is a wrong parameter.
///  (13) All modes but 4 print; there is no binary copy in mode 3.
///  (18) The sub-kind does not matter to printing, and a short value prints as if zeros followed it.
///  (19) A value is 89 bytes long to Check too.
///  (20) The help text knows neither IPv6 addresses nor IP prefixes nor the route types 6 to 8; a host that prepares no
///      entry for it is no failure.
///  (21) Where either is no EVPN key, or the route types differ, Compare answers a status in place of an order.
#include "route_keys/evpn/key.hpp"

#include "common/bol_row.hpp"
#include "route_keys/evpn/order.hpp"
#include "route_keys/evpn/print.hpp"
#include "route_keys/evpn/text.hpp"

using namespace bgpdt;

namespace {

/// Whether the pieces are the fields of the layout behind the sub-kind and the route type, in their order.
template <std::size_t Size>
constexpr bool are_fields_of(const Layout &layout, const evpn::Route<Size> &route)
{
    std::size_t number = std::size(evpn_fields);
    for (const evpn::Piece &piece : route.pieces) {
        if (layout.fields[number].offset != offsetof(SYSDT_BolEvpn, key) + piece.offset)
            return false;
        number += evpn::has_address(piece.kind) ? 4 : 1; // length, IPv4, IPv6, family
    }
    return number == layout.fields.size();
}

constexpr bool all_are_fields()
{
    for (u32 type = SYSDT_EVPN_AUTO_DISCOVERY; type <= SYSDT_EVPN_LEAVE; ++type)
        if (!evpn::visit_route(type, false, [=](auto row) { return are_fields_of(evpn_layouts[type], row.route); }))
            return false;
    return true;
}

static_assert(all_are_fields());

constexpr auto evpn_prefix = [] {
    auto type = bol_row<SYSDT_BolEvpn>(); // (1) (2) (13) (18)
    type.parse = [](u32, char *text, SYSDT_BolEvpn &value) {
        value.subKind = SYSDT_BOL_EVN;
        return evpn::read_trimmed(SYSDT_BTrim(text), value, 1);
    };
    type.print = [](const SYSDT_BolEvpn &value, u8, Writer &out) {
        return evpn::print_key(value.key.routeType, value.key, out);
    };
    type.help = {.text = "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or "
                         "xxxx.xxxx.xxxx.xxxx.xxxx",
                 .silent = true}; // (20)
    return type;
}();

/// Twenty digits and four dots.
constexpr bool begins_with_esi(const TextShape &shape) { return shape.field.length() == 24 && shape.field.dots() == 4; }

/// The first field is an ESI, or a tag, a mere number, with a number or an IPv4 address behind it. A tag's key has one
/// such address, with a MAC address or without, or three.
constexpr bool may_be_plain(const TextShape &shape)
{
    if (shape.field.dots() != 0)
        return begins_with_esi(shape);
    if (shape.colons() == 0 || !format::is_digit(shape.behind_colon()))
        return false;
    switch (shape.colons()) {
    case 2: return shape.dots() == 3 && shape.hyphens() == 0;
    case 4: return shape.dots() == 3 && shape.hyphens() == 2;
    case 6: return shape.dots() == 9;
    default: return false;
    }
}

/// A pair of brackets stands behind an ESI or a tag.
constexpr bool may_be_bracketed(const TextShape &shape)
{
    return shape.behind_field() == ':' && (shape.field.dots() == 0 || begins_with_esi(shape)) && shape.others >= 2;
}

constexpr bool may_be_key(const TextShape &shape)
{
    return shape.others == 0 ? may_be_plain(shape) : may_be_bracketed(shape);
}

/// FormatIn of a text that is counted already.
[[gnu::noinline]] u32 read_offered(const TextOffer &offer)
{
    SYSDT_BolEvpn value;
    return evpn::read_counted(offer, value) == SYSDT_OK
               ? deliver_value(*offer.context, OutputOf<evpn_prefix>{offer.out}, value)
               : u32{SYSDT_ERR_PARAM};
}

} // namespace

BGPDT_FORMAT_IN(SYSDT_EVNPrefixFormatIn, evpn_prefix)

template <>
u32 bgpdt::ask<SYSDT_EVNPrefixFormatIn>(const TextOffer &offer)
{
    return may_be_key(offer.shape) ? read_offered(offer) : u32{SYSDT_ERR_PARAM};
}

BGPDT_FORMAT_OUT(SYSDT_EVNPrefixFormatOut, evpn_prefix)
BGPDT_CHECK(SYSDT_EVNPrefixCheck, evpn_prefix) // (19)
BGPDT_HELP(SYSDT_EVNPrefixHelp, evpn_prefix)

i32 SYSDT_EVNPrefixCompare(const void *, u32 length, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const auto a = OutputOf<evpn_prefix>::read_value(length, first);
    const auto b = OutputOf<evpn_prefix>::read_value(length, second);
    if (a.subKind != SYSDT_BOL_EVN || b.subKind != SYSDT_BOL_EVN || a.key.routeType != b.key.routeType)
        return SYSDT_ERR_FAIL; // (21)
    return evpn::compare_keys(a.key.routeType, a.key, b.key);
}
