// SPDX-License-Identifier: Apache-2.0
/// @file
/// The services that a test turns against the plug-in. The test's executable defines them itself, in front of the
/// host's own: guarded blocks for memory and help, records of what is stored in script tables.
#ifndef BGPDT_TESTS_ATTACK_HOST_HPP
#define BGPDT_TESTS_ATTACK_HOST_HPP

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "guarded.hpp"

namespace bgpdt::test {

/// A block that the plug-in took, or that was lent to it.
struct Block {
    Guarded memory;
    std::optional<std::uint32_t> handle; ///< none: from the plain allocator
    std::size_t request = 0;             ///< its number among the requests; 0: it was lent
    bool live = true;

    bool lent() const { return request == 0; }
};

/// Which allocations fail, counted from 1.
struct Failing {
    std::size_t first = 0; ///< 0: none
    bool onward = false;   ///< and every later one
};

class AttackHost {
public:
    /// The only one: the services are the process's.
    static AttackHost &instance();

    /// Forgets all blocks and counts; what the services answer becomes success again.
    void begin(Failing failing = {});
    /// Whatever is wrong with the blocks since begin(): still taken, released twice, written around or after release.
    std::vector<std::string> settle();

    /// A block of the host's for the plug-in to write to.
    void *lend(std::size_t size);
    /// Takes a delivered block back: its bytes, or nothing if it is no live block.
    std::optional<Bytes> collect(void *block);
    /// The block that starts here and is live, or null.
    const Block *find(const void *block) const;
    /// All requests for memory since begin(), the refused ones too.
    std::size_t requests() const { return requests_; }
    /// The live blocks that the plug-in took.
    std::size_t live() const;

    std::uint32_t help_status = 0;        ///< what SYSDT_InitHelpInfo answers
    std::uint32_t symbol_status = 0;      ///< what KPL_CheckBySymbolForIPV4 answers
    std::size_t help_clears = 0;          ///< calls of SYSDT_ClearHelpInfo
    std::vector<std::string> stored_keys; ///< what was stored in script tables, in order

    void *take(std::uint32_t size, std::optional<std::uint32_t> handle);
    void release(void *block);
    void fail(const std::string &problem) { problems_.push_back(problem); }

private:
    AttackHost() = default;

    std::deque<Block> blocks_;
    std::vector<std::string> problems_;
    std::size_t requests_ = 0;
    Failing failing_;
};

} // namespace bgpdt::test

#endif
