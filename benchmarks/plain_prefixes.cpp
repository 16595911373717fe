// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The plain addresses among the route keys, VPNV4MCPREFIX and MDTPREFIX.
#include "floor.hpp"
#include "port.hpp"

namespace bgpdt::bench {
namespace {

bool floor_parse_ipv4(char *text, SYSDT_BolIpv4 &out)
{
    const char *at = text;
    u32 address;
    if (!ipv4(at, address) || *at != '\0')
        return false;
    out.address = address;
    return true;
}

char *floor_print_ipv4(const SYSDT_BolIpv4 &value, char *out) { return put_ipv4(out, value.address); }

bool port_parse_ipv4(char *text, SYSDT_BolIpv4 &out)
{
    u32 address = 0;
    const bool parsed = SYSDT_Str2Ipv4(text, &address) == SYSDT_OK;
    out.address = address;
    return parsed;
}

int port_quad(u32 address, char *out, std::size_t size)
{
    return std::snprintf(out, size, "%hhu.%hhu.%hhu.%hhu", static_cast<u8>(address >> 24),
                         static_cast<u8>(address >> 16), static_cast<u8>(address >> 8), static_cast<u8>(address));
}

int port_print_ipv4(const SYSDT_BolIpv4 &value, char *out, std::size_t size)
{
    return port_quad(value.address, out, size);
}

bool floor_parse_ipv6(char *text, SYSDT_BolIpv6 &out)
{
    const char *at = text;
    out.subKind = SYSDT_BOL_IPV6;
    return ipv6(at, out.address) && *at == '\0';
}

char *floor_print_ipv6(const SYSDT_BolIpv6 &value, char *out) { return put_ipv6(out, value.address); }

bool port_parse_ipv6(char *text, SYSDT_BolIpv6 &out)
{
    out.subKind = SYSDT_BOL_IPV6;
    return SYSDT_Str2Ipv6(text, out.address) == SYSDT_OK;
}

int port_print_ipv6(const SYSDT_BolIpv6 &value, char *out, std::size_t size)
{
    char text[256];
    inet_ntop6(value.address, text, sizeof text);
    return std::snprintf(out, size, "%s", text);
}

template <u32 sub_kind, class Value>
bool floor_parse_masked(char *text, Value &out)
{
    const char *at = SYSDT_BTrim(text);
    u32 address;
    u32 length;
    if (!ipv4(at, address) || !skip(at, '/') || !last_number(at, length, 32))
        return false;
    out.subKind = sub_kind;
    out.prefix.prefix = address;
    out.prefix.maskLength = length;
    return true;
}

template <class Value>
char *floor_print_masked(const Value &value, char *out)
{
    return put_ipv4(out, value.prefix.prefix);
}

template <u32 sub_kind, class Value>
bool port_parse_masked(char *text, Value &out)
{
    text = sub_kind == SYSDT_BOL_MDT ? port::look(text, 7, 35) : port::look(text, 9, 18);
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    unsigned length = 0;
    if (text == nullptr || std::sscanf(text, "%u.%u.%u.%u/%u", &a, &b, &c, &d, &length) != 5 || a > 255 || b > 255 ||
        c > 255 || d > 255 || length > 32)
        return false;
    out.subKind = sub_kind;
    out.prefix.prefix = a << 24 | b << 16 | c << 8 | d;
    out.prefix.maskLength = length;
    return true;
}

template <class Value>
int port_print_masked(const Value &value, char *out, std::size_t size)
{
    return port_quad(value.prefix.prefix, out, size);
}

template <u32 sub_kind, class Value, bool plain>
Kind masked(const char *name, const char *subject)
{
    constexpr u16 kind = SYSDT_TYPE_BOLPREFIX;
    return {name,
            subject,
            [](Random &random) { return random.ipv4() + '/' + random.decimal(0, 32); },
            {format_in<floor_parse_masked<sub_kind, Value>, Value, kind, plain>,
             floor_out<floor_print_masked<Value>, Value, 257, plain>},
            {format_in<port_parse_masked<sub_kind, Value>, Value, kind, plain>,
             port_out<port_print_masked<Value>, Value, 257, plain>}};
}

} // namespace

void add_plain_prefixes(Kinds &kinds)
{
    kinds.push_back(
        {"IPv4",
         "BOLPREFIX/IPV4",
         [](Random &random) { return random.ipv4(); },
         {format_in<floor_parse_ipv4, SYSDT_BolIpv4, SYSDT_TYPE_BOLPREFIX>, floor_out<floor_print_ipv4, SYSDT_BolIpv4>},
         {format_in<port_parse_ipv4, SYSDT_BolIpv4, SYSDT_TYPE_BOLPREFIX>, port_out<port_print_ipv4, SYSDT_BolIpv4>}});
    kinds.push_back(
        {"IPv6",
         "BOLPREFIX/IPV6",
         [](Random &random) { return random.ipv6(); },
         {format_in<floor_parse_ipv6, SYSDT_BolIpv6, SYSDT_TYPE_BOLPREFIX>, floor_out<floor_print_ipv6, SYSDT_BolIpv6>},
         {format_in<port_parse_ipv6, SYSDT_BolIpv6, SYSDT_TYPE_BOLPREFIX>, port_out<port_print_ipv6, SYSDT_BolIpv6>}});
    kinds.push_back(masked<SYSDT_BOL_VPNV4MCAST, SYSDT_BolVpnv4Mcast, false>("VPNv4 multicast", "VPNV4MCPREFIX"));
    kinds.push_back(masked<SYSDT_BOL_MDT, SYSDT_BolMdt, true>("MDT", "MDTPREFIX"));
}

} // namespace bgpdt::bench
