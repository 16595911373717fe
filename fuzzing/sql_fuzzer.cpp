// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes the extension for SQLite: its functions with arguments of every kind, and its collations. An input is a byte for
/// the type, one for what is asked, then pieces.
#include <sanitizer/allocator_interface.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <sqlite3.h>

#include "bgpdt/bgpdt.hpp"
#include "input.hpp"
#include "pieces.hpp"
#include "property.hpp"

struct sqlite3_api_routines;
extern "C" int sqlite3_bgpdtsqlite_init(sqlite3 *database, char **message, const sqlite3_api_routines *api);

namespace bgpdt::fuzzing {

namespace {

/// An argument of a statement.
struct Argument {
    int kind;
    std::string content;
};

class Statement {
public:
    Statement(sqlite3 *database, const std::string &sql, const std::vector<Argument> &arguments)
    {
        require(sqlite3_prepare_v2(database, sql.c_str(), -1, &handle_, nullptr) == SQLITE_OK,
                "a statement is prepared");
        for (std::size_t i = 0; i < arguments.size(); ++i)
            bind(static_cast<int>(i) + 1, arguments[i]);
        status_ = sqlite3_step(handle_);
        const char *message = status_ == SQLITE_ROW ? "" : sqlite3_errmsg(database);
        require(status_ == SQLITE_ROW || (status_ == SQLITE_ERROR && *message != '\0'), "what is refused is told");
    }
    ~Statement() { sqlite3_finalize(handle_); }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    bool gives() const { return status_ == SQLITE_ROW; }
    bool is_null() const { return sqlite3_column_type(handle_, 0) == SQLITE_NULL; }
    int number() const { return sqlite3_column_int(handle_, 0); }
    std::string content() const
    {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(handle_, 0));
        return {bytes, static_cast<std::size_t>(bytes == nullptr ? 0 : sqlite3_column_bytes(handle_, 0))};
    }

private:
    void bind(int place, const Argument &argument)
    {
        const auto &[kind, content] = argument;
        const auto size = static_cast<int>(content.size());
        switch (kind % 6) {
        case 0: sqlite3_bind_blob(handle_, place, content.data(), size, SQLITE_STATIC); break;
        case 1: sqlite3_bind_int64(handle_, place, size == 0 ? 0 : content[0]); break;
        case 2: sqlite3_bind_null(handle_, place); break;
        case 3: sqlite3_bind_text16(handle_, place, content.data(), size & ~1, SQLITE_TRANSIENT); break;
        default: sqlite3_bind_text(handle_, place, content.data(), size, SQLITE_STATIC);
        }
    }

    sqlite3_stmt *handle_ = nullptr;
    int status_ = SQLITE_OK;
};

constexpr int as_blob = 0;
constexpr int as_text = 4;

/// A connection, which stays open.
class Database {
public:
    Database()
    {
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(sqlite3_bgpdtsqlite_init));
        require(sqlite3_open(":memory:", &handle_) == SQLITE_OK, "the extension is loaded");
        sqlite3_db_config(handle_, SQLITE_DBCONFIG_LOOKASIDE, nullptr, 0, 0); // its blocks would hide what is taken
    }

    void run(Pieces input);

private:
    Statement ask(const std::string &sql, const std::vector<Argument> &arguments)
    {
        return {handle_, "SELECT " + sql, arguments};
    }
    void require_text(const std::string &type, const std::string &text);
    void require_value(const std::string &type, const std::string &value, const std::string &field);
    void require_order(const std::string &type, const std::string &first, const std::string &second,
                       const std::string &third);
    void call(const std::string &type, Pieces &input);

    sqlite3 *handle_ = nullptr;
};

/// What the functions say of a text agrees, and with what the library does.
void Database::require_text(const std::string &type, const std::string &text)
{
    const std::vector<Argument> arguments{{as_text, type}, {as_text, text}};
    const bool valid = ask("bgp_valid(?, ?)", arguments).number() != 0;
    const Statement value = ask("bgp_value(?, ?)", arguments);
    require(value.gives() == valid, "a valid text has a value");
    require(ask("bgp_why(?, ?)", arguments).is_null() == valid, "a reason is there exactly for what is not valid");
    if (valid) {
        const Statement canon = ask("bgp_canon(?, ?)", arguments);
        const Statement printed = ask("bgp_text(?, ?)", {{as_text, type}, {as_blob, value.content()}});
        require(canon.gives() == printed.gives() && (!canon.gives() || canon.content() == printed.content()),
                "the text of a value is the canonical one of its text");
        require_value(type, value.content(), "text form");
    }
}

void Database::require_value(const std::string &type, const std::string &value, const std::string &field)
{
    const std::vector<Argument> arguments{{as_text, type}, {as_blob, value}};
    const Statement json = ask("bgp_json(?, ?)", arguments);
    if (json.gives())
        require(ask("json_valid(?)", {{as_text, json.content()}}).number() == 1, "JSON is JSON");
    ask("bgp_field(?, ?, ?)", {{as_text, type}, {as_blob, value}, {as_text, field}});
}

/// A collation orders all texts, in one order.
void Database::require_order(const std::string &type, const std::string &first, const std::string &second,
                             const std::string &third)
{
    const auto compare = [&](const std::string &a, const std::string &b) {
        const std::string by = " COLLATE bgp_" + type;
        const Statement less = ask("?1 < ?2" + by, {{as_text, a}, {as_text, b}});
        const Statement equal = ask("?1 = ?2" + by, {{as_text, a}, {as_text, b}});
        require(!(less.number() != 0 && equal.number() != 0), "what is less is not equal");
        return equal.number() != 0 ? 0 : less.number() != 0 ? -1 : 1;
    };
    const int order = compare(first, second);
    require(order == -compare(second, first), "an order is the other way round for the other way round");
    if (order <= 0 && compare(second, third) <= 0)
        require(compare(first, third) <= 0, "an order goes on from text to text");
}

/// Any arguments.
void Database::call(const std::string &type, Pieces &input)
{
    constexpr const char *calls[] = {"bgp_value(?, ?)", "bgp_text(?, ?)", "bgp_canon(?, ?)",   "bgp_json(?, ?)",
                                     "bgp_valid(?, ?)", "bgp_why(?, ?)",  "bgp_field(?, ?, ?)"};
    const char *const sql = calls[input.byte() % std::size(calls)];
    std::vector<Argument> arguments{{as_text, type}};
    while (arguments.size() < (sql == calls[6] ? 3U : 2U))
        arguments.push_back({input.byte(), input.piece()});
    if (input.byte() % 4 == 0)
        arguments[0] = {input.byte(), input.piece()};
    ask(sql, arguments);
}

std::vector<std::string> type_names(bool with_collation)
{
    bgpdt_library *library = nullptr;
    require(bgpdt_open(nullptr, &library, nullptr) == BGPDT_OK, "the library opens");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < bgpdt_type_count(library); ++i) {
        const bgpdt_info &info = *bgpdt_about(bgpdt_type_at(library, i));
        if (!with_collation || (info.operations & BGPDT_PARSE) != 0)
            names.emplace_back(info.name.data, info.name.size);
    }
    return names;
}

void Database::run(Pieces input)
{
    static const std::vector<std::string> all = type_names(false);
    static const std::vector<std::string> with_collation = type_names(true);
    const std::uint8_t type = input.byte();
    switch (input.byte() % 4) {
    case 0: return require_text(all[type % all.size()], input.rest());
    case 1: {
        const std::string field = input.piece();
        return require_value(all[type % all.size()], input.rest(), field);
    }
    case 2: {
        const std::string first = input.piece();
        const std::string second = input.piece();
        return require_order(with_collation[type % with_collation.size()], first, second, input.rest());
    }
    default: return call(all[type % all.size()], input);
    }
}

} // namespace

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt::fuzzing;
    static Database database;
    if (size > most_bytes)
        return 0;
    const auto taken = [] { return __sanitizer_get_current_allocated_bytes(); };
    database.run(Pieces({data, size})); // what is asked for first may be kept
    const std::size_t before = taken();
    database.run(Pieces({data, size}));
    require(taken() == before, "no memory is left taken");
    return 0;
}
