// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Multicast-VPN route keys from text: what the two grammars and the exported parsers of single kinds share.
#pragma once

#include "common/key_address.hpp"
#include "route_keys/mvpn/key.hpp"

namespace bgpdt::mvpn {

/// Where the sections of a text begin. The first begins at its start.
struct Split {
    char *text;
    u32 separators;
    u32 positions[most_sections - 1]{};

    char *section(u32 number) const { return number == 0 ? text : text + positions[number - 1]; }
};

/// Reads an address of one of the families into the field.
using ReadAddress = u32(const char *text, SYSDT_EvpnAddress &field);

ReadAddress read_either;

inline bool is_ipv6_multicast(const SYSDT_EvpnAddress &field) { return field.ipv6[0] == 0xFF; }

/// Reads the sections of the kind, first to last.
u32 read_sections(const Kind &kind, const Split &split, ReadAddress *read_address, SYSDT_BolValue &value);

/// Reads a source and a group, or two originators. Never refused.
void read_ipv4_pair(const Split &split, SYSDT_BolValue &value);

/// Reads two sections, of which the second is an IPv6 address and decides which.
u32 read_pair(const Split &split, SYSDT_BolValue &value);

} // namespace bgpdt::mvpn
