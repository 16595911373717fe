// SPDX-License-Identifier: Apache-2.0
/// @file
/// The AS number's printed form, shared by the types that carry one.
#pragma once

#include "bgp_datatype/values.h"
#include "common/print.hpp"

namespace bgpdt {

/// Reads an AS number from digits with so many dots among them, up to where they end.
///
/// @return SYSDT_ERR_FAIL for a number below `lowest` or out of range, and for more than one dot
u32 read_as_number(const char *text, u32 dots, u64 lowest, SYSDT_AsNum &out);

/// Prints an AS number in its notation; any notation but 0 is the dotted one.
inline void print_as_number(u32 number, u32 notation, Writer &out)
{
    if (notation == SYSDT_AS_PLAIN)
        print<"%u">(out, number);
    else
        print<"%u.%u">(out, number >> 16, number & 0xFFFF);
}

} // namespace bgpdt
