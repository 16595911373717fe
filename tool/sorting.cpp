// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "sorting.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <numeric>
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

/// An entry begins with it; behind it stand the key and the line.
struct Head {
    std::uint32_t line;
    std::uint32_t key;

    static Head of(const std::uint8_t *entry)
    {
        Head head;
        std::memcpy(&head, entry, sizeof head);
        return head;
    }
    std::size_t entry_size() const { return sizeof(Head) + key + line; }
};

ValueOrder::Key key_of(const std::uint8_t *entry) { return {entry + sizeof(Head), Head::of(entry).key}; }

std::string_view line_of(const std::uint8_t *entry)
{
    const Head head = Head::of(entry);
    return {reinterpret_cast<const char *>(entry) + sizeof head + head.key, head.line};
}

std::string_view bytes_of(const std::uint8_t *entry)
{
    return {reinterpret_cast<const char *>(entry), Head::of(entry).entry_size()};
}

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
    Run(int file, Runs::Place place) : file_(file), left_(place) {}

    /// Goes on to the next entry; false at the end.
    bool next()
    {
        at_ += size_;
        if (at_ == filled_ && left_.begin == left_.end)
            return false;
        require(sizeof(Head));
        size_ = Head::of(entry()).entry_size();
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
    Bytes buffer_;
    std::size_t filled_ = 0;
    std::size_t at_ = 0;   ///< the entry
    std::size_t size_ = 0; ///< of the entry
};

Sorter::Sorter(Session &session, const SYSDT_Record &type, Settings settings)
    : order_(session, type), settings_{std::max(settings.memory, least_memory), settings.unique, settings.reverse},
      value_size_(value_size(type))
{
}

Sorter::~Sorter() = default;

/// As it was asked for: negative where the first comes first.
int Sorter::compare(const std::uint8_t *first, const std::uint8_t *second) const
{
    return settings_.reverse ? order_.compare(key_of(second), key_of(first))
                             : order_.compare(key_of(first), key_of(second));
}

/// @param key  with room for a value
void Sorter::note_differences(std::uint8_t *key, std::size_t size)
{
    if (count_ == 0) {
        first_.assign(value_size_, 0);
        std::copy(key, key + size, first_.begin());
        first_key_ = size;
        differences_.assign(value_size_, 0);
    }
    const std::size_t longer = std::max(size, first_key_); // behind it both are zeros
    std::memset(key + size, 0, longer - size);
    add_differences(first_.data(), key, std::span(differences_).first(longer));
}

void Sorter::store(Value value, std::string_view line)
{
    const std::size_t room = sizeof(Head) + value_size_ + line.size();
    if (room > chunk_left_) {
        chunk_left_ = std::max(room, chunk_size);
        chunks_.push_back({std::unique_ptr<std::uint8_t[]>(new std::uint8_t[chunk_left_]), 0});
    }
    Chunk &chunk = chunks_.back();
    std::uint8_t *const entry = chunk.bytes.get() + chunk.size;
    const std::size_t key = order_.make_key(value, entry + sizeof(Head));
    note_differences(entry + sizeof(Head), key);
    const Head head{static_cast<std::uint32_t>(line.size()), static_cast<std::uint32_t>(key)};
    std::memcpy(entry, &head, sizeof head);
    std::memcpy(entry + sizeof head + key, line.data(), line.size());
    chunk.size += head.entry_size();
    chunk_left_ -= head.entry_size();
    used_ += head.entry_size();
    ++count_;
}

void Sorter::add(Value value, std::string_view line)
{
    // Of an entry, in the list and in sorting.
    const std::size_t bookkeeping = 2 * sizeof(Entry) + (order_.reads_numbers() ? value_size_ : 0);
    store(value, line);
    if (used_ + count_ * bookkeeping > settings_.memory)
        spill();
}

/// @param word_bytes  the places of the bytes in a value that make the words
void Sorter::list_entries(std::span<const std::size_t> word_bytes)
{
    entries_.clear();
    entries_.reserve(count_);
    for (const Chunk &chunk : chunks_) {
        for (std::size_t at = 0; at != chunk.size; at += Head::of(chunk.bytes.get() + at).entry_size()) {
            const std::uint8_t *const entry = chunk.bytes.get() + at;
            const ValueOrder::Key key = key_of(entry);
            std::uint64_t word = 0;
            for (const std::size_t place : word_bytes)
                word = word << 8 | (place < key.size() ? key[place] : 0);
            entries_.push_back({entry, is_descending() ? ~word : word});
        }
    }
}

/// Byte after byte, from the last on; equal ones stay in their order.
/// @param size  how many of the words' bytes count
void Sorter::sort_by_words(std::size_t size)
{
    std::vector<Entry> sorted(entries_.size());
    for (std::size_t shift = 0; shift != 8 * size; shift += 8) {
        const auto byte = [shift](const Entry &entry) { return static_cast<std::uint8_t>(entry.word >> shift); };
        std::array<std::size_t, 256> places{};
        for (const Entry &entry : entries_)
            ++places[byte(entry)];
        std::exclusive_scan(places.begin(), places.end(), places.begin(), std::size_t{0});
        for (const Entry &entry : entries_)
            sorted[places[byte(entry)]++] = entry;
        entries_.swap(sorted);
    }
}

/// The bytes that all have in common decide nothing, so that the first eight of the others are the word.
void Sorter::sort_by_bytes()
{
    std::vector<std::size_t> varying;
    for (std::size_t i = 0; i < differences_.size(); ++i)
        if (differences_[i] != 0)
            varying.push_back(i);
    const std::size_t size = std::min(varying.size(), sizeof(Entry::word));
    list_entries(std::span(varying).first(size));
    sort_by_words(size);
    if (size != varying.size())
        sort_equal_words();
}

/// Those with the same word by all of their bytes.
void Sorter::sort_equal_words()
{
    for (auto begin = entries_.begin(), end = begin; begin != entries_.end(); begin = end) {
        end = std::find_if(begin, entries_.end(), [&](const Entry &entry) { return entry.word != begin->word; });
        if (end - begin == 1) // as most are
            continue;
        std::stable_sort(begin, end, [this](const Entry &first, const Entry &second) {
            const int order = compare_keys(key_of(first.bytes), key_of(second.bytes));
            return is_descending() ? order > 0 : order < 0;
        });
    }
}

/// Fetches an entry that will soon be looked at, since in order they lie anywhere. Inline, as compilers leave out calls
/// of a function that does nothing else.
[[gnu::always_inline]] inline void Sorter::fetch_after(std::size_t place) const
{
    constexpr std::size_t ahead = 16;
    constexpr std::size_t cache_line = 64;
    constexpr std::size_t most = 5 * cache_line; // few entries have more
    if (place + ahead >= entries_.size())
        return;
    const std::uint8_t *const bytes = entries_[place + ahead].bytes;
    for (std::size_t at = 0; at < most; at += cache_line)
        __builtin_prefetch(bytes + at);
}

/// Which entries are, as far as neighbours tell.
Sorter::Misplaced Sorter::misplaced() const
{
    Misplaced found{entries_.size(), 0, 0};
    if (order_.is_of_bytes())
        return found;
    Bytes rooms[] = {Bytes(value_size_), Bytes(value_size_)};
    ValueOrder::Asked before{};
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        fetch_after(i);
        const ValueOrder::Asked asked = order_.asked(key_of(entries_[i].bytes), rooms[i % 2].data());
        const int order = i == 0 ? 0 : order_.compare(before, asked);
        if (settings_.reverse ? order < 0 : order > 0)
            found = {std::min(found.first, i), i, found.count + 1};
        before = asked;
    }
    return found;
}

/// Sorts those from the first misplaced one's neighbour to the last, then finds their place among the others.
void Sorter::sort_by_asking(const Misplaced &misplaced)
{
    const auto first = entries_.begin() + static_cast<std::ptrdiff_t>(misplaced.first) - 1;
    const auto behind = entries_.begin() + static_cast<std::ptrdiff_t>(misplaced.last) + 1;
    const auto less = [this](const Entry &one, const Entry &other) { return compare(one.bytes, other.bytes) < 0; };
    if (order_.reads_numbers())
        sort_asking_once({first, behind});
    else
        std::stable_sort(first, behind, less);
    std::inplace_merge(std::upper_bound(entries_.begin(), first, *first, less), first, behind, less);
    std::inplace_merge(entries_.begin(), behind, std::lower_bound(behind, entries_.end(), behind[-1], less), less);
}

/// What the type is asked about is made once for each, and found by the word.
void Sorter::sort_asking_once(std::span<Entry> entries) const
{
    Bytes asked(entries.size() * value_size_);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].word = i * value_size_;
        static_cast<void>(order_.asked(key_of(entries[i].bytes), asked.data() + entries[i].word));
    }
    const auto asked_about = [&](const Entry &entry) {
        return ValueOrder::Asked{key_of(entry.bytes), asked.data() + entry.word};
    };
    std::ranges::stable_sort(entries, [&](const Entry &first, const Entry &second) {
        const int order = order_.compare(asked_about(first), asked_about(second));
        return settings_.reverse ? order > 0 : order < 0;
    });
}

/// The type is asked about neighbours alone, as long as its order is that of the bytes, which most types' is, or that the
/// other way round: where no two neighbours are in disorder, none are, since the order is total. Else it is asked about
/// those between the first and the last in disorder: few where only one kind of its values has an order of its own.
void Sorter::sort()
{
    sort_by_bytes();
    Misplaced found = misplaced();
    if (by_ == By::bytes && found.count != 0 && found.count == entries_.size() - 1) {
        by_ = By::bytes_reversed;
        sort_by_bytes();
        found = misplaced();
    }
    if (found.count != 0) {
        by_ = By::asking;
        sort_by_asking(found);
    }
}

void Sorter::spill()
{
    if (!runs_)
        runs_ = std::make_unique<Runs>();
    sort();
    for (const Entry &entry : entries_)
        runs_->write(bytes_of(entry.bytes));
    runs_->end_run();
    chunks_.clear();
    chunk_left_ = 0;
    used_ = 0;
    count_ = 0;
}

/// The entries of neighbouring runs in order; of equal ones those of the earlier run first.
void Sorter::merge(std::size_t first_run, std::size_t count, const Take &take)
{
    std::vector<Run> runs;
    const auto later = [this, &runs](std::size_t first, std::size_t second) {
        const int order = compare(runs[first].entry(), runs[second].entry());
        return order > 0 || (order == 0 && first > second);
    };
    std::priority_queue<std::size_t, std::vector<std::size_t>, decltype(later)> queue(later);
    runs.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        runs.emplace_back(runs_->file(), runs_->places()[first_run + i]);
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
                  [&](const std::uint8_t *entry) { longer->write(bytes_of(entry)); });
            longer->end_run();
        }
        runs_ = std::move(longer);
    }
}

void Sorter::each_in_order(const Take &take)
{
    if (!runs_) {
        sort();
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            fetch_after(i);
            take(entries_[i].bytes);
        }
        return;
    }
    if (count_ != 0)
        spill();
    merge_in_passes();
    merge(0, runs_->places().size(), take);
}

void Sorter::finish(const Write &write)
{
    Bytes last;
    bool begun = false;
    each_in_order([&](const std::uint8_t *entry) {
        const ValueOrder::Key key = key_of(entry);
        if (settings_.unique) {
            if (std::exchange(begun, true) && std::ranges::equal(last, key))
                return;
            last.assign(key.begin(), key.end());
        }
        write(line_of(entry));
    });
}

} // namespace bgpdt::tool
