// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where a deliberate irregularity of a type breaks a property that holds otherwise: the lines `breaks` at the heads of the
/// vectors.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "support/subject.hpp"

namespace bgpdt::fuzzing {

enum class Property : std::uint8_t {
    reprint, ///< what a parsed value prints as parses to the same value
    retext,  ///< what a value prints as, if it parses, prints as the same text
    reget,   ///< what is read from a script's table, stored in one and read again is the same
    seen,    ///< what is stored in a script's table and read from it is the same, as far as scripts see it
    check,   ///< Check takes what FormatIn delivers
};

struct Trial {
    const test::Subject &subject;
    std::uint8_t mode = 2;
    std::string_view text{};
    std::span<const std::uint8_t> value{};
};

/// Whether the property holds, as far as is promised.
bool promised(Property property, const Trial &trial);

} // namespace bgpdt::fuzzing
