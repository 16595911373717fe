// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Suspicions of the parts of keys: addresses, their lengths, identifiers, groups in brackets.
#pragma once

#include "asking.hpp"

namespace bgpdt::toolkit {

/// An Ethernet segment identifier of all ones, or of all zeros where that is refused.
Found refused_segment(Refused &refused);
/// None in front of an address.
Found length_of_address(Refused &refused);
/// Another than that of MAC addresses in front of one.
Found length_of_mac(Refused &refused);
/// Too few or too many digits in an IS-IS router identifier.
Found router_id_groups(Refused &refused);
/// Those in brackets that a key of the same sort has.
Found missing_groups(Refused &refused);
/// Five numbers and more with dots between them.
Found long_address(Refused &refused);
/// Where there is none.
Found prefix_length(Refused &refused);
Found negative_number(Refused &refused);

} // namespace bgpdt::toolkit
