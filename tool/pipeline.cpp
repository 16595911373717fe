// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "pipeline.hpp"

#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

#include "errors.hpp"
#include "refusals.hpp"
#include "signals.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

/// Refused lines that are told where nothing is said.
constexpr std::uint64_t usual_limit = 10;

void say(std::string_view text)
{
    static_cast<void>(write_all(STDERR_FILENO, text)); // there is nowhere else to complain
}

/// The threads over the input.
class Threads {
public:
    Threads(Input &input, Report &report) : input_(input), report_(report) {}

    void run(Worker &worker)
    {
        try {
            Block block;
            Results results;
            while (next(block)) {
                worker.work(block, results, [&](Results &part) { hand_out(block, part); });
                hand_out(block, results);
                pass(block);
            }
        } catch (...) {
            abandon(std::current_exception());
        }
    }

    void rethrow() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
    }

private:
    /// Another thread has failed, and told why.
    struct Abandoned {};

    /// What was read before the input failed is handed out all the same.
    bool next(Block &block)
    {
        const std::lock_guard lock(input_mutex_);
        if (ended_)
            return false;
        try {
            ended_ = !input_.next(block);
        } catch (...) {
            ended_ = true;
            const std::lock_guard turn(turn_mutex_);
            failure_ = failure_ ? failure_ : std::current_exception();
        }
        return !ended_;
    }

    void hand_out(const Block &block, Results &results)
    {
        {
            std::unique_lock lock(turn_mutex_);
            turn_.wait(lock, [&] { return abandoned_ || next_ == block.number; });
            if (abandoned_)
                throw Abandoned();
        }
        report_.take(block, results); // whose turn it is, is alone here
        results.clear();
    }

    void pass(const Block &block)
    {
        report_.pass(block);
        {
            const std::lock_guard lock(turn_mutex_);
            ++next_;
        }
        turn_.notify_all();
    }

    void abandon(std::exception_ptr failure)
    {
        {
            const std::lock_guard lock(turn_mutex_);
            if (!abandoned_)
                failure_ = std::move(failure);
            abandoned_ = true;
        }
        turn_.notify_all();
        input_.interrupt();
    }

    Input &input_;
    Report &report_;
    std::mutex input_mutex_;
    bool ended_ = false;
    std::mutex turn_mutex_;
    std::condition_variable turn_;
    std::uint64_t next_ = 0; ///< the block that is handed out
    bool abandoned_ = false;
    std::exception_ptr failure_;
};

} // namespace

void Results::clear()
{
    output.clear();
    rejects.clear();
    told.clear();
    refused = 0;
    warnings = 0;
    lines = 0;
    continues_reject = false;
}

Report::Report(const Options &options, const Input &input, Output *output, const char *records)
    : input_(input), output_(output), records_(records), limit_(options.quiet ? 0 : options.show.value_or(usual_limit)),
      summary_(options.summary), quiet_(options.quiet), json_(options.json)
{
    if (!options.rejects.empty())
        rejects_.emplace(options.rejects, "the file of the rejects");
    const bool seen = isatty(STDERR_FILENO) != 0 && (output == nullptr || isatty(output->descriptor()) == 0);
    size_ = seen && !quiet_ ? input.size() : std::nullopt;
    require_own_files();
}

/// What is still to be read is not written, and no output over another. An output that takes the place of its input when
/// all of it is read does no harm.
void Report::require_own_files()
{
    const auto reads = [this](const Output &file) { return file.id() && input_.reads(*file.id()); };
    const auto require = [](bool own, const Output &file, const char *other) {
        if (!own)
            throw UsageError(file.purpose() + " is " + other + " too; it needs a file of its own");
    };
    if (output_ != nullptr) {
        in_place_ = reads(*output_);
        require(!in_place_ || output_->is_replaced(), *output_, "one of the files to read");
    }
    if (rejects_) {
        require(!reads(*rejects_), *rejects_, "one of the files to read");
        require(output_ == nullptr || !output_->id() || output_->id() != rejects_->id(), *rejects_, "the output");
    }
}

void Report::reject(const Results &results)
{
    if (!rejects_ || results.rejects.size() == 0)
        return;
    if (open_reject_ && !results.continues_reject)
        rejects_->write("\n");
    rejects_->write(results.rejects.text());
    open_reject_ = !results.rejects.text().ends_with('\n');
}

void Report::tell(const Results::Told &told)
{
    clear_progress();
    const std::uint64_t line = line_ + told.line + 1;
    const std::string why = sentence(told.why);
    if (json_) {
        say(refused_line_json(input_.name(file_), line, why, told.why, told.warning).text() + "\n");
        return;
    }
    say(shown(input_.name(file_) + ":" + std::to_string(line) + (told.warning ? ": warning: " : ": ")) + why + "\n" +
        lines_below(told.why));
}

void Report::take(const Block &block, const Results &results)
{
    if (block.file != file_) {
        file_ = block.file;
        line_ = 0;
    }
    if (output_ != nullptr && results.output.size() != 0)
        output_->write(results.output.text());
    reject(results);
    for (const Results::Told &told : results.told) {
        if (left() == 0)
            break;
        tell(told);
        ++told_;
    }
    warnings_ += results.warnings;
    refused_ += results.refused;
    line_ += results.lines;
    lines_ += results.lines;
}

void Report::pass(const Block &block)
{
    read_ += block.size;
    if (size_ && Clock::now() - shown_ > std::chrono::milliseconds(200))
        show_progress();
}

void Report::show_progress()
{
    constexpr std::uint64_t width = 40;
    const std::uint64_t size = std::max<std::uint64_t>(*size_, 1);
    const std::uint64_t done = std::min(read_, size);
    const auto filled = static_cast<std::size_t>(width * done / size);
    const std::string percent = std::to_string(100 * done / size);
    say("\r[" + std::string(filled, '#') + std::string(width - filled, ' ') + "] " + percent + " %");
    shown_ = Clock::now();
    on_screen_ = true;
}

void Report::clear_progress()
{
    if (std::exchange(on_screen_, false))
        say("\r\033[K");
}

/// The output comes last: it may take the place of what the rejects are from.
void Report::close_files()
{
    if (rejects_)
        rejects_->close();
    if (output_ != nullptr)
        output_->close();
}

void Report::finish()
{
    clear_progress();
    const std::string refused =
        std::to_string(refused_) + " of " + std::to_string(lines_) + " " + records_ + " refused";
    if (in_place_ && refused_ != 0 && !rejects_) {
        throw UsageError("the output is one of the files read and stays as it was: " + refused +
                         " would be lost; --rejects FILE keeps them");
    }
    close_files();
    if (!summary_ && (refused_ + warnings_ == 0 || quiet_))
        return;
    const std::uint64_t told = told_;
    if (json_) {
        say(summary_json(lines_, refused_, told, warnings_).text() + "\n");
        return;
    }
    const std::string warned = warnings_ != 0 ? ", " + counted(warnings_, "warning") : "";
    const std::string hidden = refused_ + warnings_ > told && !quiet_ ? ", " + std::to_string(told) + " told" : "";
    say("bgpdt: " + refused + warned + hidden + "\n");
}

void run(Input &input, std::vector<std::unique_ptr<Worker>> workers, Report &report)
{
    Threads threads(input, report);
    std::vector<std::jthread> others;
    try {
        const SignalsHeld held; // what a signal does is this thread's
        for (std::size_t i = 1; i < workers.size(); ++i)
            others.emplace_back([&threads, &worker = *workers[i]] { threads.run(worker); });
    } catch (const std::system_error &) { // those that there are do all of the work
    }
    threads.run(*workers.front());
    others.clear(); // joins
    threads.rethrow();
}

} // namespace bgpdt::tool
