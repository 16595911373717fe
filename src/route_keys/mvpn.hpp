// SPDX-License-Identifier: Apache-2.0
/// @file
/// The multicast-VPN route keys (RFC 6514): which sections each kind has, and where they stand in the 89-byte value.
#pragma once

#include <array>
#include <initializer_list>
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
inline constexpr std::size_t roles = 5;

struct Section {
    Role role;
    u8 offset; ///< in the 89-byte value
};

/// One kind of key: its sections in the order of the text.
struct Kind {
    u32 sub_kind;
    u8 slots; ///< named fields that its script table is made for
    u8 count = 0;
    u8 number_of[roles]{}; ///< the number of the section in that role, from 1; 0 is none
    Section section[4]{};

    constexpr Kind(u32 kind, u8 slots_in_script, std::initializer_list<Section> in_order)
        : sub_kind(kind), slots(slots_in_script)
    {
        for (const Section &each : in_order) {
            section[count] = each;
            number_of[static_cast<u8>(each.role)] = ++count;
        }
    }

    constexpr std::span<const Section> sections() const { return {section, count}; }

    constexpr const Section *find(Role role) const
    {
        const u8 number = number_of[static_cast<u8>(role)];
        return number == 0 ? nullptr : section + number - 1;
    }
};

inline constexpr Kind kinds[] = {
    {SYSDT_BOL_NG_TYPE_2, 3, {{Role::as, 4}}},
    {SYSDT_BOL_NG_TYPE_3, 4, {{Role::source, 4}, {Role::group, 25}, {Role::originator, 46}}},
    {SYSDT_BOL_NG_TYPE_4_2, 4, {{Role::as, 4}, {Role::originator, 12}}},
    {SYSDT_BOL_NG_TYPE_4_3, 5, {{Role::source, 4}, {Role::group, 25}, {Role::originator, 46}, {Role::originator2, 67}}},
    {SYSDT_BOL_NG_TYPE_5, 3, {{Role::source, 4}, {Role::group, 25}}},
    {SYSDT_BOL_NG_TYPE_6, 5, {{Role::as, 4}, {Role::source, 12}, {Role::group, 33}}},
    {SYSDT_BOL_NG_TYPE_4_1, 4, {{Role::originator, 4}, {Role::originator2, 25}}},
};

/// Where each sub-kind stands among the kinds, from 1; 0 is nowhere.
inline constexpr auto kind_numbers = [] {
    std::array<u8, SYSDT_BOL_KINDS> numbers{};
    u8 number = 0;
    for (const Kind &kind : kinds)
        numbers[kind.sub_kind] = ++number;
    return numbers;
}();

/// The kind of a sub-kind word, or null.
constexpr const Kind *kind_of(u32 sub_kind)
{
    const u8 number = sub_kind < kind_numbers.size() ? kind_numbers[sub_kind] : u8{0};
    return number == 0 ? nullptr : kinds + number - 1;
}

template <u32 sub_kind>
inline constexpr const Kind &kind = *kind_of(sub_kind);

} // namespace bgpdt::mvpn
