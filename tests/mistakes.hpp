// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the two files about callers' mistakes share.
#ifndef BGPDT_TESTS_MISTAKES_HPP
#define BGPDT_TESTS_MISTAKES_HPP

#include <cstddef>

namespace bgpdt::test {

/// For the summary.
extern std::size_t mistakes_made;

} // namespace bgpdt::test

#endif
