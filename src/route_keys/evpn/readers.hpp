// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Readers of the fields of an EVPN route key's text.
///
/// Each gets the place where the field begins and returns the one where it ends, which for all but the last field of a
/// text is that of the colon behind it; null if the field is refused.
#pragma once

#include "bgp_datatype/values.h"
#include "route_keys/evpn/segment.hpp"

namespace bgpdt::evpn {

/// Reads a number of at most so many digits.
char *read_number(char *at, std::size_t most_digits, u32 &number);

/// Reads the length of a MAC address or of an IP address, three digits at most.
char *read_length(char *at, u32 least, u32 most, u8 &length);

char *read_mac(char *at, u8 *mac);

char *read_segment(char *at, EsiTypes types, u8 *esi);

/// Reads the ESI of an auto-discovery route.
char *read_discovery_segment(char *at, EsiTypes types, u8 *esi);

/// Reads an IPv4 address.
char *read_inner_address(char *at, SYSDT_EvpnAddress &address);

/// Reads an IPv6 address in brackets, and ends behind them whatever follows.
char *read_bracketed(char *at, SYSDT_EvpnAddress &address);

/// A length, and an address that is not the last field.
char *read_inner_member(char *at, u8 least, SYSDT_EvpnSizedAddress &member);

// ------------------------------------------------------------------------------------------------ the last field

/// These read all the rest of a text; false if it is refused.

bool read_last_number(const char *at, std::size_t most_digits, u32 &number);

/// Reads an IPv4 address, or an IPv6 address in brackets.
bool read_last_address(char *at, SYSDT_EvpnAddress &address);

enum class Families : u8 { either, ipv4, ipv6 };

/// Reads a length and an address of such a family.
bool read_ip(char *at, Families families, SYSDT_EvpnSizedAddress &ip);

/// Reads a prefix of such a family, the address ahead of the length.
bool read_prefix(char *at, Families families, SYSDT_EvpnSizedAddress &prefix);

bool read_last_member(char *at, u8 least, SYSDT_EvpnSizedAddress &member);

} // namespace bgpdt::evpn
