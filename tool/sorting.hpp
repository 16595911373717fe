// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lines in the order of their values, in bounded memory.
#ifndef BGPDT_TOOL_SORTING_HPP
#define BGPDT_TOOL_SORTING_HPP

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "stream_values.hpp"

namespace bgpdt::tool {

/// A total order of a type's values, the same on every machine: by Compare as the target answers it, and what is equal or
/// without an order by its bytes in the target's order.
///
/// It is one for all of the router's types, though Compare of some orders only values of one group, the sub-kind of
/// route keys and with it the route type of EVPN keys: what says the group are the first bytes, so that bytes decide
/// between groups as a whole. In a group Compare orders every two values, as a weak order, or none. So this is the
/// lexicographic product of weak orders by group, by Compare and by bytes, the last of which is total.
class ValueOrder {
public:
    explicit ValueOrder(const SYSDT_Record &type);

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

    /// The size of a key in bytes, whatever the value.
    std::size_t key_size() const { return reads_numbers_ ? 2 * size_ : size_; }
    void make_key(Value value, std::uint8_t *key);
    Key key(const std::uint8_t *bytes) const { return Key(bytes); }

    /// Negative, 0 or positive.
    int compare(Key first, Key second) const;
    bool same(Key first, Key second) const;

private:
    const SYSDT_Record &type_;
    const std::size_t size_;
    bool reads_numbers_; ///< Compare reads numbers of the machine's order, so that the target's answer is its answer
    ByteOrder target_;
};

/// Whether the type's Compare reads the values' numbers. If not it reads bytes, and answers as on the target if they
/// are in the target's order.
bool compares_numbers(const SYSDT_Record &type);

/// Sorts lines by their values; lines with the same value stay in the order in which they came.
class Sorter {
public:
    struct Settings {
        std::uint64_t memory; ///< in bytes; beyond it lines go to temporary files
        bool unique = false;  ///< of equal values the first alone
    };
    using Write = std::function<void(std::string_view line)>;

    Sorter(const SYSDT_Record &type, Settings settings);
    ~Sorter();
    Sorter(const Sorter &) = delete;
    Sorter &operator=(const Sorter &) = delete;

    /// @throws UsageError if a temporary file cannot be written
    void add(Value value, std::string_view line);
    void finish(const Write &write);

private:
    class Runs;
    class Run;
    using Take = std::function<void(const std::uint8_t *entry)>;

    const std::uint8_t *store(Value value, std::string_view line);
    bool less(const std::uint8_t *first, const std::uint8_t *second) const;
    void sort();
    void spill();
    std::string_view bytes(const std::uint8_t *entry) const;
    void merge(std::size_t first_run, std::size_t count, const Take &take);
    void merge_in_passes();
    void each_in_order(const Take &take);

    ValueOrder order_;
    const Settings settings_;
    std::vector<std::unique_ptr<std::uint8_t[]>> chunks_;
    std::size_t chunk_left_ = 0;
    std::uint64_t used_ = 0;
    std::vector<const std::uint8_t *> entries_; ///< line length, key, line
    std::unique_ptr<Runs> runs_;                ///< if memory has not sufficed
};

} // namespace bgpdt::tool

#endif
