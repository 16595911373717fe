// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where values stand in a BGP message.
#pragma once

#include <vector>

#include "wire.hpp"

namespace bgpdt::wire {

/// The values of an attribute.
struct Stretch {
    const Form *form;
    Octets octets;
    std::size_t at; ///< in the message
    bool withdrawn; ///< routes that are taken back
};

/// Those of an UPDATE (RFC 4271, section 4.3; RFC 4760) whose form is known; none in another message.
/// @param message  with its header
/// @throws BadBytes
std::vector<Stretch> stretches_of(Octets message);

} // namespace bgpdt::wire
