// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Room for bytes on the stack.
#pragma once

#include <cstddef>
#include <cstdint>

#include "bytes.hpp"

namespace bgpdt::toolkit {

/// Room for bytes, which is taken from the heap for what is longer than any of the router's.
template <std::size_t usual>
class Room {
public:
    explicit Room(std::size_t size)
    {
        if (size > usual)
            more_.resize(size);
    }
    std::uint8_t *data() { return more_.empty() ? bytes_ : more_.data(); }

private:
    std::uint8_t bytes_[usual]; // left as they are
    Bytes more_;
};

} // namespace bgpdt::toolkit
