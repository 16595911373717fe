// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// How much of a sweep is done: every n-th case, more rarely where it takes many times as long, under the sanitizers and
/// an emulator. BGPDT_TEST_SHARE=n chooses another n, 1 all of them. Which these are, and what random cases are made of,
/// changes by the day: BGPDT_TEST_SEED=n repeats a run that said so.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "address_sanitizer.hpp"
#include "environment.hpp"

namespace bgpdt::test {

/// Odd and prime, so that no digit or byte value is always left out.
#if defined(__powerpc__)
inline constexpr const char *usual_share = "397";
#elif defined(__SANITIZE_ADDRESS__) || defined(__i386__)
inline constexpr const char *usual_share = "37";
#else
inline constexpr const char *usual_share = "7";
#endif

/// Every how many-th case is tried.
inline std::size_t share()
{
    static const std::size_t every = std::strtoul(setting("BGPDT_TEST_SHARE", usual_share).c_str(), nullptr, 10);
    return every == 0 ? 1 : every;
}

/// The same for what takes milliseconds: all natively.
inline std::size_t small_share() { return std::max<std::size_t>(share() / 7, 1); }

/// The number of the day, unless told; printed when it is first asked for.
inline std::uint32_t seed()
{
    static const std::uint32_t chosen = [] {
        constexpr std::time_t day = 24 * 60 * 60;
        const std::string today = std::to_string(std::time(nullptr) / day);
        const std::string number = setting("BGPDT_TEST_SEED", today.c_str());
        std::printf("BGPDT_TEST_SEED=%s repeats this run\n", number.c_str());
        std::fflush(stdout);
        return static_cast<std::uint32_t>(std::strtoul(number.c_str(), nullptr, 10));
    }();
    return chosen;
}

/// Says of one case after the other whether it is tried.
class Turns {
public:
    explicit Turns(std::size_t every = share()) : every_(every), turn_(seed() % every) {}
    bool next() { return turn_++ % every_ == 0; }

private:
    std::size_t every_;
    std::size_t turn_;
};

} // namespace bgpdt::test
