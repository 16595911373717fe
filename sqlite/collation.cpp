// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "sqlite/extension.hpp"
#include "tool/sorting.hpp"

namespace bgpdt::sqlite {
namespace {

/// One connection's, which SQLite enters in one thread at a time.
class Collation {
public:
    Collation(tool::Session &session, const SYSDT_Record &type)
        : type_(type), reader_(session, type, tool::Format::text), order_(type), sides_{Side(order_), Side(order_)}
    {
    }

    int compare(std::string_view first, std::string_view second)
    {
        read(first, sides_[0]);
        read(second, sides_[1]);
        if (sides_[0].valid != sides_[1].valid) {
            return sides_[0].valid ? -1 : 1;
        }
        return sides_[0].valid ? order_.compare(order_.key(sides_[0].key.data()), order_.key(sides_[1].key.data()))
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
        side.known = false; // until nothing can be thrown any more
        side.text = text;
        line_.assign(text.begin(), text.end());
        line_.push_back('\0');
        const bool whole = text.find('\0') == std::string_view::npos;
        const tool::Value value = whole ? reader_.read({line_.data(), text.size()}) : tool::Value();
        side.valid = value.data() != nullptr;
        if (side.valid) {
            order_.make_key(tool::filled_up(type_, value, filled_), side.key.data());
        }
        side.known = true;
    }

    const SYSDT_Record &type_;
    tool::ValueReader reader_;
    tool::ValueOrder order_;
    Side sides_[2];
    std::string line_;
    tool::Bytes filled_;
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
