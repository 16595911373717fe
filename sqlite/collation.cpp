// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
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

int order_anew(const bgpdt_type *type, std::string_view first, std::string_view second)
{
    std::uint8_t a[BGPDT_VALUE_ROOM];
    std::uint8_t b[BGPDT_VALUE_ROOM];
    return order_of(type, first, parse(type, first, a) ? a : nullptr, second, parse(type, second, b) ? b : nullptr);
}

/// A type's texts that one thread compares, with their values. A text's place is told by its address, since SQLite moves
/// no text while it sorts: so a value is fetched beside the text, not after it. Any other text may take the place.
class Cache {
public:
    /// Null where there is no memory. What is never used of it costs none.
    static Cache *make(const bgpdt_type *type)
    {
        const std::size_t value_size = bgpdt_about(type)->value_size;
        const std::size_t text_room = std::max(least_text_room, value_size * 3 / 2);
        const std::size_t stride = rounded(sizeof(Place) + value_size + text_room);
        const std::size_t count = std::min(most_places, most_bytes / stride);
        void *const room = std::calloc(count + 2, stride);
        return room == nullptr ? nullptr : new (room) Cache{type, value_size, stride, count};
    }

    int compare(std::string_view first, std::string_view second) const
    {
        Place &a = place_of(first);
        Place &b = place_of(second);
        if (&a == &b || std::max(first.size(), second.size()) > text_room())
            return order_anew(type_, first, second);
        return order_of(type_, first, value_of(first, a), second, value_of(second, b));
    }

private:
    /// The value stands behind it, and the text behind that.
    struct Place {
        std::uint16_t text_size;
        enum class State : std::uint8_t { unused, refused, valid } state;

        std::uint8_t *value() { return reinterpret_cast<std::uint8_t *>(this + 1); }
    };

    static constexpr std::size_t line = 64;            ///< that a processor fetches at a time
    static constexpr std::size_t least_text_room = 40; ///< texts are seldom longer, nor half as long again as a value
    static constexpr std::size_t reach = std::size_t{1} << 21; ///< of the texts that SQLite sorts in memory
    static constexpr std::size_t most_places = std::size_t{1} << 16;
    static constexpr std::size_t most_bytes = std::size_t{12} << 20;

    static std::size_t rounded(std::size_t size) { return (size + line - 1) / line * line; }

    Cache(const bgpdt_type *type, std::size_t value_size, std::size_t stride, std::size_t count)
        : type_(type), value_size_(value_size), stride_(stride), count_(count),
          places_(reinterpret_cast<std::uint8_t *>(this) + 2 * stride - reinterpret_cast<std::uintptr_t>(this) % line)
    {
    }

    std::size_t text_room() const { return stride_ - sizeof(Place) - value_size_; }

    Place &place_of(std::string_view text) const
    {
        const std::uint64_t within = reinterpret_cast<std::uintptr_t>(text.data()) % reach;
        return *reinterpret_cast<Place *>(places_ + within * count_ / reach * stride_);
    }

    char *text_in(Place &place) const { return reinterpret_cast<char *>(place.value() + value_size_); }

    /// Null for a text that the type refuses.
    [[gnu::always_inline]] const std::uint8_t *value_of(std::string_view text, Place &place) const
    {
        if (place.state == Place::State::unused || std::string_view(text_in(place), place.text_size) != text)
            put(text, place);
        return place.state == Place::State::valid ? place.value() : nullptr;
    }

    void put(std::string_view text, Place &place) const
    {
        text.copy(text_in(place), text.size());
        place.text_size = static_cast<std::uint16_t>(text.size());
        place.state = parse(type_, text, place.value()) ? Place::State::valid : Place::State::refused;
    }

    const bgpdt_type *const type_;
    const std::size_t value_size_;
    const std::size_t stride_;
    const std::size_t count_;
    std::uint8_t *const places_;
};

/// A collation's type, and a cache for each thread that compares at a time, since
/// "PRAGMA threads" lets SQLite sort in several.
class Collation {
public:
    explicit Collation(const bgpdt_type *type) : type_(type) {}
    ~Collation()
    {
        for (const Desk &desk : desks_)
            std::free(desk.cache);
    }
    Collation(const Collation &) = delete;
    Collation &operator=(const Collation &) = delete;

    int compare(std::string_view first, std::string_view second)
    {
        const auto desk =
            std::ranges::find_if(desks_, [](Desk &any) { return !any.taken.test_and_set(std::memory_order_acquire); });
        if (desk == desks_.end())
            return order_anew(type_, first, second);
        if (desk->cache == nullptr)
            desk->cache = Cache::make(type_);
        const int order =
            desk->cache != nullptr ? desk->cache->compare(first, second) : order_anew(type_, first, second);
        desk->taken.clear(std::memory_order_release);
        return order;
    }

private:
    static constexpr std::size_t most_threads = 8; ///< that SQLite sorts in, where nobody built it for more

    struct Desk {
        std::atomic_flag taken;
        Cache *cache = nullptr;
    };

    const bgpdt_type *const type_;
    std::array<Desk, most_threads> desks_;
};

int compare(void *collation, int first_size, const void *first, int second_size, const void *second)
{
    const std::string_view a(static_cast<const char *>(first), static_cast<std::size_t>(first_size));
    const std::string_view b(static_cast<const char *>(second), static_cast<std::size_t>(second_size));
    return static_cast<Collation *>(collation)->compare(a, b);
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
    for (std::size_t i = 0; i < bgpdt_type_count(library); ++i) {
        const bgpdt_type *type = bgpdt_type_at(library, i);
        const bgpdt_info &info = *bgpdt_about(type);
        if (!has_collation(info))
            continue;
        auto collation = std::make_unique<Collation>(type);
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
