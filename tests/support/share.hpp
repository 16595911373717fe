// SPDX-License-Identifier: Apache-2.0
/// @file
/// How much of a sweep is done. Under the sanitizers and an emulator it takes many times as long, so that there only
/// every n-th case is tried; BGPDT_TEST_SHARE=n chooses another n, 1 all of them.
#ifndef BGPDT_TESTS_SHARE_HPP
#define BGPDT_TESTS_SHARE_HPP

#include <cstddef>
#include <cstdlib>
#include <string>

#include "address_sanitizer.hpp"
#include "setting.hpp"

namespace bgpdt::test {

/// Odd and prime, so that no digit or byte value is always left out.
#if defined(__powerpc__)
inline constexpr const char *usual_share = "7";
#elif defined(__SANITIZE_ADDRESS__)
inline constexpr const char *usual_share = "3";
#else
inline constexpr const char *usual_share = "1";
#endif

/// Every how many-th case is tried.
inline std::size_t share()
{
    static const std::size_t every = std::strtoul(setting("BGPDT_TEST_SHARE", usual_share).c_str(), nullptr, 10);
    return every == 0 ? 1 : every;
}

/// Says of one case after the other whether it is tried.
class Turns {
public:
    explicit Turns(std::size_t every = share()) : every_(every) {}
    bool next() { return turn_++ % every_ == 0; }

private:
    std::size_t every_;
    std::size_t turn_ = 0;
};

} // namespace bgpdt::test

#endif
