// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// EVPN route keys among the texts that are offered to the rows.
#pragma once

#include "common/text_offer.hpp"

namespace bgpdt::evpn {

/// Reads the text leniently: 0 or SYSDT_ERR_FAIL.
u32 read_counted(const TextOffer &offer, SYSDT_BolEvpn &value);

} // namespace bgpdt::evpn
