// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The memory that the plug-in works on: one arena whose gaps are poisoned, so that taking a block costs next to nothing
/// and a step beside one is seen. It answers the plug-in's requests in place of the host's own services.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace bgpdt::fuzzing {

enum class Owner : std::uint8_t {
    handle = 'h', ///< bound to the context's handle
    plain = 'p',
    caller = 'c', ///< lent to the plug-in
};

struct Block {
    std::uint8_t *data;
    std::size_t size;
    Owner owner;
    bool live;
};

/// Which requests fail, counted from 1.
struct Failing {
    std::size_t first = 0; ///< 0: none
    bool onward = false;   ///< and every later one
};

class Memory {
public:
    /// The handle of every context.
    static constexpr std::uint32_t owner_handle = 0x5EED0001;

    /// The only one: the services are the process's.
    static Memory &instance();

    /// Forgets everything.
    void reset();
    /// From here fresh blocks hold this byte, and these requests fail.
    void begin(std::uint8_t fill, Failing failing = {});

    /// A copy for the plug-in to look at, at an odd address if so asked.
    std::uint8_t *place(std::span<const std::uint8_t> bytes, bool odd = false);
    /// Room of the caller's.
    std::uint8_t *lend(std::size_t size);
    /// Takes the live block back, readable until the next reset; null if it is none.
    const Block *collect(const void *block);
    const Block *find(const void *block) const;

    /// Whether the request that was to fail came.
    bool failed() const { return failed_; }
    std::size_t requests() const { return requests_; }
    /// The live blocks that the plug-in took.
    std::size_t taken() const { return taken_; }
    /// Whether every gap is as it was.
    bool intact() const;

    void *take(std::uint32_t size, Owner owner);
    void release(void *block);

    /// An address that nothing may touch.
    void *untouchable() { return bytes_.data(); }

private:
    static constexpr std::size_t gap = 16;
    // A listing takes four blocks for each entry of its record.
    static constexpr std::size_t arena_size = std::size_t{4} << 20;
    static constexpr std::size_t most_blocks = 16384;

    Memory();
    Block &reserve(std::size_t size, Owner owner, std::size_t shift = 0);
    Block *find_live(const void *block);

    alignas(16) std::array<std::uint8_t, arena_size> bytes_;
    std::array<Block, most_blocks> blocks_;
    std::size_t count_ = 0;
    std::size_t used_ = gap;
    std::size_t taken_ = 0;
    std::size_t requests_ = 0;
    Failing failing_;
    bool failed_ = false;
    std::uint8_t fill_ = 0;
};

} // namespace bgpdt::fuzzing
