// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// EVPN route keys from texts that are trimmed.
#pragma once

#include "common/text_offer.hpp"

namespace bgpdt::evpn {

// These answer 0 or SYSDT_ERR_FAIL.

u32 read_trimmed(char *text, SYSDT_BolEvpn &value, u32 lenient);

/// Reads a text that is offered to the rows, leniently.
u32 read_counted(const TextOffer &offer, SYSDT_BolEvpn &value);

} // namespace bgpdt::evpn
