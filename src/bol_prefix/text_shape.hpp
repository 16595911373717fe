// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which rows may read a text, told from the characters that it is made of: a walk of seventeen parsers then asks one,
/// seldom two.
///
/// A rule holds for every text that its row reads, and for some that it does not. It must not know more than that: a row
/// that a rule leaves out would have refused the text, having trimmed it and done nothing else.
#pragma once

#include "bgp_datatype/values.h"
#include "common/census.hpp"

namespace bgpdt {

/// What a text is made of: hexadecimal digits, dots, colons, hyphens, and others.
struct TextShape {
    static constexpr std::size_t longest = 183; ///< that any row reads: an EVPN key

    const char *text;
    Census field; ///< ahead of the first colon or other
    Census all;

    static constexpr TextShape of(const char *text)
    {
        constexpr FixedString known = "0123456789abcdefABCDEF.:-";
        const auto field = Census::of_field<known>(text);
        auto all = Census::of<known>(text + field.length());
        all += field;
        return {text, field, all};
    }

    /// Then the counts do not hold.
    constexpr bool is_too_long() const { return all.length() > longest; }

    constexpr char first() const { return *text; }
    constexpr char behind_field() const { return text[field.length()]; }
    /// Behind the first colon, if there is one.
    constexpr char behind_colon() const { return text[field.length() + 1]; }
    constexpr u32 dots_behind_field() const { return all.dots() - field.dots(); }
    constexpr u32 dots() const { return all.dots(); }
    constexpr u32 colons() const { return all.colons(); }
    constexpr u32 hyphens() const { return all.marks(); }
    constexpr u32 others() const { return all.strangers(); }
};

/// Twenty digits and four dots.
constexpr bool begins_with_esi(const TextShape &shape) { return shape.field.length() == 24 && shape.field.dots() == 4; }

constexpr bool may_be_ipv4(const TextShape &shape)
{
    return shape.dots() == 3 && shape.colons() == 0 && shape.hyphens() == 0 && shape.others() == 0;
}

// ------------------------------------------------------------------------------------------------ without others

/// The first field is an ESI, or a tag, a mere number, with a number or an IPv4 address behind it. A tag's key has one
/// such address, with a MAC address or without, or three.
constexpr bool may_be_evpn(const TextShape &shape)
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

/// Behind each colon stands an IPv4 address, but six dots and a colon stand anywhere. Between hyphens there are IPv6
/// addresses, of two colons or more each, and IPv4 ones, of four sections none or two.
constexpr bool may_be_mvpn(const TextShape &shape)
{
    const u32 colons = shape.colons();
    switch (shape.hyphens()) {
    case 0: return colons <= 3 && (shape.dots_behind_field() == 3 * colons || (colons == 1 && shape.dots() == 6));
    case 1: return colons >= 2;
    case 2: return colons >= 2 || shape.dots() >= 9;
    case 3: return shape.field.marks() <= 2 && (colons >= 8 || (colons >= 4 && shape.dots() == 6));
    default: return false;
    }
}

/// Behind the only colon stands a number without dots; octets have neither.
constexpr bool may_be_route_target(const TextShape &shape)
{
    if (shape.dots_behind_field() != 0)
        return false;
    return shape.colons() == 1 || (shape.colons() == 0 && shape.dots() == 0 && shape.hyphens() == 2);
}

constexpr bool may_be_ipv6(const TextShape &shape) { return shape.colons() >= 2 && shape.hyphens() == 0; }

// ------------------------------------------------------------------------------------------------ with others

/// A pair of brackets stands behind an ESI or a tag.
constexpr bool may_be_bracketed_evpn(const TextShape &shape)
{
    return shape.behind_field() == ':' && (shape.field.dots() == 0 || begins_with_esi(shape)) && shape.others() >= 2;
}

/// A slash ends the policy type, which may have a sign.
constexpr bool may_be_rpd(const TextShape &shape) { return shape.behind_field() == '/' || shape.first() == '+'; }

constexpr bool may_be_sr_policy(const TextShape &shape) { return shape.first() == '['; }

// ------------------------------------------------------------------------------------------------ with and without

/// Three numbers end in a hyphen each.
constexpr bool may_be_sdwan(const TextShape &shape) { return shape.hyphens() >= 3; }

// ------------------------------------------------------------------------------------------------ the rows

/// Rows as a set, a bit for each sub-kind.
constexpr u32 rows_of(auto... kind) { return (0U | ... | (1U << kind)); }

inline constexpr u32 mvpn_rows =
    rows_of(SYSDT_BOL_NG_TYPE_2, SYSDT_BOL_NG_TYPE_3, SYSDT_BOL_NG_TYPE_4_2, SYSDT_BOL_NG_TYPE_4_3, SYSDT_BOL_NG_TYPE_5,
            SYSDT_BOL_NG_TYPE_6, SYSDT_BOL_NG_TYPE_4_1);

constexpr u32 rows_if(bool may_be, u32 rows) { return may_be ? rows : 0; }

constexpr u32 rows_without_others(const TextShape &shape)
{
    return rows_if(may_be_evpn(shape), rows_of(SYSDT_BOL_EVN)) | rows_if(may_be_mvpn(shape), mvpn_rows) |
           rows_if(may_be_route_target(shape), rows_of(SYSDT_BOL_VRFRTEXT)) |
           rows_if(may_be_ipv6(shape), rows_of(SYSDT_BOL_IPV6));
}

constexpr u32 rows_with_others(const TextShape &shape)
{
    return rows_if(may_be_bracketed_evpn(shape), rows_of(SYSDT_BOL_EVN)) |
           rows_if(may_be_rpd(shape), rows_of(SYSDT_BOL_RPD)) |
           rows_if(may_be_sr_policy(shape), rows_of(SYSDT_BOL_SRPOLICY));
}

/// The rows that may read a text of that shape.
constexpr u32 rows_for(const TextShape &shape)
{
    if (shape.is_too_long())
        return 0;
    if (may_be_ipv4(shape))
        return rows_of(SYSDT_BOL_IPV4) | mvpn_rows; // which also read an address alone
    return rows_if(may_be_sdwan(shape), rows_of(SYSDT_BOL_SDWAN)) |
           (shape.others() == 0 ? rows_without_others(shape) : rows_with_others(shape));
}

} // namespace bgpdt
