// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Ethernet segment identifiers (ESI; RFC 7432, section 5).
#pragma once

#include "common/types.hpp"

namespace bgpdt::evpn {

inline constexpr std::size_t esi_size = 10;
inline constexpr std::size_t esi_text_length = 24;

/// Which types an ESI may have.
enum class EsiTypes : u8 {
    any,
    to_00, ///< or 01, if the first group has no third digit
    to_01,
    to_05,
};

constexpr EsiTypes types_of(u32 lenient, EsiTypes strict) { return lenient != 0 ? EsiTypes::any : strict; }

/// Reads an ESI from a text of so many characters; false if it is none.
bool read_esi(const char *text, std::size_t length, EsiTypes types, u8 *out);

} // namespace bgpdt::evpn
