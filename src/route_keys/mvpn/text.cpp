// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Multicast-VPN route keys (RFC 6514, 6515) from text.
///
/// Text: sections joined by ":" when all addresses are IPv4, else by "-", 1 to 63 and 1 to 159 characters. White space
/// at the ends is cut off.
///
///     2  64496                          4  64496:192.0.2.1            64496-2001:db8::1
///     6  192.0.2.1:233.252.0.1         13  192.0.2.1:192.0.2.2        2001:db8::1-2001:db8::2
///     7  64496:192.0.2.1:233.252.0.1    3  192.0.2.1:233.252.0.1:192.0.2.9, source, group, originator
///     5  source, group and two originators
///
/// Irregularities, all deliberate; the numbers run through text and print:
///  (1) Any row reads all of them, and delivers an IPv4 address alone as kind 0, which these rows do not print.
///  (2) A hyphen anywhere makes hyphens the separators, else it is colons; hyphens separate IPv4 addresses too.
///  (3) The number of separators and dots decides what is read; the group is looked at only in a pair of addresses.
///  (4) One colon and six dots is never refused: reading ends at the first bad address, what was read before it stays,
///      and the sub-kind is 0.
///  (5) A source AS with a source and a group takes both from one family: IPv4 with colons, IPv6 with hyphens.
///  (6) Four sections with hyphens take no IPv4 address or two of them; an IPv4 tail in IPv6 counts like one.
///  (7) In a pair with a hyphen the second is IPv6.
///  (8) Every mode but 4 reads and prints.
#include "route_keys/mvpn/text.hpp"

#include <cstring>

#include "asn_community/as_number.hpp"
#include "common/bytes.hpp"
#include "common/text_offer.hpp"

namespace bgpdt::mvpn {

namespace {

u32 read_section(const Section &section, char *text, ReadAddress *read_address, SYSDT_BolValue &value)
{
    return section.role == Role::as ? read_as_section<1>(text, section.in<SYSDT_AsNum>(value))
                                    : read_address(text, section.in<SYSDT_EvpnAddress>(value));
}

/// 224.0.0.0 to 239.255.255.255.
constexpr bool is_ipv4_multicast(u32 address) { return address >> 28 == 0xE; }

u32 read_ipv4_alone(const char *text, SYSDT_BolValue &value)
{
    u32 address = 0;
    if (SYSDT_Str2Ipv4(text, &address) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    value.subKind = SYSDT_BOL_IPV4;
    store(value.key, address);
    return SYSDT_OK;
}

/// What a text is made of: characters that it may have, and separators between its sections.
struct Found {
    Split split;
    Census census; ///< separators count in its length alone
    char stop;     ///< the first other character, or the NUL

    /// Whether the text has so many characters at most, and no other and no section too much.
    bool admits(std::size_t longest) const
    {
        return stop == '\0' && split.separators < most_sections && census.length() >= 1 && census.length() <= longest;
    }
};

/// Looks through a text whose sections, of the Known characters, the separator ends.
template <FixedString Known>
Found find_sections(char *text, char separator)
{
    Found found{{text, 0}, {}, '\0'};
    CensusWalk<Known> walk(text, CensusWalk<Known>::no_colon);
    while ((found.stop = walk.next()) == separator)
        if (++found.split.separators < most_sections)
            found.split.positions[found.split.separators - 1] = static_cast<u32>(walk.census().length()) + 1;
    found.census = walk.census();
    return found;
}

/// The sections are texts of their own while this lives: NULs stand for the separators so long.
class Sections {
public:
    Sections(const Split &split, char separator) : split_(split), separator_(separator) { end_with('\0'); }
    ~Sections() { end_with(separator_); }
    Sections(const Sections &) = delete;
    Sections &operator=(const Sections &) = delete;

private:
    void end_with(char character) const
    {
        for (u32 number = 1; number <= split_.separators; ++number)
            split_.section(number)[-1] = character;
    }

    const Split &split_;
    char separator_;
};

/// IPv4 keys, by the number of colons and dots. (3)
u32 parse_with_colons(const Found &text, SYSDT_BolValue &value)
{
    if (!text.admits(63))
        return SYSDT_ERR_FAIL;
    const Split &split = text.split;
    const u32 dots = text.census.dots();
    const Sections sections(split, ':');
    switch (split.separators) {
    case 0:
        if (dots == 3)
            return read_ipv4_alone(split.text, value); // (1)
        return read_sections(kind<SYSDT_BOL_NG_TYPE_2>, split, read_ipv4, value);
    case 1:
        if (dots != 6)
            return read_sections(kind<SYSDT_BOL_NG_TYPE_4_2>, split, read_ipv4, value);
        read_ipv4_pair(split, value);
        return SYSDT_OK;
    case 2:
        return read_sections(dots == 9 ? kind<SYSDT_BOL_NG_TYPE_3> : kind<SYSDT_BOL_NG_TYPE_6>, split, read_ipv4,
                             value);
    default: return read_sections(kind<SYSDT_BOL_NG_TYPE_4_3>, split, read_ipv4, value);
    }
}

/// Whether three sections have addresses alone: an AS number is short, and has a dot at most.
bool begins_with_address(const char *first, const Census &all)
{
    constexpr std::size_t looked_at = 16; // characters of the first section
    return std::memchr(first, ':', strnlen(first, looked_at)) != nullptr || all.dots() >= 3;
}

/// Keys with IPv6 addresses, by the number of hyphens. (3)
u32 parse_with_hyphens(char *text, SYSDT_BolValue &value)
{
    const auto found = find_sections<"0123456789abcdefABCDEF.:">(text, '-');
    if (!found.admits(159))
        return SYSDT_ERR_FAIL;
    const Split &split = found.split;
    const u32 dots = found.census.dots();
    const Sections sections(split, '-');
    switch (split.separators) {
    case 1: return read_pair(split, value);
    case 2:
        if (begins_with_address(text, found.census))
            return read_sections(kind<SYSDT_BOL_NG_TYPE_3>, split, read_either, value);
        return read_sections(kind<SYSDT_BOL_NG_TYPE_6>, split, read_ipv6, value); // (5)
    case 3:
        if (dots != 0 && dots != 6)
            return SYSDT_ERR_FAIL; // (6)
        return read_sections(kind<SYSDT_BOL_NG_TYPE_4_3>, split, read_either, value);
    default: return SYSDT_ERR_FAIL;
    }
}

} // namespace

u32 read_either(const char *text, SYSDT_EvpnAddress &field)
{
    return std::strchr(text, ':') != nullptr ? read_ipv6(text, field) : read_ipv4(text, field);
}

u32 read_sections(const Kind &kind, const Split &split, ReadAddress *read_address, SYSDT_BolValue &value)
{
    value.subKind = kind.sub_kind;
    u32 number = 0;
    for (const Section &section : kind.sections())
        if (read_section(section, split.section(number++), read_address, value) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
    return SYSDT_OK;
}

void read_ipv4_pair(const Split &split, SYSDT_BolValue &value) // (4)
{
    constexpr const Kind &pair = kind<SYSDT_BOL_NG_TYPE_5>;
    if (read_sections(pair, split, read_ipv4, value) != SYSDT_OK)
        value.subKind = SYSDT_BOL_IPV4;
    else if (!is_ipv4_multicast(pair.section[1].in<SYSDT_EvpnAddress>(value).ipv4))
        value.subKind = SYSDT_BOL_NG_TYPE_4_1;
}

u32 read_pair(const Split &split, SYSDT_BolValue &value) // (7)
{
    SYSDT_EvpnAddress second{};
    if (read_ipv6(split.section(1), second) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    const Kind &pair = is_ipv6_multicast(second)                 ? kind<SYSDT_BOL_NG_TYPE_5>
                       : std::strchr(split.text, ':') != nullptr ? kind<SYSDT_BOL_NG_TYPE_4_1>
                                                                 : kind<SYSDT_BOL_NG_TYPE_4_2>;
    value.subKind = pair.sub_kind;
    if (read_section(pair.section[0], split.text, read_either, value) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    auto &field = pair.section[1].in<SYSDT_EvpnAddress>(value);
    std::memcpy(field.ipv6, second.ipv6, sizeof field.ipv6);
    field.family = second.family;
    return SYSDT_OK;
}

namespace {

/// Behind each colon stands an IPv4 address, but six dots and a colon stand anywhere. Between hyphens there are IPv6
/// addresses, of two colons or more each, and IPv4 ones, of four sections none or two.
constexpr bool may_be_mvpn(const TextShape &shape)
{
    if (shape.others != 0)
        return false;
    const u32 colons = shape.colons();
    switch (shape.hyphens()) {
    case 0: return colons <= 3 && (shape.dots_behind_field() == 3 * colons || (colons == 1 && shape.dots() == 6));
    case 1: return colons >= 2;
    case 2: return colons >= 2 || shape.dots() >= 9;
    case 3: return shape.field.marks() <= 2 && (colons >= 8 || (colons >= 4 && shape.dots() == 6));
    default: return false;
    }
}

} // namespace

} // namespace bgpdt::mvpn

using namespace bgpdt;
using namespace bgpdt::mvpn;

u32 SYSDT_Str2NGIpv6Prefix(char *text, SYSDT_BolValue *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return parse_with_hyphens(SYSDT_BTrim(text), *value);
}

u32 SYSDT_Str2NGPrefix(char *text, SYSDT_BolValue *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = SYSDT_BTrim(text);
    const auto found = find_sections<"0123456789.">(text, ':');
    if (found.stop == '\0')
        return parse_with_colons(found, *value);
    const char *const rest = text + found.census.length();
    return std::strchr(rest, '-') != nullptr ? parse_with_hyphens(text, *value) : u32{SYSDT_ERR_FAIL}; // (2)
}

BGPDT_MAY_READ(SYSDT_NGPrefixFormatIn, may_be_mvpn(shape))
BGPDT_FORMAT_IN(SYSDT_NGPrefixFormatIn, mvpn::prefix) // (8)
