// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A value as it comes from the wire, and why there is none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/bytes.hpp"
#include "toolkit/named_value.hpp"

namespace bgpdt::wire {

using Octets = std::span<const std::uint8_t>;
using toolkit::Bytes;
using toolkit::NamedValue;

/// A value, and what stands on the wire that it has no room for.
struct Item {
    Bytes value; ///< in the machine's order
    std::vector<NamedValue> beside = {};
    std::size_t at = 0; ///< its first byte on the wire
    std::size_t size = 0;
};

/// Other bytes than these must stand on the wire.
class BadBytes : public std::runtime_error {
public:
    /// @param at    the first byte that is wrong; what is missing belongs in front of it
    /// @param size  how many are wrong; 0: something is missing
    BadBytes(std::size_t at, std::size_t size, const std::string &sentence)
        : std::runtime_error(sentence), at_(at), size_(size)
    {
    }
    std::size_t at() const { return at_; }
    std::size_t size() const { return size_; }

private:
    std::size_t at_;
    std::size_t size_;
};

/// The value, with what is told beside it, has no form on the wire.
class NotSent : public std::runtime_error {
public:
    /// @param missing  what should stand beside the value, with a text of it
    explicit NotSent(const std::string &sentence, NamedValue missing = {})
        : std::runtime_error(sentence), missing_(std::move(missing))
    {
    }
    /// Its name is empty if it is something else.
    const NamedValue &missing() const { return missing_; }

private:
    NamedValue missing_;
};

} // namespace bgpdt::wire
