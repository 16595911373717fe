// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The order of a type's values.
#pragma once

#include <cstddef>
#include <cstdint>

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
    ValueOrder(Session &session, const SYSDT_Record &type);

    /// A value as it is compared. What is turned for that is turned once.
    class Key {
    public:
        const std::uint8_t *target() const { return bytes_; }
        const std::uint8_t *compared(const ValueOrder &order) const
        {
            return order.reads_numbers_ ? bytes_ + order.size_ : bytes_;
        }

    private:
        friend class ValueOrder;
        explicit Key(const std::uint8_t *bytes) : bytes_(bytes) {}
        const std::uint8_t *bytes_;
    };

    /// The size of the value in the target's order, which a key begins with.
    std::size_t target_size() const { return size_; }
    /// The size of a key in bytes, whatever the value.
    std::size_t key_size() const { return reads_numbers_ ? 2 * size_ : size_; }
    void make_key(Value value, std::uint8_t *key);
    Key key(const std::uint8_t *bytes) const { return Key(bytes); }
    /// The key of a value in the target's order. The room, of a key's size, is taken where a key is more than that.
    Key key_of_target(const std::uint8_t *value, std::uint8_t *room) const;

    /// Negative, 0 or positive.
    int compare(Key first, Key second) const;
    bool same(Key first, Key second) const;

private:
    const SYSDT_Record &type_;
    const std::size_t size_;
    const bool asks_; ///< Compare orders some values
    const bool
        reads_numbers_; ///< Compare reads numbers of the machine's order, so that the target's answer is its answer
    ByteOrder target_;
};

/// Whether the type's Compare reads the values' numbers. If not it reads bytes, and answers as on the target if they
/// are in the target's order.
bool compares_numbers(const SYSDT_Record &type);

} // namespace bgpdt::toolkit
