// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A value taken to its fields.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bytes.hpp"
#include "json_text.hpp"
#include "named_value.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// Bytes that stand together: a field, bytes without a name, or the entries at the end of a list that are all alike.
struct Part {
    std::size_t offset;
    std::size_t size;
    std::string name;       ///< empty for bytes without a name
    std::string meaning;    ///< what its number stands for, else how it is read
    std::string shown = {}; ///< its value; empty where the meaning says it all
    std::string key = {};   ///< the script field, "table.field" where it stands in one; empty if scripts do not see it
    std::vector<std::uint64_t> numbers = {}; ///< of a field that is kept as one or more numbers
    bool in_words = false;                   ///< the meaning says what its number stands for
    std::vector<NamedValue> pieces = {};     ///< what its value is made of, if of more than one
    std::size_t repeats = 0;                 ///< of entries that are alike: how many; 0 for a field
};

/// A script table, written.
struct ScriptTable {
    JsonText json;
    std::string text; ///< as Lua reads it
};

struct Explanation {
    std::string type;
    std::string about;
    std::string kind = {}; ///< of a value behind a sub-kind word
    bool native;           ///< the bytes are in the machine's order, not in the target's
    Bytes bytes;
    std::vector<Part> parts = {}; ///< by offset, without gaps
    std::optional<std::string> text = {};
    std::string no_text = {}; ///< why there is none
    std::optional<ScriptTable> table = {};
    std::string no_table = {}; ///< why there is none

    std::span<const std::uint8_t> bytes_of(const Part &part) const
    {
        return std::span(bytes).subspan(part.offset, part.size);
    }
};

/// The parts alone.
std::vector<Part> parts_of(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value);

/// @param value  of the type's length, in the machine's order
Explanation explanation_of(Session &session, const SYSDT_Record &type, const Bytes &value);

/// "c0 00 02 01": the part's bytes, `per_line` a line; a long row of zeros at the end, or of equal bytes or entries, is
/// counted.
std::vector<std::string> byte_lines(const Explanation &explanation, const Part &part, std::size_t per_line);

/// What stands above and below the fields.
std::string title_of(const Explanation &explanation);
std::string order_of(const Explanation &explanation);
std::string text_of(const Explanation &explanation);
std::string table_of(const Explanation &explanation);

} // namespace bgpdt::toolkit
