// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The kinds of value that stand behind the sub-kind word of some types.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "session.hpp"

namespace bgpdt::toolkit {

struct Kind {
    std::uint32_t number;
    std::string name;
    std::string about; ///< in words
    bool takes_text;
    /// Those for which the type asks for the kind, by the words that all fronts use for them.
    std::vector<std::string> operations;
    /// What the kind's help says of its text. Empty for a kind without text, and for one that shares the help of a kind
    /// in front, whose text alone it tells.
    std::string form;
};

/// In the order of the type's dispatch table; none for a type without.
std::vector<Kind> kinds(Session &session, const SYSDT_Record &type);

/// Whether the type offers its values to the rows of a dispatch table. Compare of such a type asks row by row until one
/// calls the values equal, and orders none.
bool has_kinds(Session &session, const SYSDT_Record &type);

/// The name of one of them alone; empty if there is none of the number. The types of one kind of route key have its
/// sub-kind word too, and the names of all.
std::string kind_name(Session &session, const SYSDT_Record &type, std::uint32_t number);

/// The number of the kind that the value of a type with kinds is of, in the machine's order.
std::uint32_t kind_of(std::span<const std::uint8_t> value);

} // namespace bgpdt::toolkit
