// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// An input as a row of bytes that choose, and of pieces: a byte for the length, then so many bytes, or what is left.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace bgpdt::fuzzing {

class Pieces {
public:
    explicit Pieces(std::span<const std::uint8_t> input) : left_(input) {}

    bool empty() const { return left_.empty(); }
    /// 0 behind the end.
    std::uint8_t byte()
    {
        if (left_.empty())
            return 0;
        const std::uint8_t first = left_.front();
        left_ = left_.subspan(1);
        return first;
    }
    std::string piece() { return take(byte()); }
    std::string rest() { return take(left_.size()); }

private:
    std::string take(std::size_t size)
    {
        const auto front = left_.first(std::min(size, left_.size()));
        left_ = left_.subspan(front.size());
        return {front.begin(), front.end()};
    }

    std::span<const std::uint8_t> left_;
};

} // namespace bgpdt::fuzzing
