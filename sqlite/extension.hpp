// SPDX-License-Identifier: Apache-2.0
/// @file
/// The parts of the extension for SQLite. Blobs are values as hexadecimal text shows them elsewhere: numbers in the
/// target's byte order, so that a database is the same on every machine.
#ifndef BGPDT_SQLITE_EXTENSION_HPP
#define BGPDT_SQLITE_EXTENSION_HPP

#include <sqlite3ext.h>

#include "tool/session.hpp"

extern "C" const sqlite3_api_routines *sqlite3_api; // what the header calls SQLite through

namespace bgpdt::sqlite {

/// Adds the collation "bgp_TYPE" of every type that takes text: texts in the order of their values. Texts of one value
/// are equal, however they are written; behind all of them stand the texts that the type refuses, by their bytes.
int add_collations(sqlite3 *database, tool::Session &session);

/// Adds the table bgp_types(name, id, size, operations, about).
int add_types_table(sqlite3 *database, tool::Session &session);

} // namespace bgpdt::sqlite

#endif
