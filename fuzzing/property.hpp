// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What holds for every input; where it does not, the process says so and ends.
#pragma once

#include <sanitizer/allocator_interface.h>

#include <cstddef>

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

/// Runs what has run before, so that what stays from a first call is there: it leaves no memory taken.
template <class Run>
void require_no_memory_taken(const Run &run)
{
    const std::size_t before = __sanitizer_get_current_allocated_bytes();
    run();
    require(__sanitizer_get_current_allocated_bytes() == before, "no memory is left taken");
}

} // namespace bgpdt::fuzzing
