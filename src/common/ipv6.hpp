// SPDX-License-Identifier: Apache-2.0
/// @file
/// IPv6 addresses in network order, read by the host's parser for addresses of any family.
#pragma once

#include "common/types.hpp"

namespace bgpdt {

/// @return the host's status
inline u32 parse_inet6(const char *text, u8 *address)
{
    constexpr i32 inet6 = 10; // the host's number of the family
    return SMP_InetAToN(inet6, text, address);
}

} // namespace bgpdt
