// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Which of the requests that a call makes are refused.
#pragma once

#include <cstddef>

namespace bgpdt::test {

/// Requests are counted from 1.
struct Failing {
    std::size_t first = 0; ///< 0: none
    bool onward = false;   ///< and every later one

    bool hits(std::size_t request) const { return first != 0 && (onward ? request >= first : request == first); }
};

} // namespace bgpdt::test
