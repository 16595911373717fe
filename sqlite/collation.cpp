// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sqlite/extension.hpp"
#include "tool/sorting.hpp"

namespace bgpdt::sqlite {
namespace {

/// Compares texts, in one thread at a time.
class Comparer {
public:
    Comparer(tool::Session &session, const SYSDT_Record &type)
        : reader_(session, type), order_(type), first_(order_), second_(order_)
    {
    }

    int compare(std::string_view first, std::string_view second)
    {
        read(first, first_);
        read(second, second_);
        if (first_.valid != second_.valid) {
            return first_.valid ? -1 : 1;
        }
        return first_.valid ? order_.compare(order_.key(first_.key.data()), order_.key(second_.key.data()))
                            : first.compare(second);
    }

private:
    /// A text and its key; searches ask for the same text again and again.
    struct Side {
        explicit Side(const tool::ValueOrder &order) : key(order.key_size()) {}
        std::string text;
        tool::Bytes key;
        bool known = false;
        bool valid = false;
    };

    void read(std::string_view text, Side &side)
    {
        if (side.known && side.text == text) {
            return;
        }
        side.known = true;
        side.text = text;
        const tool::Value value = reader_.read(text);
        side.valid = value.data() != nullptr;
        if (side.valid) {
            order_.make_key(value, side.key.data());
        }
    }

    TextReader reader_;
    tool::ValueOrder order_;
    Side first_;
    Side second_;
};

/// One connection's. Still it is entered in several threads at once: "PRAGMA threads" lets SQLite sort in more.
class Collation {
public:
    Collation(tool::Session &session, const SYSDT_Record &type) : session_(session), type_(type) {}

    /// What is thrown ends the program: SQLite takes no error from a collation, and a wrong answer would spoil an index.
    int compare(std::string_view first, std::string_view second) noexcept
    {
        std::unique_ptr<Comparer> comparer = take();
        const int order = comparer->compare(first, second);
        const std::lock_guard lock(mutex_);
        idle_.push_back(std::move(comparer));
        return order;
    }

private:
    std::unique_ptr<Comparer> take()
    {
        const std::lock_guard lock(mutex_);
        if (idle_.empty()) {
            return std::make_unique<Comparer>(session_, type_);
        }
        std::unique_ptr<Comparer> comparer = std::move(idle_.back());
        idle_.pop_back();
        return comparer;
    }

    tool::Session &session_;
    const SYSDT_Record &type_;
    std::mutex mutex_;
    std::vector<std::unique_ptr<Comparer>> idle_;
};

int compare(void *collation, int first_size, const void *first, int second_size, const void *second)
{
    const std::string_view a(static_cast<const char *>(first), static_cast<std::size_t>(first_size));
    const std::string_view b(static_cast<const char *>(second), static_cast<std::size_t>(second_size));
    return static_cast<Collation *>(collation)->compare(a, b);
}

void destroy(void *collation) { delete static_cast<Collation *>(collation); }

} // namespace

int add_collations(sqlite3 *database, tool::Session &session)
{
    for (const SYSDT_Record *type : session.host().types()) {
        if (type->formatIn == nullptr) {
            continue;
        }
        auto collation = std::make_unique<Collation>(session, *type);
        const std::string name = "bgp_" + tool::name_of(*type);
        const int result =
            sqlite3_create_collation_v2(database, name.c_str(), SQLITE_UTF8, collation.get(), compare, destroy);
        if (result != SQLITE_OK) {
            return result; // the collation is still this function's then
        }
        static_cast<void>(collation.release());
    }
    return SQLITE_OK;
}

} // namespace bgpdt::sqlite
