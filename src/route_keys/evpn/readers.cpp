// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The fields of an EVPN route key's text: numbers, addresses and Ethernet segment identifiers.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (5) In an auto-discovery route an ESI of zeros is read, wherever among its twenty zeros the four dots stand.
///  (7) A length ahead of an IPv4 address goes up to 255, but in the route types 6 to 8 up to 128; one ahead of an IPv6
///      address goes up to 128. That of an IP prefix goes up to 255 for both families, and a MAC length too.
///  (8) The length of an IP prefix has any number of leading zeros.
///  (9) One character behind the bracket of an IPv6 prefix is skipped, whatever it is.
///  (10) The route types 6 to 8 read an IPv6 address in their last field only.
///  (11) What follows the bracket there is not looked at.
#include "route_keys/evpn/readers.hpp"

#include <algorithm>
#include <cstring>

#include "common/cut.hpp"
#include "common/key_address.hpp"
#include "common/scan.hpp"

namespace bgpdt::evpn {

namespace {

constexpr std::size_t longest_mac = 14;
constexpr std::size_t longest_address = 49;
constexpr u32 longest_member = 128; ///< in bits
constexpr u32 longest_ipv6 = 128;

/// Where a field ends that has a colon behind it; null if it has none, is empty or too long.
char *end_of_field(char *at, std::size_t longest)
{
    char *const end = std::strchr(at, ':');
    return end == nullptr || end == at || static_cast<std::size_t>(end - at) > longest ? nullptr : end;
}

bool has_ipv6(const char *text) { return std::strchr(text, '[') != nullptr; }

} // namespace

char *read_number(char *at, std::size_t most_digits, u32 &number)
{
    const char *const end = format::read_digits<10>(at, nullptr, number);
    if (end == nullptr || *end != ':')
        return nullptr;
    const auto length = static_cast<std::size_t>(end - at);
    return length > most_digits ? nullptr : at + length;
}

char *read_length(char *at, u32 least, u32 most, u8 &length)
{
    u32 number = 0;
    char *const end = read_number(at, 3, number);
    if (end == nullptr || number < least || number > most)
        return nullptr;
    length = static_cast<u8>(number);
    return end;
}

char *read_mac(char *at, u8 *mac)
{
    char *const end = end_of_field(at, longest_mac);
    if (end == nullptr)
        return nullptr;
    const Cut text(at, end);
    return SMP_Str2Mac(text.get(), mac) == SYSDT_OK ? end : nullptr;
}

char *read_segment(char *at, EsiTypes types, u8 *esi)
{
    char *const end = end_of_field(at, esi_text_length);
    return end != nullptr && read_esi(at, static_cast<std::size_t>(end - at), types, esi) ? end : nullptr;
}

char *read_discovery_segment(char *at, EsiTypes types, u8 *esi)
{
    if (char *const end = read_segment(at, types, esi); end != nullptr)
        return end;
    char *const end = end_of_field(at, esi_text_length);
    if (end == nullptr || std::count(at, end, '0') != 2 * esi_size)
        return nullptr;
    std::memset(esi, 0, esi_size); // (5)
    return end;
}

char *read_inner_address(char *at, SYSDT_EvpnAddress &address)
{
    char *const end = *at == '[' ? nullptr : end_of_field(at, longest_address); // (10)
    if (end == nullptr)
        return nullptr;
    const Cut text(at, end);
    return read_ipv4(text.get(), address) == SYSDT_OK ? end : nullptr;
}

char *read_bracketed(char *at, SYSDT_EvpnAddress &address)
{
    char *const end = *at == '[' ? std::strchr(at, ']') : nullptr;
    const std::size_t length = end == nullptr ? 0 : static_cast<std::size_t>(end - at) - 1;
    if (length == 0 || length > longest_address)
        return nullptr;
    const Cut text(at + 1, end);
    return read_ipv6(text.get(), address) == SYSDT_OK ? end + 1 : nullptr;
}

// A key has up to three members: what reads one inlines all that it calls.

BGPDT_FLATTEN char *read_inner_member(char *at, u8 least, SYSDT_EvpnSizedAddress &member)
{
    char *const end = read_length(at, least, longest_member, member.length); // (7)
    return end == nullptr ? nullptr : read_inner_address(end + 1, member.address);
}

bool read_last_number(const char *at, std::size_t most_digits, u32 &number)
{
    return SMP_StrToUint32(at, &number) == SYSDT_OK && std::strlen(at) <= most_digits;
}

bool read_last_address(char *at, SYSDT_EvpnAddress &address)
{
    if (*at == '[')
        return read_bracketed(at, address) != nullptr; // (11)
    return *at != '\0' && read_ipv4(at, address) == SYSDT_OK;
}

BGPDT_FLATTEN bool read_ip(char *at, Families families, SYSDT_EvpnSizedAddress &ip)
{
    char *const end = read_length(at, 0, UINT8_MAX, ip.length); // (7)
    if (end == nullptr)
        return false;
    char *const address = end + 1;
    if (families == Families::ipv4 || (families == Families::either && *address != '[' && !has_ipv6(address)))
        return read_ipv4(address, ip.address) == SYSDT_OK;
    const char *const end_of_text = ip.length <= longest_ipv6 ? read_bracketed(address, ip.address) : nullptr; // (7)
    return end_of_text != nullptr && *end_of_text == '\0';
}

BGPDT_FLATTEN bool read_prefix(char *at, Families families, SYSDT_EvpnSizedAddress &prefix)
{
    const char *const end =
        families == Families::ipv6 ? read_bracketed(at, prefix.address) : read_inner_address(at, prefix.address);
    if (end == nullptr || *end == '\0') // (9)
        return false;
    u32 length = 0;
    if (SMP_StrToUint32(end + 1, &length) != SYSDT_OK || length > UINT8_MAX) // (7) (8)
        return false;
    prefix.length = static_cast<u8>(length);
    return true;
}

BGPDT_FLATTEN bool read_last_member(char *at, u8 least, SYSDT_EvpnSizedAddress &member)
{
    char *const end = read_length(at, least, longest_member, member.length); // (7)
    return end != nullptr && read_last_address(end + 1, member.address);
}

} // namespace bgpdt::evpn
