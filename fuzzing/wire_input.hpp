// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// An input of the wire's fuzzer: what is tried, the number of the form, then the octets: of values, of a value, of a
/// message. Of a value they end in lines of what stands beside it, NAME=VALUE, as many bytes as the last one says.
#pragma once

#include <cstdint>

namespace bgpdt::fuzzing {

enum class WireOperation : std::uint8_t { read, write, message, count };

} // namespace bgpdt::fuzzing
