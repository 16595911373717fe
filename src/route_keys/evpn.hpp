// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the files of the EVPN route key share.
#pragma once

#include <cstring>

#include "bgp_datatype/bgp_datatype.h"
#include "common/cut.hpp"
#include "common/scan.hpp"
#include "common/writer.hpp"

namespace bgpdt::evpn {

/// No field but the last of a text is longer, and no IPv6 address.
inline constexpr std::size_t longest_field = 49;

/// Where a field ends that is not the last: at the next colon. Null if there is none, or the field is empty or too long.
inline char *end_of_field(char *at, std::size_t most)
{
    char *const end = std::strchr(at, ':');
    return end == nullptr || end == at || static_cast<std::size_t>(end - at) > most ? nullptr : end;
}

inline constexpr u32 unlimited = UINT32_MAX;

/// What a number may be.
struct Limits {
    u32 characters = 0;
    u32 lowest = 0;
    u32 highest = 0;

    bool admit(u32 number) const { return number >= lowest && number <= highest; }
};

/// Reads a number that is not the last field and moves to the colon behind it.
inline u32 take_number(char *&at, const Limits &limits, u32 &out)
{
    u32 number = 0;
    const char *const end = format::read_digits<10>(at, nullptr, number);
    if (end == nullptr || *end != ':')
        return SYSDT_ERR_FAIL;
    const auto length = static_cast<std::size_t>(end - at);
    if (length > limits.characters || !limits.admit(number))
        return SYSDT_ERR_FAIL;
    at += length;
    out = number;
    return SYSDT_OK;
}

/// The last field is read by the host.
inline u32 read_last_number(const char *text, const Limits &limits, u32 &out)
{
    u32 number = 0;
    if (SMP_StrToUint32(text, &number) != SYSDT_OK || !limits.admit(number))
        return SYSDT_ERR_FAIL;
    if (limits.characters != unlimited && std::strlen(text) > limits.characters)
        return SYSDT_ERR_FAIL;
    out = number;
    return SYSDT_OK;
}

inline constexpr std::size_t esi_text_length = 24;

/// Which types an ESI may have.
enum class EsiTypes : u8 {
    any,
    to_00, ///< or 01, if the first group has no third digit
    to_01,
    to_05,
};

constexpr EsiTypes types_of(u32 lenient, EsiTypes strict) { return lenient != 0 ? EsiTypes::any : strict; }

/// Reads an ESI from a text of so many characters.
u32 read_esi(const char *text, std::size_t length, EsiTypes types, u8 *out);

/// Reads an ESI that is a field and moves behind it.
inline u32 take_esi(char *&at, bool last, EsiTypes types, u8 *out)
{
    char *const esi = at;
    char *const end = last ? esi + std::strlen(esi) : end_of_field(esi, esi_text_length);
    if (end == nullptr)
        return SYSDT_ERR_FAIL;
    at = end;
    return read_esi(esi, static_cast<std::size_t>(end - esi), types, out);
}

/// Reads an IPv4 address that is a text of its own.
u32 read_ipv4(const char *text, SYSDT_EvpnAddress &out);

/// Reads an IPv6 address in brackets and returns the end; null if there is none.
char *read_bracketed(char *at, SYSDT_EvpnAddress &out);

/// Reads an address that is a field; one that is not the last is moved behind.
inline u32 take_address(char *&at, bool last, SYSDT_EvpnAddress &out)
{
    if (*at == '[') {
        char *const end = read_bracketed(at, out);
        if (end == nullptr)
            return SYSDT_ERR_FAIL;
        at = end;
        return last || *end != ':' ? SYSDT_OK : SYSDT_ERR_FAIL; // (10)
    }
    if (last)
        return *at == '\0' ? SYSDT_ERR_FAIL : read_ipv4(at, out);
    char *const end = end_of_field(at, longest_field);
    if (end == nullptr)
        return SYSDT_ERR_FAIL;
    const Cut address(at, end);
    at = end;
    return read_ipv4(address.get(), out);
}

inline bool has_ipv6(const char *text) { return std::strchr(text, '[') != nullptr; }

enum class Families : u8 { either, ipv4, ipv6 };

/// Reads a length and an address of such a family behind it, all the rest of a text.
u32 read_sized(char *at, Families families, SYSDT_EvpnSizedAddress &out);

/// Reads an Ethernet segment route that is an ESI alone.
u32 read_segment_alone(char *text, SYSDT_BolEvpn *value, u32 lenient);

/// Prints the key as one of the route type. SYSDT_ERR_FAIL if there is no such type.
u32 print_key(u32 route_type, const SYSDT_EvpnKey &key, Writer &out);

} // namespace bgpdt::evpn
