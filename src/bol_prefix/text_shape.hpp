// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which rows may read a text, told from the characters that it is made of: a walk of seventeen parsers then asks one
/// or two.
///
/// A rule holds for every text that its row reads, and for some that it does not. It must not know more than that: a row
/// that a rule leaves out would have refused the text, having trimmed it and done nothing else.
#pragma once

#include "bgp_datatype/values.h"
#include "common/census.hpp"

namespace bgpdt {

/// What a trimmed text is made of.
struct TextShape {
    static constexpr std::size_t longest = 183; ///< that any row reads: an EVPN key

    char first;
    u32 dots;
    u32 colons;
    u32 hyphens;
    u32 others; ///< neither these nor hexadecimal digits

    /// @param text  of at most `longest` characters
    static TextShape of(const char *text)
    {
        const auto census = Census::of<"0123456789abcdefABCDEF.:-">(text);
        return {text[0], census.dots(), census.colons(), census.marks(), census.strangers()};
    }
};

/// Behind the digits of an IPv4 address's first octet stands a dot. The row does not trim: this looks at the text itself.
constexpr bool may_be_ipv4(const char *text)
{
    const char *at = text;
    while (format::is_digit(*at))
        ++at;
    return *at == '.' && at != text && at - text <= 3;
}

/// The route types without brackets have an IPv4 address or an ESI in dots, those from 6 on two addresses or more.
constexpr bool may_be_evpn(const TextShape &shape)
{
    if (shape.first == '[' || (shape.hyphens != 0 && shape.hyphens != 2 && shape.dots < 4))
        return false;
    return shape.dots >= 4 || shape.others >= 2 || (shape.dots == 3 && (shape.colons == 2 || shape.colons == 4));
}

/// An IPv4 address has three dots, an IPv6 address two colons or more.
constexpr bool may_be_mvpn(const TextShape &shape)
{
    if (shape.others != 0)
        return false;
    switch (shape.hyphens) {
    case 0: return shape.colons == 0 || (shape.colons <= 3 && shape.dots >= 3 * shape.colons);
    case 1: return shape.colons >= 2;
    case 2: return shape.colons >= 2 || shape.dots >= 9;
    case 3: return shape.colons >= 8 || (shape.colons >= 4 && shape.dots == 6);
    default: return false;
    }
}

constexpr bool may_be_route_target(const TextShape &shape)
{
    return shape.others == 0 && (shape.colons == 1 || (shape.colons == 0 && shape.dots == 0 && shape.hyphens == 2));
}

constexpr bool may_be_rpd(const TextShape &shape) { return shape.others >= 2 && shape.first != '['; }

constexpr bool may_be_sr_policy(const TextShape &shape) { return shape.first == '['; }

constexpr bool may_be_ipv6(const TextShape &shape)
{
    return shape.colons >= 2 && shape.hyphens == 0 && shape.others == 0;
}

constexpr bool may_be_sdwan(const TextShape &shape) { return shape.hyphens >= 3; }

/// Rows as a set, a bit for each sub-kind.
constexpr u32 rows_of(auto... kind) { return (0U | ... | (1U << kind)); }

/// The rows behind the first that may read a text of that shape.
constexpr u32 rows_for(const TextShape &shape)
{
    constexpr u32 mvpn = rows_of(SYSDT_BOL_NG_TYPE_2, SYSDT_BOL_NG_TYPE_3, SYSDT_BOL_NG_TYPE_4_2, SYSDT_BOL_NG_TYPE_4_3,
                                 SYSDT_BOL_NG_TYPE_5, SYSDT_BOL_NG_TYPE_6, SYSDT_BOL_NG_TYPE_4_1);
    return (may_be_evpn(shape) ? rows_of(SYSDT_BOL_EVN) : 0) | (may_be_mvpn(shape) ? mvpn : 0) |
           (may_be_route_target(shape) ? rows_of(SYSDT_BOL_VRFRTEXT) : 0) |
           (may_be_rpd(shape) ? rows_of(SYSDT_BOL_RPD) : 0) |
           (may_be_sr_policy(shape) ? rows_of(SYSDT_BOL_SRPOLICY) : 0) |
           (may_be_ipv6(shape) ? rows_of(SYSDT_BOL_IPV6) : 0) | (may_be_sdwan(shape) ? rows_of(SYSDT_BOL_SDWAN) : 0);
}

} // namespace bgpdt
