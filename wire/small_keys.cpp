// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// SR policies (RFC 9830, section 2.1), the route distinguishers of IP VPNs (RFC 4364, section 4.3.4; RFC 8277), VPLS
/// blocks (RFC 4761, section 3.2.2) and VPLS routers (RFC 6074, section 3.2.2).
#include "bgp_datatype/values.h"
#include "layouts.hpp"

namespace bgpdt::wire {
namespace {

template <class Io>
void sr_policy(Io &io)
{
    constexpr std::size_t place = offsetof(SYSDT_BolSrPolicy, key.ipv4);
    io.template number<std::uint32_t>("distinguisher", offsetof(SYSDT_BolSrPolicy, key.distinguisher));
    io.template number<std::uint32_t>("colour", offsetof(SYSDT_BolSrPolicy, key.colour));
    io.family_by_size("endpoint", place);
    io.address("endpoint", place);
}

template <class Io>
void vpls_block(Io &io)
{
    io.rd();
    io.template number<std::uint16_t>("site", offsetof(SYSDT_BolL2Vpn, siteId));
    io.template number<std::uint16_t>("label offset", offsetof(SYSDT_BolL2Vpn, labelOffset));
    io.template beside_number<std::uint16_t>("block size");
    io.beside_label("label base");
}

template <class Io>
void vpls_router(Io &io)
{
    io.rd();
    io.template number<std::uint32_t>("router", offsetof(SYSDT_BolIpv4, address));
}

constexpr std::size_t vpls_router_size = 8 + 4;

/// A label, a route distinguisher, a prefix.
constexpr std::size_t vpn_head = 3 + 8;

void read_vpn_route(Reader &in, std::size_t address_size)
{
    in.nested_prefix("VPN route", vpn_head, address_size, [](Reader &inner) {
        inner.beside_label("label");
        read_rd(inner);
    });
}

void write_vpn_route(Writer &out, std::size_t address_size)
{
    out.nested_prefix("VPN route", vpn_head, address_size, [](Writer &inner) {
        inner.beside_label("label");
        write_octets(inner);
    });
}

} // namespace

void read_sr_policy(Reader &in)
{
    in.set(0, std::uint32_t{SYSDT_BOL_SRPOLICY});
    in.nested_bits("SR policy", [](Reader &inner) { sr_policy(inner); });
}

void write_sr_policy(Writer &out)
{
    if (load<std::uint32_t>(out.value(), 0) != SYSDT_BOL_SRPOLICY)
        refuse_kind("SR policy");
    out.count(0, sizeof(std::uint32_t));
    out.nested_bits("SR policy", [](Writer &inner) { sr_policy(inner); });
}

void read_vpn_ipv4(Reader &in) { read_vpn_route(in, 4); }

void read_vpn_ipv6(Reader &in) { read_vpn_route(in, 16); }

void write_vpn_ipv4(Writer &out) { write_vpn_route(out, 4); }

void write_vpn_ipv6(Writer &out) { write_vpn_route(out, 16); }

void read_l2vpn(Reader &in)
{
    in.nested<std::uint16_t>("VPLS route", [](Reader &inner) {
        const bool is_router = inner.left() == vpls_router_size;
        inner.set(0, std::uint32_t{is_router ? SYSDT_BOL_IPV4 : SYSDT_BOL_L2VPN});
        if (is_router)
            vpls_router(inner);
        else
            vpls_block(inner);
    });
}

void write_l2vpn(Writer &out)
{
    const auto kind = load<std::uint32_t>(out.value(), 0);
    out.count(0, sizeof kind);
    out.nested<std::uint16_t>("VPLS route", [kind](Writer &inner) {
        if (kind == SYSDT_BOL_IPV4)
            vpls_router(inner);
        else if (kind == SYSDT_BOL_L2VPN)
            vpls_block(inner);
        else
            refuse_kind("VPLS");
    });
}

} // namespace bgpdt::wire
