// SPDX-License-Identifier: Apache-2.0
/// @file
/// Multicast-VPN route keys (RFC 6514, 6515), kinds 2 to 7 and 13 of the route keys, from text and to text.
///
///      0          4
///     +----------+------------- sections, by kind (mvpn.hpp) --- zero ---
///     | sub-kind | AS number: 8 bytes; address: IPv4 u32, IPv6, family (21 bytes); numbers in host order
///     +----------+--------------------------------------------------------
///
/// Text: sections joined by ":" when all addresses are IPv4, else by "-", 1 to 63 and 1 to 159 characters. White space
/// at the ends is cut off.
///
///     2  64496                          4  64496:192.0.2.1            64496-2001:db8::1
///     6  192.0.2.1:233.252.0.1         13  192.0.2.1:192.0.2.2        2001:db8::1-2001:db8::2
///     7  64496:192.0.2.1:233.252.0.1    3  192.0.2.1:233.252.0.1:192.0.2.9, source, group, originator
///     5  source, group and two originators
///
/// Irregularities of the texts, all deliberate:
///  (1) Any row reads all of them, and delivers an IPv4 address alone as kind 0, which these rows do not print.
///  (2) A hyphen anywhere makes hyphens the separators, else it is colons; hyphens separate IPv4 addresses too.
///  (3) The number of separators and dots decides what is read; the group is looked at only in a pair of addresses.
///  (4) One colon and six dots is never refused: reading ends at the first bad address, what was read before it stays,
///      and the sub-kind is 0.
///  (5) A source AS with a source and a group takes both from one family: IPv4 with colons, IPv6 with hyphens.
///  (6) Four sections with hyphens take no IPv4 address or two of them; an IPv4 tail in IPv6 counts like one.
///  (7) In a pair with a hyphen the second is IPv6.
///  (8) Every mode but 4 reads and prints.
/// Irregularities of printing, likewise:
///  (9) The group's family decides how the source prints too; the source's own family does not matter.
///  (10) A deciding family byte other than 0 and 1 prints as empty text, and so do two originators of different
///      families; behind an IPv4 group such originators are reported with the length of the group's text, over zero
///      bytes.
///  (11) An AS number up to 65535 prints plain whatever its notation.
#include "route_keys/mvpn.hpp"

#include "asn_community/as_number.hpp"
#include "bol_prefix/bol_row.hpp"
#include "common/bytes.hpp"
#include "common/census.hpp"
#include "common/ipv4.hpp"
#include "common/key_address.hpp"

using namespace bgpdt;
using namespace bgpdt::mvpn;

namespace {

// ------------------------------------------------------------------------------------------------ from text

/// Reads an address of one of the families into the field.
using ReadAddress = u32(const char *text, SYSDT_EvpnAddress &field);

u32 read_either(const char *text, SYSDT_EvpnAddress &field)
{
    return (std::strchr(text, ':') != nullptr ? read_ipv6 : read_ipv4)(text, field);
}

/// Where the sections of a text begin. The first begins at its start.
struct Split {
    char *text;
    u32 separators;
    u32 positions[3]{};

    char *section(u32 number) const { return number == 0 ? text : text + positions[number - 1]; }
};

/// Cuts the text at its separators; false if there are more than three.
bool cut_at(char separator, Split &split)
{
    char *at = split.text;
    for (u32 number = 1; number <= split.separators; ++number) {
        at = std::strchr(at, separator);
        if (SYSDT_GetSectionPos(number, static_cast<u32>(at - split.text), split.positions) != SYSDT_OK)
            return false;
        *at++ = '\0';
    }
    return true;
}

u32 read_section(const Section &section, char *text, ReadAddress *read_address, SYSDT_BolValue &value)
{
    u8 *const at = reinterpret_cast<u8 *>(&value) + section.offset;
    return section.role == Role::as ? SYSDT_Str2AsNum(text, reinterpret_cast<SYSDT_AsNum *>(at))
                                    : read_address(text, *reinterpret_cast<SYSDT_EvpnAddress *>(at));
}

/// Reads the sections of the kind, first to last.
u32 read_sections(const Kind &kind, const Split &split, ReadAddress *read_address, SYSDT_BolValue &value)
{
    value.subKind = kind.sub_kind;
    u32 number = 0;
    for (const Section &section : kind.sections())
        if (read_section(section, split.section(number++), read_address, value) != SYSDT_OK)
            return SYSDT_ERR_FAIL;
    return SYSDT_OK;
}

/// 224.0.0.0 to 239.255.255.255.
constexpr bool is_ipv4_multicast(u32 address) { return address >> 28 == 0xE; }

bool is_ipv6_multicast(const SYSDT_EvpnAddress &field) { return field.ipv6[0] == 0xFF; }

/// Two addresses: a source and a group, or two originators. Never refused. (4)
void read_ipv4_pair(const Split &split, SYSDT_BolValue &value)
{
    if (read_sections(kind<SYSDT_BOL_NG_TYPE_5>, split, read_ipv4, value) != SYSDT_OK)
        value.subKind = SYSDT_BOL_IPV4;
    else if (!is_ipv4_multicast(load<u32>(value.key + 21)))
        value.subKind = SYSDT_BOL_NG_TYPE_4_1;
}

u32 read_ipv4_alone(const char *text, SYSDT_BolValue &value)
{
    u32 address = 0;
    if (SYSDT_Str2Ipv4(text, &address) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    value.subKind = SYSDT_BOL_IPV4;
    store(value.key, address);
    return SYSDT_OK;
}

/// IPv4 keys, by the number of colons and dots. (3)
u32 parse_with_colons(const char *text, const Census &census, SYSDT_BolValue &value)
{
    char copy[64];
    if (!census.admits(1, sizeof copy - 1))
        return SYSDT_ERR_FAIL;
    std::memcpy(copy, text, census.length() + 1);
    Split split{copy, census.colons()};
    if (!cut_at(':', split))
        return SYSDT_ERR_FAIL;
    switch (split.separators) {
    case 0:
        if (census.dots() == 3)
            return read_ipv4_alone(copy, value); // (1)
        return read_sections(kind<SYSDT_BOL_NG_TYPE_2>, split, read_ipv4, value);
    case 1:
        if (census.dots() != 6)
            return read_sections(kind<SYSDT_BOL_NG_TYPE_4_2>, split, read_ipv4, value);
        read_ipv4_pair(split, value);
        return SYSDT_OK;
    case 2:
        return read_sections(census.dots() == 9 ? kind<SYSDT_BOL_NG_TYPE_3> : kind<SYSDT_BOL_NG_TYPE_6>, split,
                             read_ipv4, value);
    default: return read_sections(kind<SYSDT_BOL_NG_TYPE_4_3>, split, read_ipv4, value);
    }
}

/// Two sections: what the second one is decides. (7)
u32 read_pair(const Split &split, SYSDT_BolValue &value)
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
    auto &field = *reinterpret_cast<SYSDT_EvpnAddress *>(reinterpret_cast<u8 *>(&value) + pair.section[1].offset);
    std::memcpy(field.ipv6, second.ipv6, sizeof field.ipv6);
    field.family = family_ipv6;
    return SYSDT_OK;
}

/// How a builder gets its sections: the text, cut, and where they begin.
u32 build(const Kind &kind, char *text, SYSDT_BolValue *value, const u32 positions[3], ReadAddress *read_address)
{
    if (text == nullptr || value == nullptr || positions == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const Split split{text, kind.count - 1U, {positions[0], positions[1], positions[2]}};
    return read_sections(kind, split, read_address, *value);
}

// ------------------------------------------------------------------------------------------------ to text

constexpr std::size_t most_sections = 4;
constexpr std::size_t longest_key = most_sections * (1 + ipv6_text_size);

/// Writes the address as the family says and returns the end; null if the host cannot print it.
char *write_address(char *to, const u8 *field, u8 family)
{
    if (family == family_ipv4)
        return write_ipv4_address(to, load<u32>(field));
    const bool written = inet_ntop6(field + offsetof(SYSDT_EvpnAddress, ipv6), to, ipv6_text_size) != nullptr;
    return written ? to + std::strlen(to) : nullptr;
}

char *write_source_as(char *to, const u8 *field)
{
    const u32 number = load<u32>(field);
    return write_as_number(to, number, number > UINT16_MAX ? load<u32>(field + 4) : SYSDT_AS_PLAIN); // (11)
}

u8 family_at(const u8 *value, const Section *section)
{
    return section == nullptr ? family_ipv4 : value[section->offset + offsetof(SYSDT_EvpnAddress, family)];
}

/// Reports the length of the group's text over zero bytes. (10)
u32 print_zeros_for_group(const u8 *group, Writer &out)
{
    char text[most_ipv4_characters];
    for (const char *const end = write_address(text, group, family_ipv4), *at = text; at != end; ++at)
        out.put('\0');
    return SYSDT_OK;
}

u32 print_key(const Kind &kind, const u8 *value, Writer &out)
{
    const Section *const group = kind.find(Role::group);
    const Section *const second = kind.find(Role::originator2);
    const u8 customer = family_at(value, group); // (9)
    const u8 originator = family_at(value, kind.find(Role::originator));
    if (customer > family_ipv6)
        return SYSDT_OK; // (10)
    if (originator > family_ipv6 || (second != nullptr && family_at(value, second) != originator))
        return group != nullptr && customer == family_ipv4 ? print_zeros_for_group(value + group->offset, out)
                                                           : u32{SYSDT_OK}; // (10)
    const char separator = customer == family_ipv4 && originator == family_ipv4 ? ':' : '-';
    u32 status = SYSDT_OK;
    out.put_at_most<longest_key>([&](char *to) {
        for (const Section &section : kind.sections()) {
            if (&section != kind.section)
                *to++ = separator;
            const u8 *const field = value + section.offset;
            const bool of_customer = section.role == Role::source || section.role == Role::group;
            char *const end = section.role == Role::as ? write_source_as(to, field)
                                                       : write_address(to, field, of_customer ? customer : originator);
            if (end == nullptr) {
                status = SYSDT_ERR_FAIL;
                return to;
            }
            to = end;
        }
        return to;
    });
    return status;
}

u32 print_value(const SYSDT_BolValue &value, u8, Writer &out)
{
    const Kind *const known = kind_of(value.subKind);
    return known == nullptr ? SYSDT_ERR_FAIL : print_key(*known, reinterpret_cast<const u8 *>(&value), out);
}

constexpr auto mvpn_prefix = [] {
    auto type = bol_row<SYSDT_BolValue>(); // (8)
    type.parse = [](u32, char *text, SYSDT_BolValue &value) { return SYSDT_Str2NGPrefix(text, &value); };
    type.print = print_value;
    return type;
}();

} // namespace

u32 SYSDT_Str2IPv4IPv6(const char *text, SYSDT_EvpnAddress *field)
{
    return text == nullptr || field == nullptr ? SYSDT_ERR_NULL_PTR : read_either(text, *field);
}

u32 SYSDT_IsIpv6MultiCastAddr(const char *text)
{
    SYSDT_EvpnAddress field{};
    if (text == nullptr || read_ipv6(text, field) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    return is_ipv6_multicast(field) ? 1 : 0;
}

u32 SYSDT_Str2NGPrefix_Type5_41(char *text, SYSDT_BolValue *value, u32 secondSection)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    read_ipv4_pair({text, 1, {secondSection}}, *value);
    return SYSDT_OK;
}

u32 SYSDT_Str2NGIpv6Prefix_Type1(const char *text, SYSDT_BolIpv6 *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    value->subKind = SYSDT_BOL_IPV6;
    return SYSDT_Str2Ipv6(text, value->address) == SYSDT_OK ? SYSDT_OK : SYSDT_ERR_FAIL;
}

u32 SYSDT_Str2NGIpv6Prefix_Type3(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    return build(kind<SYSDT_BOL_NG_TYPE_3>, text, value, positions, read_either);
}

u32 SYSDT_Str2NGIpv6Prefix_Type43(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    return build(kind<SYSDT_BOL_NG_TYPE_4_3>, text, value, positions, read_either);
}

u32 SYSDT_Str2NGIpv6Prefix_Type5(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    return build(kind<SYSDT_BOL_NG_TYPE_5>, text, value, positions, read_either);
}

u32 SYSDT_Str2NGIpv6Prefix_Type41(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    return build(kind<SYSDT_BOL_NG_TYPE_4_1>, text, value, positions, read_either);
}

u32 SYSDT_Str2NGIpv6Prefix_Type42(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    return build(kind<SYSDT_BOL_NG_TYPE_4_2>, text, value, positions, read_either);
}

u32 SYSDT_Str2NGIpv6Prefix_Type6_7(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    return build(kind<SYSDT_BOL_NG_TYPE_6>, text, value, positions, read_ipv6); // (5)
}

u32 SYSDT_Str2NGIpv6Prefix_Type5_41_42(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    if (text == nullptr || value == nullptr || positions == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return read_pair({text, 1, {positions[0]}}, *value);
}

u32 SYSDT_Str2NGIpv6Prefix(char *text, SYSDT_BolValue *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char copy[160];
    text = SYSDT_BTrim(text);
    const auto census = Census::of_start<"0123456789abcdefABCDEF.:-">(text);
    if (text[census.length()] != '\0' || !census.admits(1, sizeof copy - 1))
        return SYSDT_ERR_FAIL;
    std::memcpy(copy, text, census.length() + 1);
    Split split{copy, census.marks()};
    if (!cut_at('-', split))
        return SYSDT_ERR_FAIL;
    constexpr std::size_t looked_at = 16; // characters of the first section
    switch (split.separators) {
    case 1: return SYSDT_Str2NGIpv6Prefix_Type5_41_42(copy, value, split.positions);
    case 2:
        if (std::memchr(copy, ':', strnlen(copy, looked_at)) != nullptr || census.dots() >= 3)
            return SYSDT_Str2NGIpv6Prefix_Type3(copy, value, split.positions);
        return SYSDT_Str2NGIpv6Prefix_Type6_7(copy, value, split.positions);
    case 3:
        if (census.dots() != 0 && census.dots() != 6)
            return SYSDT_ERR_FAIL; // (6)
        return SYSDT_Str2NGIpv6Prefix_Type43(copy, value, split.positions);
    default: return SYSDT_ERR_FAIL;
    }
}

u32 SYSDT_Str2NGPrefix(char *text, SYSDT_BolValue *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    text = SYSDT_BTrim(text);
    const auto census = Census::of_start<"0123456789.:">(text);
    const char *const rest = text + census.length();
    if (*rest == '\0')
        return parse_with_colons(text, census, *value);
    return std::strchr(rest, '-') != nullptr ? SYSDT_Str2NGIpv6Prefix(text, value) : u32{SYSDT_ERR_FAIL}; // (2)
}

u32 SYSDT_NGPrefix2Str(const SYSDT_BolValue *value, char *buffer, u32 *length)
{
    return print_to_buffer<mvpn_prefix.limit>(
        value, buffer, length, [](const SYSDT_BolValue &key, Writer &out) { return print_value(key, 0, out); });
}

BGPDT_FORMAT_IN(SYSDT_NGPrefixFormatIn, mvpn_prefix)
BGPDT_FORMAT_OUT(SYSDT_NGPrefixFormatOut, mvpn_prefix)
