// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The order of a type's values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "session.hpp"
#include "stream_values.hpp"

namespace bgpdt::toolkit {

/// The order of two keys' bytes: negative, 0 or positive.
int compare_keys(std::span<const std::uint8_t> first, std::span<const std::uint8_t> second);

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
    /// Writes a value's key and answers its size.
    /// @param value  at most of the type's size
    /// @param room   for a value of that size
    std::size_t make_key(Value value, std::uint8_t *room);
    /// What Compare is asked about is written to room for a value, or is the key itself where that is all of it.
    Asked asked(Key key, std::uint8_t *room) const;

    /// Negative, 0 or positive.
    int compare(Key first, Key second) const;
    int compare(Asked first, Asked second) const;
    /// What Compare answers: negative, 0 or positive, or nothing where it has no order.
    std::optional<int> answer(Asked first, Asked second) const;
    /// The order by what Compare answers, else by the bytes.
    static int decide(std::optional<int> answer, Key first, Key second)
    {
        return answer.value_or(0) != 0 ? *answer : compare_keys(first, second);
    }

    /// A byte of keys by which they can be sorted.
    struct Place {
        std::uint16_t at;
        bool descending; ///< the greater first
    };
    using Places = std::vector<Place>;

    /// Puts places into the order in which they seem to decide, by what Compare answers about samples with other bytes in
    /// one place or two. It is a guess, since what one byte means may depend on others.
    /// @param places   ascending
    /// @param samples  keys of values that Compare orders
    Places guess(std::span<const Place> places, std::span<const Key> samples) const;

private:
    class Trial;

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

    static constexpr std::size_t usual_size = 1280; ///< in bytes, of a value with room for more

    const Numbers *known_numbers(const Layout &layout, std::size_t size) const
    {
        for (const Numbers &known : numbers_)
            if (known.layout == &layout && known.size == size)
                return &known;
        return nullptr;
    }
    const std::vector<Number> &numbers_of(Value value);
    /// By what is made of the keys to ask Compare about.
    int compare_asking(Key first, Key second) const;
    /// Whether the key is what Compare is asked about.
    bool is_asked(Key key) const { return !reads_numbers_ && key.size() == size_; }

    const SYSDT_Record &type_;
    const std::size_t size_;
    const bool asks_; ///< Compare orders some values
    /// Compare reads numbers of the machine's order. The target's answer is its answer to values in that order.
    const bool reads_numbers_;
    std::vector<Numbers> numbers_; ///< of values as there were until now
};

/// Whether the type's Compare reads the values' numbers. If not it reads bytes, and answers as on the target if they
/// are in the target's order.
bool compares_numbers(const SYSDT_Record &type);

} // namespace bgpdt::toolkit
