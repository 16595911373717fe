# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""The types of the table: where a value of one stands on the wire, and how our record of it stands to that."""

import struct
from collections.abc import Callable
from dataclasses import dataclass

import evpn
import wire
from wire import Route

ADDRESS_FORM, TWO_OCTET_FORM, FOUR_OCTET_FORM = 0, 1, 2


def form_word(code: int) -> bytes:
    """The notation that our record keeps behind the eight bytes, as the type code gives it: 2-octet AS, address, 4-octet AS."""
    return {0: TWO_OCTET_FORM, 1: ADDRESS_FORM, 2: FOUR_OCTET_FORM}[code].to_bytes(4, "big")


def attribute(code: int) -> Callable[[Route], bytes]:
    return lambda route: route.attributes.get(code, b"")


def distinguisher(route: Route) -> bytes:
    """Behind the length and the label."""
    return route.key[4:12]


def as_path(route: Route) -> bytes:
    """The numbers of the path's only segment."""
    return route.attributes.get(wire.AS_PATH, b"")[2:]


def extended_value(data: bytes) -> bytes:
    return data + form_word(data[0] & 0x3F)


def bandwidth_value(data: bytes) -> bytes | None:
    """Ours keeps the number whole, the wire as a float of 32 bits."""
    (number,) = struct.unpack(">f", data[4:])
    return data[:4] + int(number).to_bytes(8, "big") if number >= 0 else None


@dataclass(frozen=True)
class Subject:
    about: str
    on_wire: Callable[[Route], bytes]
    wire_size: int  # of our record: how many of its first bytes stand on the wire; 0: another layout
    value: Callable[[bytes], bytes | None] | None  # our record of bytes from the wire


SUBJECTS = {
    "VRFRD": Subject("route distinguisher", distinguisher, 8, lambda data: data + form_word(data[1])),
    "VRFRT": Subject("route target", attribute(wire.EXTENDED), 8, extended_value),
    "SOO": Subject("site of origin", attribute(wire.EXTENDED), 8, extended_value),
    "EXTCOMMUNITY": Subject("extended community", attribute(wire.EXTENDED), 8, extended_value),
    "COMMUNITY": Subject("community", attribute(wire.COMMUNITIES), 4, lambda data: data + (1).to_bytes(4, "big")),
    "LARGECOMMUNITY": Subject("large community", attribute(wire.LARGE), 12, lambda data: data + bytes(4)),
    "ASNUM": Subject("AS number", as_path, 4, lambda data: data + bytes(4)),
    "EVNPREFIX": Subject(
        "EVPN route", lambda route: evpn.shared_part(route.key), 0, lambda data: evpn.own_value(data, 89)
    ),
    "EXTCOMMUNITY_BW": Subject("link bandwidth", attribute(wire.EXTENDED), 0, bandwidth_value),
    "VRFRTV6": Subject("IPv6 route target", attribute(wire.IPV6_EXTENDED), 20, lambda data: data + bytes(4)),
    "BGPLSPREFIX": Subject("BGP-LS route", lambda route: route.key, 0, None),
    "BOLPREFIX": Subject("SR policy", lambda route: route.key, 0, None),
}
