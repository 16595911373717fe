// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The AS number's text forms, shared by the single number and the list.
#pragma once

#include "common/as_number.hpp"

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

} // namespace bgpdt
