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
constexpr std::size_t esi_text_length = 24;

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

using CheckTopDigit = u32(char character, u32 position, u32 lenient);

/// Whether the ESI is of a type that may be read. Mode 1 asks for what the digits' check has already seen to.
bool is_type_admitted(const char *text, CheckTopDigit *check, u32 mode, u32 lenient)
{
    if (check(text[0], 0, lenient) != SYSDT_OK || check(text[1], 1, lenient) != SYSDT_OK)
        return false;
    return mode != 0 || lenient != 0 || text[1] == '0' || !is_hex(text[2]);
}

u32 read_esi(const char *text, u8 *out, CheckTopDigit *check, u32 mode, u32 lenient)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (std::strlen(text) != esi_text_length)
        return SYSDT_ERR_FAIL;
    char copy[esi_text_length + 1];
    std::memcpy(copy, text, sizeof copy);
    const char *const kept = SYSDT_BTrim(copy);
    u8 esi[esi_size]{};
    if (!read_groups(kept, esi) || !is_type_admitted(kept, check, mode, lenient))
        return SYSDT_ERR_FAIL;
    if (is_filled_with(0x00, esi) || is_filled_with(0xFF, esi))
        return SYSDT_ERR_FAIL; // (5)
    std::memcpy(out, esi, sizeof esi);
    return SYSDT_OK;
}

} // namespace

namespace bgpdt::evpn {

Cut take_field(char *&at, bool last, std::size_t most)
{
    char *const field = at;
    char *const end = last ? field + std::strlen(field) : std::strchr(field, ':');
    const std::size_t length = end == nullptr ? 0 : static_cast<std::size_t>(end - field);
    if (length == 0 || length > (last ? most : std::min(most, longest_field)))
        return {nullptr, nullptr};
    at = end;
    return {field, end};
}

u32 read_ipv4(const char *text, SYSDT_EvpnAddress &out)
{
    u32 address = 0;
    if (text == nullptr || SYSDT_Str2Ipv4(text, &address) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    out.ipv4 = address;
    out.family = 0;
    return SYSDT_OK;
}

u32 read_bracketed(char *&at, SYSDT_EvpnAddress &out)
{
    char *const end = *at == '[' ? std::strchr(at, ']') : nullptr;
    const std::size_t length = end == nullptr ? 0 : static_cast<std::size_t>(end - at) - 1;
    if (length == 0 || length > longest_field)
        return SYSDT_ERR_FAIL;
    if (const Cut address(at + 1, end); SYSDT_Str2Ipv6(address.get(), out.ipv6) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    out.family = 1;
    at += length + 2;
    return SYSDT_OK;
}

} // namespace bgpdt::evpn

u32 SYSDT_CheckEsiTopTwo(char character, u32 position, u32 lenient)
{
    const char highest = position == 0 ? '0' : '1';
    return lenient != 0 || position > 1 || (character >= '0' && character <= highest) ? SYSDT_OK : SYSDT_ERR_FAIL;
}

u32 SYSDT_CheckEsiTopTwoForAd(char character, u32 position, u32 lenient)
{
    const char highest = position == 0 ? '0' : '5';
    return lenient != 0 || position > 1 || (character >= '0' && character <= highest) ? SYSDT_OK : SYSDT_ERR_FAIL;
}

u32 SYSDT_Str2EsiBas(const char *text, u8 out[10], u32 mode, u32 lenient)
{
    return read_esi(text, out, SYSDT_CheckEsiTopTwo, mode, lenient);
}

u32 SYSDT_Str2EsiForAd(const char *text, u8 out[10], u32, u32 lenient)
{
    return read_esi(text, out, SYSDT_CheckEsiTopTwoForAd, 1, lenient);
}

u32 SYSDT_Str2EvpnUintNum(char **cursor, u32 *out, u32 maxDigits, u32 min, u32 max, u32 isLast)
{
    if (cursor == nullptr || *cursor == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return take_number(*cursor, isLast != 0, {maxDigits, min, max}, *out);
}

u32 SYSDT_Str2EvpnIpAddr(char **cursor, SYSDT_EvpnAddress *field, u32 isLast)
{
    if (cursor == nullptr || *cursor == nullptr || field == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (**cursor != '[')
        return read_ipv4(take_field(*cursor, isLast != 0).get(), *field);
    const u32 status = read_bracketed(*cursor, *field);
    return status == SYSDT_OK && isLast == 0 && **cursor == ':' ? SYSDT_ERR_FAIL : status; // (10)
}

u32 SYSDT_Str2EvpnEsi(char **cursor, u8 out[10], u32 isLast, u32)
{
    if (cursor == nullptr || *cursor == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const Cut esi = take_field(*cursor, isLast != 0, esi_text_length);
    return esi.get() == nullptr ? SYSDT_ERR_FAIL : SYSDT_Str2EsiBas(esi.get(), out, 1, 0);
}

u32 SYSDT_Str2EvpnIpv6(char *text, u8 out[16], u32 *outLength)
{
    if (text == nullptr || out == nullptr || outLength == nullptr)
        return SYSDT_ERR_NULL_PTR;
    SYSDT_EvpnAddress address{};
    u32 length = 0;
    if (take_number(text, false, {3, 0, 128}, length) != SYSDT_OK) // (7)
        return SYSDT_ERR_FAIL;
    ++text;
    if (read_bracketed(text, address) != SYSDT_OK || *text != '\0')
        return SYSDT_ERR_FAIL;
    std::memcpy(out, address.ipv6, sizeof address.ipv6);
    *outLength = length;
    return SYSDT_OK;
}
