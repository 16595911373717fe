// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The text of an Ethernet segment identifier.
///
/// "0011.2233.4455.6677.8899", five groups of four hexadecimal digits, is stored as ten bytes in that order. The first
/// is the ESI's type. Read strictly, an ESI has type 00 or 01, in an auto-discovery route 00 to 05.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (5) An ESI of zeros is refused, as one of Fs is.
#include "route_keys/evpn/segment.hpp"

#include <cstring>

#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/scan.hpp"

namespace bgpdt::evpn {

namespace {

/// Appends a digit to those of the number and moves behind it; false, if there is none.
bool append_digit(const char *&text, u32 &number)
{
    const u32 digit = format::digit_value<16>(*text);
    if (digit >= 16)
        return false;
    number = number << 4 | digit;
    ++text;
    return true;
}

/// Reads groups of 1 to 4 digits, at most five.
bool read_groups(const char *text, u8 *esi)
{
    for (std::size_t stored = 0; stored < esi_size; stored += sizeof(u16)) {
        u32 number = 0;
        if (!append_digit(text, number))
            return false;
        if (append_digit(text, number))
            if (append_digit(text, number))
                append_digit(text, number);
        store_network(esi + stored, static_cast<u16>(number));
        if (*text++ != '.')
            return text[-1] == '\0';
    }
    return false;
}

/// Whether the digit may stand at the position of a type, 0 or 1, that is read strictly.
constexpr bool is_type_digit(char digit, u32 position, char highest_second)
{
    return digit >= '0' && digit <= (position == 0 ? '0' : highest_second);
}

bool is_admitted(const char *esi, EsiTypes types)
{
    if (types == EsiTypes::any)
        return true;
    const char highest = types == EsiTypes::to_05 ? '5' : '1';
    if (!is_type_digit(esi[0], 0, highest) || !is_type_digit(esi[1], 1, highest))
        return false;
    return types != EsiTypes::to_00 || esi[1] == '0' || format::digit_value<16>(esi[2]) >= 16;
}

/// Zeros alone or Fs alone.
bool is_filled(const u8 (&esi)[esi_size])
{
    return (esi[0] == 0x00 || esi[0] == 0xFF) && std::memcmp(esi, esi + 1, sizeof esi - 1) == 0;
}

u32 check_type_digit(char digit, u32 position, u32 lenient, char highest_second)
{
    return lenient != 0 || position > 1 || is_type_digit(digit, position, highest_second) ? SYSDT_OK : SYSDT_ERR_FAIL;
}

u32 read_whole(const char *text, u8 *out, EsiTypes types)
{
    if (text == nullptr || out == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return read_esi(text, std::strlen(text), types, out) ? SYSDT_OK : SYSDT_ERR_FAIL;
}

} // namespace

bool read_esi(const char *text, std::size_t length, EsiTypes types, u8 *out)
{
    if (length != esi_text_length)
        return false;
    char copy[esi_text_length + 1];
    std::memcpy(copy, text, esi_text_length);
    copy[esi_text_length] = '\0';
    const char *const kept = SYSDT_BTrim(copy);
    u8 esi[esi_size]{};
    if (!read_groups(kept, esi) || !is_admitted(kept, types) || is_filled(esi)) // (5)
        return false;
    std::memcpy(out, esi, sizeof esi);
    return true;
}

} // namespace bgpdt::evpn

using namespace bgpdt;

u32 SYSDT_CheckEsiTopTwo(char character, u32 position, u32 lenient)
{
    return evpn::check_type_digit(character, position, lenient, '1');
}

u32 SYSDT_CheckEsiTopTwoForAd(char character, u32 position, u32 lenient)
{
    return evpn::check_type_digit(character, position, lenient, '5');
}

u32 SYSDT_Str2EsiBas(const char *text, u8 out[10], u32 mode, u32 lenient)
{
    const auto strict = mode == 0 ? evpn::EsiTypes::to_00 : evpn::EsiTypes::to_01;
    return evpn::read_whole(text, out, evpn::types_of(lenient, strict));
}

u32 SYSDT_Str2EsiForAd(const char *text, u8 out[10], u32, u32 lenient)
{
    return evpn::read_whole(text, out, evpn::types_of(lenient, evpn::EsiTypes::to_05));
}
