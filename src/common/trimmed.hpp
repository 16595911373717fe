// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The first look at every text: its ends, its length, its white space.
#pragma once

#include <cstring>

#include "common/types.hpp"

namespace bgpdt {

/// The text without the white space at its ends, cut in place by the host.
///
/// @return null if what is left is shorter or longer than allowed or has white space inside
inline char *trimmed(char *text, std::size_t shortest, std::size_t longest)
{
    text = SYSDT_BTrim(text);
    const std::size_t length = std::strlen(text);
    return length >= shortest && length <= longest && NCF_IsSpaceInString(text) == 0 ? text : nullptr;
}

} // namespace bgpdt
