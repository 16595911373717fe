// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The short names that the whole plug-in uses.
#pragma once

#include <cstddef>
#include <cstdint>

#include "bgp_datatype/host.h"

// What is compiled in a way of its own for speed is not where size counts (-Os).
#ifdef __OPTIMIZE_SIZE__
#define BGPDT_SMALL true
#define BGPDT_FLATTEN
#else
#define BGPDT_SMALL false
#define BGPDT_FLATTEN [[gnu::flatten]] ///< all that the function calls becomes part of it
#endif

namespace bgpdt {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;
using i32 = std::int32_t;
using i64 = std::int64_t;

using Context = SYSDT_Context;
using HelpRequest = SYSDT_HelpRequest;
using HelpInfo = SYSDT_HelpInfo;

} // namespace bgpdt
