# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""BIRD: a text that it refuses fails its whole configuration, so each is tried alone by its checker before all run."""

import subprocess
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from speaker import LISTENER, NEXT_HOP, NO_SYNTAX, OWN_AS, REFUSED, Ask, output_of, running

NAME = "BIRD"
PROGRAM = "bird"
LOSES_OTHERS = False
ADDRESS = "127.77.0.4"
OWN_PORT = 17904  # it must listen
MEMORY = 1 << 30

SETTINGS = {
    "VRFRT": "bgp_ext_community.add((rt,TEXT));",
    "EXTCOMMUNITY": "bgp_ext_community.add((rt,TEXT));",
    "SOO": "bgp_ext_community.add((ro,TEXT));",
    "COMMUNITY": "bgp_community.add((TEXT));",
    "LARGECOMMUNITY": "bgp_large_community.add((TEXT));",
    "ASNUM": "bgp_path.prepend(TEXT);",
}
WRITTEN = {
    "VRFRD": "route TEXT PREFIX unreachable",
    **{kind: f"{line[:-1]}, a comma for each colon" for kind, line in SETTINGS.items()},
    "ASNUM": SETTINGS["ASNUM"][:-1],
}
CONFIG = """log stderr all;
router id {address};
vpn4 table distinguished;
protocol device {{ }}
protocol static {{ ipv4;
{unicast}}}
protocol static {{ vpn4 {{ table distinguished; }};
{vpn}}}
protocol bgp {{
 local {address} port {own_port} as {own_as};
 neighbor {listener} port {port} as {own_as};
 multihop; strict bind yes; connect delay time 1; connect retry time 1;
 ipv4 {{ export all; import none; next hop address {next_hop}; }};
 vpn4 mpls {{ table distinguished; export all; import none; next hop address {next_hop}; }};
}}
"""


def version() -> str:
    return output_of(["bird", "--version"]).split()[-1]


def route_line(ask: Ask) -> str | None:
    if ask.type == "VRFRD":
        return f" route {ask.text} {ask.prefix} unreachable;\n"
    if ask.type not in SETTINGS:
        return None
    return f" route {ask.prefix} unreachable {{ {SETTINGS[ask.type].replace('TEXT', ask.text.replace(':', ','))} }};\n"


def configuration(asks: list[Ask], port: int) -> str:
    lines = {ask: route_line(ask) or "" for ask in asks}
    return CONFIG.format(
        unicast="".join(line for ask, line in lines.items() if ask.type != "VRFRD"),
        vpn="".join(line for ask, line in lines.items() if ask.type == "VRFRD"),
        address=ADDRESS, own_port=OWN_PORT, own_as=OWN_AS, listener=LISTENER, port=port, next_hop=NEXT_HOP,
    )  # fmt: skip


def takes(ask: Ask, folder: Path) -> bool:
    file = folder / f"{ask.index}.conf"
    file.write_text(configuration([ask], 1))
    done = subprocess.run(["bird", "-p", "-c", str(file)], capture_output=True, timeout=10, check=False)
    return done.returncode == 0


def run(asks: list[Ask], folder: Path, port: int, wait_for_routes) -> dict[int, str]:
    verdicts = {ask.index: NO_SYNTAX for ask in asks if route_line(ask) is None}
    said = [ask for ask in asks if ask.index not in verdicts]
    with ThreadPoolExecutor(2) as pool:
        taken = [ask for ask, good in zip(said, pool.map(lambda ask: takes(ask, folder), said)) if good]
    verdicts |= {ask.index: REFUSED for ask in said if ask not in taken}
    file = folder / "bird.conf"
    file.write_text(configuration(taken, port))
    with running(["bird", "-f", "-c", str(file), "-s", "control", "-P", "pid"], folder, MEMORY):
        wait_for_routes()
    return verdicts
