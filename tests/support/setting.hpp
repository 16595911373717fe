// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the things to test are: told by the build, or by the environment instead; a program that was taken elsewhere has them
/// beside it.
#pragma once

#include <filesystem>
#include <string>

#include "environment.hpp"

namespace bgpdt::test {

inline std::string there_or_beside(const std::filesystem::path &built)
{
    if (std::filesystem::exists(built))
        return built;
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / built.filename();
}

inline std::string plugin_path() { return setting("BGPDT_PLUGIN", there_or_beside(BGPDT_BUILT_PLUGIN).c_str()); }
inline std::string vectors_folder() { return setting("BGPDT_VECTORS", there_or_beside(BGPDT_SOURCE_VECTORS).c_str()); }

} // namespace bgpdt::test
