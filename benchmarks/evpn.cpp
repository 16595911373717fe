// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// EVPN route keys of the route types 1 to 8.
#include "floor.hpp"
#include "port.hpp"

namespace bgpdt::bench {
namespace {

// ------------------------------------------------------------------------------------------------ floor

/// An address, in brackets if it is IPv6.
bool address(const char *&at, SYSDT_EvpnAddress &out)
{
    if (*at == '[') {
        ++at;
        out.family = 1;
        return ipv6(at, out.ipv6) && skip(at, ']');
    }
    u32 number;
    if (!ipv4(at, number))
        return false;
    out.ipv4 = number;
    return true;
}

/// A length in bits and the address behind it.
bool sized_address(const char *&at, SYSDT_EvpnSizedAddress &out, u32 least = 0, u32 most = 255)
{
    u32 bits;
    if (!number_and(at, bits, ':', most) || bits < least || !address(at, out.address))
        return false;
    out.length = static_cast<u8>(bits);
    return out.address.family == 0 || bits <= 128;
}

bool ends(const char *at) { return *at == '\0'; }

bool membership(const char *&at, SYSDT_EvpnMembership &out)
{
    u32 tag;
    if (!number_and(at, tag, ':') || !sized_address(at, out.source, 0, 128) || !skip(at, ':') ||
        !sized_address(at, out.group, 1, 128) || !skip(at, ':') || !sized_address(at, out.originator, 1, 128))
        return false;
    out.tag = tag;
    return true;
}

/// What begins with an Ethernet segment identifier.
bool with_segment(const char *at, SYSDT_EvpnKey &key)
{
    u8 segment[10];
    u32 number;
    if (!esi(at, segment, true))
        return false;
    std::memcpy(key.bytes, segment, sizeof segment);
    const u64 front = get<u64>(segment);
    const u16 back = get<u16>(segment + 8);
    const bool ones = front == UINT64_MAX && back == UINT16_MAX;
    const bool odd = ones || (front == 0 && back == 0);
    if (ends(at)) {
        key.routeType = SYSDT_EVPN_SEGMENT;
        return !odd;
    }
    const char *behind = at + 1;
    if (*at != ':' || ones || !bench::number(behind, number))
        return false;
    if (ends(behind)) {
        key.routeType = SYSDT_EVPN_AUTO_DISCOVERY;
        key.autoDiscovery.tag = number;
        return true;
    }
    ++at;
    if (odd || *behind != ':')
        return false;
    const char *const address_at = behind + 1;
    const char *rest = at;
    if (*address_at == '[' || std::strchr(address_at, ':') == nullptr) {
        key.routeType = SYSDT_EVPN_SEGMENT;
        return sized_address(rest, key.segment.ip) && ends(rest);
    }
    if (!membership(rest, key.sync.membership))
        return false;
    key.routeType = SYSDT_EVPN_JOIN;
    if (ends(rest))
        return true;
    key.routeType = SYSDT_EVPN_LEAVE;
    u32 sequence;
    if (!skip(rest, ':') || !last_number(rest, sequence))
        return false;
    key.sync.sequence = sequence;
    return true;
}

/// What begins with an Ethernet tag.
bool with_tag(const char *at, SYSDT_EvpnKey &key)
{
    u32 tag;
    u32 bits;
    if (!number_and(at, tag, ':'))
        return false;
    key.macIp.tag = tag; // at the same place in all of these route types
    if (*at == '[') {
        key.routeType = SYSDT_EVPN_IP_PREFIX;
        if (!address(at, key.prefix.ip.address) || *at++ == '\0' || !last_number(at, bits, 255))
            return false;
        key.prefix.ip.length = static_cast<u8>(bits);
        return true;
    }
    const char *const field = at;
    if (!number(at, bits, 255))
        return false;
    if (*at == '.') {
        at = field;
        key.routeType = SYSDT_EVPN_IP_PREFIX;
        if (!address(at, key.prefix.ip.address) || !skip(at, ':') || !last_number(at, bits, 255))
            return false;
        key.prefix.ip.length = static_cast<u8>(bits);
        return true;
    }
    if (!skip(at, ':'))
        return false;
    const char *const second = at;
    if (*at != '[' && at[std::strcspn(at, "-.")] == '-') {
        key.routeType = SYSDT_EVPN_MAC_IP;
        key.macIp.macLength = static_cast<u8>(bits);
        return mac(at, key.macIp.mac) && skip(at, ':') && sized_address(at, key.macIp.ip) && ends(at);
    }
    at = second;
    if (!address(at, key.inclusive.ip.address))
        return false;
    key.inclusive.ip.length = static_cast<u8>(bits);
    if (ends(at)) {
        key.routeType = SYSDT_EVPN_INCLUSIVE;
        return key.inclusive.ip.address.family == 0 || bits <= 128;
    }
    key.routeType = SYSDT_EVPN_SELECTIVE;
    return bits <= 128 && skip(at, ':') && sized_address(at, key.selective.group, 1, 128) && skip(at, ':') &&
           sized_address(at, key.selective.originator, 1, 128) && ends(at);
}

bool floor_parse(char *text, SYSDT_BolEvpn &out)
{
    const char *const at = trimmed(text);
    out.subKind = SYSDT_BOL_EVN;
    return at != nullptr && (hex_value(*at) < 16 && hex_value(at[1]) < 16 && hex_value(at[2]) < 16 &&
                                     hex_value(at[3]) < 16 && at[4] == '.'
                                 ? with_segment(at, out.key)
                                 : with_tag(at, out.key));
}

char *put_address(char *out, const SYSDT_EvpnAddress &address)
{
    return address.family == 0 ? put_ipv4(out, address.ipv4) : put(put_ipv6(put(out, '['), address.ipv6), ']');
}

char *put_sized(char *out, const SYSDT_EvpnSizedAddress &ip)
{
    return put_address(put(put_octet(put(out, ':'), ip.length), ':'), ip.address);
}

char *put_membership(char *out, const SYSDT_EvpnMembership &flow)
{
    return put_sized(put_sized(put_sized(put(out, flow.tag), flow.source), flow.group), flow.originator);
}

char *floor_print(const SYSDT_BolEvpn &value, char *out)
{
    const SYSDT_EvpnKey &key = value.key;
    switch (key.routeType) {
    case SYSDT_EVPN_AUTO_DISCOVERY: return put(put(put_esi(out, key.autoDiscovery.esi), ':'), key.autoDiscovery.tag);
    case SYSDT_EVPN_MAC_IP:
        out = put(put_octet(put(put(out, key.macIp.tag), ':'), key.macIp.macLength), ':');
        return put_sized(put_mac(out, key.macIp.mac), key.macIp.ip);
    case SYSDT_EVPN_INCLUSIVE: return put_sized(put(out, key.inclusive.tag), key.inclusive.ip);
    case SYSDT_EVPN_SEGMENT: return put_sized(put_esi(out, key.segment.esi), key.segment.ip);
    case SYSDT_EVPN_IP_PREFIX:
        out = put_address(put(put(out, key.prefix.tag), ':'), key.prefix.ip.address);
        return put_octet(put(out, ':'), key.prefix.ip.length);
    case SYSDT_EVPN_SELECTIVE: return put_membership(out, key.selective);
    case SYSDT_EVPN_JOIN: return put_membership(put(put_esi(out, key.sync.esi), ':'), key.sync.membership);
    case SYSDT_EVPN_LEAVE:
        out = put_membership(put(put_esi(out, key.sync.esi), ':'), key.sync.membership);
        return put(put(out, ':'), key.sync.sequence);
    default: return out;
    }
}

// ------------------------------------------------------------------------------------------------ plain port

struct Address {
    char text[50];
    unsigned bits;
};

bool read_address(const Address &from, SYSDT_EvpnSizedAddress &out, unsigned most = 255)
{
    if (from.bits > most)
        return false;
    out.length = static_cast<u8>(from.bits);
    if (std::strchr(from.text, ':') != nullptr) {
        out.address.family = 1;
        return from.bits <= 128 && SYSDT_Str2Ipv6(from.text, out.address.ipv6) == SYSDT_OK;
    }
    u32 number = 0;
    if (SYSDT_Str2Ipv4(from.text, &number) != SYSDT_OK)
        return false;
    out.address.ipv4 = number;
    return true;
}

bool read_esi(const char *text, u8 *out, bool zero_too = false)
{
    unsigned group[5];
    int end = 0;
    if (std::sscanf(text, "%4x.%4x.%4x.%4x.%4x%n", &group[0], &group[1], &group[2], &group[3], &group[4], &end) != 5 ||
        end != 24)
        return false;
    unsigned all = 0xFFFF;
    unsigned any = 0;
    for (int i = 0; i < 5; ++i) {
        out[2 * i] = static_cast<u8>(group[i] >> 8);
        out[2 * i + 1] = static_cast<u8>(group[i]);
        all &= group[i];
        any |= group[i];
    }
    return all != 0xFFFF && (zero_too || any != 0);
}

bool read_membership(const Address (&flow)[3], unsigned tag, SYSDT_EvpnMembership &out)
{
    out.tag = tag;
    return read_address(flow[0], out.source, 128) && flow[1].bits != 0 && read_address(flow[1], out.group, 128) &&
           flow[2].bits != 0 && read_address(flow[2], out.originator, 128);
}

bool done(const char *text, int end) { return end > 0 && text[end] == '\0'; }

/// What a text is told by.
struct Census {
    int dots = 0;
    int colons = 0;
    int outside = 0; ///< colons outside brackets
    int hyphens = 0;
    int brackets = 0;
    int dots_ahead = 0; ///< of the second colon

    explicit Census(const char *text)
    {
        bool inside = false;
        for (; *text != '\0'; ++text) {
            dots += *text == '.';
            dots_ahead += *text == '.' && colons < 2;
            colons += *text == ':';
            outside += *text == ':' && !inside;
            hyphens += *text == '-';
            brackets += *text == '[' || *text == ']';
            inside = *text == '[' || (inside && *text != ']');
        }
    }
};

#define HEX "0123456789abcdefABCDEF"

bool port_parse(char *text, SYSDT_BolEvpn &out)
{
    text = port::look(text, 1, 183);
    if (text == nullptr || std::strspn(text, HEX ".:-[]") != std::strlen(text))
        return false;
    out.subKind = SYSDT_BOL_EVN;
    const Census shape(text);
    SYSDT_EvpnKey &key = out.key;
    char segment[25];
    char mac[15];
    Address ip[3];
    unsigned tag = 0;
    unsigned bits = 0;
    unsigned sequence = 0;
    int end = 0;
    const auto scan = [&](int wanted, const char *format, auto... arguments) {
        end = 0;
        return std::sscanf(text, format, arguments..., &end) == wanted && done(text, end);
    };
    switch (shape.outside) {
    case 6:
        key.routeType = SYSDT_EVPN_SELECTIVE;
        return (scan(7, "%10u:%3u:%49[0-9.]:%3u:%49[0-9.]:%3u:%49[0-9.]%n", &tag, &ip[0].bits, ip[0].text, &ip[1].bits,
                     ip[1].text, &ip[2].bits, ip[2].text) ||
                scan(7, "%10u:%3u:%49[0-9.]:%3u:%49[0-9.]:%3u:[%49[" HEX ":.]]%n", &tag, &ip[0].bits, ip[0].text,
                     &ip[1].bits, ip[1].text, &ip[2].bits, ip[2].text)) &&
               read_membership(ip, tag, key.selective);
    case 7:
        key.routeType = SYSDT_EVPN_JOIN;
        return (scan(8, "%24[" HEX ".]:%10u:%3u:%49[0-9.]:%3u:%49[0-9.]:%3u:%49[0-9.]%n", segment, &tag, &ip[0].bits,
                     ip[0].text, &ip[1].bits, ip[1].text, &ip[2].bits, ip[2].text) ||
                scan(8, "%24[" HEX ".]:%10u:%3u:%49[0-9.]:%3u:%49[0-9.]:%3u:[%49[" HEX ":.]]%n", segment, &tag,
                     &ip[0].bits, ip[0].text, &ip[1].bits, ip[1].text, &ip[2].bits, ip[2].text)) &&
               read_esi(segment, key.sync.esi) && read_membership(ip, tag, key.sync.membership);
    case 8:
        key.routeType = SYSDT_EVPN_LEAVE;
        if (!scan(9, "%24[" HEX ".]:%10u:%3u:%49[0-9.]:%3u:%49[0-9.]:%3u:%49[0-9.]:%10u%n", segment, &tag, &ip[0].bits,
                  ip[0].text, &ip[1].bits, ip[1].text, &ip[2].bits, ip[2].text, &sequence))
            return false;
        key.sync.sequence = sequence;
        return read_esi(segment, key.sync.esi) && read_membership(ip, tag, key.sync.membership);
    default: break;
    }
    const bool ipv6 = shape.brackets == 2;
    if (shape.hyphens == 2) {
        key.routeType = SYSDT_EVPN_MAC_IP;
        if (!scan(5, ipv6 ? "%10u:%3u:%14[" HEX "-]:%3u:[%49[" HEX ":.]]%n" : "%10u:%3u:%14[" HEX "-]:%3u:%49[0-9.]%n",
                  &tag, &bits, mac, &ip[0].bits, ip[0].text))
            return false;
        key.macIp.tag = tag;
        key.macIp.macLength = static_cast<u8>(bits);
        return bits <= 255 && SMP_Str2Mac(mac, key.macIp.mac) == SYSDT_OK && read_address(ip[0], key.macIp.ip);
    }
    if (shape.colons == 0) {
        key.routeType = SYSDT_EVPN_SEGMENT;
        return read_esi(text, key.segment.esi);
    }
    if (shape.colons == 1) {
        key.routeType = SYSDT_EVPN_AUTO_DISCOVERY;
        if (!scan(2, "%24[" HEX ".]:%10u%n", segment, &tag))
            return false;
        key.autoDiscovery.tag = tag;
        return read_esi(segment, key.autoDiscovery.esi, true);
    }
    if (shape.dots_ahead == 4) {
        key.routeType = SYSDT_EVPN_SEGMENT;
        return scan(3, ipv6 ? "%24[" HEX ".]:%3u:[%49[" HEX ":.]]%n" : "%24[" HEX ".]:%3u:%49[0-9.]%n", segment,
                    &ip[0].bits, ip[0].text) &&
               read_esi(segment, key.segment.esi) && read_address(ip[0], key.segment.ip);
    }
    const bool prefix = ipv6 ? std::strchr(text, ':')[1] == '[' : shape.dots_ahead != 0;
    key.routeType = prefix ? SYSDT_EVPN_IP_PREFIX : SYSDT_EVPN_INCLUSIVE;
    const bool scanned =
        prefix ? scan(3, ipv6 ? "%10u:[%49[" HEX ":.]]:%10u%n" : "%10u:%15[0-9.]:%10u%n", &tag, ip[0].text, &ip[0].bits)
               : scan(3, ipv6 ? "%10u:%3u:[%49[" HEX ":.]]%n" : "%10u:%3u:%49[0-9.]%n", &tag, &ip[0].bits, ip[0].text);
    key.inclusive.tag = tag; // at the same place in both
    return scanned && read_address(ip[0], key.inclusive.ip);
}

/// snprintf piece by piece.
struct Printer {
    char *out;
    std::size_t size;
    int length = 0;

    template <class... Arguments>
    Printer &put(const char *format, Arguments... arguments)
    {
        length += std::snprintf(out + length, size - static_cast<std::size_t>(length), format, arguments...);
        return *this;
    }
    Printer &esi(const u8 *b)
    {
        return put("%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x", b[0], b[1], b[2], b[3], b[4], b[5], b[6], b[7], b[8],
                   b[9]);
    }
    Printer &sized(const SYSDT_EvpnSizedAddress &ip)
    {
        const u32 a = ip.address.ipv4;
        if (ip.address.family == 0)
            return put(":%hhu:%d.%d.%d.%d", ip.length, a >> 24, a >> 16 & 0xFF, a >> 8 & 0xFF, a & 0xFF);
        char text[64];
        return put(":%hhu:[%s]", ip.length, PAL_Inet_ntoa_b_ipv6(ip.address.ipv6, text));
    }
    Printer &flow(const SYSDT_EvpnMembership &membership)
    {
        return sized(membership.source).sized(membership.group).sized(membership.originator);
    }
};

int port_print(const SYSDT_BolEvpn &value, char *out, std::size_t size)
{
    const SYSDT_EvpnKey &key = value.key;
    Printer to{out, size};
    switch (key.routeType) {
    case SYSDT_EVPN_AUTO_DISCOVERY: return to.esi(key.autoDiscovery.esi).put(":%u", u32{key.autoDiscovery.tag}).length;
    case SYSDT_EVPN_MAC_IP: {
        const u8 *const m = key.macIp.mac;
        return to.put("%u", u32{key.macIp.tag})
            .put(":%u", u32{key.macIp.macLength})
            .put(":%.2x%.2x-%.2x%.2x-%.2x%.2x", m[0], m[1], m[2], m[3], m[4], m[5])
            .sized(key.macIp.ip)
            .length;
    }
    case SYSDT_EVPN_INCLUSIVE: return to.put("%u", u32{key.inclusive.tag}).sized(key.inclusive.ip).length;
    case SYSDT_EVPN_SEGMENT: return to.esi(key.segment.esi).sized(key.segment.ip).length;
    case SYSDT_EVPN_IP_PREFIX: {
        to.put("%u", u32{key.prefix.tag});
        const u32 a = key.prefix.ip.address.ipv4;
        if (key.prefix.ip.address.family == 0) {
            to.put(":%d.%d.%d.%d:%hhu", a >> 24, a >> 16 & 0xFF, a >> 8 & 0xFF, a & 0xFF, key.prefix.ip.length);
        } else {
            char text[64];
            to.put(":[%s]:%hhu", PAL_Inet_ntoa_b_ipv6(key.prefix.ip.address.ipv6, text), key.prefix.ip.length);
        }
        return to.length;
    }
    case SYSDT_EVPN_SELECTIVE: return to.put("%u", u32{key.selective.tag}).flow(key.selective).length;
    case SYSDT_EVPN_JOIN:
    case SYSDT_EVPN_LEAVE:
        to.esi(key.sync.esi).put(":%u", u32{key.sync.membership.tag}).flow(key.sync.membership);
        return key.routeType == SYSDT_EVPN_JOIN ? to.length : to.put(":%u", u32{key.sync.sequence}).length;
    default: return -1;
    }
}

// ------------------------------------------------------------------------------------------------ corpora

std::string tag(Random &random) { return random.percent(50) ? "0" : random.decimal(); }
std::string host4(Random &random) { return "32:" + random.ipv4(); }
std::string host6(Random &random) { return "128:[" + random.ipv6() + ']'; }
std::string flow4(Random &random) { return tag(random) + ":32:" + random.ipv4() + ":32:" + random.ipv4(224, 239); }

struct Sample {
    const char *name;
    std::string (*text)(Random &);
};
constexpr Sample samples[] = {
    {"EVPN 1", [](Random &r) { return r.esi() + ':' + tag(r); }},
    {"EVPN 2 IPv4", [](Random &r) { return tag(r) + ":48:" + r.mac() + ':' + host4(r); }},
    {"EVPN 2 IPv6", [](Random &r) { return tag(r) + ":48:" + r.mac() + ':' + host6(r); }},
    {"EVPN 3 IPv4", [](Random &r) { return tag(r) + ':' + host4(r); }},
    {"EVPN 3 IPv6", [](Random &r) { return tag(r) + ':' + host6(r); }},
    {"EVPN 4 IPv4", [](Random &r) { return r.esi() + ':' + host4(r); }},
    {"EVPN 4 IPv6", [](Random &r) { return r.esi() + ':' + host6(r); }},
    {"EVPN 4 ESI", [](Random &r) { return r.esi(); }},
    {"EVPN 5 IPv4", [](Random &r) { return tag(r) + ':' + r.ipv4() + ':' + r.decimal(8, 32); }},
    {"EVPN 5 IPv6", [](Random &r) { return tag(r) + ":[" + r.ipv6() + "]:" + r.decimal(16, 128); }},
    {"EVPN 6 IPv4", [](Random &r) { return flow4(r) + ':' + host4(r); }},
    {"EVPN 6 IPv6", [](Random &r) { return flow4(r) + ':' + host6(r); }},
    {"EVPN 7 IPv4", [](Random &r) { return r.esi() + ':' + flow4(r) + ':' + host4(r); }},
    {"EVPN 7 IPv6", [](Random &r) { return r.esi() + ':' + flow4(r) + ':' + host6(r); }},
    {"EVPN 8 IPv4", [](Random &r) { return r.esi() + ':' + flow4(r) + ':' + host4(r) + ':' + r.decimal(); }},
};

} // namespace

void add_evpn(Kinds &kinds)
{
    constexpr Converter floor{format_in<floor_parse, SYSDT_BolEvpn, SYSDT_TYPE_BOLPREFIX>,
                              floor_out<floor_print, SYSDT_BolEvpn>};
    constexpr Converter port{format_in<port_parse, SYSDT_BolEvpn, SYSDT_TYPE_BOLPREFIX>,
                             port_out<port_print, SYSDT_BolEvpn>};
    for (const auto &[name, text] : samples)
        kinds.push_back({name, "BOLPREFIX/EVN", text, floor, port, Shape::structured});
}

} // namespace bgpdt::bench
