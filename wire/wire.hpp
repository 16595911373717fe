// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values from the octets that BGP sends, and back: the NLRI of address families and the attributes that hold
/// communities. What a value has no room for, such as a route distinguisher or a label, stands beside it by its name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "item.hpp"

namespace bgpdt::wire {

class Reader;
class Writer;

/// What octets are: of an address family or of an attribute, for which its numbers stand; else those are 0.
struct Form {
    std::string_view name;
    std::string_view other_names; ///< blanks between them
    std::string_view about;
    std::uint16_t type; ///< of the values
    std::size_t value_size;
    void (*read)(Reader &in);
    void (*write)(Writer &out);
    std::uint8_t attribute = 0;
    std::uint16_t afis[2] = {0, 0}; ///< address family identifiers
    std::uint8_t safi = 0;          ///< subsequent address family identifier
};

std::span<const Form> forms();
/// By one of its names, in any case; '_' and '-' are one. Null if there is none.
const Form *find_form(std::string_view name);
const Form *form_of_attribute(std::uint8_t attribute);
const Form *form_of_family(std::uint16_t afi, std::uint8_t safi);

/// All values that stand there one behind the other.
/// @param at  where the octets begin on the wire
/// @throws BadBytes, also if there are none
std::vector<Item> read(const Form &form, Octets octets, std::size_t at = 0);

/// What may be meant of octets that are refused: more of the message than the values; empty if nothing is known.
std::string advice(const Form &form, Octets octets);

/// @param value   of the form's size, in the machine's order
/// @param beside  in any order
/// @throws NotSent
Bytes write(const Form &form, Octets value, const std::vector<NamedValue> &beside);

} // namespace bgpdt::wire
