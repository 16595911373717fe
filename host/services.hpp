// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The services' declarations for the files that define them: visible to every module of the process.
#pragma once

#pragma GCC visibility push(default)
#include "bgp_datatype/host.h"
#pragma GCC visibility pop

namespace bgpdt::host {

/// What a service that compares answers.
constexpr int32_t order(int difference) { return (difference > 0) - (difference < 0); }

} // namespace bgpdt::host
