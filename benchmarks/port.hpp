// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the plain ports share.
#pragma once

#include <cctype>
#include <cstdio>
#include <cstring>

#include "kind.hpp"

namespace bgpdt::bench::port {

/// Trimmed, of the given length, without blanks; else null.
inline char *look(char *text, std::size_t shortest, std::size_t longest)
{
    text = SYSDT_BTrim(text);
    const std::size_t length = std::strlen(text);
    return length >= shortest && length <= longest && NCF_IsSpaceInString(text) == 0 ? text : nullptr;
}

struct Counts {
    int dots = 0;
    int colons = 0;
    int hyphens = 0;
    int others = 0; ///< neither these nor digits
};

inline Counts count(const char *text)
{
    Counts counts;
    for (; *text != '\0'; ++text)
        if (*text == '.')
            ++counts.dots;
        else if (*text == ':')
            ++counts.colons;
        else if (*text == '-')
            ++counts.hyphens;
        else if (std::isdigit(static_cast<unsigned char>(*text)) == 0)
            ++counts.others;
    return counts;
}

} // namespace bgpdt::bench::port
