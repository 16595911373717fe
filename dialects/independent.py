# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What tshark's fields of a route say, written as our types write it."""

Fields = list[tuple[str, str]]
PATH = "bgp.update.path_attribute."
KEY = "bgp.evpn.nlri."


def one(fields: Fields, *names: str) -> str:
    """The first field that has one of the names; empty if there is none."""
    return next((value for name, value in fields if name in names), "")


def extended(fields: Fields) -> str:
    administrator = one(fields, *(f"bgp.ext_com.value_{kind}" for kind in ("as2", "as4", "IP4")))
    return administrator + ":" + one(fields, *(f"bgp.ext_com.value_{kind}" for kind in ("an2", "an4", "link_bw")))


def community(fields: Fields) -> str:
    names = dict(fields)
    if PATH + "community_as" in names:
        return one(fields, PATH + "community_as") + ":" + one(fields, PATH + "community_value")
    number = int(one(fields, PATH + "community_wellknown") or "0", 0)
    return f"{number >> 16}:{number & 0xFFFF}"


def segment(fields: Fields) -> str:
    octets = one(fields, KEY + "esi").split(":")
    return ".".join(octets[at] + octets[at + 1] for at in range(0, 10, 2))


def address(fields: Fields) -> str:
    value = one(fields, KEY + "ip.addr", KEY + "ipv6.addr")
    return f"[{value}]" if ":" in value else value


def mac(fields: Fields) -> str:
    octets = one(fields, KEY + "mac_addr").split(":")
    return "-".join(octets[at] + octets[at + 1] for at in range(0, 6, 2))


def evpn_key(fields: Fields) -> str:
    kind = one(fields, KEY + "rt")
    if kind == "1":
        return segment(fields) + ":" + one(fields, KEY + "etag")
    if kind == "4":
        return ":".join((segment(fields), one(fields, KEY + "iplen"), address(fields)))
    tag = one(fields, KEY + "etag")
    if kind == "5":
        return ":".join((tag, address(fields), one(fields, KEY + "prefix_len")))
    host = one(fields, KEY + "iplen") + ":" + address(fields)
    return f"{tag}:{one(fields, KEY + 'maclen')}:{mac(fields)}:{host}" if kind == "2" else f"{tag}:{host}"


READERS = {
    "VRFRD": lambda fields: one(fields, "bgp.rd"),
    "VRFRT": extended,
    "SOO": extended,
    "EXTCOMMUNITY": extended,
    "EXTCOMMUNITY_BW": extended,
    "COMMUNITY": community,
    "LARGECOMMUNITY": lambda fields: ":".join(
        one(fields, f"bgp.large_communities.{part}") for part in ("ga", "ldp1", "ldp2")
    ),
    "ASNUM": lambda fields: one(fields, PATH + "as_path_segment.as4"),
    "EVNPREFIX": evpn_key,
}
