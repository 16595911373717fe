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
#include <vector>

#include "bytes.hpp"
#include "named_value.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// In the order of their bytes; unused entries of a list are left out.
/// @param value  of the type's length, in the machine's order
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
