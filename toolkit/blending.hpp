// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A text that nothing small mends: what it lacks beside a sample.
#pragma once

#include "asking.hpp"

namespace bgpdt::toolkit {

/// The text with as few pieces of a sample in it as it takes.
Found blended(Refused &refused);

} // namespace bgpdt::toolkit
