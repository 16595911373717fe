// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The fields of a value by their names, as people ask for them: an address of either family is one field, and what a
/// type code or a notation splits is told in its pieces.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.hpp"
#include "field_values.hpp"
#include "named_value.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// Names the fields of a type's values, one thread's own.
class ValueFields {
public:
    using Value = std::span<const std::uint8_t>;

    ValueFields(Session &session, const SYSDT_Record &type) : session_(session), type_(type) {}

    /// In the order of their bytes; unused entries of a list are left out. They stay until the next call.
    /// @param value  of the type's length, in the machine's order
    std::span<const NamedValue> of(Value value);

private:
    /// A field, or the family of an address with the fields that it decides between.
    struct Row {
        const Field *field;
        std::string_view name;
        bool has_pieces;
        std::string_view address = {};
        const Field *of_family[2] = {};
    };

    void plan(const Layout &layout, std::size_t size);
    std::string_view kind(Value value);
    void add_entry(const FieldReader &reader, std::size_t entry);
    void add_row(const FieldReader &reader, const Row &row, std::size_t offset);
    NamedValue &add(std::string_view name);
    void name_next(std::string_view name);

    Session &session_;
    const SYSDT_Record &type_;
    const Layout *layout_ = nullptr; ///< of the rows
    std::vector<Row> rows_;
    bool has_kinds_ = false;
    std::optional<std::uint32_t> kind_number_;
    std::string kind_;               ///< the name of that number
    std::vector<NamedValue> values_; ///< those of this value, then those that may be used again
    std::size_t used_ = 0;
    std::size_t named_ = 0;       ///< so many in front have names of their own, without an index
    std::size_t entry_begin_ = 0; ///< where the values of this entry begin
    std::string index_;           ///< behind the names of a list's entry
    std::string_view before_;     ///< the field in front
};

/// The same of one value.
std::vector<NamedValue> named_values(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value);

/// Those that values of the type may have, of whatever kind.
std::vector<std::string> field_names(Session &session, const SYSDT_Record &type);

struct KnownField {
    std::string name;
    bool number; ///< in every value that has it
};

/// The same, and which of them are numbers.
std::vector<KnownField> known_fields(Session &session, const SYSDT_Record &type);

/// @throws Error if the name is not among the known ones of the type
void require_field(const SYSDT_Record &type, const std::string &name, std::span<const std::string> known);

/// The value's field of the name; none if other values of the type have one.
/// @throws Error if none has
std::optional<NamedValue> field_named(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value,
                                      const std::string &name);

/// A field that two values do not have in common; empty where one has none of the name.
struct Difference {
    std::string name;
    std::string first;
    std::string second;
};

std::vector<Difference> differences(std::span<const NamedValue> first, std::span<const NamedValue> second);

} // namespace bgpdt::toolkit
