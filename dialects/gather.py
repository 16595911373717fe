# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Has the speakers announce the texts, side by side, each to a passive speaker of its own."""

import shutil
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field
from pathlib import Path
from types import ModuleType

import bird
import exabgp
import frr
import gobgp
import wire
from listener import Listener
from speaker import LISTENER, MISSING, OWN_AS, SILENT, Ask, Refuses
from subjects import SUBJECTS

SPEAKERS = (gobgp, frr, bird, exabgp)
SESSION_SECONDS = 30
QUIET_SECONDS = 3
LIMIT_SECONDS = 90


@dataclass
class Heard:
    """Of one speaker: what became of each text, and the route of each that it announced, by index."""

    name: str
    version: str
    cells: dict[int, str]
    routes: dict[int, wire.Route] = field(default_factory=dict)


def key_of(route: wire.Route) -> bytes:
    """What tells the text: its prefix, or the route distinguisher of an EVPN key."""
    return route.key[2:10] if route.family == wire.EVPN else route.key[-4:]


def hear_once(speaker: ModuleType, asks: list[Ask]) -> Heard:
    listener = Listener(LISTENER, OWN_AS)

    def wait_for_routes() -> None:
        if not listener.established.wait(SESSION_SECONDS):
            raise Refuses("no session")
        listener.wait_for_quiet(QUIET_SECONDS, LIMIT_SECONDS)

    try:
        with tempfile.TemporaryDirectory(prefix="interop-") as folder:
            verdicts = speaker.run(asks, Path(folder), listener.port, wait_for_routes)
    except (Refuses, subprocess.TimeoutExpired) as why:
        print(f"{speaker.NAME}: {why}")
        return Heard(speaker.NAME, "", {ask.index: MISSING for ask in asks})
    finally:
        listener.close()
    announced = {key_of(route): route for update in listener.updates for route in wire.routes_of(update)}
    heard = Heard(speaker.NAME, speaker.version(), {})
    for ask in asks:
        route = announced.get(ask.key)
        value = SUBJECTS[ask.type].on_wire(route).hex() if route else ""
        heard.cells[ask.index] = verdicts.get(ask.index) or value or SILENT
        if route and ask.index not in verdicts and value:
            heard.routes[ask.index] = route
    return heard


def hear(speaker: ModuleType, asks: list[Ask]) -> Heard:
    if not asks or shutil.which(speaker.PROGRAM) is None:
        return Heard(speaker.NAME, "", {ask.index: MISSING for ask in asks})
    heard = hear_once(speaker, asks)
    for ask in asks:
        if speaker.LOSES_OTHERS and heard.cells[ask.index] == SILENT:
            alone = hear_once(speaker, [ask])
            heard.cells |= alone.cells
            heard.routes |= alone.routes
    return heard


def hear_all(asks_of: dict[str, list[Ask]]) -> list[Heard]:
    """Side by side: most of their time they wait."""
    with ThreadPoolExecutor(len(SPEAKERS)) as pool:
        return list(pool.map(lambda speaker: hear(speaker, asks_of[speaker.NAME]), SPEAKERS))
