# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What all speakers share: a text that one is asked to announce, what came of it, and a bounded process."""

import contextlib
import os
import resource
import signal
import subprocess
import time
from collections.abc import Callable, Iterator
from dataclasses import dataclass
from pathlib import Path

OWN_AS = 64496
LISTENER = "127.77.0.1"
NEXT_HOP = "192.0.2.1"
LABEL = 16
CPU_SECONDS = 60

# What becomes of a text, where it is not bytes.
REFUSED = "refused"
TAKEN = "taken"  # and what it gives cannot be compared
NO_SYNTAX = "no syntax"  # the speaker has no way to say this
NO_ANSWER = "no answer"  # it neither took nor refused the text: its interface fails
SILENT = "nothing"  # it takes the text, and announces nothing of it
ENDS = "ends"  # the speaker does not survive the text
MISSING = "missing"  # the speaker is not there, or does not start


@dataclass(frozen=True)
class Ask:
    """A text; the index finds what is announced for it."""

    index: int
    type: str
    text: str

    @property
    def prefix(self) -> str:
        """Of the networks for benchmarks (RFC 2544), since there are more texts than documentation addresses."""
        return f"198.18.{self.index >> 8}.{self.index & 255}/32"

    @property
    def key(self) -> bytes:
        """What tells its route on the wire: that prefix, of an EVPN route its route distinguisher."""
        number = self.index.to_bytes(2, "big")
        return (
            bytes(2) + OWN_AS.to_bytes(2, "big") + bytes(2) + number
            if self.type == "EVNPREFIX"
            else bytes([198, 18]) + number
        )


class Refuses(Exception):
    """The speaker cannot be used at all; the words say why."""


def limit_memory(size: int) -> Callable[[], None]:
    def limit() -> None:
        resource.setrlimit(resource.RLIMIT_AS, (size, size))
        resource.setrlimit(resource.RLIMIT_CPU, (CPU_SECONDS, CPU_SECONDS))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    return limit


@contextlib.contextmanager
def running(
    command: list[str], folder: Path, memory: int, environment: dict[str, str] | None = None
) -> Iterator[tuple[Path, int]]:
    """The command in a group of its own, which is ended at the end; yields the file that it writes to, and its id."""
    log = folder / "output"
    with log.open("wb") as output:
        process = subprocess.Popen(
            command,
            cwd=folder,
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=subprocess.STDOUT,
            env={**os.environ, **(environment or {})},
            start_new_session=True,
            preexec_fn=limit_memory(memory),
        )
    try:
        yield log, process.pid
    finally:
        end_group(process)


def end_group(process: subprocess.Popen[bytes]) -> None:
    """The group's id stays its own as long as the process is not waited for."""
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process.pid, signal.SIGTERM)
    end = time.monotonic() + 5
    while time.monotonic() < end and os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOHANG | os.WNOWAIT) is None:
        time.sleep(0.05)
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process.pid, signal.SIGKILL)
    process.wait()


def output_of(command: list[str]) -> str:
    """Of a short command; its errors, too."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=30, check=False)
    return done.stdout


def wait_until(condition: Callable[[], bool], seconds: float, what: str) -> None:
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise Refuses(f"{what}: not within {seconds:g} s")
        time.sleep(0.05)
