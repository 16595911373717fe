// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The parts of the extension for SQLite. Blobs are values as hexadecimal text shows them elsewhere: numbers in the
/// target's byte order, so that a database is the same on every machine.
#pragma once

#include <cstddef>

#include <sqlite3ext.h>

#include "bgpdt/bgpdt.hpp"

extern "C" const sqlite3_api_routines *sqlite3_api; // what the header calls SQLite through

namespace bgpdt::sqlite {

/// A longer text, with the blanks at its ends, counts as refused by all types, as a line of a file does, though some
/// would not look at what makes it long.
inline constexpr std::size_t longest_text = std::size_t{64} << 10;

/// As the result of a function or a column.
inline void give(sqlite3_context *context, std::string_view text)
{
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

/// Adds the collation "bgp_TYPE" of every type that takes text: texts in the order of their values. Texts of one value
/// are equal, however they are written; behind all of them stand the texts that the type refuses, by their bytes.
///
/// SQLite takes no error from a collation, and a wrong answer would spoil an index: comparing never fails, not even
/// where there is no memory.
int add_collations(sqlite3 *database, bgpdt_library *library);

/// Adds the table bgp_types(name, id, size, operations, about).
int add_types_table(sqlite3 *database, bgpdt_library *library);

} // namespace bgpdt::sqlite
