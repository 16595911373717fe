// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Display records: what a router hands over to have an attribute bitmap listed. Everything is in the machine's order.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.hpp"

namespace bgpdt::toolkit {

inline constexpr std::string_view default_template = "Attribute ID:";

/// Why a record of a bitmap that is not empty cannot be listed.
inline constexpr const char *placeholder_rule =
    ": a placeholder of the template does not fit its value; numbers fit %d, %i, %u, %o, %x and %X, addresses and "
    "texts fit %s";

/// A value that fills a placeholder of the line template.
struct DisplayValue {
    std::uint16_t kind;
    Bytes data;
};

struct DisplayKind {
    std::uint16_t number;
    const char *name;
    const char *values;                     ///< what they are, for people
    Bytes (*read)(const std::string &text); ///< the data; empty for a text that is no value of the kind
};

std::span<const DisplayKind> display_kinds();

/// What the type is given to print: of a bitmap, the record in which a router shows it.
Bytes printable(const SYSDT_Record &type, std::span<const std::uint8_t> value);

/// @throws Refusal if a part is longer than it may be
Bytes bitmap_record(std::span<const std::uint8_t> bitmap, std::string_view line_template,
                    std::span<const DisplayValue> values);

} // namespace bgpdt::toolkit
