// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The plug-in's own conversions, one case behind the other, for an emulator that tells each instruction: a case stands
/// between two calls of bench_mark. Standard output has the cases' names and how many conversions each makes.
#include <cstdio>
#include <cstdlib>

#include "benches.hpp"

extern "C" __attribute__((noinline)) void bench_mark() { asm volatile(""); }

int main()
{
    using namespace bgpdt::bench;
    try {
        const bgpdt::host::Host host(BGPDT_BUILT_PLUGIN);
        for (const Case &counted : cases_of_kinds(host, 20)) {
            if (counted.name.find("/ours/") == std::string::npos || counted.name.starts_with("script "))
                continue;
            counted.pass(); // every symbol is bound
            bench_mark();
            counted.pass();
            bench_mark();
            (void)std::printf("%s/%zu\n", counted.name.c_str(), counted.conversions);
        }
    } catch (const std::exception &error) {
        (void)std::fprintf(stderr, "bgpdt_bench_target: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
