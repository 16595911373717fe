// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Octets that a code in front of them splits: route distinguishers, extended communities, IPv6 route targets.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "bytes.hpp"
#include "named_value.hpp"

namespace bgpdt::toolkit {

bool is_coded(const Field &field);
/// "route target (0x0102): IPv4 address, number"
std::string coded_meaning(const Field &field, std::span<const std::uint8_t> octets);
/// The code, then what it makes of the octets behind it.
void add_coded_pieces(const Field &field, std::span<const std::uint8_t> octets, const AddNamed &add);

} // namespace bgpdt::toolkit
