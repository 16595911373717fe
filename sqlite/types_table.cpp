// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <new>
#include <string>

#include "sqlite/extension.hpp"

namespace bgpdt::sqlite {
namespace {

struct Table : sqlite3_vtab {
    explicit Table(bgpdt_library *of) : sqlite3_vtab{}, library(of) {}
    bgpdt_library *library;
};

struct Cursor : sqlite3_vtab_cursor {
    Cursor() : sqlite3_vtab_cursor{} {}
    std::size_t row = 0;
};

const bgpdt_library *library_of(const sqlite3_vtab_cursor *cursor)
{
    return static_cast<const Table *>(cursor->pVtab)->library;
}

std::size_t &row(sqlite3_vtab_cursor *cursor) { return static_cast<Cursor *>(cursor)->row; }

int connect(sqlite3 *database, void *library, int, const char *const *, sqlite3_vtab **table, char **)
{
    const int declared = sqlite3_declare_vtab(
        database, "CREATE TABLE bgp_types(name TEXT, id INTEGER, size INTEGER, operations TEXT, about TEXT)");
    if (declared != SQLITE_OK)
        return declared;
    *table = new (std::nothrow) Table(static_cast<bgpdt_library *>(library));
    return *table == nullptr ? SQLITE_NOMEM : sqlite3_vtab_config(database, SQLITE_VTAB_INNOCUOUS);
}

int disconnect(sqlite3_vtab *table)
{
    delete static_cast<Table *>(table);
    return SQLITE_OK;
}

int plan(sqlite3_vtab *, sqlite3_index_info *index)
{
    index->estimatedCost = 100;
    return SQLITE_OK;
}

int open(sqlite3_vtab *, sqlite3_vtab_cursor **cursor)
{
    *cursor = new (std::nothrow) Cursor;
    return *cursor == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int close(sqlite3_vtab_cursor *cursor)
{
    delete static_cast<Cursor *>(cursor);
    return SQLITE_OK;
}

int first(sqlite3_vtab_cursor *cursor, int, const char *, int, sqlite3_value **)
{
    row(cursor) = 0;
    return SQLITE_OK;
}

int next(sqlite3_vtab_cursor *cursor)
{
    ++row(cursor);
    return SQLITE_OK;
}

int at_end(sqlite3_vtab_cursor *cursor) { return row(cursor) >= bgpdt_type_count(library_of(cursor)) ? 1 : 0; }

/// A blank between two.
std::string words_for(unsigned operations)
{
    std::string words;
    for (unsigned bit = 1; const char *word = bgpdt_operation_word(bit); bit <<= 1)
        if ((operations & bit) != 0)
            words.append(words.empty() ? "" : " ").append(word);
    return words;
}

int column(sqlite3_vtab_cursor *cursor, sqlite3_context *context, int number)
{
    const bgpdt_info &info = *bgpdt_about(bgpdt_type_at(library_of(cursor), row(cursor)));
    try {
        switch (number) {
        case 0: give(context, view(info.name)); break;
        case 1: sqlite3_result_int(context, info.id); break;
        case 2: sqlite3_result_int64(context, static_cast<sqlite3_int64>(info.value_size)); break;
        case 3: give(context, words_for(info.operations)); break;
        default: give(context, view(info.about));
        }
    } catch (const std::bad_alloc &) {
        return SQLITE_NOMEM;
    }
    return SQLITE_OK;
}

int row_id(sqlite3_vtab_cursor *cursor, sqlite3_int64 *id)
{
    *id = static_cast<sqlite3_int64>(row(cursor));
    return SQLITE_OK;
}

/// Eponymous alone, as there is no xCreate.
constexpr sqlite3_module module = [] {
    sqlite3_module slots{};
    slots.xConnect = connect;
    slots.xBestIndex = plan;
    slots.xDisconnect = disconnect;
    slots.xOpen = open;
    slots.xClose = close;
    slots.xFilter = first;
    slots.xNext = next;
    slots.xEof = at_end;
    slots.xColumn = column;
    slots.xRowid = row_id;
    return slots;
}();

} // namespace

int add_types_table(sqlite3 *database, bgpdt_library *library)
{
    return sqlite3_create_module(database, "bgp_types", &module, library);
}

} // namespace bgpdt::sqlite
