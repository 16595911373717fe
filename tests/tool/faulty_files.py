#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""faulty_files.py BGPDT LAYER FOLDER: commands whose files fail, with each call that they make in turn, once and for good:
errors, short reads and writes, signals; and commands that lack memory, with some of their requests. Of BGPDT_TEST_SHARE
faults one is tried, another by the day (BGPDT_TEST_SEED).

A command either does all that it does otherwise, or says in a sentence what failed and leaves every file as it was, in
whole. It never crashes, hangs, changes its input or leaves a file of its own behind."""
import datetime
import errno
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
from dataclasses import dataclass

BGPDT, LAYER = (str(pathlib.Path(path).resolve()) for path in sys.argv[1:3])
FOLDER = pathlib.Path(sys.argv[3]).resolve()
SHARE = int(os.environ.get("BGPDT_TEST_SHARE", "13"))
SEED = int(os.environ.get("BGPDT_TEST_SEED", datetime.date.today().toordinal()))
SECONDS = 60  # for what hangs

LINES = "".join(f"64496:{7919 * i % 10007}\n" for i in range(2500)) + "no route distinguisher\n"
OLD = "what was there\n"
SCRIPT = 'print("one")\n'
TABLES = '{"table":{"bolType":1,"bolPrefixRtType":3,"bolPrefixRtValue":"100:32:192.0.2.1"}}\n'
BEFORE = {"work/in": LINES, "work/out": OLD, "work/script": SCRIPT, "work/tables": TABLES, "printed": ""}
UNUSABLE = 2  # the status of what could not be done
SENTENCE = re.compile(r"(^bgpdt: |\": ?\").*(cannot|can be) .*: .+$", re.MULTILINE)
OWN_NAME = re.compile(r"(work/[.]bgpdt-\d+-\d+|temporary/bgpdt[.]\w{6})")

# What may go wrong with a call; what is no error (tried again, or done in parts) must not matter.
ERRORS = {
    "open64": (errno.EACCES, errno.EMFILE, errno.EIO),
    "unnamed": (errno.EACCES, errno.ENOSPC),
    "mkostemp64": (errno.EACCES, errno.ENOSPC, errno.EROFS),
    "close": (errno.EIO, errno.ENOSPC),
    "dup": (errno.EMFILE,),
    "read": (errno.EIO,),
    "write": (errno.ENOSPC, errno.EIO, errno.EPIPE),
    "pread64": (errno.EIO,),
    "rename": (errno.EACCES, errno.EIO),
    "linkat": (errno.EACCES, errno.ENOSPC),
    "fchmod": (errno.EPERM,),
    "fchown": (errno.EPERM,),
    "stat64": (errno.EACCES, errno.EIO),
}
MEMORY_FAULTS = 8  # of each command, of the thousands of requests that it makes
HARMLESS = {
    "read": ("short", errno.EINTR, errno.EAGAIN),
    "write": ("short", errno.EINTR, errno.EAGAIN),
    "pread64": ("short", errno.EINTR),
}
FOREVER = {errno.EINTR, errno.EAGAIN}  # an interruption for good would be a hang
SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGKILL)


@dataclass
class Job:
    """A command; its output is `out`, and of the lines refused `rejects`, if it names them."""

    arguments: str
    unnamed: bool = True  # whether folders hold files without a name

    def __str__(self):
        return self.arguments + ("" if self.unnamed else ", without unnamed files")


JOBS = [
    Job(arguments, unnamed)
    for arguments in (
        "convert VRFRD in --to hex -o out --rejects rejects",
        "convert VRFRD in -j 2 --to json -o out",
        "canon VRFRD --in in -o out",
        "sort VRFRD in -o out --rejects rejects",
        "sort VRFRD in -o in",
        "sort VRFRD in --memory 64K -o out",
        "uniq VRFRD in -o out",
    )
    for unnamed in (True, False)
] + [
    Job("convert VRFRD in --to hex"),
    Job("convert VRFRD --rejects rejects"),
    Job("sort VRFRD in --memory 64K"),
    Job("convert EVNPREFIX --from json tables"),
    Job("check VRFRD --in in"),
    Job("parse VRFRD 64496:1"),
    Job("parse VRFRD 64496:1 --json"),
    Job("lua script one two"),
    Job("types"),
    Job("--help"),
]


@dataclass
class End:
    status: int
    told: str
    files: dict


def run(job, faults):
    """Runs the job in a folder of its own, where its outputs are there before, but rejects."""
    shutil.rmtree(FOLDER, ignore_errors=True)
    work, temporary = FOLDER / "work", FOLDER / "temporary"
    work.mkdir(parents=True)
    temporary.mkdir()
    (work / "in").write_text(LINES)
    (work / "out").write_text(OLD)
    (work / "script").write_text(SCRIPT)
    told = [*([] if job.unnamed else [f"unnamed:1+:{errno.EOPNOTSUPP}"]), *faults]
    environment = {
        **os.environ,
        "LD_PRELOAD": LAYER,
        "BGPDT_FAULTS": ",".join(told),
        "BGPDT_CALLS": str(FOLDER / "calls"),
        "TMPDIR": str(temporary),
    }
    with open(work / "in", "rb") as given, open(FOLDER / "printed", "wb") as printed:
        done = subprocess.run([BGPDT, *job.arguments.split()], cwd=work, env=environment, stdin=given, stdout=printed,
                              stderr=subprocess.PIPE, timeout=SECONDS, check=False)
    files = {str(path.relative_to(FOLDER)): path.read_text() for path in FOLDER.rglob("*") if path.is_file()}
    files.pop("calls", None)
    return End(done.returncode, done.stderr.decode(), files)


def calls_of():
    return {name: int(count) for name, count in (line.split() for line in (FOLDER / "calls").read_text().splitlines())}


def wrong_with_files(whole, end):
    """What is not as it must be, whatever happened; nothing if all is."""
    names = {*whole.files, *BEFORE}
    left = end.files.keys() - names
    if end.status == -signal.SIGKILL:  # which nothing can do anything about
        left = {name for name in left if not OWN_NAME.fullmatch(name)}
    if left:
        return f"leaves {', '.join(sorted(left))}"
    for name in names - {"printed"}:
        if end.files.get(name) not in (BEFORE.get(name), whole.files.get(name)):
            return f"{name} is neither what it was nor whole"
    return None


def wrong_with(job, whole, end, must_do, lacks_memory):
    if wrong := wrong_with_files(whole, end):
        return wrong
    if end.status == whole.status:
        return None if end.files == whole.files else "says that all is done, which it is not"
    if must_do:
        return f"gives up with {end.status}"
    if end.status < 0:
        return f"ends by signal {-end.status}"
    if end.status != UNUSABLE:
        return f"ends with {end.status}"
    if lacks_memory:  # perhaps for the sentence too
        return None
    told = end.told + (end.files["printed"] if "--json" in job.arguments else "")
    return None if SENTENCE.search(told) else f"does not say what failed: {told!r}"


def faults_of(calls):
    """Each fault, and whether the job must do all the same."""
    for function, count in calls.items():
        for number in range(1, count + 1):
            for what in ERRORS.get(function, ()):
                yield function, f"{number}", what, False
                yield function, f"{number}+", what, False
            for what in HARMLESS.get(function, ()):
                yield function, f"{number}", what, True
                if what not in FOREVER:
                    yield function, f"{number}+", what, True
            for number_of_signal in SIGNALS:
                yield function, f"{number}", -number_of_signal, None


def memory_faults(count):
    """Of as many requests: some, other ones every day."""
    step = max(1, count // MEMORY_FAULTS)
    for number in range(1 + SEED % step, count + 1, step):
        yield "memory", f"{number}", errno.ENOMEM, False
        yield "memory", f"{number}+", errno.ENOMEM, False


def main():
    injected, failures, given_up, turn = 0, [], 0, 0
    for job in JOBS:
        whole = run(job, [])
        calls = calls_of()
        requests = calls.pop("memory")
        for function, number, what, must_do in [*faults_of(calls), *memory_faults(requests)]:
            turn += 1
            if (turn + SEED) % SHARE:
                continue
            injected += 1
            fault = f"{function}:{number}:{what}"
            try:
                end = run(job, [fault])
            except subprocess.TimeoutExpired:
                failures.append(f"{job}: {fault}: hangs")
                continue
            given_up += end.status == UNUSABLE
            is_signal = must_do is None
            wrong = wrong_with_files(whole, end) if is_signal else wrong_with(
                job, whole, end, must_do, function == "memory")
            if wrong:
                failures.append(f"{job}: {fault}: {wrong}")
    for failure in failures[:40]:
        print(failure)
    print(f"one fault in {SHARE}, seed {SEED}")
    print(f"proved: {injected} faults of files and memory in {len(JOBS)} commands, {given_up} of them told, {len(failures)} missed")
    return 1 if failures else 0


sys.exit(main())
