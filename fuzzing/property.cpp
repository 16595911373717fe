// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "property.hpp"

#include <cstdio>
#include <cstdlib>

namespace bgpdt::fuzzing {

namespace {

Describe describe = nullptr;

} // namespace

void describe_with(Describe with) { describe = with; }

void broken(const char *property)
{
    if (describe != nullptr)
        describe();
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
}

} // namespace bgpdt::fuzzing

/// Blocks of the script engine alone are of the C library's heap: short stacks and a small quarantine keep it fast, and
/// what it loses at exit is of no interest.
extern "C" __attribute__((visibility("default"))) const char *__asan_default_options()
{
    return "malloc_context_size=1:quarantine_size_mb=1:detect_leaks=0:handle_abort=1";
}
