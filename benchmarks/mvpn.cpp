// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Multicast-VPN route keys, every sub-kind.
#include "as_number.hpp"

namespace bgpdt::bench {
namespace {

/// An AS number first or not, and how many addresses.
struct Layout {
    u32 sub_kind;
    const char *row;
    bool as;
    u32 addresses;
};
constexpr Layout layouts[] = {
    {SYSDT_BOL_NG_TYPE_2, "NG_TYPE_2", true, 0},      {SYSDT_BOL_NG_TYPE_4_2, "NG_TYPE_4_2", true, 1},
    {SYSDT_BOL_NG_TYPE_6, "NG_TYPE_6", true, 2},      {SYSDT_BOL_NG_TYPE_4_1, "NG_TYPE_4-1", false, 2},
    {SYSDT_BOL_NG_TYPE_5, "NG_TYPE_5", false, 2},     {SYSDT_BOL_NG_TYPE_3, "NG_TYPE_3", false, 3},
    {SYSDT_BOL_NG_TYPE_4_3, "NG_TYPE_4-3", false, 4},
};

constexpr Layout layout_of(u32 sub_kind)
{
    for (const Layout &layout : layouts)
        if (layout.sub_kind == sub_kind)
            return layout;
    return {};
}

constexpr auto by_sub_kind = [] {
    std::array<Layout, SYSDT_BOL_KINDS> table{};
    for (const Layout &layout : layouts)
        table[layout.sub_kind] = layout;
    return table;
}();

/// By the number of sections, with and without an AS number; two addresses are told apart by the second.
constexpr u32 with_as[] = {SYSDT_BOL_NG_TYPE_2, SYSDT_BOL_NG_TYPE_4_2, SYSDT_BOL_NG_TYPE_6};
constexpr u32 addresses_alone[] = {0, 0, SYSDT_BOL_NG_TYPE_4_1, SYSDT_BOL_NG_TYPE_3, SYSDT_BOL_NG_TYPE_4_3};

bool is_multicast(const SYSDT_EvpnAddress &address)
{
    return address.family == 0 ? address.ipv4 >> 28 == 0xE : address.ipv6[0] == 0xFF;
}

// ------------------------------------------------------------------------------------------------ floor

/// Whether one to three digits and a dot stand here.
bool is_ipv4(const char *at)
{
    const auto is_digit = [](char character) { return static_cast<u32>(static_cast<u8>(character)) - '0' < 10; };
    return is_digit(at[0]) &&
           (at[1] == '.' || (is_digit(at[1]) && (at[2] == '.' || (is_digit(at[2]) && at[3] == '.'))));
}

bool ipv4_field(const char *&at, SYSDT_EvpnAddress &out)
{
    u32 number;
    if (!ipv4(at, number))
        return false;
    out.ipv4 = number;
    return true;
}

bool either(const char *&at, SYSDT_EvpnAddress &out)
{
    if (is_ipv4(at))
        return ipv4_field(at, out);
    out.family = 1;
    return ipv6(at, out.ipv6);
}

/// An AS number, or an address in its place.
bool first_section(const char *&at, u8 *key, bool &is_as)
{
    const char *const start = at;
    SYSDT_AsNum as;
    is_as = floor_as(at, as) && (*at == '\0' || *at == '-' || (*at == ':' && is_ipv4(at + 1)));
    if (is_as) {
        std::memcpy(key, &as, sizeof as);
        return true;
    }
    at = start;
    return either(at, *reinterpret_cast<SYSDT_EvpnAddress *>(key));
}

bool floor_parse(char *text, SYSDT_BolValue &out)
{
    const char *at = SYSDT_BTrim(text);
    bool as;
    if (!first_section(at, out.key, as))
        return false;
    const char separator = *at;
    if (separator != '\0' && separator != ':' && separator != '-')
        return false;
    u8 *next = out.key + (as ? sizeof(SYSDT_AsNum) : sizeof(SYSDT_EvpnAddress));
    u32 addresses = as ? 0 : 1;
    u32 ipv6_sections = 0;
    while (*at != '\0') {
        auto &field = *reinterpret_cast<SYSDT_EvpnAddress *>(next);
        if (*at++ != separator || ++addresses > 4 || !(separator == ':' ? ipv4_field : either)(at, field))
            return false;
        ipv6_sections += field.family;
        next += sizeof field;
    }
    if (as && (addresses > 2 || (separator == '-' && ipv6_sections != addresses)))
        return false;
    u32 sub_kind = as ? with_as[addresses] : addresses_alone[addresses];
    if (sub_kind == SYSDT_BOL_NG_TYPE_4_1 &&
        is_multicast(*reinterpret_cast<SYSDT_EvpnAddress *>(out.key + sizeof(SYSDT_EvpnAddress))))
        sub_kind = SYSDT_BOL_NG_TYPE_5;
    out.subKind = sub_kind;
    return true;
}

char *floor_print(const SYSDT_BolValue &value, char *out)
{
    const Layout &layout = by_sub_kind[value.subKind];
    const u8 *at = value.key;
    u8 families = 0;
    const auto *address = reinterpret_cast<const SYSDT_EvpnAddress *>(at + (layout.as ? sizeof(SYSDT_AsNum) : 0));
    for (u32 i = 0; i < layout.addresses; ++i)
        families |= address[i].family;
    const char separator = families == 0 ? ':' : '-';
    if (layout.as) {
        const auto &as = *reinterpret_cast<const SYSDT_AsNum *>(at);
        out = put_as(out, as.asNumValue, as.asNumValue > 65535 ? as.asType : 0);
    }
    for (u32 i = 0; i < layout.addresses; ++i) {
        if (layout.as || i != 0)
            out = put(out, separator);
        out = address[i].family == 0 ? put_ipv4(out, address[i].ipv4) : put_ipv6(out, address[i].ipv6);
    }
    return out;
}

// ------------------------------------------------------------------------------------------------ plain port

bool port_address(const char *text, SYSDT_EvpnAddress &out)
{
    if (std::strchr(text, ':') != nullptr) {
        out.family = 1;
        return SYSDT_Str2Ipv6(text, out.ipv6) == SYSDT_OK;
    }
    u32 number = 0;
    if (SYSDT_Str2Ipv4(text, &number) != SYSDT_OK)
        return false;
    out.ipv4 = number;
    return true;
}

bool port_parse(char *text, SYSDT_BolValue &out)
{
    text = SYSDT_BTrim(text);
    const bool hyphens = std::strstr(text, "-") != nullptr;
    const std::size_t length = std::strlen(text);
    if (length < 1 || length > (hyphens ? 159 : 63) || NCF_IsSpaceInString(text) != 0)
        return false;
    char copy[160];
    std::memcpy(copy, text, length + 1);
    char *sections[4] = {copy};
    u32 count = 1;
    int dots = 0;
    for (char *at = copy; *at != '\0'; ++at) {
        if (*at == '.') {
            ++dots;
        } else if (*at == (hyphens ? '-' : ':')) {
            if (count == 4)
                return false;
            *at = '\0';
            sections[count++] = at + 1;
        } else if (std::strchr(hyphens ? "0123456789abcdefABCDEF:" : "0123456789", *at) == nullptr) {
            return false;
        }
    }
    bool as = false;
    u32 kind = 0;
    if (hyphens) {
        const bool ipv6_first = std::strchr(sections[0], ':') != nullptr;
        if (count == 2) {
            u8 second[16];
            if (SYSDT_Str2Ipv6(sections[1], second) != SYSDT_OK)
                return false;
            as = !ipv6_first && second[0] != 0xFF;
            kind = second[0] == 0xFF ? SYSDT_BOL_NG_TYPE_5 : as ? SYSDT_BOL_NG_TYPE_4_2 : SYSDT_BOL_NG_TYPE_4_1;
        } else if (count == 3) {
            as = !ipv6_first && dots < 3;
            kind = as ? SYSDT_BOL_NG_TYPE_6 : SYSDT_BOL_NG_TYPE_3;
        } else {
            if (dots != 0 && dots != 6)
                return false;
            kind = SYSDT_BOL_NG_TYPE_4_3;
        }
    } else {
        as = count != 4 && dots != static_cast<int>(3 * count);
        kind = as ? with_as[count - 1] : addresses_alone[count];
    }
    SYSDT_AsNum number{};
    if (as) {
        if (!port_parse_as(sections[0], number))
            return false;
        std::memcpy(out.key, &number, sizeof number);
    }
    u8 *at = out.key + (as ? sizeof number : 0);
    for (u32 i = as ? 1 : 0; i < count; ++i, at += sizeof(SYSDT_EvpnAddress)) {
        SYSDT_EvpnAddress address{};
        if (!port_address(sections[i], address))
            return false;
        std::memcpy(at, &address, sizeof address);
        if (kind == SYSDT_BOL_NG_TYPE_4_1 && i == 1 && is_multicast(address))
            kind = SYSDT_BOL_NG_TYPE_5;
    }
    out.subKind = kind;
    return true;
}

int port_print(const SYSDT_BolValue &value, char *out, std::size_t size)
{
    const Layout layout = layout_of(value.subKind);
    char sections[5][46];
    u32 count = 0;
    bool hyphens = false;
    const u8 *at = value.key;
    if (layout.as) {
        SYSDT_AsNum as;
        std::memcpy(&as, at, sizeof as);
        at += sizeof as;
        port_as(as.asNumValue, as.asNumValue > 65535 ? as.asType : 0, sections[count++], sizeof sections[0]);
    }
    for (u32 i = 0; i < layout.addresses; ++i, at += sizeof(SYSDT_EvpnAddress)) {
        SYSDT_EvpnAddress address;
        std::memcpy(&address, at, sizeof address);
        const u32 a = address.ipv4;
        if (address.family == 0) {
            (void)std::snprintf(sections[count++], sizeof sections[0], "%d.%d.%d.%d", a >> 24, a >> 16 & 0xFF,
                                a >> 8 & 0xFF, a & 0xFF);
        } else {
            inet_ntop6(address.ipv6, sections[count++], sizeof sections[0]);
            hyphens = true;
        }
    }
    switch (count) {
    case 1: return std::snprintf(out, size, "%s", sections[0]);
    case 2: return std::snprintf(out, size, hyphens ? "%s-%s" : "%s:%s", sections[0], sections[1]);
    case 3: return std::snprintf(out, size, hyphens ? "%s-%s-%s" : "%s:%s:%s", sections[0], sections[1], sections[2]);
    default:
        return std::snprintf(out, size, hyphens ? "%s-%s-%s-%s" : "%s:%s:%s:%s", sections[0], sections[1], sections[2],
                             sections[3]);
    }
}

// ------------------------------------------------------------------------------------------------ corpora

std::string as_number(Random &random)
{
    return random.percent(20) ? random.as_dotted() : random.percent(50) ? random.as2() : random.as4();
}

std::string text_of(const Layout &layout, bool v6, Random &random)
{
    const char *const separator = v6 ? "-" : ":";
    const bool has_group = layout.sub_kind != SYSDT_BOL_NG_TYPE_4_1 && layout.sub_kind != SYSDT_BOL_NG_TYPE_4_2;
    std::string text = layout.as ? as_number(random) : "";
    for (u32 i = 0; i < layout.addresses; ++i) {
        const bool group = has_group && i == 1;
        text += (text.empty() ? "" : separator) + (v6      ? random.ipv6(group ? "ff3e:30" : "2001:db8")
                                                   : group ? random.ipv4(224, 239)
                                                           : random.ipv4());
    }
    return text;
}

} // namespace

void add_mvpn(Kinds &kinds)
{
    constexpr Converter floor{format_in<floor_parse, SYSDT_BolValue, SYSDT_TYPE_BOLPREFIX>,
                              floor_out<floor_print, SYSDT_BolValue>};
    constexpr Converter port{format_in<port_parse, SYSDT_BolValue, SYSDT_TYPE_BOLPREFIX>,
                             port_out<port_print, SYSDT_BolValue>};
    for (const Layout &layout : layouts) {
        const std::string name = "MVPN " + std::string(layout.row + 8);
        const std::string subject = "BOLPREFIX/" + std::string(layout.row);
        for (const bool v6 : {false, true}) {
            if (layout.addresses == 0 && v6)
                continue;
            kinds.push_back({name + (layout.addresses == 0 ? ""
                                     : v6                  ? " IPv6"
                                                           : " IPv4"),
                             subject, [layout, v6](Random &random) { return text_of(layout, v6, random); }, floor, port,
                             Shape::structured});
        }
    }
}

} // namespace bgpdt::bench
