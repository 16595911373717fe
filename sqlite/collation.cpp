// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "sqlite/extension.hpp"

namespace bgpdt::sqlite {
namespace {

/// Writes the value of a text, unless the type refuses it. Takes no memory.
bool parse(const bgpdt_type *type, std::string_view text, std::uint8_t *value)
{
    return text.size() <= longest_text &&
           bgpdt_parse(type, text.data(), text.size(), value, bgpdt_about(type)->value_size, nullptr) == BGPDT_OK;
}

/// Spreads texts over a table, eight bytes at a time: a comparison is not to cost more than it saves.
std::size_t spread(std::string_view text)
{
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15; // 2 to the 64th over the golden ratio
    std::uint64_t sum = text.size();
    for (; text.size() > sizeof sum; text.remove_prefix(sizeof sum)) {
        std::uint64_t part = 0;
        std::memcpy(&part, text.data(), sizeof part);
        sum = (sum ^ part) * factor;
        sum ^= sum >> 32;
    }
    std::uint64_t rest = 0;
    text.copy(reinterpret_cast<char *>(&rest), sizeof rest);
    return static_cast<std::size_t>((sum ^ rest) * factor >> 32);
}

/// The texts that one thread has compared, with their values. Where it has no room for more it forgets them all.
class Cache {
public:
    static constexpr std::size_t longest_kept = 1024;

    /// Null where there is no memory. What is never used of it costs none.
    static Cache *make() { return static_cast<Cache *>(std::calloc(1, sizeof(Cache))); }

    /// The values of two texts may be asked for then, and stay until this is called again.
    void make_room()
    {
        if (size_ + 2 * largest_entry <= sizeof bytes_ && 2 * (count_ + 2) <= std::size(places_))
            return;
        std::ranges::fill(places_, 0);
        std::ranges::fill(last_, nullptr);
        size_ = 0;
        count_ = 0;
    }

    /// Null for a text that the type refuses.
    /// @param side  which of the two it is: a search or a merge asks for one of them again and again
    const std::uint8_t *value_of(const bgpdt_type *type, std::string_view text, std::size_t side)
    {
        const Entry *&last = last_[side];
        if (last == nullptr || !last->is(type, text))
            last = &entry_of(type, text);
        return last->known();
    }

private:
    /// The text and behind it the value stand behind an entry.
    struct Entry {
        const bgpdt_type *type;
        std::uint32_t text_size;
        bool valid;

        bool is(const bgpdt_type *of, std::string_view other) const
        {
            return type == of && std::string_view(reinterpret_cast<const char *>(text()), text_size) == other;
        }
        const std::uint8_t *text() const { return reinterpret_cast<const std::uint8_t *>(this + 1); }
        const std::uint8_t *known() const { return valid ? text() + text_size : nullptr; }
    };

    static constexpr std::size_t largest_entry = sizeof(Entry) + longest_kept + BGPDT_VALUE_ROOM + alignof(Entry);

    Entry *entry_at(std::size_t at) { return reinterpret_cast<Entry *>(bytes_ + at); }

    /// Texts that somebody chose to be spread alike do not stay: they cost no more than reading them.
    const Entry &entry_of(const bgpdt_type *type, std::string_view text)
    {
        constexpr int most_tries = 8;
        std::size_t slot = spread(text) % std::size(places_);
        for (int tries = 1; places_[slot] != 0 && tries < most_tries; slot = (slot + 1) % std::size(places_), ++tries)
            if (const Entry *entry = entry_at(places_[slot] - 1); entry->is(type, text))
                return *entry;
        Entry *added = add(type, text);
        places_[slot] = static_cast<std::uint32_t>(reinterpret_cast<std::uint8_t *>(added) - bytes_) + 1;
        return *added;
    }

    Entry *add(const bgpdt_type *type, std::string_view text)
    {
        Entry *entry = entry_at(size_);
        auto *const behind = reinterpret_cast<std::uint8_t *>(entry + 1);
        std::ranges::copy(text, behind);
        *entry = {type, static_cast<std::uint32_t>(text.size()), parse(type, text, behind + text.size())};
        size_ += sizeof(Entry) + text.size() + (entry->valid ? bgpdt_about(type)->value_size : 0);
        size_ += (alignof(Entry) - size_ % alignof(Entry)) % alignof(Entry);
        ++count_;
        return entry;
    }

    /// By a text's spread, or behind that: 1 more than an entry's place, or 0.
    std::uint32_t places_[std::size_t{1} << 15];
    alignas(Entry) std::uint8_t bytes_[std::size_t{1} << 20];
    const Entry *last_[2]; ///< that were asked for, by their sides; or null
    std::size_t size_;     ///< of the entries
    std::size_t count_;
};

/// One connection's: a cache for each thread that compares at a time, since
/// "PRAGMA threads" lets SQLite sort in several.
class Caches {
public:
    Caches() = default;
    ~Caches()
    {
        for (const std::atomic<Cache *> &idle : idle_)
            std::free(idle);
    }
    Caches(const Caches &) = delete;
    Caches &operator=(const Caches &) = delete;

    /// Null where there is no memory for another.
    Cache *take()
    {
        for (std::atomic<Cache *> &idle : idle_)
            if (Cache *cache = idle.exchange(nullptr))
                return cache;
        return Cache::make();
    }

    void give_back(Cache *cache)
    {
        for (std::atomic<Cache *> &idle : idle_)
            if (Cache *none = nullptr; idle.compare_exchange_strong(none, cache))
                return;
        std::free(cache);
    }

private:
    static constexpr std::size_t most_threads = 8; ///< that SQLite sorts in, where nobody built it for more

    std::array<std::atomic<Cache *>, most_threads> idle_{};
};

/// The texts' order by their values, of which null is that of a refused text.
int order_of(const bgpdt_type *type, std::string_view first, const std::uint8_t *first_value, std::string_view second,
             const std::uint8_t *second_value)
{
    if (first_value == nullptr || second_value == nullptr)
        return first_value != nullptr ? -1 : second_value != nullptr ? 1 : first.compare(second);
    const std::size_t size = bgpdt_about(type)->value_size;
    int order = 0;
    static_cast<void>(bgpdt_order(type, first_value, size, second_value, size, &order));
    return order;
}

int order_known(const bgpdt_type *type, std::string_view first, std::string_view second, Cache &cache)
{
    cache.make_room();
    const std::uint8_t *const value = cache.value_of(type, first, 0);
    return order_of(type, first, value, second, cache.value_of(type, second, 1));
}

int order_anew(const bgpdt_type *type, std::string_view first, std::string_view second)
{
    std::uint8_t a[BGPDT_VALUE_ROOM];
    std::uint8_t b[BGPDT_VALUE_ROOM];
    return order_of(type, first, parse(type, first, a) ? a : nullptr, second, parse(type, second, b) ? b : nullptr);
}

struct Collation {
    const bgpdt_type *type;
    std::shared_ptr<Caches> caches;

    int compare(std::string_view first, std::string_view second) const
    {
        const bool kept = std::max(first.size(), second.size()) <= Cache::longest_kept;
        Cache *cache = kept ? caches->take() : nullptr;
        if (cache == nullptr)
            return order_anew(type, first, second);
        const int order = order_known(type, first, second, *cache);
        caches->give_back(cache);
        return order;
    }
};

int compare(void *collation, int first_size, const void *first, int second_size, const void *second)
{
    const std::string_view a(static_cast<const char *>(first), static_cast<std::size_t>(first_size));
    const std::string_view b(static_cast<const char *>(second), static_cast<std::size_t>(second_size));
    return static_cast<const Collation *>(collation)->compare(a, b);
}

void destroy(void *collation) { delete static_cast<Collation *>(collation); }

/// Whether the type takes text, and its values have room wherever they are compared.
bool has_collation(const bgpdt_info &info)
{
    return (info.operations & BGPDT_PARSE) != 0 && info.value_size <= BGPDT_VALUE_ROOM;
}

} // namespace

int add_collations(sqlite3 *database, bgpdt_library *library)
{
    const auto caches = std::make_shared<Caches>();
    for (std::size_t i = 0; i < bgpdt_type_count(library); ++i) {
        const bgpdt_type *type = bgpdt_type_at(library, i);
        const bgpdt_info &info = *bgpdt_about(type);
        if (!has_collation(info))
            continue;
        auto collation = std::make_unique<Collation>(Collation{type, caches});
        const std::string name = std::string("bgp_").append(view(info.name));
        const int result =
            sqlite3_create_collation_v2(database, name.c_str(), SQLITE_UTF8, collation.get(), compare, destroy);
        if (result != SQLITE_OK)
            return result; // the collation is still this function's then
        static_cast<void>(collation.release());
    }
    return SQLITE_OK;
}

} // namespace bgpdt::sqlite
