// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The values in captures, as tshark tells them: `tshark -T json -x` has the bytes of each BGP message.
#pragma once

#include "errors.hpp"
#include "options.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::tool {

/// The arguments are files. Memory grows with a packet, not with the input.
Exit import_packets(toolkit::Session &session, const Options &options);

} // namespace bgpdt::tool
