# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Announced routes as a capture file (pcap, raw IPv4), one a packet, and what tshark reads in it."""

import json
import re
import socket
import struct
import subprocess
from collections.abc import Iterator
from pathlib import Path

import wire
from speaker import LISTENER, Refuses, output_of
from wire import Route

RAW_IP = 101  # the link type whose packets begin with the IP header
BGP_PORT = 179
WELL_KNOWN = (1, 2, 3, 5)


def version() -> str:
    return re.search(r"TShark \D*([\d.]*\d)", output_of(["tshark", "--version"]))[1]


def attribute(code: int, value: bytes) -> bytes:
    """With its length in two octets; transitive, and optional but for the well-known ones."""
    return bytes([0x50 if code in WELL_KNOWN else 0xD0, code]) + len(value).to_bytes(2, "big") + value


def update_of(route: Route) -> bytes:
    """The route alone, with its attributes and its key as they came."""
    attributes = dict(route.attributes)
    if route.family == wire.IPV4:
        key = route.key
    else:
        reach = attributes[wire.MP_REACH]
        attributes[wire.MP_REACH] = reach[: 4 + reach[3] + 1] + route.key
        key = b""
    packed = b"".join(attribute(code, value) for code, value in attributes.items())
    return wire.message(wire.UPDATE, bytes(2) + len(packed).to_bytes(2, "big") + packed + key)


def packet(sequence: int, payload: bytes) -> bytes:
    """A TCP segment to BGP's port; nobody looks at the checksums."""
    address = socket.inet_aton(LISTENER)
    tcp = struct.pack(">HHIIBBHHH", BGP_PORT, 40000, sequence, 0, 5 << 4, 0x18, 65535, 0, 0)
    size = 20 + len(tcp) + len(payload)
    return (
        struct.pack(">BBHHHBBH4s4s", 0x45, 0, size, 0, 0, 64, socket.IPPROTO_TCP, 0, address, address) + tcp + payload
    )


def write_capture(file: Path, routes: list[Route]) -> None:
    data = struct.pack(">IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, 65535, RAW_IP)
    sequence = 1
    for number, route in enumerate(routes):
        payload = update_of(route)
        whole = packet(sequence, payload)
        sequence += len(payload)
        data += struct.pack(">IIII", number, 0, len(whole), len(whole)) + whole
    file.write_bytes(data)


def leaves(tree) -> Iterator[tuple[str, str]]:
    """Every field that has a value of its own."""
    items = tree.items() if isinstance(tree, dict) else enumerate(tree)
    for name, value in items:
        if isinstance(value, (dict, list)):
            yield from leaves(value)
        else:
            yield str(name), value


def decoded(folder: Path, routes: list[Route]) -> list[list[tuple[str, str]]]:
    """Of each route the fields that tshark finds, in order."""
    file = folder / "routes.pcap"
    write_capture(file, routes)
    done = subprocess.run(
        ["tshark", "-r", str(file), "-J", "bgp", "-T", "json", "--no-duplicate-keys", "-o", "bgp.asn_len:4 octet"],
        capture_output=True, timeout=120, check=False,
    )  # fmt: skip
    if done.returncode != 0:
        raise Refuses("tshark: " + done.stderr.decode(errors="replace").strip())
    return [list(leaves(each["_source"]["layers"].get("bgp", {}))) for each in json.loads(done.stdout)]
