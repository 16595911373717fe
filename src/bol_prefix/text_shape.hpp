// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which rows may read a text, told from the characters that it is made of: a walk of seventeen parsers then asks one
/// or two.
///
/// A rule holds for every text that its row reads, and for some that it does not. It must not know more than that: a row
/// that a rule leaves out would have refused the text, having trimmed it and done nothing else.
#pragma once

#include <cstring>

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

/// A rule for each row that reads a trimmed text.
using TextRule = bool (*)(const TextShape &shape);

constexpr bool may_be_evpn(const TextShape &shape)
{
    if (shape.first == '[' || (shape.hyphens != 0 && shape.hyphens != 2 && shape.colons < 6 && shape.dots < 4))
        return false;
    return shape.colons >= 6 || shape.dots >= 4 || shape.others >= 2 ||
           (shape.dots == 3 && (shape.colons == 2 || shape.colons == 4));
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

/// By sub-kind.
inline constexpr TextRule text_rules[SYSDT_BOL_KINDS] = {
    nullptr,     may_be_evpn, may_be_mvpn,         may_be_mvpn, may_be_mvpn,  may_be_mvpn,
    may_be_mvpn, may_be_mvpn, may_be_route_target, nullptr,     nullptr,      nullptr,
    may_be_rpd,  may_be_mvpn, may_be_sr_policy,    may_be_ipv6, may_be_sdwan,
};

} // namespace bgpdt
