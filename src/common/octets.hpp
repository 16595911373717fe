// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The text forms that route distinguishers (RFC 4364), route targets and other extended communities (RFC 4360, 5668)
/// share: an administrator, a colon and a number in eight octets.
///
///     octets    0-1    2-3    4-5    6-7
///     IPv4      code   address       number        192.0.2.1:100
///     AS2       code   AS     number               64496:100
///     AS4       code   AS            number        65536:100
///     AS4DOT    code   AS high, low  number        1.0:100
#pragma once

#include "bgp_datatype/values.h"
#include "common/bytes.hpp"
#include "common/print.hpp"

namespace bgpdt {

/// The codes that a type stores in front of the value; both 4-octet AS forms have the same.
struct OctetCodes {
    u16 ipv4;
    u16 as2;
    u16 as4;
};

inline constexpr OctetCodes route_target_codes{0x0102, 0x0002, 0x0202};

inline void store_ipv4_form(SYSDT_Octets &out, const OctetCodes &codes, u32 address, u32 number)
{
    store_network(out.octets, u64{codes.ipv4} << 48 | u64{address} << 16 | number);
    out.form = VRF_RD_FORM_IPV4;
}

inline void store_as2_form(SYSDT_Octets &out, const OctetCodes &codes, u32 as, u32 number)
{
    store_network(out.octets, u64{codes.as2} << 48 | u64{as} << 32 | number);
    out.form = VRF_RD_FORM_AS2;
}

/// @param form  VRF_RD_FORM_AS4 or VRF_RD_FORM_AS4DOT
inline void store_as4_form(SYSDT_Octets &out, const OctetCodes &codes, u32 as, u32 number, u32 form)
{
    store_network(out.octets, u64{codes.as4} << 48 | u64{as} << 16 | number);
    out.form = form;
}

// Each reads one form and stores code, value and form. What follows the last number is not looked at.
// SYSDT_ERR_FAIL when a number is missing or too large; nothing is stored then.
u32 parse_ipv4_form(const char *text, const OctetCodes &codes, SYSDT_Octets &out);
u32 parse_as4dot_form(const char *text, const OctetCodes &codes, SYSDT_Octets &out);
/// A 2-octet AS number is taken with a 32-bit number, a larger one with a 16-bit number.
u32 parse_as_form(const char *text, const OctetCodes &codes, SYSDT_Octets &out);

/// Parses any form from a text of 1 to 21 digits, dots and colons, white space at its ends cut off.
u32 parse_octets(char *text, const OctetCodes &codes, SYSDT_Octets &out);

inline u32 octet_code(const SYSDT_Octets &value) { return load_network<u16>(value.octets); }
/// Sixteen or thirty-two bits of the octets, from the one numbered.
inline u16 octets16(const SYSDT_Octets &value, u32 from) { return load_network<u16>(value.octets + from); }
inline u32 octets32(const SYSDT_Octets &value, u32 from) { return load_network<u32>(value.octets + from); }

/// How the six octets of a value are split into numbers.
enum class OctetSplit : u8 {
    unknown, ///< the code is not one of the type's
    nothing, ///< a pair of code and form without a format
    ipv4,    ///< four octets of address, 16 bits
    as2,     ///< 16 bits, 32 bits
    as4,     ///< 32 bits, 16 bits
    as4dot,  ///< 16 bits, 16 bits, 16 bits
};

/// The form decides, for the code of 2-octet AS numbers too; only the IPv4 code needs none.
constexpr OctetSplit split_of(u32 code, u32 form, const OctetCodes &codes)
{
    if (code == codes.ipv4)
        return OctetSplit::ipv4;
    if (code != codes.as2 && code != codes.as4)
        return OctetSplit::unknown;
    switch (form) {
    case VRF_RD_FORM_AS2: return code == codes.as2 ? OctetSplit::as2 : OctetSplit::nothing;
    case VRF_RD_FORM_AS4: return OctetSplit::as4;
    case VRF_RD_FORM_AS4DOT: return OctetSplit::as4dot;
    default: return OctetSplit::nothing;
    }
}

/// Prints the octets as they are written; nothing for `unknown` and `nothing`.
void print_octets(const SYSDT_Octets &value, OctetSplit split, Writer &out);

} // namespace bgpdt
