// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sqlite/extension.hpp"

namespace bgpdt::sqlite {
namespace {

/// Compares texts, in one thread at a time. All its memory is taken when it is made: the library takes none to read the
/// texts that are not too long.
class Comparer {
public:
    explicit Comparer(const bgpdt_type *type) : type_(type), first_(type), second_(type) {}

    int compare(std::string_view first, std::string_view second) noexcept
    {
        read(first, first_);
        read(second, second_);
        if (first_.valid != second_.valid)
            return first_.valid ? -1 : 1;
        if (!first_.valid)
            return first.compare(second);
        int order = 0;
        static_cast<void>(bgpdt_order(type_, first_.value.data(), first_.value.size(), second_.value.data(),
                                      second_.value.size(), &order));
        return order;
    }

    std::unique_ptr<Comparer> next; ///< of those that wait

private:
    /// Longer texts are read anew each time.
    static constexpr std::size_t longest_kept = 1024;

    /// A text and its value; searches ask for the same text again and again.
    struct Side {
        explicit Side(const bgpdt_type *type) : value(bgpdt_about(type)->value_size) { text.reserve(longest_kept); }
        std::string text;
        std::vector<std::uint8_t> value;
        bool known = false;
        bool valid = false;
    };

    void read(std::string_view text, Side &side)
    {
        if (side.known && side.text == text)
            return;
        side.known = text.size() <= longest_kept;
        if (side.known)
            side.text = text;
        side.valid = text.size() <= longest_text && bgpdt_parse(type_, text.data(), text.size(), side.value.data(),
                                                                side.value.size(), nullptr) == BGPDT_OK;
    }

    const bgpdt_type *type_;
    Side first_;
    Side second_;
};

/// What the collations of one type share, in all connections: what compares where memory is out.
struct Reserve {
    explicit Reserve(const bgpdt_type *of) : type(of), comparer(of) {}
    const bgpdt_type *type;
    std::mutex mutex;
    Comparer comparer;
};

using Reserves = std::list<Reserve>;

/// One for each type that takes text, until the process is gone.
Reserves &reserves(const bgpdt_library *library)
{
    static Reserves &all = *[library] {
        auto made = std::make_unique<Reserves>();
        for (std::size_t i = 0; i < bgpdt_type_count(library); ++i) {
            const bgpdt_type *type = bgpdt_type_at(library, i);
            if ((bgpdt_about(type)->operations & BGPDT_PARSE) != 0)
                made->emplace_back(type);
        }
        return made.release();
    }();
    return all;
}

/// One connection's. Still it is entered in several threads at once: "PRAGMA threads" lets SQLite sort in more.
class Collation {
public:
    explicit Collation(Reserve &reserve) : reserve_(reserve) {}

    int compare(std::string_view first, std::string_view second) noexcept
    {
        std::unique_ptr<Comparer> own = take();
        if (own == nullptr) {
            const std::lock_guard lock(reserve_.mutex);
            return reserve_.comparer.compare(first, second);
        }
        const int order = own->compare(first, second);
        const std::lock_guard lock(mutex_);
        own->next = std::move(idle_);
        idle_ = std::move(own);
        return order;
    }

private:
    /// Null if there is no memory for another.
    std::unique_ptr<Comparer> take()
    {
        {
            const std::lock_guard lock(mutex_);
            if (idle_ != nullptr) {
                std::unique_ptr<Comparer> own = std::move(idle_);
                idle_ = std::move(own->next);
                return own;
            }
        }
        try {
            return std::make_unique<Comparer>(reserve_.type);
        } catch (const std::bad_alloc &) {
            return nullptr;
        }
    }

    Reserve &reserve_;
    std::mutex mutex_;
    std::unique_ptr<Comparer> idle_; ///< and those behind it
};

int compare(void *collation, int first_size, const void *first, int second_size, const void *second)
{
    const std::string_view a(static_cast<const char *>(first), static_cast<std::size_t>(first_size));
    const std::string_view b(static_cast<const char *>(second), static_cast<std::size_t>(second_size));
    return static_cast<Collation *>(collation)->compare(a, b);
}

void destroy(void *collation) { delete static_cast<Collation *>(collation); }

} // namespace

int add_collations(sqlite3 *database, bgpdt_library *library)
{
    for (Reserve &reserve : reserves(library)) {
        auto collation = std::make_unique<Collation>(reserve);
        const std::string name = std::string("bgp_").append(view(bgpdt_about(reserve.type)->name));
        const int result =
            sqlite3_create_collation_v2(database, name.c_str(), SQLITE_UTF8, collation.get(), compare, destroy);
        if (result != SQLITE_OK)
            return result; // the collation is still this function's then
        static_cast<void>(collation.release());
    }
    return SQLITE_OK;
}

} // namespace bgpdt::sqlite
