// SPDX-License-Identifier: Apache-2.0
/// @file
/// The fields of an EVPN route key's text: numbers, addresses and Ethernet segment identifiers (RFC 7432, section 5).
///
/// An ESI is "0011.2233.4455.6677.8899", five groups of four hexadecimal digits, stored as ten bytes in that order. Its
/// first byte is its type. Read strictly, it has type 00 or 01, in an auto-discovery route 00 to 05.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (5) An ESI of zeros is refused, as one of Fs is.
///  (7) A length ahead of an IPv6 address goes up to 128.
///  (10) Behind an IPv6 address that is not the last field there must be anything but a colon.
#include <algorithm>
#include <cstring>

#include "common/bytes.hpp"
#include "route_keys/evpn.hpp"

using namespace bgpdt;
using namespace bgpdt::evpn;

namespace {

constexpr std::size_t esi_size = 10;

bool is_hex(char character) { return format::digit_value<16>(character) < 16; }

bool is_filled_with(u8 byte, const u8 (&esi)[esi_size])
{
    return std::all_of(esi, esi + esi_size, [byte](u8 each) { return each == byte; });
}

/// Takes a digit behind those of the number and moves behind it; false, if there is none.
bool take_digit(const char *&text, u32 &number)
{
    const u32 digit = format::digit_value<16>(*text);
    if (digit >= 16)
        return false;
    number = number << 4 | digit;
    ++text;
    return true;
}

/// Reads groups of 1 to 4 digits, at most five.
bool read_groups(const char *text, u8 (&esi)[esi_size])
{
    for (std::size_t stored = 0; stored < esi_size; stored += sizeof(u16)) {
        u32 number = 0;
        if (!take_digit(text, number))
            return false;
        if (take_digit(text, number))
            if (take_digit(text, number))
                take_digit(text, number);
        store_network(esi + stored, static_cast<u16>(number));
        if (*text++ != '.')
            return text[-1] == '\0';
    }
    return false;
}

/// Whether a type that is read strictly may have that digit, the first or the second.
u32 check_top_digit(char digit, u32 position, u32 lenient, char highest_second)
{
    const char highest = position == 0 ? '0' : highest_second;
    return lenient != 0 || position > 1 || (digit >= '0' && digit <= highest) ? SYSDT_OK : SYSDT_ERR_FAIL;
}

bool is_admitted(const char *esi, EsiTypes types)
{
    if (types == EsiTypes::any)
        return true;
    const char highest = types == EsiTypes::to_05 ? '5' : '1';
    if (check_top_digit(esi[0], 0, 0, highest) != SYSDT_OK || check_top_digit(esi[1], 1, 0, highest) != SYSDT_OK)
        return false;
    return types != EsiTypes::to_00 || esi[1] == '0' || !is_hex(esi[2]);
}

} // namespace

namespace bgpdt::evpn {

u32 read_esi(const char *text, std::size_t length, EsiTypes types, u8 *out)
{
    if (length != esi_text_length)
        return SYSDT_ERR_FAIL;
    char copy[esi_text_length + 1];
    std::memcpy(copy, text, esi_text_length);
    copy[esi_text_length] = '\0';
    const char *const kept = SYSDT_BTrim(copy);
    u8 esi[esi_size]{};
    if (!read_groups(kept, esi) || !is_admitted(kept, types))
        return SYSDT_ERR_FAIL;
    if (is_filled_with(0x00, esi) || is_filled_with(0xFF, esi))
        return SYSDT_ERR_FAIL; // (5)
    std::memcpy(out, esi, sizeof esi);
    return SYSDT_OK;
}

u32 read_ipv4(const char *text, SYSDT_EvpnAddress &out)
{
    u32 address = 0;
    if (SYSDT_Str2Ipv4(text, &address) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    out.ipv4 = address;
    out.family = 0;
    return SYSDT_OK;
}

char *read_bracketed(char *at, SYSDT_EvpnAddress &out)
{
    char *const end = *at == '[' ? std::strchr(at, ']') : nullptr;
    const std::size_t length = end == nullptr ? 0 : static_cast<std::size_t>(end - at) - 1;
    if (length == 0 || length > longest_field)
        return nullptr;
    if (const Cut address(at + 1, end); SYSDT_Str2Ipv6(address.get(), out.ipv6) != SYSDT_OK)
        return nullptr;
    out.family = 1;
    return end + 1;
}

u32 read_sized(char *at, Families families, SYSDT_EvpnSizedAddress &out)
{
    u32 length = 0;
    if (take_number(at, {3, 0, UINT8_MAX}, length) != SYSDT_OK) // (7)
        return SYSDT_ERR_FAIL;
    ++at;
    if (families == Families::ipv4 || (families == Families::either && *at != '[' && !has_ipv6(at))) {
        out.length = static_cast<u8>(length);
        return read_ipv4(at, out.address);
    }
    SYSDT_EvpnSizedAddress ip{static_cast<u8>(length), {}};
    const char *const end = length <= 128 ? read_bracketed(at, ip.address) : nullptr; // (7)
    if (end == nullptr || *end != '\0')
        return SYSDT_ERR_FAIL;
    out = ip;
    return SYSDT_OK;
}

} // namespace bgpdt::evpn

u32 SYSDT_CheckEsiTopTwo(char character, u32 position, u32 lenient)
{
    return check_top_digit(character, position, lenient, '1');
}

u32 SYSDT_CheckEsiTopTwoForAd(char character, u32 position, u32 lenient)
{
    return check_top_digit(character, position, lenient, '5');
}

u32 SYSDT_Str2EsiBas(const char *text, u8 out[10], u32 mode, u32 lenient)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const EsiTypes strict = mode == 0 ? EsiTypes::to_00 : EsiTypes::to_01;
    return read_esi(text, std::strlen(text), types_of(lenient, strict), out);
}

u32 SYSDT_Str2EsiForAd(const char *text, u8 out[10], u32, u32 lenient)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return read_esi(text, std::strlen(text), types_of(lenient, EsiTypes::to_05), out);
}

u32 SYSDT_Str2EvpnUintNum(char **cursor, u32 *out, u32 maxDigits, u32 min, u32 max, u32 isLast)
{
    if (cursor == nullptr || *cursor == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const Limits limits{maxDigits, min, max};
    if (isLast == 0)
        return take_number(*cursor, limits, *out);
    const u32 status = read_last_number(*cursor, limits, *out);
    if (status == SYSDT_OK)
        *cursor += std::strlen(*cursor);
    return status;
}

u32 SYSDT_Str2EvpnIpAddr(char **cursor, SYSDT_EvpnAddress *field, u32 isLast)
{
    if (cursor == nullptr || *cursor == nullptr || field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const bool to_end = isLast != 0 && **cursor != '[';
    const u32 status = take_address(*cursor, isLast != 0, *field);
    if (to_end)
        *cursor += std::strlen(*cursor);
    return status;
}

u32 SYSDT_Str2EvpnEsi(char **cursor, u8 out[10], u32 isLast, u32)
{
    if (cursor == nullptr || *cursor == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return take_esi(*cursor, isLast != 0, EsiTypes::to_01, out);
}

u32 SYSDT_Str2EvpnIpv6(char *text, u8 out[16], u32 *outLength)
{
    if (text == nullptr || out == nullptr || outLength == nullptr)
        return SYSDT_ERR_NULL_PTR;
    SYSDT_EvpnSizedAddress ip{};
    if (read_sized(text, Families::ipv6, ip) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    std::memcpy(out, ip.address.ipv6, sizeof ip.address.ipv6);
    *outLength = ip.length;
    return SYSDT_OK;
}
