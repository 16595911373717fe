// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// VRFRTV6: a route target with an IPv6 address as administrator (RFC 5701).
///
///      0      2                 18       20     24
///     +------+-----------------+--------+------+
///     | code | IPv6 address    | number | type |   code, address, number in network order, type u32 in host order
///     +------+-----------------+--------+------+
///
/// Text: "2001:db8::1.1", the address, a dot and the local number, 1 to 47 characters. White space at the ends is cut
/// off.
///
/// Irregularities, all deliberate:
///  (1) The local number is one digit, 0 or 1, though its field has 16 bits; every value of the field prints.
///  (2) The parser answers SYSDT_ERR_PARAM, not SYSDT_ERR_FAIL.
///  (3) The last dot always stands before the number: an address with a dotted tail needs one more dot.
///  (4) Mode 3 gives the text without terminator, no copy of the value.
///  (5) An unset one prints like any other; code and type word do not matter to printing.
///  (6) A value shorter than 24 bytes prints as if zeros followed.
///  (7) A script's numbers are cut to their low 8 bits, the type word's too, and no value is refused.
///  (8) Endian turns the type word only.
#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/callbacks.hpp"
#include "common/ipv6.hpp"
#include "common/key_address.hpp"
#include "common/print.hpp"
#include "common/trimmed.hpp"

using namespace bgpdt;

namespace {

constexpr u16 ipv6_specific_route_target = 0x000C; // RFC 5701
constexpr std::size_t longest_text = 47;

u32 print_value(const SYSDT_VrfRtV6 &value, u8, Writer &out)
{
    char address[ipv6_text_size];
    PAL_Inet_ntoa_b_ipv6(value.octets + 2, address);
    print<"%s.%u">(out, address, u32{load_network<u16>(value.octets + 18)});
    return SYSDT_OK;
}

/// SYSDT_VrfRtV6FormatOutGetMem is the block that FormatOut takes where the caller has none.
constexpr Type<SYSDT_VrfRtV6> ipv6_route_target{
    .kind = SYSDT_TYPE_VRFRTV6,
    .parse = [](u32, char *text, SYSDT_VrfRtV6 &value) { return SYSDT_Str2VrfRtV6(text, &value); },
    .mode3 = Mode3::bare_text, // (4)
    .reads = Input::passed,    // (6)
    .print = print_value,      // (5)
    .help = {"STRING<4-47>"},
    .layout = ipv6_route_target_layout, // (7) (8)
};

} // namespace

u32 SYSDT_Str2VrfRtV6(char *text, SYSDT_VrfRtV6 *output)
{
    if (text == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = trimmed(text, 1, longest_text).text;
    if (text == nullptr)
        return SYSDT_ERR_PARAM;                                               // (2)
    const char *const dot = std::strrchr(text, '.');                          // (3)
    if (dot == nullptr || (dot[1] != '0' && dot[1] != '1') || dot[2] != '\0') // (1)
        return SYSDT_ERR_PARAM;
    char address[longest_text + 1];
    const auto length = static_cast<std::size_t>(dot - text);
    std::memcpy(address, text, length);
    address[length] = '\0';
    if (parse_inet6(address, output->octets + 2) != SYSDT_OK)
        return SYSDT_ERR_PARAM;
    store_network(output->octets, ipv6_specific_route_target);
    store_network(output->octets + 18, static_cast<u16>(dot[1] - '0'));
    output->type = 0;
    return SYSDT_OK;
}

BGPDT_FORMAT_IN(SYSDT_VrfRtV6FormatIn, ipv6_route_target)
BGPDT_FORMAT_OUT(SYSDT_VrfRtV6FormatOut, ipv6_route_target)
BGPDT_CHECK(SYSDT_VrfRtV6Check, ipv6_route_target)
BGPDT_HELP(SYSDT_VrfRtV6Help, ipv6_route_target)
BGPDT_COMPARE_BYTES(SYSDT_VrfRtV6Compare)
BGPDT_LUA_SET(SYSDT_VrfRtV6LuaSet, ipv6_route_target)
BGPDT_LUA_GET(SYSDT_VrfRtV6LuaGet, ipv6_route_target)
BGPDT_ENDIAN(SYSDT_VrfRtV6Endian, ipv6_route_target)
