// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "sorting.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <queue>
#include <string>
#include <system_error>
#include <utility>

#include "descriptor.hpp"
#include "errors.hpp"
#include "signals.hpp"
#include "toolkit/buffer.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

constexpr std::size_t chunk_size = std::size_t{1} << 20;
constexpr std::size_t most_runs = 64; ///< that are merged at a time, each with a buffer
constexpr std::size_t buffer_size = std::size_t{1} << 16;
constexpr std::uint64_t least_memory = buffer_size; ///< with less, runs would be shorter than what is read of one

using LineLength = std::uint32_t;

LineLength load_length(const std::uint8_t *entry)
{
    LineLength length = 0;
    std::memcpy(&length, entry, sizeof length);
    return length;
}

/// The value of an entry in the target's order.
const std::uint8_t *target(const std::uint8_t *entry) { return entry + sizeof(LineLength); }

/// Sets the bits in which the two differ, a machine word at a time.
void add_differences(const std::uint8_t *first, const std::uint8_t *second, std::span<std::uint8_t> differences)
{
    const auto add = [&]<class Word>(std::size_t at, Word word) {
        Word words[] = {word, word, word};
        std::memcpy(&words[0], first + at, sizeof word);
        std::memcpy(&words[1], second + at, sizeof word);
        std::memcpy(&words[2], &differences[at], sizeof word);
        words[2] = static_cast<Word>(words[2] | (words[0] ^ words[1]));
        std::memcpy(&differences[at], &words[2], sizeof word);
    };
    std::size_t at = 0;
    for (; at + sizeof(std::uint64_t) <= differences.size(); at += sizeof(std::uint64_t))
        add(at, std::uint64_t{});
    for (; at < differences.size(); ++at)
        add(at, std::uint8_t{});
}

/// A file that is gone with its descriptor, however the program ends.
Descriptor temporary_file()
{
    std::error_code error;
    const std::string folder = std::filesystem::temp_directory_path(error).string();
    if (error)
        throw UsageError("there is no folder for temporary files, TMPDIR or /tmp: " + error.message());
    Descriptor file(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    if (!file.is_open()) {
        std::string name = folder + "/bgpdt.XXXXXX";
        const SignalsHeld held;
        file = Descriptor(mkostemp(name.data(), O_CLOEXEC));
        if (file.is_open())
            static_cast<void>(unlink(name.c_str()));
    }
    if (!file.is_open())
        throw UsageError("no temporary file can be made in " + folder + ": " + std::strerror(errno));
    return file;
}

[[noreturn]] void fail_temporary(int error)
{
    throw UsageError(std::string("a temporary file cannot be written or read: ") + std::strerror(error));
}

} // namespace

/// The sorted parts of the lines that memory has no room for, back to back in one file, however many there are.
class Sorter::Runs {
public:
    struct Place {
        std::uint64_t begin;
        std::uint64_t end;
    };

    void write(std::string_view entry)
    {
        unwritten_.append(entry);
        if (unwritten_.size() > buffer_size)
            flush();
    }

    /// What was written since the last end is a run.
    void end_run()
    {
        flush();
        places_.push_back({places_.empty() ? 0 : places_.back().end, size_});
    }

    int file() const { return file_.number(); }
    const std::vector<Place> &places() const { return places_; }

private:
    void flush()
    {
        if (!write_all(file_.number(), unwritten_.text()))
            fail_temporary(errno);
        size_ += unwritten_.size();
        unwritten_.clear();
    }

    Descriptor file_ = temporary_file();
    Buffer unwritten_;
    std::uint64_t size_ = 0;
    std::vector<Place> places_;
};

/// Reads the entries of a run.
class Sorter::Run {
public:
    Run(int file, Runs::Place place, std::size_t key_size) : file_(file), left_(place), key_size_(key_size) {}

    /// Goes on to the next entry; false at the end.
    bool next()
    {
        at_ += size_;
        size_ = sizeof(LineLength) + key_size_;
        if (at_ == filled_ && left_.begin == left_.end)
            return false;
        require(size_);
        size_ += load_length(entry());
        require(size_);
        return true;
    }

    const std::uint8_t *entry() const { return buffer_.data() + at_; }

private:
    /// Reads so far that so many bytes of the entry are there.
    void require(std::size_t size)
    {
        if (filled_ - at_ >= size)
            return;
        std::copy(buffer_.data() + at_, buffer_.data() + filled_, buffer_.data());
        filled_ -= std::exchange(at_, 0);
        buffer_.resize(std::max({buffer_.size(), buffer_size, size}));
        while (filled_ < size) {
            const std::size_t wanted = std::min<std::uint64_t>(buffer_.size() - filled_, left_.end - left_.begin);
            const ssize_t got = pread(file_, buffer_.data() + filled_, wanted, static_cast<off_t>(left_.begin));
            if (got == 0 || (got < 0 && errno != EINTR))
                fail_temporary(got == 0 ? EIO : errno);
            filled_ += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
            left_.begin += static_cast<std::uint64_t>(std::max<ssize_t>(got, 0));
        }
    }

    int file_;
    Runs::Place left_; ///< to read
    std::size_t key_size_;
    Bytes buffer_;
    std::size_t filled_ = 0;
    std::size_t at_ = 0;   ///< the entry
    std::size_t size_ = 0; ///< of the entry
};

Sorter::Sorter(Session &session, const SYSDT_Record &type, Settings settings)
    : order_(session, type), settings_{std::max(settings.memory, least_memory), settings.unique, settings.reverse}
{
}

Sorter::~Sorter() = default;

bool Sorter::less(const std::uint8_t *first, const std::uint8_t *second) const
{
    const int order = order_.compare(order_.key(first + sizeof(LineLength)), order_.key(second + sizeof(LineLength)));
    return settings_.reverse ? order > 0 : order < 0;
}

const std::uint8_t *Sorter::store(Value value, std::string_view line)
{
    const std::size_t size = sizeof(LineLength) + order_.key_size() + line.size();
    if (size > chunk_left_) {
        chunk_left_ = std::max(size, chunk_size);
        chunks_.emplace_back(new std::uint8_t[chunk_left_]);
    }
    // A chunk is filled from its end.
    std::uint8_t *const entry = chunks_.back().get() + (chunk_left_ -= size);
    const auto length = static_cast<LineLength>(line.size());
    std::memcpy(entry, &length, sizeof length);
    order_.make_key(value, entry + sizeof length);
    std::ranges::copy(line, entry + sizeof length + order_.key_size());
    used_ += size;
    return entry;
}

void Sorter::add(Value value, std::string_view line)
{
    // There is room for two of an entry, which is half of what a growing list takes, and for one in sorting.
    constexpr std::size_t bookkeeping = 4 * sizeof(Entry);
    entries_.push_back({store(value, line)});
    if (used_ + entries_.size() * bookkeeping > settings_.memory)
        spill();
}

/// Where values differ.
std::vector<std::size_t> Sorter::varying_bytes() const
{
    const std::size_t size = order_.target_size();
    const std::uint8_t *const first = target(entries_.front().bytes);
    Bytes differences(size);
    for (const Entry &entry : entries_)
        add_differences(first, target(entry.bytes), differences);
    std::vector<std::size_t> varying;
    for (std::size_t i = 0; i < size; ++i)
        if (differences[i] != 0)
            varying.push_back(i);
    return varying;
}

/// The bytes that all have in common decide nothing, so that the first eight of the others are the word.
void Sorter::sort_by_bytes()
{
    std::vector<std::size_t> varying = varying_bytes();
    const bool decides = varying.size() <= sizeof(Entry::word);
    varying.resize(std::min(varying.size(), sizeof(Entry::word)));
    for (Entry &entry : entries_) {
        entry.word = 0;
        for (const std::size_t at : varying)
            entry.word = entry.word << 8 | target(entry.bytes)[at];
        entry.word = settings_.reverse ? ~entry.word : entry.word;
    }
    std::ranges::stable_sort(entries_, [&](const Entry &first, const Entry &second) {
        if (first.word != second.word || decides)
            return first.word < second.word;
        const int order = std::memcmp(target(first.bytes), target(second.bytes), order_.target_size());
        return settings_.reverse ? order > 0 : order < 0;
    });
}

bool Sorter::is_in_order() const
{
    return std::ranges::is_sorted(
        entries_, [this](const Entry &first, const Entry &second) { return less(first.bytes, second.bytes); });
}

/// The type is asked about neighbours alone, as long as its order is that of the bytes, which many types' is: where no two
/// neighbours are in disorder, none are, since the order is total.
void Sorter::sort()
{
    if (by_bytes_ && !entries_.empty()) {
        sort_by_bytes();
        by_bytes_ = is_in_order();
    }
    if (!by_bytes_)
        std::ranges::stable_sort(
            entries_, [this](const Entry &first, const Entry &second) { return less(first.bytes, second.bytes); });
}

std::string_view Sorter::bytes(const std::uint8_t *entry) const
{
    return {reinterpret_cast<const char *>(entry), sizeof(LineLength) + order_.key_size() + load_length(entry)};
}

void Sorter::spill()
{
    if (!runs_)
        runs_ = std::make_unique<Runs>();
    sort();
    for (const Entry &entry : entries_)
        runs_->write(bytes(entry.bytes));
    runs_->end_run();
    entries_.clear();
    chunks_.clear();
    chunk_left_ = 0;
    used_ = 0;
}

/// The entries of neighbouring runs in order; of equal ones those of the earlier run first.
void Sorter::merge(std::size_t first_run, std::size_t count, const Take &take)
{
    std::vector<Run> runs;
    const auto later = [this, &runs](std::size_t first, std::size_t second) {
        const std::uint8_t *const a = runs[first].entry();
        const std::uint8_t *const b = runs[second].entry();
        return less(b, a) || (!less(a, b) && first > second);
    };
    std::priority_queue<std::size_t, std::vector<std::size_t>, decltype(later)> queue(later);
    runs.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        runs.emplace_back(runs_->file(), runs_->places()[first_run + i], order_.key_size());
        if (runs.back().next())
            queue.push(i);
    }
    while (!queue.empty()) {
        const std::size_t first = queue.top();
        take(runs[first].entry());
        queue.pop();
        if (runs[first].next())
            queue.push(first);
    }
}

/// Makes fewer and longer runs, until all can be merged at a time.
void Sorter::merge_in_passes()
{
    while (runs_->places().size() > most_runs) {
        auto longer = std::make_unique<Runs>();
        for (std::size_t first = 0, all = runs_->places().size(); first < all; first += most_runs) {
            merge(first, std::min(most_runs, all - first),
                  [&](const std::uint8_t *entry) { longer->write(bytes(entry)); });
            longer->end_run();
        }
        runs_ = std::move(longer);
    }
}

void Sorter::each_in_order(const Take &take)
{
    if (!runs_) {
        sort();
        for (const Entry &entry : entries_)
            take(entry.bytes);
        return;
    }
    if (!entries_.empty())
        spill();
    merge_in_passes();
    merge(0, runs_->places().size(), take);
}

void Sorter::finish(const Write &write)
{
    Bytes last;
    const std::size_t key_size = order_.key_size();
    each_in_order([&](const std::uint8_t *entry) {
        const std::uint8_t *const key = entry + sizeof(LineLength);
        if (settings_.unique) {
            if (!last.empty() && order_.same(order_.key(last.data()), order_.key(key)))
                return;
            last.assign(key, key + key_size);
        }
        write({reinterpret_cast<const char *>(key + key_size), load_length(entry)});
    });
}

} // namespace bgpdt::tool
