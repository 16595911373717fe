// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// How other BGP speakers read a text: what docs/dialects.md has for it, or for one of the same shape.
#pragma once

#include <string_view>
#include <vector>

#include "session.hpp"

namespace bgpdt::toolkit {

/// What one reader makes of a text.
struct Reading {
    std::string_view reader;
    std::string_view version; ///< empty for who has none
    std::string_view answer;  ///< "taken", "refused", or what else became of it
    std::string_view hex;     ///< on the wire, if it was taken
    std::string_view value;   ///< the same in numbers, where that says more
    std::string_view
        change; ///< what became of the text's numbers: "clamps", "wraps", "reads otherwise"; empty if nothing
};

struct Dialects {
    std::string_view text = {};         ///< which was asked about; empty if no text like it was
    std::vector<Reading> readings = {}; ///< ours first, that of RFC 8294 last, where it has a pattern
};

Dialects dialects_of(const SYSDT_Record &type, std::string_view text);

} // namespace bgpdt::toolkit
