// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// IPv6 addresses in network order, as the host reads and writes them.
#pragma once

#include "common/types.hpp"

namespace bgpdt {

/// The most characters that the host writes for an address, the terminator included.
inline constexpr std::size_t ipv6_text_size = 46;

/// By the host's parser for addresses of any family.
///
/// @return the host's status
inline u32 parse_inet6(const char *text, u8 *address)
{
    constexpr i32 inet6 = 10; // the host's number of the family
    return SMP_InetAToN(inet6, text, address);
}

} // namespace bgpdt
