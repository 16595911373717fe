// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Kind 16 of the route keys, "SD-WAN": an SD-WAN route (draft-ietf-idr-sdwan-edge-discovery).
///
///      0    4      6   8            12     16          20          36       37
///     +----+------+---+------------+------+-----------+-----------+--------+---- zero ----
///     | 16 | type | 0 | port local | site | IPv4 node | IPv6 node | family |   u16, u32 in host order; IPv6 in
///     +----+------+---+------------+------+-----------+-----------+--------+   network order
///
/// Text: "1-2-3-192.0.2.1" of 13 to 43 characters, "1-2-3-2001:db8::1" of 6 to 69. White space at the ends is cut off.
///
/// Irregularities, all deliberate:
///  (1) Of the text and what it prints as, only the lengths are compared: a text of the same length is read whatever
///      its characters; a negative number, which counts modulo 2^16 or 2^32, prints longer and makes up for leading
///      zeros and trailing characters.
///  (2) Any dot makes it the IPv4 form, the one in an IPv6 address too: an address that prints with a dotted tail (RFC
///      5952, section 5) is read only from hexadecimal digits of just that length, and does not read back.
///  (3) An IPv6 address that is none has a status of its own in the parser.
///  (4) Every family byte but 0 prints the IPv6 address; the other address does not matter.
///  (5) A value of another sub-kind takes the output block with it, the caller's too.
///  (6) Every mode but 4 reads and prints text.
///  (7) Values are ordered by their bytes, unnamed ones too.
///  (8) A script table holds both addresses whatever the family, and must hold both to be read.
///  (9) A script's numbers are cut: the route type to 16 bits, the family and the address bytes to 8.
///  (10) Scripts do not see the bytes that no field names.
///  (11) A script table is made for six fields, though it holds seven.
///  (12) Endian works on the bare key, and swaps the IPv4 address only where the family names it.
#include "route_keys/policy/key.hpp"

using namespace bgpdt;
using namespace bgpdt::policy;

namespace {

struct Text {
    using Key = SYSDT_Sdwan;
    using Numbers = std::tuple<u16, u32, u32>;

    static Numbers numbers_of(const Key &key) { return {u16{key.routeType}, u32{key.portLocalId}, u32{key.siteId}}; }
    static void store(Key &key, const Numbers &numbers)
    {
        key.routeType = std::get<0>(numbers);
        key.portLocalId = std::get<1>(numbers);
        key.siteId = std::get<2>(numbers);
    }

    static constexpr char ipv4_form[] = "%hu-%u-%u-%q"; // (1)
    static constexpr Lengths ipv4_lengths{13, 43};
    static constexpr char ipv6_form[] = "%hu-%u-%u-%s"; // (1)
    static constexpr Lengths ipv6_lengths{6, 69};
    static constexpr std::size_t dropped = 0;
};

constexpr auto sdwan = [] {
    auto type = policy_row<SYSDT_BolSdwan, SYSDT_BOL_SDWAN, print_either_form<Text>>( // (4) (5) (6)
        "X-X-X-X.X.X.X", bol_sdwan_layout);
    type.parse = [](u32, char *text, SYSDT_BolSdwan &value) { return SYSDT_Str2SdwanPrefix(text, &value); };
    return type;
}();

/// The key of a value; null for null.
template <class Value>
auto key_of(Value *value)
{
    return value == nullptr ? nullptr : &value->key;
}

} // namespace

u32 SYSDT_Str2SdwanPrefix(char *text, SYSDT_BolSdwan *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    value->subKind = SYSDT_BOL_SDWAN;
    return parse_either_form<Text>(text, value->key); // (2) (3)
}

u32 SYSDT_Str2SdwanV4Prefix(char *text, SYSDT_BolSdwan *value)
{
    return text == nullptr || value == nullptr ? SYSDT_ERR_NULL_PTR
                                               : parse_ipv4_form<Text>(text, std::strlen(text), value->key);
}

u32 SYSDT_Str2SdwanV6Prefix(char *text, SYSDT_BolSdwan *value)
{
    return text == nullptr || value == nullptr ? SYSDT_ERR_NULL_PTR
                                               : parse_ipv6_form<Text>(text, std::strlen(text), value->key);
}

u32 SYSDT_SdwanPrefix2Str(const SYSDT_BolSdwan *value, char *buffer, u32 *outputLength)
{
    return print_to_buffer<sdwan.limit>(key_of(value), buffer, outputLength, print_either_form<Text>);
}

u32 SYSDT_SdwanV4Prefix2Str(const SYSDT_BolSdwan *value, char *buffer, u32 *outputLength)
{
    return print_to_buffer<sdwan.limit>(key_of(value), buffer, outputLength, print_ipv4_form<Text>);
}

u32 SYSDT_SdwanV6Prefix2Str(const SYSDT_BolSdwan *value, char *buffer, u32 *outputLength)
{
    return print_to_buffer<sdwan.limit>(key_of(value), buffer, outputLength, print_ipv6_form<Text>);
}

/// Three numbers end in a hyphen each.
BGPDT_MAY_READ(SYSDT_SdwanPrefixFormatIn, shape.hyphens() >= 3)
BGPDT_FORMAT_IN(SYSDT_SdwanPrefixFormatIn, sdwan)
BGPDT_FORMAT_OUT(SYSDT_SdwanPrefixFormatOut, sdwan)
BGPDT_CHECK(SYSDT_SdwanPrefixCheck, sdwan)
BGPDT_HELP(SYSDT_SdwanPrefixHelp, sdwan)

u32 SYSDT_SdwanPrefixLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_BOL_SIZE); status != SYSDT_OK)
        return status;
    const auto parent = script::Table::at(state, table);
    script::Table::create(state, 0, 6).set_fields(bol_sdwan_fields, static_cast<const u8 *>(data)); // (8) (10) (11)
    parent.set(name);
    return SYSDT_OK;
}

i32 SYSDT_SdwanPrefixCompare(const void *, u32 length, const void *first, const void *second)
{
    return compare_policy(length, first, second); // (7)
}

u32 SYSDT_SdwanPrefixEndian(void *first, u32, u32, void *key)
{
    return swap_key<SYSDT_Sdwan>(first, key, bol_sdwan_layout); // (12)
}

u32 SYSDT_SdwanPrefixLuaGet(void *state, i32 tableIndex, void *value)
{
    return read_bol_fields(state, value, tableIndex, key_fields(bol_sdwan_layout)); // (8) (9)
}

u32 SYSDT_SdwanPrefixNewLuaGet(void *state, void *value, i32 table)
{
    return SYSDT_SdwanPrefixLuaGet(state, table, value);
}
