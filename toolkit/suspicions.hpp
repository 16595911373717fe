// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What may be wrong with a text: one table of suspicions.
#pragma once

#include "asking.hpp"

namespace bgpdt::toolkit {

/// Goes through the suspicions, the likeliest first, until one is true or the tries are used up. What is found is the
/// text's best then.
void suspect(Refused &refused);

} // namespace bgpdt::toolkit
