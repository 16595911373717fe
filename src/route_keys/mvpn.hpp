// SPDX-License-Identifier: Apache-2.0
/// @file
/// The multicast-VPN route keys (RFC 6514): which sections each kind has, and where they stand in the 89-byte value.
#pragma once

#include <span>

#include "bgp_datatype/bgp_datatype.h"
#include "common/types.hpp"

namespace bgpdt::mvpn {

/// What a section of the text stands for.
enum class Role : u8 {
    as,          ///< the source AS number: SYSDT_AsNum
    source,      ///< customer source, as all that follow an SYSDT_EvpnAddress
    group,       ///< customer group
    originator,  ///< originating router, the first where there are two
    originator2, ///< the second originating router
};

struct Section {
    Role role;
    u8 offset; ///< in the 89-byte value
};

/// One kind of key: its sections in the order of the text.
struct Kind {
    u32 sub_kind;
    u8 slots; ///< named fields that its script table is made for
    u8 count;
    Section section[4];

    constexpr std::span<const Section> sections() const { return {section, count}; }

    constexpr const Section *find(Role role) const
    {
        for (const Section &each : sections())
            if (each.role == role)
                return &each;
        return nullptr;
    }
};

inline constexpr Kind kinds[] = {
    {SYSDT_BOL_NG_TYPE_2, 3, 1, {{Role::as, 4}}},
    {SYSDT_BOL_NG_TYPE_3, 4, 3, {{Role::source, 4}, {Role::group, 25}, {Role::originator, 46}}},
    {SYSDT_BOL_NG_TYPE_4_2, 4, 2, {{Role::as, 4}, {Role::originator, 12}}},
    {SYSDT_BOL_NG_TYPE_4_3,
     5,
     4,
     {{Role::source, 4}, {Role::group, 25}, {Role::originator, 46}, {Role::originator2, 67}}},
    {SYSDT_BOL_NG_TYPE_5, 3, 2, {{Role::source, 4}, {Role::group, 25}}},
    {SYSDT_BOL_NG_TYPE_6, 5, 3, {{Role::as, 4}, {Role::source, 12}, {Role::group, 33}}},
    {SYSDT_BOL_NG_TYPE_4_1, 4, 2, {{Role::originator, 4}, {Role::originator2, 25}}},
};

/// The kind of a sub-kind word, or null.
constexpr const Kind *kind_of(u32 sub_kind)
{
    for (const Kind &kind : kinds)
        if (kind.sub_kind == sub_kind)
            return &kind;
    return nullptr;
}

template <u32 sub_kind>
inline constexpr const Kind &kind = *kind_of(sub_kind);

} // namespace bgpdt::mvpn
