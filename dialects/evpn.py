# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""EVPN keys (RFC 7432, RFC 9136): the parts of our texts, and what of a key on the wire our values hold, too."""

import re
from dataclasses import dataclass

ESI = r"(?P<esi>[0-9a-fA-F.]+)"
TAG = r"(?P<tag>\d+)"
ADDRESS = r"(?P<length>\d+):(?P<address>[\d.]+|\[[0-9a-fA-F:.]+\])"
FORMS = {
    "mac-ip": rf"{TAG}:48:(?P<mac>[0-9a-fA-F]{{4}}-[0-9a-fA-F]{{4}}-[0-9a-fA-F]{{4}}):{ADDRESS}",
    "prefix": rf"{TAG}:(?P<address>\d+\.\d+\.\d+\.\d+|\[[0-9a-fA-F:.]+\]):(?P<length>\d+)",
    "inclusive": rf"{TAG}:{ADDRESS}",
    "segment": rf"{ESI}:{ADDRESS}",
    "discovery": rf"{ESI}:{TAG}",
}


@dataclass(frozen=True)
class Parts:
    form: str
    esi: str = ""
    tag: str = ""
    mac: str = ""
    length: str = ""
    address: str = ""

    @property
    def mac_with_colons(self) -> str:
        digits = self.mac.replace("-", "")
        return ":".join(digits[at : at + 2] for at in range(0, 12, 2))

    @property
    def esi_octets(self) -> list[str]:
        digits = self.esi.replace(".", "")
        return [digits[at : at + 2] for at in range(0, len(digits), 2)]


def parts_of(text: str) -> Parts | None:
    """As far as the others' commands can say it: an address stands with its whole length."""
    for form, pattern in FORMS.items():
        match = re.fullmatch(pattern, text)
        if not match:
            continue
        found = {name: value.strip("[]") for name, value in match.groupdict().items()}
        whole = "128" if ":" in found.get("address", "") else "32"
        if form != "prefix" and "length" in found and found["length"] != whole:
            return None
        return Parts(form, **found)
    return None


def shared_part(key: bytes) -> bytes:
    """Of a key on the wire what our values hold: neither route distinguisher nor label, gateway nor length; of the routes
    that have a segment identifier besides an address, the address."""
    kind, body = key[0], key[10:]
    if kind == 1:
        body = body[:14]
    elif kind == 2:
        size = 4 + 1 + 6 + 1
        body = body[10:]
        body = body[: size + body[size - 1] // 8]
    elif kind == 5:
        size = 16 if len(body) > 40 else 4
        body = body[10 : 10 + 4 + 1 + size]
    return bytes([kind]) + body


def own_part(parts: list[dict[str, str]]) -> bytes:
    """The same of one of our values, from its fields: of the two addresses the one that the family names."""
    named = [(part["name"], bytes.fromhex(part["hex"])) for part in parts if "name" in part][1:]
    family = b"".join(value for name, value in named if name.endswith("family"))
    unused = "IPv4" if any(family) else "IPv6"
    return b"".join(value for name, value in named if not name.endswith(("family", unused)))


def own_value(shared: bytes, size: int) -> bytes:
    """What we keep of such a part."""
    sub_kind = (1).to_bytes(4, "big")
    if shared[0] == 1:
        return (sub_kind + shared).ljust(size, b"\0")
    head = {2: 13, 3: 6, 4: 12, 5: 6}[shared[0]]
    address = shared[head:]
    family = len(address) == 16
    both = bytes(4) + address if family else address + bytes(16)
    return (sub_kind + shared[:head] + both + bytes([family])).ljust(size, b"\0")
