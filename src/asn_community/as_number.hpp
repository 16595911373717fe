// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The AS number's text forms, shared by the single number and the list.
#pragma once

#include "bgp_datatype/bgp_datatype.h"
#include "common/as_number.hpp"
#include "common/census.hpp"

namespace bgpdt {

/// Reads an AS number from digits with so many dots among them, up to where they end.
///
/// @return SYSDT_ERR_FAIL for a number below `lowest` or out of range, and for more than one dot
u32 read_as_number(const char *text, u32 dots, u64 lowest, SYSDT_AsNum &out);

/// From 1, which is what most take.
inline u32 SYSDT_Str2AsNumSetAsType(const char *text, u32 dots, SYSDT_AsNum &out)
{
    return read_as_number(text, dots, 1, out);
}
inline u32 SYSDT_Str2AsNumToAsType(const char *text, u32 dots, SYSDT_AsNum &out)
{
    return read_as_number(text, dots, 0, out);
}

/// As SYSDT_Str2AsNum from 1, SYSDT_Str2AsNumExt from 0, for a part of a key's text. It is trimmed only if it may have to
/// be: a key has no blanks inside, but whoever calls a step by itself may hand some over.
template <u64 lowest>
u32 read_as_section(char *text, SYSDT_AsNum &out)
{
    const auto census = Census::of<"0123456789.">(text);
    if (census.admits(1, most_as_characters))
        return read_as_number(text, census.dots(), lowest, out);
    return (lowest == 0 ? SYSDT_Str2AsNumExt : SYSDT_Str2AsNum)(text, &out);
}

} // namespace bgpdt
