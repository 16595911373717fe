// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The addresses of route keys, which are kept in the field of their family (EVPN, multicast VPN).
#pragma once

#include "bgp_datatype/values.h"
#include "common/ipv6.hpp"
#include "common/types.hpp"

namespace bgpdt {

// SYSDT_EvpnAddress::family
inline constexpr u8 family_ipv4 = 0;
inline constexpr u8 family_ipv6 = 1;

// These read an address as the host does; SYSDT_ERR_FAIL if it is none. The other family's field stays as it is.

inline u32 read_ipv4(const char *text, SYSDT_EvpnAddress &field)
{
    u32 address = 0;
    if (SYSDT_Str2Ipv4(text, &address) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    field.ipv4 = address;
    field.family = family_ipv4;
    return SYSDT_OK;
}

inline u32 read_ipv6(const char *text, SYSDT_EvpnAddress &field)
{
    if (SYSDT_Str2Ipv6(text, field.ipv6) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    field.family = family_ipv6;
    return SYSDT_OK;
}

} // namespace bgpdt
