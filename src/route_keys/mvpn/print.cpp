// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Multicast-VPN route keys (RFC 6514, 6515) to text: the sections of the kind, joined by ":" when all addresses are
/// IPv4, else by "-".
///
/// Irregularities, all deliberate; the numbers run through text and print:
///  (9) The group's family decides how the source prints too; the source's own family does not matter.
///  (10) A deciding family byte other than 0 and 1 prints as empty text, and so do two originators of different
///      families; behind an IPv4 group such originators are reported with the length of the group's text, over zero
///      bytes.
///  (11) An AS number up to 65535 prints plain whatever its notation.
#include <cstring>

#include "common/as_number.hpp"
#include "common/ipv4.hpp"
#include "common/key_address.hpp"
#include "route_keys/mvpn/key.hpp"

namespace bgpdt::mvpn {

namespace {

constexpr std::size_t longest_key = most_sections * (1 + ipv6_text_size);

/// Writes the address as the family says and returns the end; null if the host cannot print it.
char *write_address(char *to, const SYSDT_EvpnAddress &address, u8 family)
{
    if (family == family_ipv4)
        return write_ipv4_address(to, address.ipv4);
    return inet_ntop6(address.ipv6, to, ipv6_text_size) != nullptr ? to + std::strlen(to) : nullptr;
}

char *write_source_as(char *to, const SYSDT_AsNum &as)
{
    return write_as_number(to, as.asNumValue, as.asNumValue > UINT16_MAX ? as.asType : SYSDT_AS_PLAIN); // (11)
}

/// The families that decide how the addresses print.
struct Families {
    u8 customer;   ///< of source and group: the group's (9)
    u8 originator; ///< of both
    bool mixed;    ///< the originators are of different ones

    u8 of(Role role) const { return role == Role::source || role == Role::group ? customer : originator; }
};

u8 family_in(const SYSDT_BolValue &value, const Section *section)
{
    return section == nullptr ? family_ipv4 : section->in<SYSDT_EvpnAddress>(value).family;
}

Families families_of(const Kind &kind, const SYSDT_BolValue &value)
{
    const u8 originator = family_in(value, kind.find(Role::originator));
    const Section *const second = kind.find(Role::originator2);
    return {family_in(value, kind.find(Role::group)), originator,
            second != nullptr && family_in(value, second) != originator};
}

/// Reports the length of the group's text over zero bytes. (10)
void print_zeros_for_group(const SYSDT_EvpnAddress &group, Writer &out)
{
    char text[most_ipv4_characters];
    for (const char *const end = write_ipv4_address(text, group.ipv4), *at = text; at != end; ++at)
        out.put('\0');
}

/// Writes the sections and returns the end; of one that the host cannot print the start, and a status.
char *write_sections(char *to, const Kind &kind, const SYSDT_BolValue &value, Families families, u32 &status)
{
    const char separator = families.customer == family_ipv4 && families.originator == family_ipv4 ? ':' : '-';
    for (const Section &section : kind.sections()) {
        if (&section != kind.section)
            *to++ = separator;
        char *const end = section.role == Role::as
                              ? write_source_as(to, section.in<SYSDT_AsNum>(value))
                              : write_address(to, section.in<SYSDT_EvpnAddress>(value), families.of(section.role));
        if (end == nullptr) {
            status = SYSDT_ERR_FAIL;
            break;
        }
        to = end;
    }
    return to;
}

} // namespace

u32 print_value(const SYSDT_BolValue &value, u8, Writer &out)
{
    const Kind *const known = kind_of(value.subKind);
    if (known == nullptr)
        return SYSDT_ERR_FAIL;
    const Families families = families_of(*known, value);
    if (families.customer > family_ipv6)
        return SYSDT_OK; // (10)
    if (families.originator > family_ipv6 || families.mixed) {
        const Section *const group = known->find(Role::group);
        if (group != nullptr && families.customer == family_ipv4)
            print_zeros_for_group(group->in<SYSDT_EvpnAddress>(value), out);
        return SYSDT_OK; // (10)
    }
    u32 status = SYSDT_OK;
    out.put_at_most<longest_key>([&](char *to) { return write_sections(to, *known, value, families, status); });
    return status;
}

} // namespace bgpdt::mvpn

using namespace bgpdt;

u32 SYSDT_NGPrefix2Str(const SYSDT_BolValue *value, char *buffer, u32 *length)
{
    return print_to_buffer<mvpn::prefix.limit>(
        value, buffer, length, [](const SYSDT_BolValue &key, Writer &out) { return mvpn::print_value(key, 0, out); });
}

BGPDT_FORMAT_OUT(SYSDT_NGPrefixFormatOut, mvpn::prefix)
