# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""GoBGP: the daemon is told each text by its own command-line client."""

import shlex
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import evpn
from speaker import LABEL, LISTENER, NEXT_HOP, NO_SYNTAX, OWN_AS, REFUSED, Ask, output_of, running, wait_until

NAME = "GoBGP"
PROGRAM = "gobgpd"
LOSES_OTHERS = False
ADDRESS = "127.77.0.3"
PORT = 50077  # of its own interface
MEMORY = 4 << 30  # addresses, most of which Go never touches

CONFIG = """
[global.config]
  as = {own_as}
  router-id = "{address}"
  port = -1
[[neighbors]]
  [neighbors.config]
    neighbor-address = "{listener}"
    peer-as = {own_as}
  [neighbors.timers.config]
    connect-retry = 1
  [neighbors.transport.config]
    remote-port = {port}
    local-address = "{address}"
"""
FAMILY = """  [[neighbors.afi-safis]]
    [neighbors.afi-safis.config]
      afi-safi-name = "{family}"
"""
FAMILIES = ("ipv4-unicast", "l3vpn-ipv4-unicast", "l2vpn-evpn")

# How a text is told; TEXT stands for it, PREFIX for what tells its route.
ROUTES = {
    "VRFRD": "-a vpnv4 PREFIX label 16 rd TEXT",
    "VRFRT": "PREFIX rt TEXT",
    "EXTCOMMUNITY": "PREFIX rt TEXT",
    "VRFRTV6": "PREFIX rt TEXT",
    "COMMUNITY": "PREFIX community TEXT",
    "LARGECOMMUNITY": "PREFIX large-community TEXT",
    "ASNUM": "PREFIX aspath TEXT",
}
ACTIONS = {"SOO": "soo:TEXT", "EXTCOMMUNITY_BW": "lb:TEXT"}
KEYS = {
    "discovery": "a-d esi ARBITRARY {esi} etag {tag} label {label} rd {rd}",
    "mac-ip": "macadv {mac} {address} etag {tag} label {label} rd {rd}",
    "inclusive": "multicast {address} etag {tag} rd {rd}",
    "segment": "{address} esi ARBITRARY {esi} rd {rd}",
    "prefix": "prefix {address}/{length} etag {tag} label {label} rd {rd}",
}
WRITTEN = {
    **{kind: f"gobgp global rib add {line}" for kind, line in ROUTES.items()},
    **{kind: f"gobgp policy statement NAME add action ext-community add {line}" for kind, line in ACTIONS.items()},
    "EVNPREFIX": "gobgp global rib add -a evpn macadv MAC IP etag TAG ..., and so on",
}


def version() -> str:
    return output_of(["gobgpd", "--version"]).split()[-1]


def command(words: str) -> list[str]:
    return ["gobgp", "-u", ADDRESS, "-p", str(PORT), *shlex.split(words)]


def tell(words: str) -> bool:
    """Whether the client and the daemon took it; what they say otherwise differs from kind to kind, and is not empty."""
    return output_of(command(words)).strip() == ""


def spelled(ask: Ask) -> str:
    """IPv6 targets have a colon in front of their number there."""
    return ask.text[::-1].replace(".", ":", 1)[::-1] if ask.type == "VRFRTV6" else ask.text


def key_words(ask: Ask) -> str | None:
    parts = evpn.parts_of(ask.text)
    if parts is None:
        return None
    octets = parts.esi_octets
    if octets and octets[0] != "00":
        return None  # its words for the other types say parts of the identifier, not its octets
    words = KEYS[parts.form].format(
        esi=":".join(octets[1:]), tag=parts.tag, mac=parts.mac_with_colons, address=parts.address, length=parts.length,
        label=LABEL, rd=f"{OWN_AS}:{ask.index}",
    )  # fmt: skip
    return "global rib add -a evpn " + ("esi " if parts.form == "segment" else "") + words


def announce_by_action(ask: Ask) -> bool:
    """A policy that puts the community on the text's own route."""
    name = f"s{ask.index}"
    action = ACTIONS[ask.type].replace("TEXT", spelled(ask))
    return (
        tell(f"policy prefix add {name} {ask.prefix}")
        and tell(f"policy statement {name} add condition prefix {name}")
        and tell(f"policy statement {name} add action ext-community add -- {action}")
        and tell(f"policy statement {name} add action accept")
        and tell(f"policy add {name} {name}")
        and tell(f"global policy import add {name} default accept")
        and tell(f"global rib add {ask.prefix} nexthop {NEXT_HOP}")
    )


def announce(ask: Ask) -> str | None:
    """None if it was taken."""
    if ask.type in ACTIONS:
        return None if announce_by_action(ask) else REFUSED
    if ask.type == "EVNPREFIX":
        words = key_words(ask)
    elif ask.type in ROUTES:
        line = ROUTES[ask.type].replace("PREFIX", ask.prefix).replace("TEXT", spelled(ask))
        family = "-a vpnv4 " if line.startswith("-a vpnv4 ") else ""
        words = f"global rib add {family}-- {line.removeprefix(family)} nexthop {NEXT_HOP}"
    else:
        words = None
    if words is None:
        return NO_SYNTAX
    return None if tell(words) else REFUSED


def run(asks: list[Ask], folder: Path, port: int, wait_for_routes) -> dict[int, str]:
    config = folder / "gobgpd.toml"
    text = CONFIG.format(own_as=OWN_AS, address=ADDRESS, listener=LISTENER, port=port)
    config.write_text(text + "".join(FAMILY.format(family=family) for family in FAMILIES))
    daemon = ["gobgpd", "-f", str(config), "--api-hosts", f"{ADDRESS}:{PORT}", "--log-plain", "--pprof-disable"]
    with running(daemon, folder, MEMORY):
        wait_until(
            lambda: "Usage" not in (said := output_of(command("global"))) and "AS:" in said, 20, "gobgpd answers"
        )
        with ThreadPoolExecutor(2) as pool:
            told = dict(zip((ask.index for ask in asks), pool.map(announce, asks)))
        wait_for_routes()
    return {index: verdict for index, verdict in told.items() if verdict is not None}
