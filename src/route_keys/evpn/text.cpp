// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// An EVPN route key from its text: which route type it is of, then piece by piece.
///
/// 1 to 183 characters: hexadecimal digits, dots, colons, hyphens, and brackets around IPv6 addresses. White space at
/// the ends is cut off.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (3) Nothing in a text names its route type: its separators are counted, and of the texts with two colons and no
///      bracket the one with a dot ahead of the second colon is an IP prefix.
///  (4) A lenient reader takes an ESI of any type, but never in the route types 7 and 8.
///  (6) An ESI alone is an Ethernet segment route with length 0 and address 0.0.0.0.
///  (7) A MAC length goes up to 255.
#include <utility>

#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/digits.hpp"
#include "route_keys/evpn/key.hpp"
#include "route_keys/evpn/readers.hpp"
#include "route_keys/evpn/text.hpp"

namespace bgpdt::evpn {

namespace {

// ------------------------------------------------------------------------------------------------ piece by piece

SYSDT_EvpnSizedAddress &ip_at(u8 *place) { return *reinterpret_cast<SYSDT_EvpnSizedAddress *>(place); }

// Numbers of any value: an Ethernet tag, a sequence number.

char *read_inner_u32(char *at, u8 *to)
{
    u32 number = 0;
    char *const end = read_number(at, most_u32_digits, number);
    if (end != nullptr)
        store(to, number);
    return end;
}

bool read_last_u32(const char *at, u8 *to)
{
    u32 number = 0;
    const bool read = read_last_number(at, most_u32_digits, number);
    if (read)
        store(to, number);
    return read;
}

/// Whether a piece is a text's last always.
constexpr bool ends_text(Kind kind) { return kind == Kind::ip || kind == Kind::prefix; }

/// Reads a piece that is not the last, and returns the place of the colon behind it; null if it is refused.
template <Piece piece>
char *read_inner(char *at, u32 lenient, u8 *key)
{
    static_assert(!ends_text(piece.kind));
    u8 *const to = key + piece.offset;
    switch (piece.kind) {
    case Kind::number: return read_inner_u32(at, to);
    case Kind::octet: return read_length(at, 0, UINT8_MAX, *to); // (7)
    case Kind::mac: return read_mac(at, to);
    case Kind::segment: return read_segment(at, types_of(lenient, EsiTypes::to_01), to);
    case Kind::discovery_segment: return read_discovery_segment(at, types_of(lenient, EsiTypes::to_05), to);
    case Kind::sync_segment: return read_segment(at, EsiTypes::to_01, to); // (4)
    default: return read_inner_member(at, piece.least, ip_at(to));
    }
}

template <Piece piece>
bool read_last(char *at, Families families, u8 *key)
{
    static_assert(ends_text(piece.kind) || piece.kind == Kind::number || piece.kind == Kind::member);
    u8 *const to = key + piece.offset;
    switch (piece.kind) {
    case Kind::number: return read_last_u32(at, to);
    case Kind::ip: return read_ip(at, families, ip_at(to));
    case Kind::prefix: return read_prefix(at, families, ip_at(to));
    default: return read_last_member(at, piece.least, ip_at(to));
    }
}

/// Reads a text as one of the route.
template <const auto &route>
u32 read_as(char *text, SYSDT_BolEvpn *value, u32 lenient = 0, Families families = Families::either)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    constexpr std::size_t last = std::size(route.pieces) - 1;
    u8 *const key = &value->key.routeType;
    const bool read = [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        char *end = nullptr; // of the piece ahead: its colon
        return ((end = read_inner<route.pieces[I]>(I == 0 ? text : end + 1, lenient, key)) && ...) &&
               read_last<route.pieces[last]>(end + 1, families, key);
    }
    (std::make_index_sequence<last>{});
    if (!read)
        return SYSDT_ERR_FAIL;
    constexpr u8 type = route.type; // by itself: the row then takes no memory
    value->key.routeType = type;
    return SYSDT_OK;
}

// ------------------------------------------------------------------------------------------------ the route type

/// Brackets are strangers to it: few texts have any.
constexpr std::size_t longest_text = 183;

constexpr FixedString plain_characters = "0123456789abcdefABCDEF.:-";

/// What a text is made of.
struct Shape {
    Census census{};        ///< brackets count in its length alone
    u32 brackets = 0;       ///< of either kind
    u32 outside_colons = 0; ///< not in brackets

    // What stands ahead of the second colon; if there is none, as in an IPv6 prefix.
    u32 dots_ahead = 1;
    u32 brackets_ahead = 1;

    /// Of a text without brackets that is counted already.
    static Shape of_plain(const TextShape &counted)
    {
        Shape shape{.census = counted.all, .outside_colons = counted.colons()};
        if (counted.colons() < 2)
            return shape;
        shape.dots_ahead = counted.field.dots();
        shape.brackets_ahead = 0;
        for (const char *at = counted.text + counted.field.length() + 1; *at != ':'; ++at)
            shape.dots_ahead += *at == '.' ? 1 : 0;
        return shape;
    }

    /// Counts the characters; false if there is one that no text may have.
    bool count(const char *text)
    {
        CensusWalk<plain_characters> walk(text, 2);
        u32 colons = 0; // ahead of the last bracket
        bool inside = false;
        while (true) {
            const char stop = walk.next();
            census = walk.census();
            if (stop == ':') {
                dots_ahead = census.dots();
                brackets_ahead = brackets;
                continue;
            }
            outside_colons += inside ? 0 : census.colons() - colons;
            if (stop != '[' && stop != ']')
                return stop == '\0';
            ++brackets;
            inside = stop == '[';
            colons = census.colons();
        }
    }
};

u32 read_multicast(u32 outer_colons, char *text, SYSDT_BolEvpn *value)
{
    switch (outer_colons) {
    case 6: return SYSDT_Str2EvpnSmetRoute(text, value);
    case 7: return SYSDT_Str2EvpnJoinRoute(text, value);
    case 8: return SYSDT_Str2EvpnLeaveRoute(text, value);
    default: return SYSDT_ERR_FAIL;
    }
}

u32 read_segment_alone(const char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    if (SYSDT_Str2EsiBas(text, value->key.segment.esi, 1, lenient) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    value->key.routeType = SYSDT_EVPN_SEGMENT; // (6)
    return SYSDT_OK;
}

/// The first line that fits the text decides. (3) In one without brackets no IPv6 address is looked for.
u32 read_by_shape(const Shape &shape, char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    const u32 brackets = shape.brackets;
    const u32 dots = shape.census.dots();
    const u32 colons = shape.census.colons();
    const u32 dashes = shape.census.marks();
    if (shape.outside_colons >= 6 && shape.outside_colons <= 8)
        return read_multicast(shape.outside_colons, text, value);
    if (shape.dots_ahead == 4)
        return brackets == 0 ? read_as<segment>(text, value, lenient, Families::ipv4)
                             : SYSDT_Str2Es(text, value, lenient);
    if (brackets == 2 && dashes == 0)
        return (shape.brackets_ahead == 0 ? SYSDT_Str2Inclusive : SYSDT_Str2Ipv6Prefix)(text, value);
    if (brackets == 2 && dashes == 2)
        return colons < 5 ? SYSDT_ERR_FAIL : SYSDT_Str2EvnMac(text, value);
    if ((dots != 3 && dots != 4 && dots != 7) || colons > 4 || brackets != 0)
        return SYSDT_ERR_FAIL;
    if (dashes != 0 && dashes != 2)
        return SYSDT_ERR_FAIL;
    if (dashes == 0 && colons == 2 && shape.dots_ahead == 0)
        return read_as<inclusive>(text, value, 0, Families::ipv4);
    if (dashes == 0 && colons == 2)
        return dots == 3 ? SYSDT_Str2IpPrefix(text, value) : SYSDT_ERR_FAIL;
    if (colons == 0 && dots == 4)
        return read_segment_alone(text, value, lenient);
    if (colons == 1 && dots == 4)
        return SYSDT_Str2Ad(text, value, lenient);
    return colons == 4 ? read_as<mac_ip>(text, value, 0, Families::ipv4) : SYSDT_ERR_FAIL;
}

} // namespace

u32 read_trimmed(char *text, SYSDT_BolEvpn &value, u32 lenient)
{
    Shape shape;
    if (!shape.count(text) || shape.census.length() < 1 || shape.census.length() > longest_text)
        return SYSDT_ERR_FAIL;
    return read_by_shape(shape, text, &value, lenient);
}

} // namespace bgpdt::evpn

using namespace bgpdt;

u32 evpn::read_counted(const TextOffer &offer, SYSDT_BolEvpn &value)
{
    value = {.subKind = SYSDT_BOL_EVN, .key = {}};
    return offer.shape.others == 0 ? read_by_shape(Shape::of_plain(offer.shape), offer.counted, &value, 1)
                                   : read_trimmed(offer.counted, value, 1);
}

u32 SYSDT_Str2EvnPrefix(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return evpn::read_trimmed(SYSDT_BTrim(text), *value, lenient);
}

u32 SYSDT_Str2EvpnMcRoute(char *text, SYSDT_BolEvpn *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    evpn::Shape shape;
    return shape.count(text) ? evpn::read_multicast(shape.outside_colons, text, value) : SYSDT_ERR_FAIL;
}

u32 SYSDT_Str2Ad(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    return evpn::read_as<evpn::auto_discovery>(text, value, lenient);
}

u32 SYSDT_Str2EvnMac(char *text, SYSDT_BolEvpn *value) { return evpn::read_as<evpn::mac_ip>(text, value); }

u32 SYSDT_Str2Ipv6EvnMac(char *text, SYSDT_BolEvpn *value)
{
    return evpn::read_as<evpn::mac_ip>(text, value, 0, evpn::Families::ipv6);
}

u32 SYSDT_Str2Inclusive(char *text, SYSDT_BolEvpn *value) { return evpn::read_as<evpn::inclusive>(text, value); }

u32 SYSDT_Str2Ipv6EvnInc(char *text, SYSDT_BolEvpn *value)
{
    return evpn::read_as<evpn::inclusive>(text, value, 0, evpn::Families::ipv6);
}

u32 SYSDT_Str2Es(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    return evpn::read_as<evpn::segment>(text, value, lenient);
}

u32 SYSDT_Str2Ipv6EvpnEs(char *text, SYSDT_BolEvpn *value, u32 lenient)
{
    return evpn::read_as<evpn::segment>(text, value, lenient, evpn::Families::ipv6);
}

u32 SYSDT_Str2IpPrefix(char *text, SYSDT_BolEvpn *value)
{
    return evpn::read_as<evpn::ip_prefix>(text, value, 0, evpn::Families::ipv4);
}

u32 SYSDT_Str2Ipv6Prefix(char *text, SYSDT_BolEvpn *value)
{
    return evpn::read_as<evpn::ip_prefix>(text, value, 0, evpn::Families::ipv6);
}

u32 SYSDT_Str2EvpnSmetRoute(char *text, SYSDT_BolEvpn *value) { return evpn::read_as<evpn::selective>(text, value); }

u32 SYSDT_Str2EvpnJoinRoute(char *text, SYSDT_BolEvpn *value) { return evpn::read_as<evpn::join_sync>(text, value); }

u32 SYSDT_Str2EvpnLeaveRoute(char *text, SYSDT_BolEvpn *value) { return evpn::read_as<evpn::leave_sync>(text, value); }
