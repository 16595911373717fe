# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What a BGP UPDATE announces (RFC 4271, RFC 4760), as far as the table needs it: routes and their attributes in bytes."""

from dataclasses import dataclass

MARKER = b"\xff" * 16
OPEN, UPDATE, NOTIFICATION, KEEPALIVE = 1, 2, 3, 4
AS_PATH, COMMUNITIES, MP_REACH, EXTENDED, LARGE, IPV6_EXTENDED = 2, 8, 14, 16, 32, 25

IPV4, VPNV4, EVPN, LINK_STATE = (1, 1), (1, 128), (25, 70), (16388, 71)
# What the passive speaker says it takes.
FAMILIES = {
    "ipv4 unicast": IPV4,
    "ipv6 unicast": (2, 1),
    "vpnv4": VPNV4,
    "vpnv6": (2, 128),
    "evpn": EVPN,
    "bgp-ls": LINK_STATE,
    "ipv4 sr-policy": (1, 73),
    "ipv6 sr-policy": (2, 73),
    "route target constraint": (1, 132),
}


@dataclass(frozen=True)
class Route:
    """One announced route: its key as the family writes it, without path identifier, and the attributes it came with."""

    family: tuple[int, int]
    key: bytes
    attributes: dict[int, bytes]


def message(kind: int, body: bytes = b"") -> bytes:
    return MARKER + (19 + len(body)).to_bytes(2, "big") + bytes([kind]) + body


def attributes_of(data: bytes) -> dict[int, bytes]:
    found = {}
    while data:
        flags, code = data[0], data[1]
        head = 4 if flags & 0x10 else 3
        size = int.from_bytes(data[2:head], "big")
        found[code] = data[head : head + size]
        data = data[head + size :]
    return found


def prefix_keys(data: bytes) -> list[bytes]:
    """Keys that tell their length in bits: IPv4, IPv6, and with a label those of a VPN."""
    keys = []
    while data:
        size = 1 + (data[0] + 7) // 8
        keys.append(data[:size])
        data = data[size:]
    return keys


def typed_keys(data: bytes, type_size: int, length_size: int) -> list[bytes]:
    """Keys with a type, then their length in bytes: EVPN's, BGP-LS's."""
    keys = []
    head = type_size + length_size
    while data:
        size = head + int.from_bytes(data[type_size:head], "big")
        keys.append(data[:size])
        data = data[size:]
    return keys


def keys_of(family: tuple[int, int], data: bytes) -> list[bytes]:
    if family == EVPN:
        return typed_keys(data, 1, 1)
    if family == LINK_STATE:
        return typed_keys(data, 2, 2)
    return prefix_keys(data)


def routes_of(update: bytes) -> list[Route]:
    """What the UPDATE, without its header, announces."""
    withdrawn = int.from_bytes(update[:2], "big")
    at = 2 + withdrawn
    size = int.from_bytes(update[at : at + 2], "big")
    attributes = attributes_of(update[at + 2 : at + 2 + size])
    routes = [Route(IPV4, key, attributes) for key in prefix_keys(update[at + 2 + size :])]
    reach = attributes.get(MP_REACH)
    if reach:
        family = (int.from_bytes(reach[:2], "big"), reach[2])
        keys = reach[4 + reach[3] + 1 :]
        routes += [Route(family, key, attributes) for key in keys_of(family, keys)]
    return routes
