// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The community's printed form, shared by the single community and the list.
#pragma once

#include "bgp_datatype/values.h"
#include "common/print.hpp"

namespace bgpdt {

/// A well-known community (RFC 1997) and its name.
struct WellKnownCommunity {
    std::string_view name;
    u32 community;
};

/// In the order in which a name is looked up.
inline constexpr WellKnownCommunity well_known_communities[] = {
    {"internet", 0},
    {"no-advertise", 0xFFFFFF02},
    {"no-export", 0xFFFFFF01},
    {"no-export-subconfed", 0xFFFFFF03},
};

/// Reads a community's name, whose length is told. SYSDT_ERR_FAIL for none, SYSDT_ERR_NO_MEMORY for want of a copy.
u32 SYSDT_CmntyStrToEnhValue(u32 handle, const char *text, std::size_t length, SYSDT_Community &out);

/// Prints a community that has no well-known name; false if the notation is unknown, and then nothing is printed.
inline bool SYSDT_NoWellKnownCmntyEnhanceToStr(u32 community, u32 notation, Writer &out)
{
    switch (notation) {
    case SYSDT_COMMUNITY_NUMBER: print<"%u">(out, community); return true;
    case SYSDT_COMMUNITY_PAIR: print<"%hu:%hu">(out, community >> 16, community); return true;
    default: return false;
    }
}

/// Prints a community by its well-known name, else in its notation. False as above.
inline bool SYSDT_CmntyEnhanceToStr(u32 community, u32 notation, Writer &out)
{
    for (const auto &known : well_known_communities) {
        if (known.community == community) {
            out.put(known.name);
            return true;
        }
    }
    return SYSDT_NoWellKnownCmntyEnhanceToStr(community, notation, out);
}

} // namespace bgpdt
