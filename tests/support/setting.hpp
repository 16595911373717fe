// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the things to test are: told by the build, or by the environment instead.
#pragma once

#include <cstdlib>
#include <string>

namespace bgpdt::test {

inline std::string setting(const char *variable, const char *otherwise)
{
    const char *value = std::getenv(variable);
    return value != nullptr ? value : otherwise;
}

inline std::string plugin_path() { return setting("BGPDT_PLUGIN", BGPDT_BUILT_PLUGIN); }
inline std::string vectors_folder() { return setting("BGPDT_VECTORS", BGPDT_SOURCE_VECTORS); }

} // namespace bgpdt::test
