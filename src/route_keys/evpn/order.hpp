// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The order of EVPN route keys.
#pragma once

#include "bgp_datatype/values.h"
#include "common/types.hpp"

namespace bgpdt::evpn {

/// Orders two keys as such of the route type: positive, 0 or negative.
i32 compare_keys(u32 route_type, const SYSDT_EvpnKey &first, const SYSDT_EvpnKey &second);

} // namespace bgpdt::evpn
