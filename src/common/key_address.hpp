// SPDX-License-Identifier: Apache-2.0
/// @file
/// The addresses of route keys, which are kept in the field of their family (EVPN, multicast VPN).
#pragma once

#include "bgp_datatype/values.h"
#include "common/types.hpp"

namespace bgpdt {

// SYSDT_EvpnAddress::family
inline constexpr u8 family_ipv4 = 0;
inline constexpr u8 family_ipv6 = 1;

/// The most characters that the host writes for an IPv6 address, the terminator included.
inline constexpr std::size_t ipv6_text_size = 46;

/// Reads an address as the host does; SYSDT_ERR_FAIL if it is none. The other family's field stays as it is.
u32 read_ipv4(const char *text, SYSDT_EvpnAddress &field);
u32 read_ipv6(const char *text, SYSDT_EvpnAddress &field);

} // namespace bgpdt
