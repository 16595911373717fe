// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What holds for every input; where it does not, the process says so and ends.
#pragma once

namespace bgpdt::fuzzing {

/// Says in front of the property what was tried.
using Describe = void (*)();
void describe_with(Describe describe);

[[noreturn]] void broken(const char *property);

/// Ends the process unless the property holds.
inline void require(bool holds, const char *property)
{
    if (!holds) [[unlikely]]
        broken(property);
}

} // namespace bgpdt::fuzzing
