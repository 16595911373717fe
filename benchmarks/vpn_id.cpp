// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// VRFRD, VRFRT, SOO, RTPRD, VPNID, VRFRTV6, BOLRD, and the extended route target among the route keys.
#include "octets.hpp"

namespace bgpdt::bench {
namespace {

template <Codes codes>
bool floor_parse(char *text, SYSDT_Octets &out)
{
    return floor_octets<codes, false>(text, out);
}

template <Codes codes>
char *floor_print(const SYSDT_Octets &value, char *out)
{
    const u8 *const at = value.octets;
    if (get<u64>(at) == 0)
        return out;
    switch (const u16 code = get<u16>(at); value.form) {
    case VRF_RD_FORM_AS2: return code == codes.as2 ? put_2_4(out, at) : out;
    case VRF_RD_FORM_AS4: return code == codes.as4 ? put_4_2(out, at) : out;
    case VRF_RD_FORM_AS4DOT: return code == codes.as4 ? put_2_2_2(out, at) : out;
    default: return code == codes.ipv4 ? put_ipv4_2(out, at) : out;
    }
}

template <Codes codes>
bool port_parse(char *text, SYSDT_Octets &out)
{
    return port_octets(text, codes, false, out);
}

template <Codes codes>
int port_print(const SYSDT_Octets &value, char *out, std::size_t size)
{
    const u8 *const b = value.octets;
    bool zero = true;
    for (int i = 0; i < 8; ++i)
        zero = zero && b[i] == 0;
    if (zero)
        return 0;
    const unsigned n1 = static_cast<unsigned>(b[2] << 8 | b[3]);
    const unsigned n2 = static_cast<unsigned>(b[4] << 8 | b[5]);
    const unsigned n3 = static_cast<unsigned>(b[6] << 8 | b[7]);
    const int code = b[0] << 8 | b[1];
    if (code == codes.ipv4)
        return std::snprintf(out, size, "%u.%u.%u.%u:%u", b[2], b[3], b[4], b[5], n3);
    if (code != codes.as2 && code != codes.as4)
        return -1;
    switch (value.form) {
    case VRF_RD_FORM_AS4DOT: return std::snprintf(out, size, "%u.%u:%u", n1, n2, n3);
    case VRF_RD_FORM_AS4: return std::snprintf(out, size, "%u:%u", n1 << 16 | n2, n3);
    case VRF_RD_FORM_AS2: return code == codes.as2 ? std::snprintf(out, size, "%u:%u", n1, n2 << 16 | n3) : 0;
    default: return 0;
    }
}

template <Codes codes>
void add(Kinds &kinds, const std::string &name, const std::string &subject)
{
    constexpr u16 kind = codes.ipv4 == 1 ? SYSDT_TYPE_VRFRD : codes.ipv4 == 0x0102 ? SYSDT_TYPE_VRFRT : SYSDT_TYPE_SOO;
    for (const auto &[form, text] : octet_forms) {
        kinds.push_back(
            {name + ' ' + form,
             subject,
             text,
             {format_in<floor_parse<codes>, SYSDT_Octets, kind>, floor_out<floor_print<codes>, SYSDT_Octets>},
             {format_in<port_parse<codes>, SYSDT_Octets, kind>, port_out<port_print<codes>, SYSDT_Octets>}});
    }
}

// ------------------------------------------------------------------------------------------------ behind a sub-kind

bool floor_parse_bol_rd(char *text, SYSDT_BolRd &out) { return floor_parse<rd_codes>(text, out.rd); }
char *floor_print_bol_rd(const SYSDT_BolRd &value, char *out) { return floor_print<rd_codes>(value.rd, out); }
bool port_parse_bol_rd(char *text, SYSDT_BolRd &out) { return port_parse<rd_codes>(text, out.rd); }
int port_print_bol_rd(const SYSDT_BolRd &value, char *out, std::size_t size)
{
    return port_print<rd_codes>(value.rd, out, size);
}

bool is_written_octets(const char *text) { return text[4] == '-'; }

bool floor_parse_rt_ext(char *text, SYSDT_BolRouteTarget &out)
{
    const char *at = SYSDT_BTrim(text);
    out.subKind = SYSDT_BOL_VRFRTEXT;
    u32 form = VRF_RD_FORM_AS4DOT;
    if (std::strlen(at) == 14 && is_written_octets(at)) {
        put(out.rt.octets, u16{0x0602});
        out.rt.form = form;
        return mac(at, out.rt.octets + 2) && *at == '\0';
    }
    if (!floor_octets_at<target_codes, true>(at, out.rt.octets, form))
        return false;
    out.rt.form = form;
    return true;
}

char *floor_print_rt_ext(const SYSDT_BolRouteTarget &value, char *out)
{
    return get<u16>(value.rt.octets) == 0x0602 ? put_mac(out, value.rt.octets + 2)
                                               : floor_print<target_codes>(value.rt, out);
}

bool port_parse_rt_ext(char *text, SYSDT_BolRouteTarget &out)
{
    text = SYSDT_BTrim(text);
    int dots = 0;
    int colons = 0;
    int hyphens = 0;
    const std::size_t length = std::strlen(text);
    if (length < 1 || length > 100 || NCF_IsSpaceInString(text) != 0)
        return false;
    for (const char *at = text; *at != '\0'; ++at) {
        dots += *at == '.';
        colons += *at == ':';
        hyphens += *at == '-';
        if (*at != '.' && *at != ':' && *at != '-' && std::isxdigit(static_cast<unsigned char>(*at)) == 0)
            return false;
    }
    out.subKind = SYSDT_BOL_VRFRTEXT;
    if (dots + colons != 0) {
        SYSDT_Octets rt{};
        const bool parsed = port_octets(text, target_codes, true, rt);
        out.rt = rt;
        return parsed;
    }
    unsigned short b[6];
    if (hyphens != 2 ||
        std::sscanf(text, "%02hx%02hx-%02hx%02hx-%02hx%02hx", &b[0], &b[1], &b[2], &b[3], &b[4], &b[5]) != 6)
        return false;
    out.rt.octets[0] = 6;
    out.rt.octets[1] = 2;
    for (int i = 0; i < 6; ++i)
        out.rt.octets[2 + i] = static_cast<u8>(b[i]);
    out.rt.form = VRF_RD_FORM_AS4DOT;
    return true;
}

int port_print_rt_ext(const SYSDT_BolRouteTarget &value, char *out, std::size_t size)
{
    const u8 *const b = value.rt.octets;
    return b[0] == 6 && b[1] == 2
               ? std::snprintf(out, size, "%02hx%02hx-%02hx%02hx-%02hx%02hx", b[2], b[3], b[4], b[5], b[6], b[7])
               : port_print<target_codes>(value.rt, out, size);
}

// ------------------------------------------------------------------------------------------------ RTP

bool floor_parse_rtp(char *text, SYSDT_RtpRd &out)
{
    const char *at = SYSDT_BTrim(text);
    u32 first;
    u32 second;
    u32 last = 0;
    if (!number(at, first))
        return false;
    const auto assigned = [&](u32 max) {
        out.star = *at == '*';
        return out.star != 0 ? *++at == '\0' : last_number(at, last, max);
    };
    if (*at == ':') {
        ++at;
        const bool small = first <= 65535;
        if (!assigned(small ? UINT32_MAX : 65535))
            return false;
        if (small) {
            put(out.octets + 2, static_cast<u16>(first));
            put(out.octets + 4, last);
            out.form = RTP_RD_FORM_AS2;
        } else {
            out.octets[1] = 2;
            put(out.octets + 2, first);
            put(out.octets + 6, static_cast<u16>(last));
            out.form = RTP_RD_FORM_AS4;
        }
        return true;
    }
    if (first > 65535 || !skip(at, '.') || !number(at, second, 65535))
        return false;
    out.form = RTP_RD_FORM_AS4DOT;
    if (*at == '.') {
        u32 third;
        u32 fourth;
        ++at;
        if (first > 255 || second > 255 || !octet(at, third) || !skip(at, '.') || !octet(at, fourth))
            return false;
        first = first << 8 | second;
        second = third << 8 | fourth;
        out.form = RTP_RD_FORM_IPV4;
    }
    if (!skip(at, ':') || !assigned(65535))
        return false;
    out.octets[1] = out.form == RTP_RD_FORM_IPV4 ? 1 : 2;
    put(out.octets + 2, first << 16 | second);
    put(out.octets + 6, static_cast<u16>(last));
    return true;
}

char *floor_print_rtp(const SYSDT_RtpRd &value, char *out)
{
    const u8 *const at = value.octets;
    const u16 type = get<u16>(at);
    u32 last = get<u16>(at + 6);
    switch (value.form) {
    case RTP_RD_FORM_IPV4:
        if (type != 1)
            return out;
        out = put_ipv4(out, get<u32>(at + 2));
        break;
    case RTP_RD_FORM_AS2:
        if (type != 0)
            return out;
        out = put(out, static_cast<u32>(get<u16>(at + 2)));
        last = get<u32>(at + 4);
        break;
    case RTP_RD_FORM_AS4:
        if (type != 2)
            return out;
        out = put(out, get<u32>(at + 2));
        break;
    default:
        if (type != 2)
            return out;
        out = put(put(out, static_cast<u32>(get<u16>(at + 2))), '.');
        out = put(out, static_cast<u32>(get<u16>(at + 4)));
    }
    out = put(out, ':');
    return value.star != 0 ? put(out, '*') : put(out, last);
}

bool port_parse_rtp(char *text, SYSDT_RtpRd &out)
{
    text = port::look(text, 1, 21);
    if (text == nullptr)
        return false;
    int dots = 0;
    int colons = 0;
    bool star = false;
    for (const char *at = text; *at != '\0'; ++at) {
        dots += *at == '.';
        colons += *at == ':';
        star = star || *at == '*';
        if (std::strchr("0123456789.:*", *at) == nullptr)
            return false;
    }
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    unsigned n = 0;
    char last = 0;
    unsigned long long admin = 0;
    unsigned long long number = 0;
    const auto store = [&](u16 type, u32 high, u32 low, u8 form) {
        const u32 words[] = {type, high >> 16, high, low};
        for (int i = 0; i < 4; ++i) {
            out.octets[2 * i] = static_cast<u8>(words[i] >> 8);
            out.octets[2 * i + 1] = static_cast<u8>(words[i]);
        }
        out.form = form;
        out.star = star ? 1 : 0;
        return true;
    };
    if (colons != 1)
        return false;
    if (dots == 3) {
        const int items = star ? std::sscanf(text, "%u.%u.%u.%u:%c", &a, &b, &c, &d, &last)
                               : std::sscanf(text, "%u.%u.%u.%u:%u", &a, &b, &c, &d, &n);
        return items == 5 && a < 256 && b < 256 && c < 256 && d < 256 && n < 65536 &&
               store(1, a << 24 | b << 16 | c << 8 | d, n, RTP_RD_FORM_IPV4);
    }
    if (dots == 1) {
        const int items =
            star ? std::sscanf(text, "%u.%u:%c", &a, &b, &last) : std::sscanf(text, "%u.%u:%u", &a, &b, &n);
        return items == 3 && a < 65536 && b < 65536 && n < 65536 && store(2, a << 16 | b, n, RTP_RD_FORM_AS4DOT);
    }
    const int items =
        star ? std::sscanf(text, "%llu:%c", &admin, &last) : std::sscanf(text, "%llu:%llu", &admin, &number);
    if (dots != 0 || items != 2 || admin > UINT32_MAX || number > (admin > 65535 ? 65535 : UINT32_MAX))
        return false;
    const u32 low = static_cast<u32>(number);
    return admin > 65535 ? store(2, static_cast<u32>(admin), low, RTP_RD_FORM_AS4)
                         : store(0, static_cast<u32>(admin) << 16 | low >> 16, low, RTP_RD_FORM_AS2);
}

int port_print_rtp(const SYSDT_RtpRd &value, char *out, std::size_t size)
{
    const u8 *const b = value.octets;
    const unsigned n1 = static_cast<unsigned>(b[2] << 8 | b[3]);
    const unsigned n2 = static_cast<unsigned>(b[4] << 8 | b[5]);
    const unsigned n3 = static_cast<unsigned>(b[6] << 8 | b[7]);
    const bool star = value.star == 1;
    switch ((b[0] << 8 | b[1]) << 8 | value.form) {
    case 0x101:
        return star ? std::snprintf(out, size, "%u.%u.%u.%u:*", b[2], b[3], b[4], b[5])
                    : std::snprintf(out, size, "%u.%u.%u.%u:%u", b[2], b[3], b[4], b[5], n3);
    case 0x204:
        return star ? std::snprintf(out, size, "%u.%u:*", n1, n2) : std::snprintf(out, size, "%u.%u:%u", n1, n2, n3);
    case 0x203:
        return star ? std::snprintf(out, size, "%u:*", n1 << 16 | n2)
                    : std::snprintf(out, size, "%u:%u", n1 << 16 | n2, n3);
    case 0x002:
        return star ? std::snprintf(out, size, "%u:*", n1) : std::snprintf(out, size, "%u:%u", n1, n2 << 16 | n3);
    default: return 0;
    }
}

// ------------------------------------------------------------------------------------------------ VPN id, IPv6 target

/// No capital letters.
bool small_hex(const char *&at, u32 &out, u32 digits)
{
    const char *const start = at;
    if (hex(at, out, digits) == 0)
        return false;
    for (const char *digit = start; digit != at; ++digit)
        if (*digit >= 'A' && *digit <= 'F')
            return false;
    return true;
}

bool floor_parse_vpn_id(char *text, SYSDT_VpnId &out)
{
    const char *at = SYSDT_BTrim(text);
    u32 oui;
    u32 index;
    if (!small_hex(at, oui, 6) || !skip(at, ':') || !small_hex(at, index, 8) || *at != '\0')
        return false;
    out = {oui, index};
    return (oui | index) != 0;
}

char *floor_print_vpn_id(const SYSDT_VpnId &value, char *out)
{
    return put_hex(put(put_hex(out, value.oui), ':'), value.index);
}

bool port_parse_vpn_id(char *text, SYSDT_VpnId &out)
{
    text = port::look(text, 1, 21);
    if (text == nullptr || std::strspn(text, "0123456789abcdef:") != std::strlen(text) || port::count(text).colons != 1)
        return false;
    unsigned long long oui = 0;
    unsigned long long index = 0;
    if (std::sscanf(text, "%llx:%llx", &oui, &index) != 2 || oui > 0xFFFFFF || index > UINT32_MAX ||
        (oui == 0 && index == 0))
        return false;
    out = {static_cast<u32>(oui), static_cast<u32>(index)};
    return true;
}

int port_print_vpn_id(const SYSDT_VpnId &value, char *out, std::size_t size)
{
    return std::snprintf(out, size, "%x:%x", value.oui, value.index);
}

bool floor_parse_rt_v6(char *text, SYSDT_VrfRtV6 &out)
{
    const char *at = SYSDT_BTrim(text);
    if (!ipv6(at, out.octets + 2) || *at != '.' || (at[1] != '0' && at[1] != '1') || at[2] != '\0')
        return false;
    out.octets[1] = 0x0C;
    out.octets[19] = static_cast<u8>(at[1] - '0');
    return true;
}

char *floor_print_rt_v6(const SYSDT_VrfRtV6 &value, char *out)
{
    return put(put(put_ipv6(out, value.octets + 2), '.'), static_cast<u32>(get<u16>(value.octets + 18)));
}

bool port_parse_rt_v6(char *text, SYSDT_VrfRtV6 &out)
{
    text = port::look(text, 1, 47);
    const char *const dot = text == nullptr ? nullptr : std::strrchr(text, '.');
    unsigned number = 0;
    if (dot == nullptr || std::strlen(dot) != 2 || std::sscanf(dot + 1, "%u", &number) != 1 || number > 1)
        return false;
    char address[64];
    std::memcpy(address, text, static_cast<std::size_t>(dot - text));
    address[dot - text] = '\0';
    out.octets[1] = 0x0C;
    out.octets[19] = static_cast<u8>(number);
    return SMP_InetAToN(10, address, out.octets + 2) == SYSDT_OK;
}

int port_print_rt_v6(const SYSDT_VrfRtV6 &value, char *out, std::size_t size)
{
    char address[46];
    inet_ntop6(value.octets + 2, address, sizeof address);
    return std::snprintf(out, size, "%s.%u", address, static_cast<unsigned>(value.octets[18] << 8 | value.octets[19]));
}

} // namespace

void add_vpn_identifiers(Kinds &kinds)
{
    add<rd_codes>(kinds, "RD", "VRFRD");
    add<target_codes>(kinds, "RT", "VRFRT");
    add<soo_codes>(kinds, "SoO", "SOO");
    for (const auto &[form, text] : octet_forms) {
        kinds.push_back(
            {std::string("BOLRD ") + form,
             "BOLRD/RT",
             text,
             {format_in<floor_parse_bol_rd, SYSDT_BolRd, SYSDT_TYPE_BOLRD>, floor_out<floor_print_bol_rd, SYSDT_BolRd>},
             {format_in<port_parse_bol_rd, SYSDT_BolRd, SYSDT_TYPE_BOLRD>, port_out<port_print_bol_rd, SYSDT_BolRd>}});
    }
    constexpr Converter floor_rtp{format_in<floor_parse_rtp, SYSDT_RtpRd, SYSDT_TYPE_RTPRD>,
                                  floor_out<floor_print_rtp, SYSDT_RtpRd>};
    constexpr Converter port_rtp{format_in<port_parse_rtp, SYSDT_RtpRd, SYSDT_TYPE_RTPRD>,
                                 port_out<port_print_rtp, SYSDT_RtpRd>};
    for (const auto &[form, text] : octet_forms)
        kinds.push_back({std::string("RTP RD ") + form, "RTPRD", text, floor_rtp, port_rtp});
    kinds.push_back({"RTP RD wildcard", "RTPRD",
                     [](Random &random) { return (random.percent(50) ? random.ipv4() : random.as4()) + ":*"; },
                     floor_rtp, port_rtp});
    kinds.push_back(
        {"VPN id",
         "VPNID",
         [](Random &random) { return "1" + random.hex(5) + ":1" + random.hex(static_cast<int>(random.below(8))); },
         {format_in<floor_parse_vpn_id, SYSDT_VpnId, SYSDT_TYPE_VPNID, true>,
          floor_out<floor_print_vpn_id, SYSDT_VpnId, 257, true>},
         {format_in<port_parse_vpn_id, SYSDT_VpnId, SYSDT_TYPE_VPNID, true>,
          port_out<port_print_vpn_id, SYSDT_VpnId, 257, true>}});
    kinds.push_back(
        {"RT IPv6",
         "VRFRTV6",
         [](Random &random) { return random.ipv6() + '.' + random.decimal(0, 1); },
         {format_in<floor_parse_rt_v6, SYSDT_VrfRtV6, SYSDT_TYPE_VRFRTV6>, floor_out<floor_print_rt_v6, SYSDT_VrfRtV6>},
         {format_in<port_parse_rt_v6, SYSDT_VrfRtV6, SYSDT_TYPE_VRFRTV6>, port_out<port_print_rt_v6, SYSDT_VrfRtV6>}});

    constexpr Converter floor_ext{format_in<floor_parse_rt_ext, SYSDT_BolRouteTarget, SYSDT_TYPE_BOLPREFIX>,
                                  floor_out<floor_print_rt_ext, SYSDT_BolRouteTarget>};
    constexpr Converter port_ext{format_in<port_parse_rt_ext, SYSDT_BolRouteTarget, SYSDT_TYPE_BOLPREFIX>,
                                 port_out<port_print_rt_ext, SYSDT_BolRouteTarget>};
    for (const auto &[form, text] : octet_forms)
        kinds.push_back({std::string("ext. RT ") + form, "BOLPREFIX/VRFRTEXT", text, floor_ext, port_ext});
    kinds.push_back({"ext. RT octets", "BOLPREFIX/VRFRTEXT", &Random::mac, floor_ext, port_ext});
}

} // namespace bgpdt::bench
