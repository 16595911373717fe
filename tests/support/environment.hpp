// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the environment says to the tests.
#pragma once

#include <cstdlib>
#include <string>

namespace bgpdt::test {

inline std::string setting(const char *variable, const char *otherwise)
{
    const char *value = std::getenv(variable);
    return value != nullptr ? value : otherwise;
}

} // namespace bgpdt::test
