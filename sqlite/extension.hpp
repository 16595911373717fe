// SPDX-License-Identifier: Apache-2.0
/// @file
/// The parts of the extension for SQLite. Blobs are values as hexadecimal text shows them elsewhere: numbers in the
/// target's byte order, so that a database is the same on every machine.
#pragma once

#include <string>
#include <string_view>

#include <sqlite3ext.h>

#include "host/host.hpp"
#include "toolkit/session.hpp"
#include "toolkit/stream_values.hpp"

extern "C" const sqlite3_api_routines *sqlite3_api; // what the header calls SQLite through

namespace bgpdt::sqlite {

/// Whether a text, with the blanks at its ends, is longer than any that is read. It counts as refused by all types, as
/// a line of a file does, though some would not look at what makes it long.
constexpr bool is_too_long(std::string_view text) { return text.size() > toolkit::longest_line; }

/// Reads texts as SQLite has them, without telling why one is refused.
class TextReader {
public:
    TextReader(toolkit::Session &session, const SYSDT_Record &type)
        : type_(type), size_(value_size(type)), converter_(type, session.mode_for(type))
    {
    }

    /// Takes room for any text; reading takes no memory from then on.
    void reserve()
    {
        line_.reserve(toolkit::longest_line);
        filled_.reserve(size_);
    }

    /// The whole value, until the next call; null if the type refuses the text.
    toolkit::Value read(std::string_view text)
    {
        if (is_too_long(text) || text.find('\0') != std::string_view::npos)
            return {};
        line_ = text;
        const toolkit::Value value = converter_.parse(line_).data;
        const bool taken = value.size() - 1 < size_; // a refused text delivers nothing
        return taken ? toolkit::filled_up(type_, value, filled_) : toolkit::Value();
    }

private:
    const SYSDT_Record &type_;
    const std::size_t size_;
    host::Converter converter_;
    std::string line_; ///< a copy, which the type may change
    toolkit::Bytes filled_;
};

/// Adds the collation "bgp_TYPE" of every type that takes text: texts in the order of their values. Texts of one value
/// are equal, however they are written; behind all of them stand the texts that the type refuses, by their bytes.
///
/// SQLite takes no error from a collation, and a wrong answer would spoil an index: comparing never fails, not even
/// where there is no memory.
int add_collations(sqlite3 *database, toolkit::Session &session);

/// Adds the table bgp_types(name, id, size, operations, about).
int add_types_table(sqlite3 *database, toolkit::Session &session);

} // namespace bgpdt::sqlite
