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

/// Behind the tag.
bool membership(const char *&at, u32 tag, SYSDT_EvpnMembership &out)
{
    out.tag = tag;
    return sized_address(at, out.source, 0, 128) && skip(at, ':') && sized_address(at, out.group, 1, 128) &&
           skip(at, ':') && sized_address(at, out.originator, 1, 128);
}

const char *behind_hex(const char *at)
{
    while (hex_value(*at) < 16)
        ++at;
    return at;
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
    if (!skip(at, ':') || ones || !bench::number(at, number))
        return false;
    if (ends(at)) {
        key.routeType = SYSDT_EVPN_AUTO_DISCOVERY;
        key.autoDiscovery.tag = number;
        return true;
    }
    if (odd || !skip(at, ':'))
        return false;
    if (*at == '[' || *behind_hex(at) == '.') {
        key.routeType = SYSDT_EVPN_SEGMENT;
        key.segment.ip.length = static_cast<u8>(number);
        return address(at, key.segment.ip.address) && number <= (key.segment.ip.address.family == 0 ? 255 : 128) &&
               ends(at);
    }
    if (!membership(at, number, key.sync.membership))
        return false;
    key.routeType = SYSDT_EVPN_JOIN;
    if (ends(at))
        return true;
    key.routeType = SYSDT_EVPN_LEAVE;
    if (!skip(at, ':') || !last_number(at, number))
        return false;
    key.sync.sequence = number;
    return true;
}

/// An address, and the length behind it.
bool ip_prefix(const char *at, SYSDT_EvpnKey &key)
{
    u32 bits;
    key.routeType = SYSDT_EVPN_IP_PREFIX;
    if (!address(at, key.prefix.ip.address) || !skip(at, ':') || !last_number(at, bits, 255))
        return false;
    key.prefix.ip.length = static_cast<u8>(bits);
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
    const char *const field = at;
    if (*at == '[' || (number(at, bits, 255) && *at == '.'))
        return ip_prefix(field, key);
    if (at == field || bits > 255 || !skip(at, ':'))
        return false;
    if (*at != '[' && *behind_hex(at) == '-') {
        key.routeType = SYSDT_EVPN_MAC_IP;
        key.macIp.macLength = static_cast<u8>(bits);
        return mac(at, key.macIp.mac) && skip(at, ':') && sized_address(at, key.macIp.ip) && ends(at);
    }
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
    const char *const at = SYSDT_BTrim(text);
    out.subKind = SYSDT_BOL_EVN;
    const char *const behind = behind_hex(at);
    return behind - at == 4 && *behind == '.' ? with_segment(at, out.key) : with_tag(at, out.key);
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

/// The text up to the next colon, which is left behind, as a text of its own.
bool cut(const char *&at, char *field, std::size_t longest)
{
    const char *const colon = std::strchr(at, ':');
    const std::size_t length = colon == nullptr ? 0 : static_cast<std::size_t>(colon - at);
    if (length < 1 || length > longest)
        return false;
    std::memcpy(field, at, length);
    field[length] = '\0';
    at = colon + 1;
    return true;
}

bool cut_number(const char *&at, u32 &out, std::size_t digits, u32 least = 0, u32 most = UINT32_MAX)
{
    char field[11];
    return cut(at, field, digits) && SMP_StrToUint32(field, &out) == SYSDT_OK && out >= least && out <= most;
}

bool read_ipv4(const char *text, SYSDT_EvpnAddress &out)
{
    u32 number = 0;
    const bool read = SYSDT_Str2Ipv4(text, &number) == SYSDT_OK;
    out.ipv4 = number;
    return read;
}

/// An IPv6 address in brackets, behind which the cursor then stands.
bool read_bracketed(const char *&at, SYSDT_EvpnAddress &out)
{
    char field[50];
    const char *const end = *at == '[' ? std::strchr(at, ']') : nullptr;
    const std::size_t length = end == nullptr ? 0 : static_cast<std::size_t>(end - at) - 1;
    if (length < 1 || length > sizeof field - 1)
        return false;
    std::memcpy(field, at + 1, length);
    field[length] = '\0';
    at = end + 1;
    out.family = 1;
    return SYSDT_Str2Ipv6(field, out.ipv6) == SYSDT_OK;
}

/// A length and an address that end the text.
bool read_tail(const char *at, SYSDT_EvpnSizedAddress &out)
{
    u32 bits = 0;
    const bool ipv6 = std::strchr(at, '[') != nullptr;
    if (!cut_number(at, bits, 3, 0, ipv6 ? 128 : 255))
        return false;
    out.length = static_cast<u8>(bits);
    return ipv6 ? read_bracketed(at, out.address) && *at == '\0' : read_ipv4(at, out.address);
}

/// Five groups of hexadecimal digits.
bool read_esi(const char *text, u8 *out)
{
    char copy[25];
    char group[5];
    if (std::strlen(text) != 24)
        return false;
    std::memcpy(copy, text, sizeof copy);
    int groups = 0;
    std::size_t digits = 0;
    int zeros = 0;
    int ones = 0;
    for (const char *at = SYSDT_BTrim(copy);; ++at) {
        if (NCF_IsHex(*at) != 0) {
            if (digits == 4)
                return false;
            zeros += *at == '0' ? 1 : 0;
            ones += *at == 'F' || *at == 'f' ? 1 : 0;
            group[digits++] = *at;
            continue;
        }
        if ((*at != '.' && *at != '\0') || digits == 0 || groups == 5)
            return false;
        group[digits] = '\0';
        digits = 0;
        const u32 number = SMP_atoulx(group);
        out[2 * groups] = static_cast<u8>(number >> 8);
        out[2 * groups + 1] = static_cast<u8>(number);
        ++groups;
        if (*at == '\0')
            return groups == 5 && zeros != 20 && ones != 20;
    }
}

bool cut_esi(const char *&at, u8 *out)
{
    char field[25];
    return cut(at, field, 24) && read_esi(field, out);
}

bool cut_discovery_esi(const char *&at, u8 *out)
{
    char field[25]{};
    if (!cut(at, field, 24))
        return false;
    int zeros = 0;
    for (const char character : field)
        zeros += character == '0' ? 1 : 0;
    if (zeros != 20)
        return read_esi(field, out);
    std::memset(out, 0, 10);
    return true;
}

/// A length and an address, the last of the text or not.
bool read_member(const char *&at, SYSDT_EvpnSizedAddress &out, u32 least, bool last)
{
    u32 bits = 0;
    char field[50];
    if (!cut_number(at, bits, 3, least, 128))
        return false;
    out.length = static_cast<u8>(bits);
    if (*at == '[')
        return last && read_bracketed(at, out.address);
    return last ? read_ipv4(at, out.address) : cut(at, field, 49) && read_ipv4(field, out.address);
}

bool read_membership(const char *&at, SYSDT_EvpnMembership &out, bool last)
{
    u32 tag = 0;
    if (!cut_number(at, tag, 10))
        return false;
    out.tag = tag;
    return read_member(at, out.source, 0, false) && read_member(at, out.group, 1, false) &&
           read_member(at, out.originator, 1, last);
}

bool read_leave(const char *at, SYSDT_EvpnKey &key)
{
    u32 sequence = 0;
    if (!cut_esi(at, key.sync.esi) || !read_membership(at, key.sync.membership, false) || std::strlen(at) > 10 ||
        SMP_StrToUint32(at, &sequence) != SYSDT_OK)
        return false;
    key.sync.sequence = sequence;
    return true;
}

/// An auto-discovery route.
bool read_discovery(const char *at, SYSDT_EvpnKey &key)
{
    u32 tag = 0;
    if (!cut_discovery_esi(at, key.autoDiscovery.esi) || SMP_StrToUint32(at, &tag) != SYSDT_OK)
        return false;
    key.autoDiscovery.tag = tag;
    return true;
}

bool read_mac_ip(const char *at, SYSDT_EvpnKey &key)
{
    u32 tag = 0;
    u32 bits = 0;
    char mac[15];
    if (!cut_number(at, tag, 10) || !cut_number(at, bits, 3, 0, 255) || !cut(at, mac, 14) ||
        SMP_Str2Mac(mac, key.macIp.mac) != SYSDT_OK)
        return false;
    key.macIp.tag = tag;
    key.macIp.macLength = static_cast<u8>(bits);
    return read_tail(at, key.macIp.ip);
}

bool read_inclusive(const char *at, SYSDT_EvpnKey &key)
{
    u32 tag = 0;
    if (!cut_number(at, tag, 10))
        return false;
    key.inclusive.tag = tag;
    return read_tail(at, key.inclusive.ip);
}

bool read_prefix(const char *at, SYSDT_EvpnKey &key, bool ipv6)
{
    u32 tag = 0;
    u32 bits = 0;
    char field[16];
    SYSDT_EvpnAddress &address = key.prefix.ip.address;
    if (!cut_number(at, tag, 10))
        return false;
    if (ipv6 ? !read_bracketed(at, address) || *at++ == '\0' : !cut(at, field, 15) || !read_ipv4(field, address))
        return false;
    if (SMP_StrToUint32(at, &bits) != SYSDT_OK || bits > 255)
        return false;
    key.prefix.tag = tag;
    key.prefix.ip.length = static_cast<u8>(bits);
    return true;
}

/// What a text is told by.
struct Census {
    int dots = 0;
    int colons = 0;
    int outside = 0; ///< colons outside brackets
    int hyphens = 0;
    int brackets = 0;
    bool inclusive = false; ///< no bracket stands ahead of the second colon
    bool prefix = true;     ///< a dot stands there
    bool segment = false;   ///< four dots stand there

    /// False where a character is none of a key.
    bool count(const char *text)
    {
        bool inside = false;
        for (; *text != '\0'; ++text) {
            switch (*text) {
            case '.': ++dots; break;
            case ':':
                ++colons;
                outside += inside ? 0 : 1;
                if (colons == 2) {
                    segment = dots == 4;
                    inclusive = brackets == 0 && !segment;
                    prefix = dots != 0 && !segment;
                }
                break;
            case '-': ++hyphens; break;
            case '[':
            case ']':
                ++brackets;
                inside = *text == '[';
                break;
            default:
                if (NCF_IsHex(*text) == 0)
                    return false;
            }
        }
        return true;
    }
};

/// The route type that the separators tell; 0 if none.
u8 type_of(const Census &shape)
{
    switch (shape.outside) {
    case 6: return SYSDT_EVPN_SELECTIVE;
    case 7: return SYSDT_EVPN_JOIN;
    case 8: return SYSDT_EVPN_LEAVE;
    default: break;
    }
    if (shape.segment)
        return SYSDT_EVPN_SEGMENT;
    if (shape.brackets == 2 && shape.hyphens == 0)
        return shape.inclusive ? SYSDT_EVPN_INCLUSIVE : SYSDT_EVPN_IP_PREFIX;
    if (shape.brackets == 2 && shape.hyphens == 2)
        return shape.colons < 5 ? 0 : SYSDT_EVPN_MAC_IP;
    if ((shape.dots != 3 && shape.dots != 4 && shape.dots != 7) || shape.colons > 4 || shape.brackets != 0)
        return 0;
    if (shape.hyphens == 0 && shape.colons == 2)
        return !shape.prefix ? SYSDT_EVPN_INCLUSIVE : shape.dots == 3 ? SYSDT_EVPN_IP_PREFIX : 0;
    switch (shape.colons) {
    case 0: return shape.dots == 4 ? SYSDT_EVPN_SEGMENT : 0;
    case 1: return shape.dots == 4 ? SYSDT_EVPN_AUTO_DISCOVERY : 0;
    case 4: return SYSDT_EVPN_MAC_IP;
    default: return 0;
    }
}

bool port_parse(char *text, SYSDT_BolEvpn &out)
{
    Census shape;
    const char *at = port::look(text, 1, 183);
    if (at == nullptr || !shape.count(at))
        return false;
    out.subKind = SYSDT_BOL_EVN;
    SYSDT_EvpnKey &key = out.key;
    key.routeType = type_of(shape);
    switch (key.routeType) {
    case SYSDT_EVPN_AUTO_DISCOVERY: return read_discovery(at, key);
    case SYSDT_EVPN_MAC_IP: return read_mac_ip(at, key);
    case SYSDT_EVPN_INCLUSIVE: return read_inclusive(at, key);
    case SYSDT_EVPN_SEGMENT:
        return shape.colons == 0 ? read_esi(at, key.segment.esi)
                                 : cut_esi(at, key.segment.esi) && read_tail(at, key.segment.ip);
    case SYSDT_EVPN_IP_PREFIX: return read_prefix(at, key, shape.brackets != 0);
    case SYSDT_EVPN_SELECTIVE: return read_membership(at, key.selective, true);
    case SYSDT_EVPN_JOIN: return cut_esi(at, key.sync.esi) && read_membership(at, key.sync.membership, true);
    case SYSDT_EVPN_LEAVE: return read_leave(at, key);
    default: return false;
    }
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
