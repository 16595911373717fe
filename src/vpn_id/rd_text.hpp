// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The grammar and the printing table that route distinguishers, route targets and sites of origin share, but for the
/// codes they store in front of the value.
#pragma once

#include <string_view>

#include "common/octets.hpp"

namespace bgpdt {

/// Route distinguisher types (RFC 4364): both AS forms of four octets are type 2.
inline constexpr OctetCodes route_distinguisher_codes{1, 0, 2};
inline constexpr OctetCodes site_of_origin_codes{0x0103, 0x0003, 0x0203};

/// Parses any form; the all-zero value is refused as "0:0" and "0.0:0", but not as "0.0.0.0:0".
u32 parse_rd(char *text, const OctetCodes &codes, SYSDT_Octets *out);

/// Prints by code and text form. A pair that parsing does not give prints nothing or is split as the form says;
/// SYSDT_ERR_FAIL for an unknown code.
u32 print_rd(const SYSDT_Octets &value, const OctetCodes &codes, Writer &out);

inline bool is_unset(const u8 *octets) { return load<u64>(octets) == 0; }

} // namespace bgpdt
