// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The order of a type's values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "session.hpp"
#include "stream_values.hpp"

namespace bgpdt::toolkit {

/// A total order of a type's values, the same on every machine: by Compare as the target answers it, and what is equal or
/// without an order by its bytes in the target's order.
///
/// It is one for all of the router's types, though Compare of some orders only values of one group, the sub-kind of
/// route keys and with it the route type of EVPN keys: what says the group are the first bytes, so that bytes decide
/// between groups as a whole. In a group Compare orders every two values, as a weak order, or none. So this is the
/// lexicographic product of weak orders by group, by Compare and by bytes, the last of which is total.
class ValueOrder {
public:
    /// A value's bytes in the target's order. Zeros at its end may be left out: they decide nothing.
    using Key = std::span<const std::uint8_t>;

    ValueOrder(Session &session, const SYSDT_Record &type);

    /// A key, and what Compare is asked about it: bytes of a value's size.
    struct Asked {
        Key key;
        const std::uint8_t *bytes;
    };

    /// Whether the order is that of the keys' bytes, whatever the values.
    bool is_of_bytes() const { return !asks_; }
    /// Whether Compare reads numbers of the machine's order. The target's answer is its answer to values in that order.
    bool reads_numbers() const { return reads_numbers_; }
    /// Writes a value's key and answers its size.
    /// @param value  at most of the type's size
    /// @param room   for a value of that size
    std::size_t make_key(Value value, std::uint8_t *room);
    /// What Compare is asked about is written to room for a value, or is the key itself where that is all of it.
    Asked asked(Key key, std::uint8_t *room) const;

    /// Negative, 0 or positive.
    int compare(Key first, Key second) const;
    /// The same of a type whose order is not that of the bytes whatever the values.
    int compare(Asked first, Asked second) const;

private:
    /// A number that is the other way round on the target.
    struct Number {
        std::uint16_t at;
        std::uint16_t width;
    };
    struct Numbers {
        const Layout *layout;
        std::size_t size;            ///< of the value
        std::vector<Number> numbers; ///< the first in front
    };

    const std::vector<Number> &numbers_of(Value value);

    const SYSDT_Record &type_;
    const std::size_t size_;
    const bool asks_; ///< Compare orders some values
    const bool reads_numbers_;
    std::vector<Numbers> numbers_; ///< of values as there were until now
};

/// The order of two keys' bytes: negative, 0 or positive.
int compare_keys(ValueOrder::Key first, ValueOrder::Key second);

/// Whether the type's Compare reads the values' numbers. If not it reads bytes, and answers as on the target if they
/// are in the target's order.
bool compares_numbers(const SYSDT_Record &type);

} // namespace bgpdt::toolkit
