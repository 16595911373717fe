// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The notation of AS numbers (RFC 5396), which a value keeps beside each of them.
#pragma once

#include <cstdint>
#include <span>

#include "session.hpp"

namespace bgpdt::toolkit {

/// Has the AS numbers of the value printed in the notation: those that have two bytes are plain in both.
/// @param value  in the machine's order
void set_notation(const SYSDT_Record &type, std::span<std::uint8_t> value, Notation notation);

} // namespace bgpdt::toolkit
