// SPDX-License-Identifier: Apache-2.0
/// @file
/// The bits by which the groups of a BGP-LS text are marked as seen.
#pragma once

#include "common/types.hpp"

namespace bgpdt {

/// Of a key.
namespace key_bit {
enum : u32 {
    route_type = 0x001,
    protocol = 0x002,
    identifier = 0x004,
    local = 0x008,
    remote = 0x010,
    link = 0x020,
    unknown = 0x040,
    index = 0x080,
    prefix = 0x100,
    te = 0x200,
    sid = 0x400,
};
} // namespace key_bit

/// Of LOCAL and REMOTE.
namespace node_bit {
enum : u32 {
    as = 0x01,
    bgp_ls_id = 0x02,
    ospf_area = 0x04,
    igp_router_id = 0x08,
    bgp_router_id = 0x10,
    member_as = 0x20,
    ipv4_router_id = 0x40,
    ipv6_router_id = 0x80,
};
} // namespace node_bit

/// Of LINK.
namespace link_bit {
enum : u32 {
    identifier = 0x01,
    local = 0x02,
    remote = 0x04,
    link_local_id = 0x08,
    link_remote_id = 0x10,
    if_address = 0x20,
    peer_address = 0x40,
    mt_id = 0x80,
};
} // namespace link_bit

/// Of PREFIX.
namespace prefix_bit {
enum : u32 {
    mt_id = 0x1,
    ospf_route_type = 0x2,
    prefix = 0x4,
};
} // namespace prefix_bit

/// Of TE.
namespace te_bit {
enum : u32 {
    protocol_origin = 0x01,
    flag = 0x02,
    endpoint = 0x04,
    color = 0x08,
    originator_as = 0x10,
    originator_address = 0x20,
    discriminator = 0x40,
};
} // namespace te_bit

/// Of SID.
namespace sid_bit {
enum : u32 {
    mt_id = 0x1,
    sid = 0x2,
};
} // namespace sid_bit

} // namespace bgpdt
