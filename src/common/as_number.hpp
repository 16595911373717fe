// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The AS number's printed form, shared by the types that carry one.
#pragma once

#include "bgp_datatype/values.h"
#include "common/print.hpp"

namespace bgpdt {

inline constexpr std::size_t most_as_characters = 11;

/// Writes an AS number in its notation and returns the end; any notation but 0 is the dotted one.
inline char *write_as_number(char *to, u32 number, u32 notation)
{
    return notation == SYSDT_AS_PLAIN ? write<"%u">(to, number) : write<"%hu.%hu">(to, number >> 16, number);
}

inline void print_as_number(u32 number, u32 notation, Writer &out)
{
    out.put_at_most<most_as_characters>([=](char *to) { return write_as_number(to, number, notation); });
}

} // namespace bgpdt
