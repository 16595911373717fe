#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Runs the steps of ./test, two side by side, and tells on one screen what each proved.

What passed for the same files is not run again. Each step's output goes to build/steps/STEP.log."""

import argparse
import hashlib
import os
import re
import subprocess
import sys
import threading
import time
import xml.etree.ElementTree
from dataclasses import dataclass, field
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
LOGS = TOP / "build" / "steps"
LANES = 2  # while one step links or waits for its last test, the other has the processors
SHOWN_LINES = 40


@dataclass(frozen=True)
class Step:
    """One row of the table below; `builds` are presets, each perhaps with the one target that is needed."""

    name: str
    about: str
    builds: tuple[str, ...] = ()


# The longest first, so that none of them is left alone at the end.
STEPS = (
    Step("ppc", "the suite as a 32-bit big-endian build under qemu, and the limits of its footprint", ("ppc",)),
    Step("release", "the suite natively", ("release",)),
    Step("sanitize", "the vectors under ASan and UBSan", ("asan bgpdt_vectors_test",)),
    Step("style", "formatting, copyright and licence of every file"),
    Step("asan", "the suite under ASan and UBSan", ("asan",)),
    Step("tidy", "clang-tidy over the sources, its analyzer over a fifth of the plug-in and the host", ("release",)),
    Step("valgrind", "the vectors under memcheck", ("release",)),
    Step("msan", "(only when named) the vectors under MSan, which looks at the plug-in", ("msan bgpdt_vectors_test",)),
    Step("i686", "the vectors as a 32-bit little-endian build, under ASan", ("i686 bgpdt_vectors_test",)),
    Step("i686-whole", "(only when named) the plug-in's suite as that build", ("i686",)),
    Step("fuzz", "ten seconds with each fuzzer of records, library and wire"),
    Step("fuzz-fronts", "(only when named) ten seconds with each fuzzer of command lines, lines, names, Lua, SQL and sequences of calls"),
    Step("sweeps", "what other steps thin out or leave out: all cases, one in three, or on the target one in eleven", ("release", "ppc")),
    Step("coverage", "the suite reaches each line, branch and condition of the plug-in", ("release", "coverage bgp_datatype")),
    Step("coverage-rooms", "(only when named) the suite reaches nearly all of host, toolkit, wire, library, tool and modules", ("coverage",)),
    Step("tsan", "every vector line and libbgpdt's functions from eight threads at once, under TSan",
         ("tsan bgpdt_threads_test", "tsan bgpdt_library_threads_test")),
    Step("asan-fronts", "(only when named) the modules in lua5.4, sqlite3 and a program with threads, under ASan and UBSan",
         ("asan-fronts bgp_lua bgp_annotate bgpdt_sqlite bgpdt_modules_test",)),
    Step("tsan-fronts", "(only when named) the modules in a program with threads, under TSan",
         ("tsan-fronts bgp_lua bgpdt_sqlite bgpdt_modules_test",)),
    Step("tsan-tool", "(only when named) the tool's threads under TSan", ("tsan-tool bgpdt", "tsan-tool bgp_datatype")),
    Step("packages", "(only when named) the Debian packages under lintian, and programs with what they hold, without installing them"),
    Step("debian", "(only when named) the packages built, tested, installed, upgraded and removed in clean chroots, as root"),
    Step("luarocks", "(only when named) luarocks builds and installs the module for Lua, as a user and as root"),
    Step("abi", "libbgpdt's binary interface is the released one, or more"),
    Step("python", "the package for Python, installed in a clean environment"),
    Step("python-columns", "(only when named) its columns in pyarrow, polars, DuckDB, pandas and Spark, its types in checkers",
         ("release bgpdt",)),
    Step("python-everywhere", "(only when named) its wheel on every Python that is there, its sdist, and under ASan"),
    Step("recipes", "the vectors and tables with an invented type and an invented kind of route key"),
    Step("recipes-whole", "(only when named) the suite with these"),
    Step("answers", "the three processors answer alike", ("release", "i686 bgpdt_answers", "ppc")),
    Step("small", "built for size, the plug-in answers alike, and is as small on the target as it should be",
         ("release", "ppc", "small", "small-ppc")),
    Step("web", "(only when named) WebAssembly answers as the native build, its npm package and its page work",
         ("release bgpdt_web_answers",)),
    Step("size", "(only when named) prints the footprint on the target", ("ppc",)),
)
QUICK = ("style", "release", "ppc", "sanitize")
# asan has sanitize's vectors; msan and those behind it build or install for minutes
APART = ("sanitize", "size", "msan", "i686-whole", "coverage-rooms", "fuzz-fronts", "asan-fronts", "tsan-fronts", "tsan-tool", "recipes-whole", "web", "python-columns", "python-everywhere", "packages", "debian", "luarocks")
ALL = tuple(step.name for step in STEPS if step.name not in APART)


@dataclass
class Job:
    """A step, or a build that steps need."""

    name: str
    command: list[str]
    needs: list["Job"] = field(default_factory=list)
    state: str = "waiting"  # running, passed, failed, left out, kept
    seconds: float = 0
    processor_seconds: float = 0  # which a busy machine hardly changes
    proved: list[str] = field(default_factory=list)

    @property
    def log(self) -> Path:
        return LOGS / (self.name.replace(" ", "-") + ".log")

    @property
    def is_build(self) -> bool:
        return self.name.startswith("build ")

    def over(self) -> bool:
        return self.state not in ("waiting", "running")


def tree_hash() -> str:
    """Of all files of the project, and of what the environment says to the tests."""
    total = hashlib.sha256()
    for folder, folders, files in os.walk(TOP):
        folders[:] = sorted(f for f in folders if f not in (".git", "build", "node_modules", "__pycache__"))
        for name in sorted(files):
            path = Path(folder, name)
            total.update(str(path.relative_to(TOP)).encode() + b"\0")
            total.update(hashlib.sha256(path.read_bytes()).digest())
    for name, value in sorted(os.environ.items()):
        if name.startswith("BGPDT_"):
            total.update(f"{name}={value}\0".encode())
    return total.hexdigest()


def jobs_for(names: list[str]) -> list[Job]:
    builds: dict[str, Job] = {}
    step_script = str(TOP / "setup" / "step.sh")

    def build_job(build: str) -> Job:
        if build not in builds:
            builds[build] = Job(f"build {build}", [step_script, "build", *build.split()])
        return builds[build]

    steps = [
        Job(step.name, [step_script, step.name], [build_job(build) for build in step.builds])
        for step in STEPS
        if step.name in names
    ]
    return [*builds.values(), *steps]


def stamp(job: Job) -> Path:
    return LOGS / f"{job.name}.passed"


def keep_passed(jobs: list[Job], tree: str) -> list[Job]:
    """Marks what passed before, and drops the builds that nothing needs then."""
    for job in jobs:
        if not job.is_build and stamp(job).is_file() and stamp(job).read_text() == tree:
            job.state = "kept"
    needed = [build for job in jobs if job.state == "waiting" for build in job.needs]
    return [job for job in jobs if not job.is_build or job in needed]


class Runner:
    def __init__(self, jobs: list[Job], verbose: bool) -> None:
        self.jobs = jobs
        self.verbose = verbose
        self.changed = threading.Condition()
        self.began = time.monotonic()
        self.on_terminal = sys.stderr.isatty() and not verbose

    def run(self) -> None:
        with self.changed:
            while not all(job.over() for job in self.jobs):
                for job in self.jobs:
                    self.start_or_leave(job)
                self.show_progress()
                self.changed.wait(1 if self.on_terminal else None)
        self.clear_progress()

    def start_or_leave(self, job: Job) -> None:
        if job.state != "waiting":
            return
        if any(need.state in ("failed", "left out") for need in job.needs):
            job.state = "left out"
            return
        running = [other for other in self.jobs if other.state == "running"]
        folder_busy = job.is_build and any(other.command[:3] == job.command[:3] for other in running)
        if len(running) < LANES and not folder_busy and all(need.over() for need in job.needs):
            job.state = "running"
            threading.Thread(target=self.run_job, args=(job,)).start()

    def run_job(self, job: Job) -> None:
        began = time.monotonic()
        with open(job.log, "wb") as log:
            process = subprocess.Popen(job.command, stdout=log, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        with self.changed:
            job.seconds = time.monotonic() - began
            job.processor_seconds = usage.ru_utime + usage.ru_stime
            job.state = "passed" if status == 0 else "failed"
            self.tell(job)
            self.changed.notify()

    def tell(self, job: Job) -> None:
        self.clear_progress()
        say(f"{job.state} {job.name}, {duration(job.seconds)} ({duration(job.processor_seconds)} of processor)")
        if self.verbose or job.state == "failed":
            lines = job.log.read_text(errors="replace").splitlines()
            for line in lines if self.verbose else lines[-SHOWN_LINES:]:
                say("    " + line)
        if job.state == "failed":
            say(f"    the whole: {job.log.relative_to(TOP)}; again: {again(job)}")

    def show_progress(self) -> None:
        if self.on_terminal:
            done = sum(job.over() for job in self.jobs)
            running = ", ".join(job.name for job in self.jobs if job.state == "running")
            line = f"{duration(time.monotonic() - self.began)}, {done} of {len(self.jobs)} done, now {running}"
            print("\r\033[K" + line[: os.get_terminal_size(2).columns - 1], end="", file=sys.stderr, flush=True)

    def clear_progress(self) -> None:
        if self.on_terminal:
            print("\r\033[K", end="", file=sys.stderr, flush=True)


def say(text: str) -> None:
    print(text, file=sys.stderr, flush=True)


def again(job: Job) -> str:
    return "setup/step.sh " + job.name if job.is_build else f"./test --fresh {job.name}"


def duration(seconds: float) -> str:
    return f"{seconds // 60:.0f} min {seconds % 60:02.0f} s" if seconds >= 60 else f"{seconds:.0f} s"


def results_of(job: Job) -> list[xml.etree.ElementTree.Element]:
    """The tests that the step ran."""
    files = sorted(TOP.glob(f"build/*/results-{job.name}.*.xml"))
    return [case for file in files for case in xml.etree.ElementTree.parse(file).getroot().iter("testcase")]


def collect_proofs(job: Job) -> None:
    """What the step's output and that of its tests tell behind "proved:"."""
    cases = results_of(job)
    texts = [job.log.read_text(errors="replace"), *(case.findtext("system-out") or "" for case in cases)]
    told = [match for text in texts for match in re.findall(r"^proved: (.*)", text, re.MULTILINE)]
    job.proved = ([f"{len(cases)} tests"] if cases else []) + list(dict.fromkeys(told))


def slowest_tests(jobs: list[Job]) -> list[str]:
    times = [(float(case.get("time", 0)), f"{case.get('name')} ({job.name})") for job in jobs for case in results_of(job)]
    return [f"{name} {seconds:.0f} s" for seconds, name in sorted(times, reverse=True)[:5]]


def print_table(jobs: list[Job]) -> None:
    """A row for each step: its time, and what it proved or what became of it."""
    width = max(len(job.name) for job in jobs)
    for job in jobs:
        became = {"kept": "passed before for the same files", "passed": "done"}.get(job.state, job.state)
        first, *further = job.proved or [became]
        seconds = duration(job.seconds) if job.seconds else ""
        print(f"{job.name:{width}}  {seconds:>11}  {first}")
        for line in further:
            print(" " * (width + 15) + line)


def print_verdict(jobs: list[Job], seconds: float) -> None:
    """What to do about what failed; at the end one line that other programs read too."""
    states = [job.state for job in jobs if not job.is_build or job.state == "failed"]
    for job in jobs:
        if job.state == "failed":
            print(f"failed: {job.name}; again: {again(job)}; its output: {job.log.relative_to(TOP)}")
    kept = states.count("kept")
    print(f"in {duration(seconds)}" + (f"; {kept} passed before, ./test --fresh runs them again" if kept else ""))
    skipped = f", {states.count('left out')} skipped" if "left out" in states else ""
    print(f"{states.count('passed') + kept} passed, {states.count('failed')} failed{skipped}")


def parse_arguments() -> argparse.Namespace:
    width = max(len(step.name) for step in STEPS)
    steps = "\n".join(f"  {step.name:{width}} {'*' if step.name in QUICK else ' '} {step.about}" for step in STEPS)
    parser = argparse.ArgumentParser(
        prog="./test",
        formatter_class=argparse.RawDescriptionHelpFormatter,
        description="Runs the steps marked * if none is named; all that there are for 'all'.",
        epilog="steps:\n" + steps,
    )
    parser.add_argument("steps", nargs="*", metavar="STEP")
    parser.add_argument("--fresh", action="store_true", help="run again what passed for the same files")
    parser.add_argument("--verbose", action="store_true", help="print the whole output of each step")
    options = parser.parse_args()
    known = [step.name for step in STEPS] + ["all"]
    for name in options.steps:
        if name not in known:
            parser.error(f"there is no step {name!r}; the steps are {', '.join(known)}")
    return options


def main() -> int:
    options = parse_arguments()
    LOGS.mkdir(parents=True, exist_ok=True)
    names = [name for given in options.steps or QUICK for name in (ALL if given == "all" else (given,))]
    tree = tree_hash()
    jobs = jobs_for(names)
    if not options.fresh:
        jobs = keep_passed(jobs, tree)
    began = time.monotonic()
    Runner(jobs, options.verbose).run()
    passed = [job for job in jobs if job.state == "passed"]
    for job in passed:
        collect_proofs(job)
        if not job.is_build and tree == tree_hash():  # no file was changed meanwhile
            stamp(job).write_text(tree)
    print_table(jobs)
    slowest = slowest_tests(passed)
    if slowest:
        print("slowest tests: " + ", ".join(slowest))
    print_verdict(jobs, time.monotonic() - began)
    return 0 if all(job.state in ("passed", "kept") for job in jobs) else 1


if __name__ == "__main__":
    sys.exit(main())
