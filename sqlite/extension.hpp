// SPDX-License-Identifier: Apache-2.0
/// @file
/// The parts of the extension for SQLite. Blobs are values as hexadecimal text shows them elsewhere: numbers in the
/// target's byte order, so that a database is the same on every machine.
#ifndef BGPDT_SQLITE_EXTENSION_HPP
#define BGPDT_SQLITE_EXTENSION_HPP

#include <string>
#include <string_view>

#include <sqlite3ext.h>

#include "tool/session.hpp"
#include "tool/stream_values.hpp"

extern "C" const sqlite3_api_routines *sqlite3_api; // what the header calls SQLite through

namespace bgpdt::sqlite {

/// Reads texts as SQLite has them, without telling why one is refused.
class TextReader {
public:
    TextReader(tool::Session &session, const SYSDT_Record &type)
        : type_(type), reader_(session, type, tool::Format::text)
    {
    }

    /// The whole value, until the next call; null if the type refuses the text.
    tool::Value read(std::string_view text)
    {
        if (text.find('\0') != std::string_view::npos) {
            return {};
        }
        line_ = text;
        const tool::Value value = reader_.read(line_);
        return value.data() == nullptr ? value : tool::filled_up(type_, value, filled_);
    }

private:
    const SYSDT_Record &type_;
    tool::ValueReader reader_;
    std::string line_;
    tool::Bytes filled_;
};

/// Adds the collation "bgp_TYPE" of every type that takes text: texts in the order of their values. Texts of one value
/// are equal, however they are written; behind all of them stand the texts that the type refuses, by their bytes.
int add_collations(sqlite3 *database, tool::Session &session);

/// Adds the table bgp_types(name, id, size, operations, about).
int add_types_table(sqlite3 *database, tool::Session &session);

} // namespace bgpdt::sqlite

#endif
