// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "sorting.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
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

constexpr auto large_page = std::align_val_t{1 << 21};
constexpr auto chunk_size = static_cast<std::size_t>(large_page);
constexpr std::size_t most_runs = 64; ///< that are merged at a time, each with a buffer
constexpr std::size_t buffer_size = std::size_t{1} << 16;
constexpr std::uint64_t least_memory = buffer_size; ///< with less, runs would be shorter than what is read of one

using Place = ValueOrder::Place;
using Places = ValueOrder::Places;

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

template <class Word>
Word load(const std::uint8_t *from)
{
    Word word;
    std::memcpy(&word, from, sizeof word);
    return word;
}

/// Adds the bits in which the two differ, a machine word at a time; behind its end a key is zeros.
void add_differences(ValueOrder::Key first, ValueOrder::Key second, std::uint8_t *differences)
{
    const auto add = [&]<class Word>(std::size_t at, Word, auto... keys) {
        Word sum = load<Word>(differences + at);
        sum = static_cast<Word>(sum | (load<Word>(keys + at) ^ ...));
        std::memcpy(differences + at, &sum, sizeof sum);
    };
    const auto add_all = [&](std::size_t at, std::size_t end, auto... keys) {
        for (; at + sizeof(std::uint64_t) <= end; at += sizeof(std::uint64_t))
            add(at, std::uint64_t{}, keys...);
        for (; at < end; ++at)
            add(at, std::uint8_t{}, keys...);
    };
    const ValueOrder::Key longer = first.size() > second.size() ? first : second;
    const std::size_t common = std::min(first.size(), second.size());
    add_all(0, common, first.data(), second.data());
    add_all(common, longer.size(), longer.data());
}

/// Those in which there are differences.
Places places_of(const Bytes &differences)
{
    Places places;
    for (std::size_t i = 0; i < differences.size(); ++i)
        if (differences[i] != 0)
            places.push_back({static_cast<std::uint16_t>(i), false});
    return places;
}

void reverse(Places &places)
{
    for (Place &place : places)
        place.descending = !place.descending;
}

std::uint8_t byte_at(ValueOrder::Key key, std::size_t at) { return at < key.size() ? key[at] : 0; }

/// The order of the bytes in the places.
class ByPlaces {
public:
    explicit ByPlaces(std::span<const Place> places)
        : first_(places.first(std::min(places.size(), sizeof reversed_))), rest_(places.subspan(first_.size())),
          as_they_stand_(std::ranges::is_sorted(places, {}, &Place::at) &&
                         std::ranges::adjacent_find(places, std::not_equal_to(), &Place::descending) == places.end())
    {
        for (const Place place : first_)
            reversed_ = reversed_ << 8 | (place.descending ? 0xff : 0);
    }

    /// How many bytes make a word.
    std::size_t word_size() const { return first_.size(); }
    bool has_more() const { return !rest_.empty(); }

    /// A number in the order of the first bytes.
    std::uint64_t word_of(ValueOrder::Key key) const
    {
        std::uint64_t word = 0;
        for (const Place place : first_)
            word = word << 8 | byte_at(key, place.at);
        return word ^ reversed_;
    }

    /// Of keys with the same word.
    bool is_less(ValueOrder::Key first, ValueOrder::Key second) const
    {
        const int order = compare_keys(first, second);
        if (order == 0 || as_they_stand_)
            return rest_.front().descending ? order > 0 : order < 0;
        for (const Place place : rest_)
            if (const int bytes = byte_at(first, place.at) - byte_at(second, place.at); bytes != 0)
                return place.descending ? bytes > 0 : bytes < 0;
        return false;
    }

private:
    const std::span<const Place> first_;
    const std::span<const Place> rest_;
    const bool as_they_stand_; ///< all in one direction
    std::uint64_t reversed_ = 0;
};

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
    Run(int file, Runs::Place place, std::size_t value_size) : file_(file), left_(place), room_(value_size) {}

    /// Goes on to the next entry; false at the end.
    bool next(const ValueOrder &order)
    {
        at_ += size_;
        if (at_ == filled_ && left_.begin == left_.end)
            return false;
        require(sizeof(Head));
        size_ = Head::of(entry()).entry_size();
        require(size_);
        asked_ = order.asked(key_of(entry()), room_.data());
        return true;
    }

    const std::uint8_t *entry() const { return buffer_.data() + at_; }
    ValueOrder::Asked asked() const { return asked_; }

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
    ValueOrder::Asked asked_{};
    Bytes room_; ///< for what is asked
};

Sorter::Sorter(Session &session, const SYSDT_Record &type, Settings settings)
    : order_(session, type), settings_{std::max(settings.memory, least_memory), settings.unique, settings.reverse},
      value_size_(value_size(type))
{
}

Sorter::~Sorter() = default;

void Sorter::Free::operator()(std::uint8_t *room) const { operator delete(room, large_page); }

/// All but the first is to be of large pages: to get room by the 4 KiB takes a tenth of the time of sorting.
Sorter::Room Sorter::new_room(std::size_t size) const
{
    const std::size_t whole = (size + chunk_size - 1) / chunk_size * chunk_size;
    Room room(static_cast<std::uint8_t *>(operator new(whole, large_page)));
    if (!chunks_.empty())
        madvise(room.get(), whole, MADV_HUGEPAGE);
    return room;
}

void Sorter::store(Value value, std::string_view line)
{
    const std::size_t room = sizeof(Head) + value_size_ + line.size();
    if (room > chunk_left_) {
        chunk_left_ = std::max(room, chunk_size);
        if (idle_.empty() || room > chunk_size)
            idle_.push_back(new_room(chunk_left_));
        chunks_.push_back({std::move(idle_.back()), 0});
        idle_.pop_back();
    }
    Chunk &chunk = chunks_.back();
    std::uint8_t *const entry = chunk.room.get() + chunk.size;
    const std::size_t key = order_.make_key(value, entry + sizeof(Head));
    const Head head{static_cast<std::uint32_t>(line.size()), static_cast<std::uint32_t>(key)};
    std::memcpy(entry, &head, sizeof head);
    if (count_ == 0)
        differences_.assign(value_size_, 0);
    add_differences(key_of(chunks_.front().room.get()), key_of(entry), differences_.data());
    std::memcpy(entry + sizeof head + key, line.data(), line.size());
    chunk.size += head.entry_size();
    chunk_left_ -= head.entry_size();
    used_ += head.entry_size();
    ++count_;
}

void Sorter::add(Value value, std::string_view line)
{
    constexpr std::size_t bookkeeping = 2 * sizeof(Entry); // of an entry, in the list and in sorting
    store(value, line);
    if (used_ + count_ * bookkeeping > settings_.memory)
        spill();
}

/// Fetches an entry that will soon be looked at, since in order they lie anywhere. Inline, as compilers leave out calls
/// of a function that does nothing else.
[[gnu::always_inline]] inline void Sorter::fetch_after(std::span<const Entry> entries, std::size_t place)
{
    constexpr std::size_t ahead = 16;
    constexpr std::size_t cache_line = 64;
    constexpr std::size_t most = 5 * cache_line; // few entries have more
    if (place + ahead >= entries.size())
        return;
    const std::uint8_t *const bytes = entries[place + ahead].bytes;
    for (std::size_t at = 0; at < most; at += cache_line)
        __builtin_prefetch(bytes + at);
}

/// Equal ones stay in their order.
void Sorter::sort_by(const Places &places, std::span<Entry> entries)
{
    const ByPlaces by(places);
    sort_by_words(by.word_size(), entries);
    for (auto begin = entries.begin(), end = begin; by.has_more() && begin != entries.end(); begin = end) {
        end = std::find_if(begin, entries.end(), [&](const Entry &entry) { return entry.word != begin->word; });
        if (end - begin == 1) // as most are
            continue;
        std::stable_sort(begin, end, [&by](const Entry &first, const Entry &second) {
            return by.is_less(key_of(first.bytes), key_of(second.bytes));
        });
    }
}

/// Byte after byte, from the last on.
/// @param size  how many of the words' bytes count
void Sorter::sort_by_words(std::size_t size, std::span<Entry> entries)
{
    std::vector<Entry> room(entries.size());
    std::span<Entry> from = entries;
    std::span<Entry> to = room;
    for (std::size_t shift = 0; shift != 8 * size; shift += 8) {
        const auto byte = [shift](const Entry &entry) { return static_cast<std::uint8_t>(entry.word >> shift); };
        std::array<std::size_t, 256> places{};
        for (const Entry &entry : from)
            ++places[byte(entry)];
        std::exclusive_scan(places.begin(), places.end(), places.begin(), std::size_t{0});
        for (const Entry &entry : from)
            to[places[byte(entry)]++] = entry;
        std::swap(from, to);
    }
    if (from.data() != entries.data())
        std::ranges::copy(from, entries.begin());
}

auto Sorter::in_order() const
{
    return [this](const Entry &first, const Entry &second) {
        return compare(key_of(first.bytes), key_of(second.bytes)) < 0;
    };
}

/// The parts in which neighbours are misplaced.
std::vector<Sorter::Part> Sorter::disordered() const
{
    std::vector<Part> parts;
    if (order_.is_of_bytes() || entries_.empty())
        return parts;
    Bytes rooms[] = {Bytes(value_size_), Bytes(value_size_)};
    ValueOrder::Asked before = order_.asked(key_of(entries_.front().bytes), rooms[0].data());
    std::size_t begin = 0;
    for (std::size_t i = 1; i < entries_.size(); ++i) {
        fetch_after(entries_, i);
        const ValueOrder::Asked asked = order_.asked(key_of(entries_[i].bytes), rooms[i % 2].data());
        const std::optional<int> answer = order_.answer(before, asked);
        const int order = ValueOrder::decide(answer, before.key, asked.key);
        if (!answer)
            begin = i;
        if (settings_.reverse ? order < 0 : order > 0) {
            if (parts.empty() || parts.back().begin != begin)
                parts.push_back({begin, begin, i, i});
            parts.back().last = i;
        }
        if (!parts.empty() && parts.back().begin == begin)
            parts.back().end = i + 1;
        before = asked;
    }
    return parts;
}

/// The places whose bytes seem to decide in a part, in their order.
ValueOrder::Places Sorter::learn(const Part &part) const
{
    const std::span<const Entry> entries = std::span(entries_).subspan(part.begin, part.end - part.begin);
    Bytes differences(value_size_);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        fetch_after(entries, i);
        add_differences(key_of(entries.front().bytes), key_of(entries[i].bytes), differences.data());
    }
    const std::size_t wanted =
        std::min<std::size_t>(entries.size() / 16, 16); // to learn costs less than to ask about all
    std::vector<ValueOrder::Key> samples{key_of(entries_[part.first - 1].bytes), key_of(entries_[part.first].bytes)};
    for (std::size_t i = part.first; i <= part.last; i += (part.last - part.first) / wanted + 1)
        samples.push_back(key_of(entries_[i].bytes));
    Places places = order_.guess(places_of(differences), samples);
    if (settings_.reverse)
        reverse(places);
    return places;
}

void Sorter::sort_part(const Part &part)
{
    constexpr std::size_t few = 64; // asking about them costs less than learning
    const std::span<Entry> entries = std::span(entries_).subspan(part.begin, part.end - part.begin);
    if (part.last - part.first < few)
        return sort_by_asking(part.first, part.last);
    const Places places = learn(part);
    const ByPlaces by(places);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        fetch_after(entries, i);
        entries[i].word = by.word_of(key_of(entries[i].bytes));
    }
    sort_by(places, entries);
    if (entries.size() == entries_.size())
        learned_ = places;
}

/// Sorts those from the first misplaced one's neighbour to the last, then finds their place among the others.
void Sorter::sort_by_asking(std::size_t first_misplaced, std::size_t last_misplaced)
{
    const auto first = entries_.begin() + static_cast<std::ptrdiff_t>(first_misplaced) - 1;
    const auto behind = entries_.begin() + static_cast<std::ptrdiff_t>(last_misplaced) + 1;
    const auto less = in_order();
    std::stable_sort(first, behind, less);
    std::inplace_merge(std::upper_bound(entries_.begin(), first, *first, less), first, behind, less);
    std::inplace_merge(entries_.begin(), behind, std::lower_bound(behind, entries_.end(), behind[-1], less), less);
}

void Sorter::list_entries(const Places &places)
{
    const ByPlaces by(places);
    entries_.clear();
    entries_.reserve(count_);
    for (const Chunk &chunk : chunks_) {
        for (std::size_t at = 0; at != chunk.size; at += Head::of(chunk.room.get() + at).entry_size()) {
            const std::uint8_t *const entry = chunk.room.get() + at;
            entries_.push_back({entry, by.word_of(key_of(entry))});
        }
    }
}

/// What the type is asked about neighbours tells of all, since its order is total: where no two are in disorder, none are.
/// That of most types is the order of the bytes, and they are asked no more. Of others it is learned which bytes decide.
void Sorter::sort()
{
    if (!learned_.empty()) { // from the run before
        list_entries(learned_);
        sort_by(learned_, entries_);
        if (disordered().empty())
            return;
        learned_.clear();
    }
    Places places = places_of(differences_);
    if (settings_.reverse)
        reverse(places);
    list_entries(places);
    sort_by(places, entries_);
    const std::vector<Part> parts = disordered();
    for (const Part &part : parts)
        sort_part(part);
    if (parts.empty())
        return;
    if (const std::vector<Part> left = disordered(); !left.empty()) {
        learned_.clear();
        sort_by_asking(left.front().first, left.back().last);
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
    for (Chunk &chunk : chunks_)
        idle_.push_back(std::move(chunk.room));
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
        const int order = compare(runs[first].asked(), runs[second].asked());
        return order > 0 || (order == 0 && first > second);
    };
    std::priority_queue<std::size_t, std::vector<std::size_t>, decltype(later)> queue(later);
    runs.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        runs.emplace_back(runs_->file(), runs_->places()[first_run + i], value_size_);
        if (runs.back().next(order_))
            queue.push(i);
    }
    while (!queue.empty()) {
        const std::size_t first = queue.top();
        take(runs[first].entry());
        queue.pop();
        if (runs[first].next(order_))
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
            fetch_after(entries_, i);
            take(entries_[i].bytes);
        }
        return;
    }
    if (count_ != 0)
        spill();
    idle_.clear();
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
