// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Blocks of lines through threads: each takes the next block, works on it, and waits for its turn to hand out what came
/// of it. No thread waits for another in between, and the order of the input is kept.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "options.hpp"
#include "stream_files.hpp"
#include "toolkit/buffer.hpp"
#include "toolkit/errors.hpp"

namespace bgpdt::tool {

/// What came of a block, or of a part of it.
struct Results {
    struct Told {
        std::uint64_t line; ///< from the first of this part, from 0
        toolkit::Refusal why;
        bool warning = false; ///< the line is taken all the same
    };

    toolkit::Buffer output;
    toolkit::Buffer rejects;   ///< the refused lines as they are
    std::vector<Told> told;    ///< the first of them, and of those that are warned of
    std::uint64_t refused = 0; ///< how many there are
    std::uint64_t warnings = 0;
    std::uint64_t lines = 0;       ///< that have ended
    bool continues_reject = false; ///< the first of the rejects began in the block before

    void clear();
};

/// Where results go, in the order of the input: the output, the rejects, the sentences, the progress.
class Report {
public:
    /// @param records  what the lines are called
    Report(const Options &options, const Input &input, Output *output, const char *records);
    ~Report() { clear_progress(); }
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    /// How many refusals are still told. Other threads may have told some by then.
    std::uint64_t left() const { return limit_ - std::min<std::uint64_t>(told_, limit_); }
    void take(const Block &block, const Results &results);
    /// The block has ended.
    void pass(const Block &block);
    /// Ends the files and says how many were refused.
    void finish();
    std::uint64_t refused() const { return refused_; }

private:
    void require_own_files();
    void tell(const Results::Told &told);
    void reject(const Results &results);
    void close_files();
    void show_progress();
    void clear_progress();

    using Clock = std::chrono::steady_clock;

    const Input &input_;
    Output *output_;
    const char *records_;
    std::uint64_t limit_;
    bool summary_;
    bool quiet_;
    bool json_;
    std::optional<Output> rejects_;
    bool in_place_ = false;    ///< the output is one of the inputs
    bool open_reject_ = false; ///< the last of the rejects has no end
    std::size_t file_ = 0;
    std::uint64_t line_ = 0; ///< lines of the file
    std::uint64_t lines_ = 0;
    std::uint64_t refused_ = 0;
    std::uint64_t warnings_ = 0;
    std::atomic<std::uint64_t> told_ = 0;
    std::uint64_t read_ = 0; ///< bytes
    std::optional<std::uint64_t> size_;
    Clock::time_point shown_ = Clock::now();
    bool on_screen_ = false;
};

/// What one thread does.
class Worker {
public:
    /// Takes over what there is of the results so far and clears them.
    using HandOut = std::function<void(Results &)>;

    virtual ~Worker() = default;
    virtual void work(const Block &block, Results &results, const HandOut &hand_out) = 0;
};

/// Runs the input through the workers, each in a thread of its own.
/// @throws what the input, a worker or the report throws
void run(Input &input, std::vector<std::unique_ptr<Worker>> workers, Report &report);

} // namespace bgpdt::tool
