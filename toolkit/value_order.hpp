// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The order of a type's values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

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

    /// Whether the order is that of the keys' bytes, whatever the values.
    bool is_of_bytes() const { return !asks_; }
    /// Writes a value in the target's order and answers how many of its bytes are its key.
    std::size_t make_key(Value value, std::uint8_t *room);

    /// Negative, 0 or positive.
    int compare(Key first, Key second) const;

    /// Writes what Compare is asked about, of a value's size.
    void write_asked(Key key, std::uint8_t *room) const;
    /// Compare's answer: -1 or 1 where it orders the two, else 0.
    int answer(const std::uint8_t *first, const std::uint8_t *second) const;

private:
    /// The same, which is the key itself where that is all of it.
    const std::uint8_t *asked(Key key, std::uint8_t *room) const;

    const SYSDT_Record &type_;
    const std::size_t size_;
    const bool asks_; ///< Compare orders some values
    const bool
        reads_numbers_; ///< Compare reads numbers of the machine's order, so that the target's answer is its answer
    ByteOrder target_;
};

/// The order of two keys' bytes: negative, 0 or positive.
int compare_keys(ValueOrder::Key first, ValueOrder::Key second);

/// Whether the type's Compare reads the values' numbers. If not it reads bytes, and answers as on the target if they
/// are in the target's order.
bool compares_numbers(const SYSDT_Record &type);

} // namespace bgpdt::toolkit
