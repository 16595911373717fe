// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// One value each, from the wire and back.
#pragma once

#include "reader.hpp"
#include "writer.hpp"

namespace bgpdt::wire {

/// @throws BadBytes
using ReadOne = void(Reader &in);
/// @throws NotSent
using WriteOne = void(Writer &out);

ReadOne read_community, read_community_list, read_extended_community, read_route_target, read_site_of_origin,
    read_large_community, read_rd;
WriteOne write_community, write_community_list, write_octets, write_large_community;

ReadOne read_evpn, read_mvpn, read_sr_policy, read_l2vpn, read_vpn_ipv4, read_vpn_ipv6, read_link_state,
    read_vpn_link_state;
WriteOne write_evpn, write_mvpn, write_sr_policy, write_l2vpn, write_vpn_ipv4, write_vpn_ipv6, write_link_state,
    write_vpn_link_state;

/// @throws NotSent: there is no NLRI of the value's kind
[[noreturn]] void refuse_kind(const char *nlri);

} // namespace bgpdt::wire
