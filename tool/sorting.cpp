// SPDX-License-Identifier: Apache-2.0
#include "sorting.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <queue>
#include <string>
#include <utility>

#include "errors.hpp"

namespace bgpdt::tool {
namespace {

constexpr std::size_t chunk_size = std::size_t{1} << 20;
constexpr std::size_t most_runs = 64; ///< files that are open at a time

using Length = std::uint32_t;

Length load_length(const std::uint8_t *entry)
{
    Length length = 0;
    std::memcpy(&length, entry, sizeof length);
    return length;
}

/// A file that is gone with its descriptor, however the program ends.
int temporary_file()
{
    const std::string folder = std::filesystem::temp_directory_path().string();
    int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (file < 0) {
        std::string name = folder + "/bgpdt.XXXXXX";
        file = mkostemp(name.data(), O_CLOEXEC);
        if (file >= 0) {
            static_cast<void>(unlink(name.c_str()));
        }
    }
    if (file < 0) {
        throw UsageError("no temporary file can be made in " + folder + ": " + std::strerror(errno));
    }
    return file;
}

/// A value of zeros but for one of its numbers, in the machine's order; empty if it has no number of two bytes or more.
Bytes with_number(const SYSDT_Record &type, std::uint16_t number)
{
    Bytes value(value_size(type));
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    const auto field =
        std::ranges::find_if(layout.fields, [](const Field &row) { return row.host_order() && row.width > 1; });
    const bool plain = layout.fields.empty() && type.baseKind == SYSDT_KIND_BINARY && value.size() > 1;
    if (field == layout.fields.end() && !plain) {
        return {};
    }
    const std::size_t end = plain ? value.size() : std::size_t{field->offset} + field->width;
    value[end - 2] = static_cast<std::uint8_t>(number >> 8);
    value[end - 1] = static_cast<std::uint8_t>(number);
    if (std::endian::native == std::endian::little) {
        std::reverse(value.data() + (plain ? 0 : field->offset), value.data() + end);
    }
    return value;
}

int compared(const SYSDT_Record &type, const void *first, const void *second)
{
    return type.compare(&type, static_cast<std::uint32_t>(value_size(type)), first, second);
}

} // namespace

bool compares_numbers(const SYSDT_Record &type)
{
    const Bytes one = with_number(type, 1);
    const Bytes two = with_number(type, 2);
    const Bytes more = with_number(type, 0x0100); // its low byte is less than theirs
    return type.compare != nullptr && !one.empty() &&
           compared(type, one.data(), two.data()) == compared(type, one.data(), more.data());
}

ValueOrder::ValueOrder(const SYSDT_Record &type)
    : type_(type), size_(value_size(type)), reads_numbers_(compares_numbers(type)), target_(type, false)
{
}

void ValueOrder::make_key(Value value, std::uint8_t *key)
{
    const std::uint16_t *const positions = target_.positions(value);
    for (std::size_t i = 0; i < size_; ++i) {
        key[i] = value[positions[i]];
    }
    if (reads_numbers_) {
        std::memcpy(key + size_, value.data(), size_);
    }
}

int ValueOrder::compare(Key first, Key second) const
{
    if (type_.compare != nullptr) {
        const int order = compared(type_, first.compared(*this), second.compared(*this));
        if (order == 1 || order == -1) {
            return order;
        }
    }
    return std::memcmp(first.target(), second.target(), size_);
}

bool ValueOrder::same(Key first, Key second) const { return std::memcmp(first.target(), second.target(), size_) == 0; }

// ------------------------------------------------------------------------------------------------ runs

/// A sorted part of the lines in a temporary file.
class Sorter::Run {
public:
    explicit Run(std::size_t key_size) : key_size_(key_size), file_(fdopen(temporary_file(), "w+"), &std::fclose)
    {
        if (!file_) {
            fail();
        }
        static_cast<void>(std::setvbuf(file_.get(), nullptr, _IOFBF, std::size_t{1} << 16));
    }

    void write(const std::uint8_t *entry)
    {
        const std::size_t size = sizeof(Length) + key_size_ + load_length(entry);
        if (std::fwrite(entry, 1, size, file_.get()) != size) {
            fail();
        }
    }

    void rewind()
    {
        if (std::fflush(file_.get()) != 0 || std::fseek(file_.get(), 0, SEEK_SET) != 0) {
            fail();
        }
    }

    /// The next entry; null at the end.
    const std::uint8_t *next()
    {
        entry_.resize(sizeof(Length) + key_size_);
        if (!read(entry_.data(), entry_.size())) {
            return nullptr;
        }
        const std::size_t head = entry_.size();
        const std::size_t length = load_length(entry_.data());
        entry_.resize(head + length);
        if (length != 0 && !read(entry_.data() + head, length)) {
            fail();
        }
        return entry_.data();
    }

    const std::uint8_t *entry() const { return entry_.data(); }

private:
    bool read(std::uint8_t *to, std::size_t size)
    {
        if (std::fread(to, 1, size, file_.get()) == size) {
            return true;
        }
        if (std::ferror(file_.get()) != 0) {
            fail();
        }
        return false;
    }

    [[noreturn]] static void fail()
    {
        throw UsageError(std::string("a temporary file cannot be written or read: ") + std::strerror(errno));
    }

    std::size_t key_size_;
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> file_;
    Bytes entry_;
};

Sorter::Sorter(const SYSDT_Record &type, Settings settings) : order_(type), settings_(settings) {}

Sorter::~Sorter() = default;

bool Sorter::less(const std::uint8_t *first, const std::uint8_t *second) const
{
    return order_.compare(order_.key(first + sizeof(Length)), order_.key(second + sizeof(Length))) < 0;
}

const std::uint8_t *Sorter::store(Value value, std::string_view line)
{
    const std::size_t size = sizeof(Length) + order_.key_size() + line.size();
    if (size > chunk_left_) {
        chunk_left_ = std::max(size, chunk_size);
        chunks_.emplace_back(new std::uint8_t[chunk_left_]);
    }
    // A chunk is filled from its end.
    std::uint8_t *const entry = chunks_.back().get() + (chunk_left_ -= size);
    const auto length = static_cast<Length>(line.size());
    std::memcpy(entry, &length, sizeof length);
    order_.make_key(value, entry + sizeof length);
    std::ranges::copy(line, entry + sizeof length + order_.key_size());
    used_ += size;
    return entry;
}

void Sorter::add(Value value, std::string_view line)
{
    // Of an entry's address there is room for two, which is half of what a growing list takes, and for one in sorting.
    constexpr std::size_t bookkeeping = 4 * sizeof(void *);
    entries_.push_back(store(value, line));
    if (used_ + entries_.size() * bookkeeping > settings_.memory) {
        spill();
    }
}

void Sorter::sort()
{
    std::ranges::stable_sort(entries_, [this](const auto *first, const auto *second) { return less(first, second); });
}

void Sorter::spill()
{
    if (runs_.size() == most_runs) {
        auto merged = std::make_unique<Run>(order_.key_size());
        merge([&](const std::uint8_t *entry) { merged->write(entry); });
        runs_.clear();
        merged->rewind();
        runs_.push_back(std::move(merged));
    }
    auto run = std::make_unique<Run>(order_.key_size());
    sort();
    for (const std::uint8_t *entry : entries_) {
        run->write(entry);
    }
    run->rewind();
    runs_.push_back(std::move(run));
    entries_.clear();
    chunks_.clear();
    chunk_left_ = 0;
    used_ = 0;
}

/// The runs' entries in order; of equal ones those of the earlier run first.
void Sorter::merge(const std::function<void(const std::uint8_t *entry)> &write)
{
    const auto later = [this](std::size_t first, std::size_t second) {
        const std::uint8_t *const a = runs_[first]->entry();
        const std::uint8_t *const b = runs_[second]->entry();
        return less(b, a) || (!less(a, b) && first > second);
    };
    std::priority_queue<std::size_t, std::vector<std::size_t>, decltype(later)> queue(later);
    for (std::size_t i = 0; i < runs_.size(); ++i) {
        if (runs_[i]->next() != nullptr) {
            queue.push(i);
        }
    }
    while (!queue.empty()) {
        const std::size_t first = queue.top();
        write(runs_[first]->entry());
        queue.pop();
        if (runs_[first]->next() != nullptr) {
            queue.push(first);
        }
    }
}

void Sorter::each_in_order(const std::function<void(const std::uint8_t *entry)> &write)
{
    if (runs_.empty()) {
        sort();
        std::ranges::for_each(entries_, write);
        return;
    }
    if (!entries_.empty()) {
        spill();
    }
    merge(write);
}

void Sorter::finish(const Write &write)
{
    Bytes last;
    const std::size_t key_size = order_.key_size();
    each_in_order([&](const std::uint8_t *entry) {
        const std::uint8_t *const key = entry + sizeof(Length);
        if (settings_.unique) {
            if (!last.empty() && order_.same(order_.key(last.data()), order_.key(key))) {
                return;
            }
            last.assign(key, key + key_size);
        }
        write({reinterpret_cast<const char *>(key + key_size), load_length(entry)});
    });
}

} // namespace bgpdt::tool
