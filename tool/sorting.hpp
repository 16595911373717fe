// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Lines in the order of their values, in bounded memory.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "toolkit/value_order.hpp"

namespace bgpdt::tool {

/// Sorts lines by their values; lines with the same value stay in the order in which they came.
class Sorter {
public:
    struct Settings {
        std::uint64_t memory; ///< in bytes; beyond it lines go to temporary files
        bool unique = false;  ///< of equal values the first alone
        bool reverse = false; ///< the greatest first; equal ones stay in their order
    };
    using Write = std::function<void(std::string_view line)>;

    Sorter(toolkit::Session &session, const SYSDT_Record &type, Settings settings);
    ~Sorter();
    Sorter(const Sorter &) = delete;
    Sorter &operator=(const Sorter &) = delete;

    /// @throws UsageError if a temporary file cannot be written
    void add(toolkit::Value value, std::string_view line);
    void finish(const Write &write);

private:
    class Runs;
    class Run;
    using Take = std::function<void(const std::uint8_t *entry)>;

    /// Bytes of entries, one behind the other.
    struct Chunk {
        std::unique_ptr<std::uint8_t[]> bytes;
        std::size_t size; ///< of the entries
    };

    /// An entry in memory, and eight bytes of its value beside the address, which mostly decide which of two comes first.
    struct Entry {
        const std::uint8_t *bytes;
        std::uint64_t word;
    };

    /// What the order was found to be until now: that of the bytes, that the other way round, or one that is asked for.
    enum class By : std::uint8_t { bytes, bytes_reversed, asking };

    /// The entries that come before the one in front of them.
    struct Misplaced {
        std::size_t first;
        std::size_t last;
        std::size_t count;
    };

    /// Whether the bytes' order is from the greatest to the least.
    bool is_descending() const { return settings_.reverse != (by_ == By::bytes_reversed); }
    void store(toolkit::Value value, std::string_view line);
    void note_differences(std::uint8_t *key, std::size_t size);
    int compare(const std::uint8_t *first, const std::uint8_t *second) const;
    void list_entries(std::span<const std::size_t> word_bytes);
    void sort_by_bytes();
    void sort_by_words(std::size_t size);
    void sort_equal_words();
    void fetch_after(std::size_t place) const;
    Misplaced misplaced() const;
    void sort_by_asking(const Misplaced &misplaced);
    void sort_asking_once(std::span<Entry> entries) const;
    void sort();
    void spill();
    void merge(std::size_t first_run, std::size_t count, const Take &take);
    void merge_in_passes();
    void each_in_order(const Take &take);

    toolkit::ValueOrder order_;
    const Settings settings_;
    const std::size_t value_size_;
    std::vector<Chunk> chunks_;
    std::size_t chunk_left_ = 0;
    std::uint64_t used_ = 0;
    std::size_t count_ = 0;      ///< of the entries in the chunks
    toolkit::Bytes first_;       ///< of their values, in the target's order, with all zeros
    std::size_t first_key_ = 0;  ///< its size without the zeros at its end
    toolkit::Bytes differences_; ///< the bits in which values differ from that
    std::vector<Entry> entries_; ///< in order, once they are sorted
    By by_ = By::bytes;
    std::unique_ptr<Runs> runs_; ///< if memory has not sufficed
};

} // namespace bgpdt::tool
