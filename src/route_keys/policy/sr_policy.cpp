// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Kind 14 of the route keys, "SRPOLICY": a segment routing policy (RFC 9256, RFC 9830).
///
///      0    4               8        12              16              32       33
///     +----+---------------+--------+---------------+---------------+--------+---- zero ----
///     | 14 | distinguisher | colour | IPv4 endpoint | IPv6 endpoint | family |   u32 in host order; IPv6 in network
///     order
///     +----+---------------+--------+---------------+---------------+--------+---- zero ----
///
/// Text: "[1][2][192.0.2.1]" of 15 to 42 characters, "[1][2][2001:db8::1]" of 8 to 67. White space at the ends is cut
/// off.
///
/// Irregularities, all deliberate:
///  (1) Of the text and what it prints as, only the lengths are compared: a text of the same length is read whatever
///      its characters; a negative number, which counts modulo 2^32, prints longer and makes up for leading zeros and
///      trailing characters.
///  (2) The closing bracket is not looked at: the IPv6 form drops the last character whatever it is, and an IPv4 text
///      may have another one there, or leave it out for a leading zero or a sign.
///  (3) Any dot makes it the IPv4 form, the one in an IPv6 endpoint too: an endpoint that prints with a dotted tail
///      (RFC 5952, section 5) is read only from hexadecimal digits of just that length, and does not read back.
///  (4) An IPv6 endpoint that is none has a status of its own in the parser.
///  (5) Every family byte but 0 prints the IPv6 endpoint; the other endpoint does not matter.
///  (6) A value of another sub-kind takes the output block with it, the caller's too.
///  (7) Every mode but 4 reads and prints text.
///  (8) Values are ordered by their bytes, unnamed ones too.
///  (9) A script table holds both endpoints whatever the family, and must hold both to be read.
///  (10) A script's family and endpoint bytes keep their low 8 bits.
///  (11) Scripts do not see the bytes that no field names.
///  (12) Endian works on the bare key, and swaps the IPv4 endpoint only where the family names it.
#include "common/bytes.hpp"
#include "route_keys/policy/key.hpp"

using namespace bgpdt;
using namespace bgpdt::policy;

namespace {

struct Text {
    using Key = SYSDT_SrPolicy;
    using Numbers = std::tuple<u32, u32>;

    static Numbers numbers_of(const Key &key) { return {u32{key.distinguisher}, u32{key.colour}}; }
    static void store(Key &key, const Numbers &numbers)
    {
        key.distinguisher = std::get<0>(numbers);
        key.colour = std::get<1>(numbers);
    }

    static constexpr char ipv4_form[] = "[%u][%u][%q]"; // (1) (2)
    static constexpr Lengths ipv4_lengths{15, 42};
    static constexpr char ipv6_form[] = "[%u][%u][%s]"; // (1)
    static constexpr Lengths ipv6_lengths{8, 67};
    static constexpr std::size_t dropped = 1; // (2)
};

constexpr auto sr_policy = [] {
    auto type = policy_row<SYSDT_BolSrPolicy, SYSDT_BOL_SRPOLICY, print_either_form<Text>>( // (5) (6) (7)
        "[X][X][X.X.X.X]", bol_sr_policy_layout);
    type.parse = [](u32, char *text, SYSDT_BolSrPolicy &value) {
        value.subKind = SYSDT_BOL_SRPOLICY;
        return SYSDT_Str2SrPolicyPrefix(text, &value.key);
    };
    return type;
}();

} // namespace

u32 SYSDT_Str2SrPolicyPrefix(char *text, SYSDT_SrPolicy *key)
{
    return text == nullptr || key == nullptr ? SYSDT_ERR_NULL_PTR : parse_either_form<Text>(text, *key); // (3) (4)
}

u32 SYSDT_Str2Srv4PolicyPrefix(char *text, SYSDT_SrPolicy *key)
{
    return text == nullptr || key == nullptr ? SYSDT_ERR_NULL_PTR
                                             : parse_ipv4_form<Text>(text, std::strlen(text), *key);
}

u32 SYSDT_Str2Srv6PolicyPrefix(char *text, SYSDT_SrPolicy *key)
{
    return text == nullptr || key == nullptr ? SYSDT_ERR_NULL_PTR
                                             : parse_ipv6_form<Text>(text, std::strlen(text), *key);
}

u32 SYSDT_SrPolicyPrefix2Str(const SYSDT_SrPolicy *key, char *buffer, u32 *outputLength)
{
    return print_to_buffer<sr_policy.limit>(key, buffer, outputLength, print_either_form<Text>);
}

u32 SYSDT_Srv4PolicyPrefix2Str(const SYSDT_SrPolicy *key, char *buffer, u32 *outputLength)
{
    return print_to_buffer<sr_policy.limit>(key, buffer, outputLength, print_ipv4_form<Text>);
}

u32 SYSDT_Srv6PolicyPrefix2Str(const SYSDT_SrPolicy *key, char *buffer, u32 *outputLength)
{
    return print_to_buffer<sr_policy.limit>(key, buffer, outputLength, print_ipv6_form<Text>);
}

u32 SYSDT_Ipv6AddrNtoH(const SYSDT_SrPolicy *key, u16 groups[8])
{
    if (key == nullptr || groups == nullptr)
        return SYSDT_ERR_NULL_PTR;
    for (std::size_t i = 0; i < 8; ++i)
        groups[i] = load_network<u16>(key->ipv6 + 2 * i);
    return SYSDT_OK;
}

BGPDT_MAY_READ(SYSDT_SrPolicyPrefixFormatIn, shape.first() == '[')
BGPDT_FORMAT_IN(SYSDT_SrPolicyPrefixFormatIn, sr_policy)
BGPDT_FORMAT_OUT(SYSDT_SrPolicyPrefixFormatOut, sr_policy)
BGPDT_CHECK(SYSDT_SrPolicyPrefixCheck, sr_policy)
BGPDT_HELP(SYSDT_SrPolicyPrefixHelp, sr_policy)
BGPDT_LUA_SET(SYSDT_SrPolicyPrefixLuaSet, sr_policy) // (9) (11)

i32 SYSDT_SrPolicyPrefixCompare(const void *, u32 length, const void *first, const void *second)
{
    return compare_policy(length, first, second); // (8)
}

u32 SYSDT_SrPolicyPrefixEndian(void *first, u32, u32, void *key)
{
    return swap_key<SYSDT_SrPolicy>(first, key, bol_sr_policy_layout); // (12)
}

u32 SYSDT_SrPolicyPrefixLuaGet(void *state, i32 tableIndex, void *value)
{
    return read_bol_fields(state, value, tableIndex, key_fields(bol_sr_policy_layout)); // (9) (10)
}

u32 SYSDT_SrPolicyPrefixNewLuaGet(void *state, void *value, i32 table)
{
    return SYSDT_SrPolicyPrefixLuaGet(state, table, value);
}
