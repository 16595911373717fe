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

    struct Free {
        void operator()(std::uint8_t *room) const;
    };
    using Room = std::unique_ptr<std::uint8_t, Free>;

    /// Room for entries, one behind the other.
    struct Chunk {
        Room room;
        std::size_t size; ///< of the entries
    };

    /// An entry in memory, and eight bytes of its value beside the address, which mostly decide which of two comes first.
    struct Entry {
        const std::uint8_t *bytes;
        std::uint64_t word;
    };

    /// Entries in a row that Compare orders, some of them before the one in front of them.
    struct Part {
        std::size_t begin;
        std::size_t end;
        std::size_t first; ///< that is misplaced
        std::size_t last;  ///< that is misplaced
    };

    using Places = toolkit::ValueOrder::Places;

    Room new_room(std::size_t size) const;
    void store(toolkit::Value value, std::string_view line);
    /// In the order that is wanted, of keys or what is asked about them: negative where the first comes first.
    template <class Of>
    int compare(Of first, Of second) const
    {
        return settings_.reverse ? order_.compare(second, first) : order_.compare(first, second);
    }
    auto in_order() const;
    void list_entries(const Places &places);
    static void fetch_after(std::span<const Entry> entries, std::size_t place);
    static void sort_by(const Places &places, std::span<Entry> entries);
    static void sort_by_words(std::size_t size, std::span<Entry> entries);
    std::vector<Part> disordered() const;
    Places learn(const Part &part) const;
    void sort_part(const Part &part);
    void sort_by_asking(std::size_t first_misplaced, std::size_t last_misplaced);
    void sort();
    void spill();
    void merge(std::size_t first_run, std::size_t count, const Take &take);
    void merge_in_passes();
    void each_in_order(const Take &take);

    toolkit::ValueOrder order_;
    const Settings settings_;
    const std::size_t value_size_;
    std::vector<Chunk> chunks_;
    std::vector<Room> idle_; ///< of the run before
    std::size_t chunk_left_ = 0;
    std::uint64_t used_ = 0;
    std::size_t count_ = 0;      ///< of the entries in the chunks
    toolkit::Bytes differences_; ///< the bits in which their keys differ from the first
    std::vector<Entry> entries_; ///< in order, once they are sorted
    Places learned_;             ///< by which the last ones were sorted, if not by the bytes as they stand
    std::unique_ptr<Runs> runs_; ///< if memory has not sufficed
};

} // namespace bgpdt::tool
