// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The multicast-VPN route keys (RFC 6514, 6515), kinds 2 to 7 and 13 of the route keys: which sections each kind has,
/// and where they stand in the value.
///
///      0          4
///     +----------+------------- sections, by kind ---------------- zero ---
///     | sub-kind | AS number: 8 bytes; address: IPv4 u32, IPv6, family (21 bytes); numbers in host order
///     +----------+----------------------------------------------------------
#pragma once

#include <array>
#include <initializer_list>
#include <span>

#include "common/bol_row.hpp"

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
inline constexpr std::size_t most_sections = 4;

struct Section {
    Role role;
    u8 offset; ///< in the value

    constexpr std::size_t end() const
    {
        return offset + (role == Role::as ? sizeof(SYSDT_AsNum) : sizeof(SYSDT_EvpnAddress));
    }

    /// What stands there: SYSDT_AsNum or SYSDT_EvpnAddress.
    template <class Content>
    Content &in(SYSDT_BolValue &value) const
    {
        return *reinterpret_cast<Content *>(reinterpret_cast<u8 *>(&value) + offset);
    }
    template <class Content>
    const Content &in(const SYSDT_BolValue &value) const
    {
        return *reinterpret_cast<const Content *>(reinterpret_cast<const u8 *>(&value) + offset);
    }
};

/// One kind of key: its sections in the order of the text.
struct Kind {
    u32 sub_kind;
    u8 slots; ///< named fields that its script table is made for
    u8 count = 0;
    u8 number_of[roles]{}; ///< the number of the section in that role, from 1; 0 is none
    Section section[most_sections]{};

    constexpr Kind(u32 kind, u8 slots_in_script, std::span<const Field> fields, std::initializer_list<Role> in_order)
        : sub_kind(kind), slots(slots_in_script)
    {
        std::size_t end = sizeof sub_kind;
        auto field = fields.begin();
        for (const Role role : in_order) {
            while (field->offset < end)
                ++field;
            section[count] = {role, static_cast<u8>(field->offset)};
            end = section[count].end();
            number_of[static_cast<u8>(role)] = ++count;
        }
    }

    constexpr std::span<const Section> sections() const { return {section, count}; }

    constexpr const Section *find(Role role) const
    {
        const u8 number = number_of[static_cast<u8>(role)];
        return number == 0 ? nullptr : section + number - 1;
    }
};

// In front of each the names of its printers, which one function does for all: print_value().
inline constexpr Kind kinds[] = {
    // SYSDT_NG_Prefix2ToStr
    {SYSDT_BOL_NG_TYPE_2, 3, bol_ng2_fields, {Role::as}},
    // SYSDT_NG_Prefix3ToStr: SYSDT_NG_Prefix3ToStrIPv4, SYSDT_NG_Prefix3ToStrIPv6
    {SYSDT_BOL_NG_TYPE_3, 4, bol_ng3_fields, {Role::source, Role::group, Role::originator}},
    // SYSDT_NG_Prefix42ToStr: SYSDT_NG_Prefix42ToStrIPv4, SYSDT_NG_Prefix42ToStrIPv6
    {SYSDT_BOL_NG_TYPE_4_2, 4, bol_ng42_fields, {Role::as, Role::originator}},
    // SYSDT_NG_Prefix43ToStr: SYSDT_NG_Prefix43ToStrIPv4, SYSDT_NG_Prefix43ToStrIPv6
    {SYSDT_BOL_NG_TYPE_4_3, 5, bol_ng43_fields, {Role::source, Role::group, Role::originator, Role::originator2}},
    // SYSDT_NG_Prefix5ToStr
    {SYSDT_BOL_NG_TYPE_5, 3, bol_ng5_fields, {Role::source, Role::group}},
    // SYSDT_NG_Prefix6ToStr
    {SYSDT_BOL_NG_TYPE_6, 5, bol_ng6_fields, {Role::as, Role::source, Role::group}},
    // SYSDT_NG_Prefix41ToStr
    {SYSDT_BOL_NG_TYPE_4_1, 4, bol_ng41_fields, {Role::originator, Role::originator2}},
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

u32 print_value(const SYSDT_BolValue &value, u8 mode, Writer &out);

/// Every mode but 4 reads and prints text.
inline constexpr auto prefix = [] {
    auto type = bol_row<SYSDT_BolValue>();
    type.parse = [](u32, char *text, SYSDT_BolValue &value) { return SYSDT_Str2NGPrefix(text, &value); };
    type.print = print_value;
    return type;
}();

} // namespace bgpdt::mvpn
