// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// RPD, SD-WAN and SR policy route keys. Their texts must be the very ones that they print as.
#include "floor.hpp"
#include "port.hpp"

namespace bgpdt::bench {
namespace {

// ------------------------------------------------------------------------------------------------ floor

/// Without leading zeros.
bool canonical_and(const char *&at, u32 &out, char behind, u32 max = UINT32_MAX)
{
    const char *const start = at;
    return number(at, out, max) && (*start != '0' || at - start == 1) && skip(at, behind);
}

/// An address at the cursor, whose IPv6 text is canonical.
template <class Key>
bool canonical_address(const char *&at, Key &out)
{
    const char *const start = at;
    u32 number;
    if (ipv4(at, number)) {
        out.ipv4 = number;
        return true;
    }
    at = start;
    char text[46];
    out.family = 1;
    return ipv6(at, out.ipv6) && put_ipv6(text, out.ipv6) - text == at - start;
}

bool floor_parse_rpd(char *text, SYSDT_BolRpd &out)
{
    const char *at = SYSDT_BTrim(text);
    u32 type;
    u32 peer;
    u32 distinguisher;
    if (!canonical_and(at, type, '/', 1) || !ipv4(at, peer) || !skip(at, '/') ||
        !canonical_and(at, distinguisher, '\0'))
        return false;
    out.subKind = SYSDT_BOL_RPD;
    out.key.policyType = static_cast<u8>(type);
    out.key.peer = peer;
    out.key.distinguisher = distinguisher;
    return true;
}

char *floor_print_rpd(const SYSDT_BolRpd &value, char *out)
{
    out = put(put_octet(out, value.key.policyType), '/');
    return put(put(put_ipv4(out, value.key.peer), '/'), u32{value.key.distinguisher});
}

bool floor_parse_sdwan(char *text, SYSDT_BolSdwan &out)
{
    const char *at = SYSDT_BTrim(text);
    u32 type;
    u32 port;
    u32 site;
    if (!canonical_and(at, type, '-', 65535) || !canonical_and(at, port, '-') || !canonical_and(at, site, '-') ||
        !canonical_address(at, out.key) || *at != '\0')
        return false;
    out.subKind = SYSDT_BOL_SDWAN;
    out.key.routeType = static_cast<u16>(type);
    out.key.portLocalId = port;
    out.key.siteId = site;
    return true;
}

template <class Key>
char *put_address(char *out, const Key &key)
{
    return key.family == 0 ? put_ipv4(out, key.ipv4) : put_ipv6(out, key.ipv6);
}

char *floor_print_sdwan(const SYSDT_BolSdwan &value, char *out)
{
    out = put(put(out, u32{value.key.routeType}), '-');
    out = put(put(out, u32{value.key.portLocalId}), '-');
    return put_address(put(put(out, u32{value.key.siteId}), '-'), value.key);
}

bool floor_parse_sr(char *text, SYSDT_BolSrPolicy &out)
{
    const char *at = SYSDT_BTrim(text);
    u32 distinguisher;
    u32 colour;
    if (!skip(at, '[') || !canonical_and(at, distinguisher, ']') || !skip(at, '[') || !canonical_and(at, colour, ']') ||
        !skip(at, '[') || !canonical_address(at, out.key) || *at++ == '\0' || *at != '\0')
        return false;
    out.subKind = SYSDT_BOL_SRPOLICY;
    out.key.distinguisher = distinguisher;
    out.key.colour = colour;
    return true;
}

char *floor_print_sr(const SYSDT_BolSrPolicy &value, char *out)
{
    out = put(put(put(out, '['), u32{value.key.distinguisher}), "][");
    return put(put_address(put(put(out, u32{value.key.colour}), "]["), value.key), ']');
}

// ------------------------------------------------------------------------------------------------ plain port

bool port_parse_rpd(char *text, SYSDT_BolRpd &out)
{
    text = port::look(text, 11, 31);
    unsigned type = 0;
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    unsigned distinguisher = 0;
    char again[256];
    if (text == nullptr || std::sscanf(text, "%u/%u.%u.%u.%u/%u", &type, &a, &b, &c, &d, &distinguisher) != 6 ||
        type > 1 || a > 255 || b > 255 || c > 255 || d > 255 ||
        std::snprintf(again, sizeof again, "%u/%u.%u.%u.%u/%u", type, a, b, c, d, distinguisher) !=
            static_cast<int>(std::strlen(text)))
        return false;
    out.subKind = SYSDT_BOL_RPD;
    out.key.policyType = static_cast<u8>(type);
    out.key.distinguisher = distinguisher;
    out.key.peer = a << 24 | b << 16 | c << 8 | d;
    return true;
}

#define QUAD(address)                                                                                                  \
    static_cast<u8>((address) >> 24), static_cast<u8>((address) >> 16), static_cast<u8>((address) >> 8),               \
        static_cast<u8>(address)

int port_print_rpd(const SYSDT_BolRpd &value, char *out, std::size_t size)
{
    return std::snprintf(out, size, "%hhu/%hhu.%hhu.%hhu.%hhu/%u", value.key.policyType, QUAD(value.key.peer),
                         u32{value.key.distinguisher});
}

bool port_parse_sdwan(char *text, SYSDT_BolSdwan &out)
{
    text = port::look(text, 0, 69);
    if (text == nullptr)
        return false;
    const auto length = static_cast<int>(std::strlen(text));
    unsigned short type = 0;
    unsigned port = 0;
    unsigned site = 0;
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    char again[256];
    if (std::strchr(text, '.') != nullptr) {
        if (length < 13 || length > 43 ||
            std::sscanf(text, "%hu-%u-%u-%u.%u.%u.%u", &type, &port, &site, &a, &b, &c, &d) != 7 || a > 255 ||
            b > 255 || c > 255 || d > 255 ||
            std::snprintf(again, sizeof again, "%hu-%u-%u-%u.%u.%u.%u", type, port, site, a, b, c, d) != length)
            return false;
        out.key.ipv4 = a << 24 | b << 16 | c << 8 | d;
    } else {
        char address[70];
        char canonical[46];
        if (length < 6 || std::sscanf(text, "%hu-%u-%u-%s", &type, &port, &site, address) != 4 ||
            SMP_InetAToN(10, address, out.key.ipv6) != SYSDT_OK ||
            std::snprintf(again, sizeof again, "%hu-%u-%u-%s", type, port, site,
                          PAL_Inet_ntoa_b_ipv6(out.key.ipv6, canonical)) != length)
            return false;
        out.key.family = 1;
    }
    out.subKind = SYSDT_BOL_SDWAN;
    out.key.routeType = type;
    out.key.portLocalId = port;
    out.key.siteId = site;
    return true;
}

int port_print_sdwan(const SYSDT_BolSdwan &value, char *out, std::size_t size)
{
    const SYSDT_Sdwan &key = value.key;
    char text[46];
    return key.family == 0 ? std::snprintf(out, size, "%hu-%u-%u-%hhu.%hhu.%hhu.%hhu", u16{key.routeType},
                                           u32{key.portLocalId}, u32{key.siteId}, QUAD(key.ipv4))
                           : std::snprintf(out, size, "%hu-%u-%u-%s", u16{key.routeType}, u32{key.portLocalId},
                                           u32{key.siteId}, PAL_Inet_ntoa_b_ipv6(key.ipv6, text));
}

bool port_parse_sr(char *text, SYSDT_BolSrPolicy &out)
{
    text = port::look(text, 0, 67);
    if (text == nullptr)
        return false;
    const auto length = static_cast<int>(std::strlen(text));
    unsigned distinguisher = 0;
    unsigned colour = 0;
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    char again[256];
    if (std::strchr(text, '.') != nullptr) {
        if (length < 15 || length > 42 ||
            std::sscanf(text, "[%u][%u][%u.%u.%u.%u]", &distinguisher, &colour, &a, &b, &c, &d) != 6 || a > 255 ||
            b > 255 || c > 255 || d > 255 ||
            std::snprintf(again, sizeof again, "[%u][%u][%u.%u.%u.%u]", distinguisher, colour, a, b, c, d) != length)
            return false;
        out.key.ipv4 = a << 24 | b << 16 | c << 8 | d;
    } else {
        char address[70];
        char canonical[46];
        if (length < 8 || std::sscanf(text, "[%u][%u][%s", &distinguisher, &colour, address) != 3)
            return false;
        address[std::strlen(address) - 1] = '\0';
        if (SMP_InetAToN(10, address, out.key.ipv6) != SYSDT_OK ||
            std::snprintf(again, sizeof again, "[%u][%u][%s]", distinguisher, colour,
                          PAL_Inet_ntoa_b_ipv6(out.key.ipv6, canonical)) != length)
            return false;
        out.key.family = 1;
    }
    out.subKind = SYSDT_BOL_SRPOLICY;
    out.key.distinguisher = distinguisher;
    out.key.colour = colour;
    return true;
}

int port_print_sr(const SYSDT_BolSrPolicy &value, char *out, std::size_t size)
{
    const SYSDT_SrPolicy &key = value.key;
    char text[46];
    return key.family == 0 ? std::snprintf(out, size, "[%u][%u][%hhu.%hhu.%hhu.%hhu]", u32{key.distinguisher},
                                           u32{key.colour}, QUAD(key.ipv4))
                           : std::snprintf(out, size, "[%u][%u][%s]", u32{key.distinguisher}, u32{key.colour},
                                           PAL_Inet_ntoa_b_ipv6(key.ipv6, text));
}

} // namespace

void add_policy_keys(Kinds &kinds)
{
    constexpr u16 kind = SYSDT_TYPE_BOLPREFIX;
    kinds.push_back({"RPD",
                     "BOLPREFIX/RPD",
                     [](Random &random) { return random.decimal(0, 1) + '/' + random.ipv4() + '/' + random.decimal(); },
                     {format_in<floor_parse_rpd, SYSDT_BolRpd, kind>, floor_out<floor_print_rpd, SYSDT_BolRpd>},
                     {format_in<port_parse_rpd, SYSDT_BolRpd, kind>, port_out<port_print_rpd, SYSDT_BolRpd>}});
    for (const bool v6 : {false, true}) {
        const std::string family = v6 ? " IPv6" : " IPv4";
        kinds.push_back(
            {"SD-WAN" + family,
             "BOLPREFIX/SD-WAN",
             [v6](Random &random) {
                 return random.decimal(0, 16) + '-' + random.u16() + '-' + random.decimal() + '-' +
                        (v6 ? random.ipv6() : random.ipv4());
             },
             {format_in<floor_parse_sdwan, SYSDT_BolSdwan, kind>, floor_out<floor_print_sdwan, SYSDT_BolSdwan>},
             {format_in<port_parse_sdwan, SYSDT_BolSdwan, kind>, port_out<port_print_sdwan, SYSDT_BolSdwan>}});
        kinds.push_back(
            {"SR policy" + family,
             "BOLPREFIX/SRPOLICY",
             [v6](Random &random) {
                 return '[' + random.decimal(0, 4096) + "][" + random.decimal() + "][" +
                        (v6 ? random.ipv6() : random.ipv4()) + ']';
             },
             {format_in<floor_parse_sr, SYSDT_BolSrPolicy, kind>, floor_out<floor_print_sr, SYSDT_BolSrPolicy>},
             {format_in<port_parse_sr, SYSDT_BolSrPolicy, kind>, port_out<port_print_sr, SYSDT_BolSrPolicy>}});
    }
}

} // namespace bgpdt::bench
