// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What stands beside a value, as text and back: each text says all of its octets.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "item.hpp"

namespace bgpdt::wire {

inline constexpr std::size_t rd_size = 8;
inline constexpr std::size_t esi_size = 10;

/// A route distinguisher (RFC 4364): "64496:100", "192.0.2.1:7", "65551:1"; "0.100:1" where the AS number has four
/// octets and fits two; the octets behind 0x where its type is none of these.
std::string rd_text(Octets rd);
/// "0011.2233.4455.6677.8899"
std::string esi_text(Octets esi);
/// Of an address of 4 or of 16 octets.
std::string address_text(Octets address);
/// "0x0102"
std::string octets_text(Octets octets);

// Empty for a text that is none.
Bytes rd_octets(std::string_view text);
Bytes esi_octets(std::string_view text);
Bytes address_octets(std::string_view text);
std::optional<Bytes> octets_of(std::string_view text);
/// A decimal number.
std::optional<std::uint64_t> number_of(std::string_view text);

} // namespace bgpdt::wire
