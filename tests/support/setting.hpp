// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the things to test are: told by the build, or by the environment instead.
#pragma once

#include <string>

#include "environment.hpp"

namespace bgpdt::test {

inline std::string plugin_path() { return setting("BGPDT_PLUGIN", BGPDT_BUILT_PLUGIN); }
inline std::string vectors_folder() { return setting("BGPDT_VECTORS", BGPDT_SOURCE_VECTORS); }

} // namespace bgpdt::test
