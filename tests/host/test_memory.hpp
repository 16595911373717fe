// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The test's own memory services in front of the host's: they count what is taken and fail on demand.
#pragma once

#include <cstdint>

namespace test_memory {

/// Blocks taken and not yet given back.
extern int blocks;
/// The handle of the block taken last.
extern std::uint32_t last_handle;

/// While it lives, every allocation after the first `allowed` ones fails.
class Shortage {
public:
    explicit Shortage(int allowed);
    ~Shortage();
    Shortage(const Shortage &) = delete;
    Shortage &operator=(const Shortage &) = delete;
};

} // namespace test_memory
