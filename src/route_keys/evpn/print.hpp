// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Writers of an EVPN route key's text, whole and piece by piece.
#pragma once

#include "bgp_datatype/values.h"
#include "common/digits.hpp"
#include "common/key_address.hpp"
#include "common/writer.hpp"
#include "route_keys/evpn/segment.hpp"

namespace bgpdt::evpn {

/// Prints the key as one of the route type. SYSDT_ERR_FAIL if there is no such type.
u32 print_key(u32 route_type, const SYSDT_EvpnKey &key, Writer &out);

// ------------------------------------------------------------------------------------------------ pieces

// The most characters of a piece, with what may be overwritten behind it.
inline constexpr std::size_t most_number_characters = 1 + most_u32_digits;
inline constexpr std::size_t most_octet_characters = 1 + 3;
inline constexpr std::size_t most_ip_characters = most_octet_characters + 2 + ipv6_text_size + 1; ///< in brackets

// These return the end. Whatever is not a text's first piece begins with a colon.

char *write_esi(char *to, const u8 *esi);

char *write_number(char *to, u32 number, bool first);

/// The length, then the address; nothing for a family other than 0 and 1.
char *write_ip(char *to, u8 length, const SYSDT_EvpnAddress &address);

} // namespace bgpdt::evpn
