# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Many calls, many threads, many interpreters, buffers that change."""
import gc
import itertools
import os
import subprocess
import sys
import threading

import pytest

import bgpdt

CALLS = int(os.environ.get("BGPDT_PYTHON_CALLS", "50000"))
RD = bgpdt.VRFRD("64496:1")
TEXTS = ["64496:1", "64496:x", None, "192.0.2.1:7"]
COLUMN = bgpdt.parse_many("VRFRD", TEXTS)


def refused(call):
    try:
        call()
    except (ValueError, KeyError, TypeError, AttributeError):
        return None
    raise AssertionError("not refused")


CHEAP = [
    lambda: bgpdt.parse("VRFRD", "64496:1"),
    lambda: bgpdt.VRFRD("64496:1", mode=1),
    lambda: refused(lambda: bgpdt.VRFRD("x")),
    lambda: refused(lambda: bgpdt.VRFRD("\ud800")),
    lambda: refused(lambda: bgpdt.VRFRD(7)),
    lambda: refused(lambda: bgpdt.parse("VRFRD", "1:1", nothing=1)),
    lambda: refused(lambda: bgpdt.VRFRD.from_bytes(b"")),
    lambda: refused(lambda: RD.nothing),
    lambda: (str(RD), bytes(RD), RD.hex(), hash(RD), repr(RD), RD == RD, RD < RD, f"{RD:>20}"),
    lambda: bgpdt.VRFRD.from_bytes(RD.to_bytes("little" if sys.byteorder == "little" else "big"), sys.byteorder),
    lambda: RD.administrator,
    lambda: RD.__reduce__(),
    lambda: COLUMN.__arrow_c_array__(),
    lambda: COLUMN.__arrow_c_stream__(),
    lambda: COLUMN.__array_interface__,
    lambda: [value for value in COLUMN],
]
DEAR = [
    lambda: str(bgpdt.why("VRFRD", "192.0.2.1:70000")),
    lambda: refused(lambda: RD["nothing"]),
    lambda: bgpdt.VRFRD.from_dict(RD.to_dict()).explain(),
    lambda: refused(lambda: bgpdt.VRFRD.from_dict({})),
    lambda: list(bgpdt.parse_many("VRFRD", TEXTS).reasons()),
    lambda: list(bgpdt.print_many("VRFRD", COLUMN)),
    lambda: list(bgpdt.explain_many("VRFRD", COLUMN)),
    lambda: refused(lambda: bgpdt.parse_many("VRFRD", [7])),
    lambda: bgpdt.describe("BOLPREFIX"),
]


def memory():
    with open("/proc/self/statm", encoding="ascii") as statm:
        return int(statm.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def run(calls, times):
    for call in calls:
        for _ in range(times):
            call()
    gc.collect()


def test_nothing_leaks():
    times = CALLS // len(CHEAP)
    run(CHEAP, 2000), run(DEAR, 100)
    counts = [sys.getrefcount(thing) for thing in (bgpdt.VRFRD, bgpdt.Refusal, bgpdt.Column, RD, COLUMN, "VRFRD", TEXTS)]
    before = memory()
    run(CHEAP, times), run(DEAR, max(times // 100, 50))
    grown = memory() - before
    after = [sys.getrefcount(thing) for thing in (bgpdt.VRFRD, bgpdt.Refusal, bgpdt.Column, RD, COLUMN, "VRFRD", TEXTS)]
    assert all(abs(one - other) < 10 for one, other in zip(counts, after)), (counts, after)
    assert "LD_PRELOAD" in os.environ or grown < 4 << 20, grown  # a checker of memory keeps what is freed
    print(f"proved: {times * len(CHEAP)} calls leave no memory behind and no reference")


def test_eight_threads():
    names = [cls.__name__ for cls in bgpdt.types() if bgpdt.describe(cls).grammar]
    expected = {name: [bytes(bgpdt.parse(name, text)) for text in bgpdt.describe(name).samples] for name in names}
    printed = {name: list(bgpdt.print_many(name, [getattr(bgpdt, name)(text) for text in bgpdt.describe(name).samples[:3]]))
               for name in names if "print" in bgpdt.describe(name).operations}
    wrong = []

    def work(first):
        for name in itertools.islice(itertools.cycle(names), first, first + 60):
            samples = bgpdt.describe(name).samples
            values = list(bgpdt.parse_many(name, list(samples) * 50))
            if [bytes(value) for value in values[:len(samples)]] != expected[name]:
                wrong.append(name)
            if "print" in bgpdt.describe(name).operations and list(bgpdt.print_many(name, values))[:3] != (printed[name] * 3)[:3]:
                wrong.append(name)
            str(bgpdt.why(name, "?" + samples[0])), [value.fields() for value in values][:1]

    threads = [threading.Thread(target=work, args=(number,)) for number in range(8)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong


def test_bytes_that_change_while_they_are_read():
    memory, stop = bytearray(12), threading.Event()

    def change():
        for byte in itertools.cycle(range(256)):
            memory[byte % 12] = byte
            if stop.is_set():
                return

    thread = threading.Thread(target=change)
    thread.start()
    try:
        for _ in range(20_000):
            assert len(bytes(bgpdt.VRFRD.from_bytes(memory))) == len(bytes(bgpdt.VRFRD.from_bytes(memoryview(memory)))) == 12
    finally:
        stop.set()
        thread.join()
    value = bgpdt.VRFRD.from_bytes(memory)
    memory[:] = b"\xff" * 12
    assert bytes(value) != bytes(memory) or value.administrator


INTERPRETERS = """
import importlib, sys, threading
import bgpdt
kept = bgpdt.VRFRD("64496:1")
for name in ("_interpreters", "_xxsubinterpreters"):
    try:
        interpreters = importlib.import_module(name)
        break
    except ImportError:
        continue
code = '''
import bgpdt
values = bgpdt.parse_many("VRFRD", ["64496:1", "x", None] * 1000)
assert str(values[0]) == "64496:1" and len(values.refused) == 1000
assert "is no route distinguisher" in str(bgpdt.why("VRFRD", "x"))
assert bgpdt.VRFRD.from_dict(values[0].to_dict()) == values[0]
try:
    bgpdt.VRFRD("y")
except bgpdt.Refusal:
    pass
'''
def work():
    for _ in range(3):
        interpreter = interpreters.create()
        failed = (interpreters.exec if hasattr(interpreters, "exec") else interpreters.run_string)(interpreter, code)
        assert not failed, failed
        interpreters.destroy(interpreter)
work()
if sys.version_info >= (3, 12):
    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads: thread.start()
    for thread in threads: thread.join()
assert str(kept) == "64496:1" and kept == bgpdt.VRFRD("64496:1")
print("done")
"""


def test_interpreters_beside_each_other():
    if "LD_PRELOAD" in os.environ:
        pytest.skip("threads of several interpreters exhaust what a checker of memory keeps")
    done = subprocess.run([sys.executable, "-c", INTERPRETERS], capture_output=True, text=True, check=False, timeout=300)
    assert done.returncode == 0 and "done" in done.stdout, done.stderr[-2000:]
