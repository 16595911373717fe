# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""FRRouting: bgpd reads one configuration with a line for each text, and tells the lines that it refuses."""

import contextlib
import re
import shutil
import subprocess
from pathlib import Path

import evpn
from speaker import ENDS, LABEL, LISTENER, NO_SYNTAX, OWN_AS, REFUSED, Ask, limit_memory, output_of, running

NAME = "FRRouting"
ADDRESS = "127.77.0.2"
MEMORY = 1 << 30
BGPD = "/usr/lib/frr/bgpd"
PROGRAM = BGPD
LOSES_OTHERS = False
TRACES = Path("/var/tmp/frr")

SETTINGS = {
    "VRFRT": "set extcommunity rt TEXT",
    "EXTCOMMUNITY": "set extcommunity rt TEXT",
    "SOO": "set extcommunity soo TEXT",
    "COMMUNITY": "set community TEXT",
    "LARGECOMMUNITY": "set large-community TEXT",
    "ASNUM": "set as-path prepend TEXT",
    "EXTCOMMUNITY_BW": "set extcommunity bandwidth TEXT",
}
WRITTEN = {
    "VRFRD": "network PREFIX rd TEXT label 16",
    "EVNPREFIX": "network IP/LENGTH rd RD ethtag TAG label 16 ..., IP prefixes alone",
    **SETTINGS,
    "EXTCOMMUNITY_BW": "set extcommunity bandwidth NUMBER, in Mbit/s; the AS is its own",
}
HEAD = """ip prefix-list all permit any
{maps}router bgp {own_as}
 bgp router-id {address}
 no bgp default ipv4-unicast
 no bgp network import-check
 neighbor {listener} remote-as {own_as}
 neighbor {listener} port {port}
 neighbor {listener} update-source {address}
 neighbor {listener} timers connect 1
 neighbor {listener} advertisement-interval 0
"""
FAMILY = """ address-family {name}
  neighbor {listener} activate
{send}{routes} exit-address-family
"""
SEND = "  neighbor {listener} send-community all\n"


def version() -> str:
    return output_of([BGPD, "--version"]).split()[2]


def setting(ask: Ask) -> str | None:
    if ask.type not in SETTINGS:
        return None
    text = ask.text
    if ask.type == "EXTCOMMUNITY_BW":
        own, colon, text = ask.text.partition(":")
        if not colon or own != str(OWN_AS):
            return None
    return SETTINGS[ask.type].replace("TEXT", text)


def key_line(ask: Ask) -> str | None:
    parts = evpn.parts_of(ask.text)
    if parts is None or parts.form != "prefix":
        return None
    gateway = "::" if ":" in parts.address else "0.0.0.0"
    segment = ":".join(["00"] * 10)
    return (
        f"  network {parts.address}/{parts.length} rd {OWN_AS}:{ask.index} ethtag {parts.tag} label {LABEL}"
        f" esi {segment} gwip {gateway} routermac 00:00:5e:00:53:01\n"
    )


class Configuration:
    """Its text, and which line is for which text of the table."""

    def __init__(self, asks: list[Ask], port: int) -> None:
        self.unsaid: dict[int, str] = {}
        maps, unicast, vpn, keys = "", "", "", ""
        for ask in asks:
            line = None
            if ask.type == "VRFRD":
                line = f"  network {ask.prefix} rd {ask.text} label {LABEL}\n"
                vpn += line
            elif ask.type == "EVNPREFIX":
                line = key_line(ask)
                keys += line or ""
            elif words := setting(ask):
                line = f" {words}\n"
                maps += f"route-map m{ask.index} permit 10\n{line}"
                unicast += f"  network {ask.prefix} route-map m{ask.index}\n"
            if line is None:
                self.unsaid[ask.index] = NO_SYNTAX
        families = (("ipv4 unicast", unicast), ("ipv4 vpn", vpn), ("l2vpn evpn", keys))
        self.text = HEAD.format(maps=maps, own_as=OWN_AS, address=ADDRESS, listener=LISTENER, port=port) + "".join(
            FAMILY.format(
                name=name,
                listener=LISTENER,
                routes=routes,
                send="" if "evpn" in name else SEND.format(listener=LISTENER),
            )
            for name, routes in families
        )
        self.index_of_line = self.lines_of(asks)

    def lines_of(self, asks: list[Ask]) -> dict[int, int]:
        """The line of each text: that of its map's setting, or that of its route."""
        found = {}
        of_map = None
        by_prefix = {ask.prefix: ask.index for ask in asks if ask.type == "VRFRD"}
        by_rd = {f"{OWN_AS}:{ask.index}": ask.index for ask in asks if ask.type == "EVNPREFIX"}
        for number, line in enumerate(self.text.splitlines(), 1):
            words = line.split()
            if words[0] == "route-map":
                of_map = int(words[1][1:])
            elif words[0] == "set":
                found[number] = of_map
            elif words[0] == "network" and "label" in words:
                found[number] = by_rd[words[3]] if "ethtag" in words else by_prefix[words[1]]
        return found


def arguments(file: Path, folder: Path) -> list[str]:
    daemon = [BGPD, "--no_zebra", "--skip_runas", "--no_kernel", "--bgp_port", "0", "--vty_port", "0"]
    daemon += ["--vty_socket", str(folder), "--pid_file", str(folder / "bgpd.pid"), "--config_file", str(file)]
    return [*daemon, "--log", "stdout"]


def crashing(asks: list[Ask], folder: Path) -> list[Ask]:
    """Those that bgpd does not survive reading."""
    file = folder / "tried.conf"
    file.write_text(Configuration(asks, 1).text)
    process = subprocess.Popen(
        [*arguments(file, folder), "--dryrun"],
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
        preexec_fn=limit_memory(MEMORY),
    )
    process.wait(60)
    clear_traces(process.pid)
    if process.returncode >= 0:
        return []
    if len(asks) == 1:
        return asks
    middle = len(asks) // 2
    return crashing(asks[:middle], folder) + crashing(asks[middle:], folder)


def clear_traces(pid: int) -> None:
    """It keeps a folder for the traces of its crashes, wherever its other files are."""
    shutil.rmtree(TRACES / f"bgpd.{pid}", ignore_errors=True)
    with contextlib.suppress(OSError):
        TRACES.rmdir()  # unless others use it


def run(asks: list[Ask], folder: Path, port: int, wait_for_routes) -> dict[int, str]:
    crashes = crashing(asks, folder)
    configuration = Configuration([ask for ask in asks if ask not in crashes], port)
    file = folder / "bgpd.conf"
    file.write_text(configuration.text)
    with running(arguments(file, folder), folder, MEMORY) as (log, pid):
        wait_for_routes()
        said = log.read_text(errors="replace")
    clear_traces(pid)
    verdicts = configuration.unsaid | {ask.index: ENDS for ask in crashes}
    verdicts |= {int(index): REFUSED for index in re.findall(r"route-map\[name='m(\d+)'\]", said)}
    by_line = configuration.index_of_line
    lines = [int(number) for number in re.findall(r"on config line (\d+):", said)]
    return verdicts | {by_line[number]: REFUSED for number in lines if number in by_line}
