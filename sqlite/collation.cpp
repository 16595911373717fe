// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "sqlite/extension.hpp"
#include "toolkit/value_order.hpp"

namespace bgpdt::sqlite {
namespace {

/// Compares texts, in one thread at a time. All its memory is taken when it is made: also the block that a type asks
/// for, one at a time, which the reader's converter lends.
class Comparer {
public:
    Comparer(toolkit::Session &session, const SYSDT_Record &type)
        : reader_(session, type), order_(type), first_(order_), second_(order_)
    {
        reader_.reserve();
    }

    int compare(std::string_view first, std::string_view second) noexcept
    {
        read(first, first_);
        read(second, second_);
        if (first_.valid != second_.valid)
            return first_.valid ? -1 : 1;
        return first_.valid ? order_.compare(order_.key(first_.key.data()), order_.key(second_.key.data()))
                            : first.compare(second);
    }

    std::unique_ptr<Comparer> next; ///< of those that wait

private:
    /// Longer texts are read anew each time.
    static constexpr std::size_t longest_kept = 1024;

    /// A text and its key; searches ask for the same text again and again.
    struct Side {
        explicit Side(const toolkit::ValueOrder &order) : key(order.key_size()) { text.reserve(longest_kept); }
        std::string text;
        toolkit::Bytes key;
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
        const toolkit::Value value = reader_.read(text);
        side.valid = value.data() != nullptr;
        if (side.valid)
            order_.make_key(value, side.key.data());
    }

    TextReader reader_;
    toolkit::ValueOrder order_;
    Side first_;
    Side second_;
};

/// What the collations of one type share, in all connections: what compares where memory is out.
struct Reserve {
    Reserve(toolkit::Session &session, const SYSDT_Record &of) : type(of), comparer(session, of) {}
    const SYSDT_Record &type;
    std::mutex mutex;
    Comparer comparer;
};

using Reserves = std::list<Reserve>;

/// One for each type that takes text, until the process is gone.
Reserves &reserves(toolkit::Session &session)
{
    static Reserves &all = *[&session] {
        auto made = std::make_unique<Reserves>();
        for (const SYSDT_Record *type : session.host().types())
            if (type->formatIn != nullptr)
                made->emplace_back(session, *type);
        return made.release();
    }();
    return all;
}

/// One connection's. Still it is entered in several threads at once: "PRAGMA threads" lets SQLite sort in more.
class Collation {
public:
    Collation(toolkit::Session &session, Reserve &reserve) : session_(session), reserve_(reserve) {}

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
            return std::make_unique<Comparer>(session_, reserve_.type);
        } catch (const std::bad_alloc &) {
            return nullptr;
        }
    }

    toolkit::Session &session_;
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

int add_collations(sqlite3 *database, toolkit::Session &session)
{
    for (Reserve &reserve : reserves(session)) {
        auto collation = std::make_unique<Collation>(session, reserve);
        const std::string name = "bgp_" + toolkit::name_of(reserve.type);
        const int result =
            sqlite3_create_collation_v2(database, name.c_str(), SQLITE_UTF8, collation.get(), compare, destroy);
        if (result != SQLITE_OK)
            return result; // the collation is still this function's then
        static_cast<void>(collation.release());
    }
    return SQLITE_OK;
}

} // namespace bgpdt::sqlite
