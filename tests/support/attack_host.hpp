// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The services that a test turns against the plug-in. The test's executable defines them itself, in front of the
/// host's own: guarded blocks for memory and help, records of what is stored in script tables.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "failing.hpp"
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

/// What the plug-in asks of the host and may be refused.
enum class Request { memory, help_record, symbol_help };

class AttackHost {
public:
    static constexpr std::uint32_t refusal = 0x1234; ///< the status of a refused help record or symbol help

    /// The only one: the services are the process's.
    static AttackHost &instance();

    /// Forgets all blocks and counts.
    void begin(Failing failing = {});
    /// Whatever is wrong with the blocks since begin(): still taken, released twice, written around or after release.
    std::vector<std::string> settle();

    /// A block of the host's for the plug-in to write to.
    void *lend(std::size_t size, Place place = Place::end);
    /// Takes a delivered block back: its bytes, or nothing if it is no live block.
    std::optional<Bytes> collect(void *block);
    /// The block that starts here and is live, or null.
    const Block *find(const void *block) const;
    /// All requests since begin(), the refused ones too.
    std::size_t requests() const { return requests_.size(); }
    /// What was requested, counted from 1.
    Request request(std::size_t number) const { return requests_.at(number - 1); }
    /// The live blocks that the plug-in took.
    std::size_t live() const;

    std::size_t help_clears = 0; ///< calls of SYSDT_ClearHelpInfo
    /// The rooms of the script tables that were made, and the keys under which something was stored, in order.
    std::vector<std::string> script_steps;

    /// Counts the request; whether it is one to refuse.
    bool refuses(Request request);
    void *take(std::uint32_t size, std::optional<std::uint32_t> handle);
    void release(void *block);
    void fail(const std::string &problem) { problems_.push_back(problem); }

private:
    AttackHost() = default;

    std::deque<Block> blocks_;
    std::vector<std::string> problems_;
    std::vector<Request> requests_;
    Failing failing_;
};

} // namespace bgpdt::test
