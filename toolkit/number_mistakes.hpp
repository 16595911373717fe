// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Suspicions of numbers that cannot stand in their places.
#pragma once

#include "asking.hpp"

namespace bgpdt::toolkit {

Found leading_zeros(Refused &refused);
/// "0.64496": RFC 5396 knows two halves with a dot between them for numbers of two bytes too.
Found zero_half(Refused &refused);
Found too_large(Refused &refused);
/// The first of more numbers than one that are too large: with 1 in the place of the others it tells its limit.
Found several_too_large(Refused &refused);
/// A 0 where numbers begin with 1.
Found too_small(Refused &refused);
/// Numbers too many at the end.
Found surplus_tail(Refused &refused);

} // namespace bgpdt::toolkit
