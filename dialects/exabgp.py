# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""ExaBGP: a helper process that it starts tells it each text, and writes down what it answers."""

import getpass
import json
import sys
from pathlib import Path

from speaker import (
    ENDS,
    LABEL,
    LISTENER,
    NEXT_HOP,
    NO_ANSWER,
    NO_SYNTAX,
    OWN_AS,
    REFUSED,
    Ask,
    output_of,
    running,
    wait_until,
)

NAME = "ExaBGP"
PROGRAM = "exabgp"
LOSES_OTHERS = True  # what it cannot send takes with it what it would send in the same go
ADDRESS = "127.77.0.5"
MEMORY = 1 << 30

SETTINGS = {
    "VRFRD": f"rd TEXT label {LABEL}",
    "VRFRT": "extended-community [target:TEXT]",
    "EXTCOMMUNITY": "extended-community [target:TEXT]",
    "SOO": "extended-community [origin:TEXT]",
    "EXTCOMMUNITY_BW": "extended-community [bandwidth:TEXT]",
    "COMMUNITY": "community [TEXT]",
    "LARGECOMMUNITY": "large-community [TEXT]",
    "ASNUM": "as-path [TEXT]",
}
WRITTEN = {kind: f"announce route PREFIX next-hop IP {line}" for kind, line in SETTINGS.items()}
CONFIG = """process teller {{
 run {python} {helper} {folder};
 encoder text;
}}
neighbor {listener} {{
 router-id {address};
 local-address {address};
 local-as {own_as};
 peer-as {own_as};
 connect {port};
 hold-time 180;
 family {{ ipv4 unicast; ipv4 mpls-vpn; }}
 api {{ processes [ teller ]; }}
}}
"""

ENVIRONMENT = {
    "exabgp.daemon.drop": "false",
    "exabgp.api.cli": "false",
    "exabgp.log.destination": "stdout",
    "PYTHONDONTWRITEBYTECODE": "1",
}


def version() -> str:
    return output_of(["exabgp", "--version"]).split()[2]


def line_of(ask: Ask) -> str:
    return f"announce route {ask.prefix} next-hop {NEXT_HOP} {SETTINGS[ask.type].replace('TEXT', ask.text)}"


def answers_to(asks: list[Ask], folder: Path, port: int, wait_for_routes) -> list[str]:
    """Fewer than asked where the one behind the last ends it."""
    (folder / "lines.json").write_text(json.dumps([line_of(ask) for ask in asks]))
    answers = folder / "answers.json"
    answers.unlink(missing_ok=True)
    config = folder / "exabgp.conf"
    config.write_text(
        CONFIG.format(
            python=sys.executable, helper=Path(__file__).with_name("exabgp_helper.py"), folder=folder,
            listener=LISTENER, address=ADDRESS, own_as=OWN_AS, port=port,
        )
    )  # fmt: skip
    with running(["exabgp", str(config)], folder, MEMORY, ENVIRONMENT | {"exabgp.daemon.user": getpass.getuser()}):
        wait_until(answers.exists, 60, "ExaBGP answers")
        told = json.loads(answers.read_text())
        if len(told) == len(asks):
            wait_for_routes()
    return told


def run(asks: list[Ask], folder: Path, port: int, wait_for_routes) -> dict[int, str]:
    verdicts = {ask.index: NO_SYNTAX for ask in asks if ask.type not in SETTINGS}
    said = [ask for ask in asks if ask.index not in verdicts]
    while len(told := answers_to(said, folder, port, wait_for_routes)) < len(said):
        verdicts[said.pop(len(told)).index] = ENDS
    words = {"error": REFUSED, "": NO_ANSWER}
    return verdicts | {ask.index: words[answer] for ask, answer in zip(said, told) if answer in words}
