// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the two files about callers' mistakes share.
#pragma once

#include <cstddef>

namespace bgpdt::test {

/// For the summary.
extern std::size_t mistakes_made;

} // namespace bgpdt::test
