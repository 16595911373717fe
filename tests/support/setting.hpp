// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the things to test are: told by the build, or by the environment instead; a program that was taken elsewhere has them
/// beside it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace bgpdt::test {

inline std::string setting(const char *variable, const std::filesystem::path &otherwise)
{
    if (const char *value = std::getenv(variable); value != nullptr)
        return value;
    if (std::filesystem::exists(otherwise))
        return otherwise;
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / otherwise.filename();
}

inline std::string plugin_path() { return setting("BGPDT_PLUGIN", BGPDT_BUILT_PLUGIN); }
inline std::string vectors_folder() { return setting("BGPDT_VECTORS", BGPDT_SOURCE_VECTORS); }

} // namespace bgpdt::test
