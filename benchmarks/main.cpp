// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Measures the registered types against what they could cost at least, and against a plain port, over the same texts.
#include <benchmark/benchmark.h>
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "benches.hpp"

namespace bgpdt::bench {
namespace {

constexpr std::size_t corpus_size = 10'000;
constexpr std::size_t counted_size = 250; // conversions that are enough for counting instructions

void measure(const Cases &cases)
{
    for (const Case &measured : cases) {
        benchmark::RegisterBenchmark(measured.name.c_str(), [&measured](benchmark::State &state) {
            for (auto _ : state) { // NOLINT(clang-analyzer-deadcode.DeadStores)
                if (measured.prepare) {
                    state.PauseTiming();
                    measured.prepare();
                    state.ResumeTiming();
                }
                measured.pass();
            }
            state.SetItemsProcessed(static_cast<std::int64_t>(measured.conversions) * state.iterations());
        })->Iterations(1);
    }
    benchmark::RunSpecifiedBenchmarks();
}

/// Every case whose name has this part once, as a dump of its own; run under callgrind with --instr-atstart=no --collect-atstart=no.
void count(const Cases &cases, std::string_view part)
{
    CALLGRIND_START_INSTRUMENTATION; // not before: calls are counted even while nothing is collected
    for (const Case &counted : cases) {
        if (counted.name.find(part) == std::string::npos)
            continue;
        const std::string name = counted.name + '/' + std::to_string(counted.conversions);
        if (counted.prepare)
            counted.prepare();
        CALLGRIND_ZERO_STATS;
        CALLGRIND_TOGGLE_COLLECT;
        counted.pass();
        CALLGRIND_TOGGLE_COLLECT;
        CALLGRIND_DUMP_STATS_AT(name.c_str());
    }
}

int run(int argc, char **argv)
{
    const std::string_view command = argc > 1 ? argv[1] : "";
    host::Host host(BGPDT_BUILT_PLUGIN);
    if (command == "growth") {
        print_growth(host);
        return EXIT_SUCCESS;
    }
    const bool counting = command == "count";
    const std::size_t size = counting ? counted_size : corpus_size;
    Cases cases = cases_of_kinds(host, size);
    add_refused_cases(cases, host, size);
    add_host_cases(cases, size);
    add_vector_cases(cases, host);
    if (counting) {
        count(cases, argc > 2 ? argv[2] : "");
        return EXIT_SUCCESS;
    }
    benchmark::Initialize(&argc, argv);
    measure(cases);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace bgpdt::bench

int main(int argc, char **argv)
{
    try {
        return bgpdt::bench::run(argc, argv);
    } catch (const std::exception &error) {
        (void)std::fprintf(stderr, "bgpdt_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
