// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Kind 12 of the route keys, "RPD": a route-policy-distribution route (draft-ietf-idr-rpd).
///
///      0    4             5   6               10     14
///     +----+-------------+---+---------------+------+---- zero ----
///     | 12 | policy type | 0 | distinguisher | peer |   all but the type u32 in host order
///     +----+-------------+---+---------------+------+---- zero ----
///
/// Text: "1/192.0.2.1/100", type, peer and distinguisher, 11 to 31 characters. White space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) Of the text and what it prints as, only the lengths are compared: leading zeros, signs and trailing characters
///      make a text too long, but a negative number, which counts modulo 2^32, prints longer and makes up for them.
///  (2) Only the text's policy type is limited, to 0 and 1; whatever is stored prints and goes through scripts.
///  (3) A value of another sub-kind takes the output block with it, the caller's too.
///  (4) Check wants the 27 bytes of the bare key and refuses the value's 89. Endian works on the bare key too.
///  (5) Every mode but 4 reads and prints text.
///  (6) Values are ordered by their bytes: distinguisher before peer, and what no text fills counts too.
///  (7) LuaGet wants "bolType" 12; what it stored before a failure stays, a wrong sub-kind too.
///  (8) A script's policy type keeps its low 8 bits.
///  (9) Scripts do not see the bytes that no field names.
#include "route_keys/policy/key.hpp"

using namespace bgpdt;
using namespace bgpdt::policy;

namespace {

u32 parse_text(const Trimmed &text, SYSDT_Rpd &key)
{
    u32 type = 0;
    u32 peer = 0;
    u32 distinguisher = 0;
    if (text.text == nullptr || !scan_back<"%u/%q/%u">(text.text, text.length, type, peer, distinguisher) ||
        type > 1) // (1) (2)
        return SYSDT_ERR_FAIL;
    key.policyType = static_cast<u8>(type);
    key.distinguisher = distinguisher;
    key.peer = peer;
    return SYSDT_OK;
}

u32 print_text(const SYSDT_Rpd &key, Writer &out)
{
    print<"%hhu/%q/%u">(out, key.policyType, u32{key.peer}, u32{key.distinguisher});
    return SYSDT_OK;
}

constexpr auto rpd = [] {
    auto type = policy_row<SYSDT_BolRpd, SYSDT_BOL_RPD, print_text>("X/X.X.X.X/X", bol_rpd_layout); // (3) (5)
    type.parse = [](u32, char *text, SYSDT_BolRpd &value) {
        value.subKind = SYSDT_BOL_RPD;
        return SYSDT_Str2RpdPrefix(text, &value.key);
    };
    return type;
}();

constexpr Type<SYSDT_Rpd> bare_key{.kind = SYSDT_TYPE_BOLPREFIX};

} // namespace

u32 SYSDT_Str2RpdPrefix(char *text, SYSDT_Rpd *key)
{
    if (text == nullptr || key == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return parse_text(trimmed(text, 11, 31), *key);
}

u32 SYSDT_RpdPrefix2Str(const SYSDT_Rpd *key, char *buffer, u32 *outputLength)
{
    return print_to_buffer<rpd.limit>(key, buffer, outputLength, print_text);
}

/// A slash ends the policy type, which may have a sign.
BGPDT_MAY_READ(SYSDT_RpdPrefixFormatIn, shape.behind_field() == '/' || shape.first() == '+')
BGPDT_FORMAT_IN(SYSDT_RpdPrefixFormatIn, rpd)
BGPDT_FORMAT_OUT(SYSDT_RpdPrefixFormatOut, rpd)
BGPDT_CHECK(SYSDT_RpdPrefixCheck, bare_key) // (4)
BGPDT_HELP(SYSDT_RpdPrefixHelp, rpd)
BGPDT_LUA_SET(SYSDT_RpdPrefixLuaSet, rpd)                                 // (9)
BGPDT_BOL_LUA_GET(SYSDT_RpdPrefixLuaGet, bol_rpd_layout, SYSDT_BOL_RPD)   // (7) (8)
BGPDT_SCRIPT_READER(SYSDT_RpdPrefixNewLuaGet, key_fields(bol_rpd_layout)) // (8)

i32 SYSDT_RpdPrefixCompare(const void *, u32 length, const void *first, const void *second)
{
    return compare_policy(length, first, second); // (6)
}

u32 SYSDT_RpdPrefixEndian(void *first, u32, u32, void *key)
{
    return swap_key<SYSDT_Rpd>(first, key, bol_rpd_layout); // (4)
}
