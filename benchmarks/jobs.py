# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What users do with a file of texts, by the tool, the module for SQLite and the one for Lua, beside the usual tools on
the same file: processor time of the program in microseconds a line, the median of interleaved rounds, as a table. The
time that a program needs for no line at all is taken off.

Then refused texts: none of the types may take longer than the limit to say why, in processor time, for any of the
hostile texts of up to a megabyte.
Usage: jobs.py BUILD [OTHER_BUILD] [LINES [ROUNDS]]
With another build, a column of its times stands in front.
"""
import ctypes
import os
import random
import resource
import statistics
import subprocess
import sys
import tempfile
import time


def address(number):
    return f"192.0.2.{number(256)}"


# Kind: its type, and what makes one of its texts.
KINDS = {
    "RD": ("VRFRD", lambda n: (f"{n(1, 65536)}", address(n), f"{n(65536, 1 << 32)}")[n(3)] + f":{n(65536)}"),
    "community": ("COMMUNITY", lambda n: f"{n(1, 65536)}:{n(65536)}"),
    "EVPN 2": ("EVNPREFIX", lambda n: f"{n(1, 5000)}:48:0000-5e00-53{n(256):02x}:32:{address(n)}"),
    "BGP-LS node": (
        "BGPLSPREFIX",
        lambda n: f"[NODE][OSPFv2][IDENTIFIER{n(100)}][LOCAL[as{n(64496, 64512)}][bgp-ls-identifier{address(n)}]"
        f"[ospf-area-id0.0.0.{n(256)}][igp-router-id{address(n)}]]",
    ),
    "MVPN 6": ("BOLPREFIX", lambda n: f"{n(1, 65536)}:{address(n)}:233.252.{n(256)}.{n(256)}"),
}

LUA = {
    "Lua: parse": "bgp.parse(kind, line)",
    "Lua: parse, print": "bgp.print(bgp.parse(kind, line))",
    "Lua: parse, compare": "local value = bgp.parse(kind, line); bgp.compare(value, last or value); last = value",
}

SQL = {
    "SQL: import": "",
    "SQL: bgp_value": "SELECT sum(length(bgp_value('{0}', line))) FROM lines",
    "SQL: bgp_text of it": "SELECT sum(length(bgp_text('{0}', bgp_value('{0}', line)))) FROM lines",
    "SQL: bgp_json of it": "SELECT sum(length(bgp_json('{0}', bgp_value('{0}', line)))) FROM lines",
    "SQL: ORDER BY line COLLATE": "SELECT line FROM lines ORDER BY line COLLATE bgp_{0}",
    "SQL: index of bgp_value": "CREATE INDEX known ON lines(bgp_value('{0}', line))",
    "SQL: index by COLLATE": "CREATE INDEX known ON lines(line COLLATE bgp_{0})",
}

OTHERS = {
    "LC_ALL=C sort": "LC_ALL=C exec sort --parallel=1 {0}",
    "sed": "exec sed s/:/./ {0}",
    "mawk": "exec mawk -F: '{{ print $1 }}' {0}",
    "jq -r .text": "exec jq -r .text {0}.json",
    "python: a member": "exec python3 -c 'import json,sys\nfor line in open(sys.argv[1]): json.loads(line)[\"text\"]' {0}.json",
}

# What is put together to hostile texts.
PIECES = (": . [ ] [] 1: 0 1 a :: [[ ( \" 1. - , / 65535: 0x [1] 00: target: \\ ? * % 1- a: 0000- 1/ as64496 [NODE] [UNKNOWN"
          " [PREFIX][ 192.0.2.1: a_ é").split(" ") + [" ", "1 2 ", "1:1 "]
SIZES = (1000, 65_000, 1_000_000)
LIMIT = 0.050  # seconds of a processor that nobody else uses
BUSY = 4  # how much slower one may be


def run(command, **settings):
    subprocess.run(["sh", "-c", command], check=True, stdout=subprocess.DEVNULL, **settings)


def sql_script(build, kind, file, statement):
    load = f".load {build}/sqlite/bgpdt_sqlite\nCREATE TABLE lines(line TEXT);\n.separator \\t\n.import {file} lines\n"
    return load + statement.format(kind) + ";\n"


def lua_script(build, kind, file, work):
    return (f"package.cpath = '{build}/lua/?.so'\nlocal bgp, kind, last = require 'bgp', '{kind}', nil\n"
            f"for line in io.lines '{file}' do {work} end\n")


def jobs(build, kind, file):
    """The commands by their names."""
    tool = f"exec {build}/tool/bgpdt"
    rows = {
        "convert": f"{tool} convert {kind} -j 1 {file}",
        "check": f"{tool} check {kind} -j 1 --in {file} --quiet",
        "canon": f"{tool} canon {kind} -j 1 --in {file} --quiet",
        "sort": f"{tool} sort {kind} {file}",
        "sort --memory 4M": f"{tool} sort {kind} --memory 4M {file}",
        "uniq": f"{tool} uniq {kind} {file}",
        "text to JSON": f"{tool} convert {kind} -j 1 --to json {file}",
        "JSON to hex": f"{tool} convert {kind} -j 1 --from json {file}.json",
    }
    rows |= {name: ["sqlite3", ":memory:", sql_script(build, kind, file, statement)] for name, statement in SQL.items()}
    rows |= {name: ["lua5.4", "-", lua_script(build, kind, file, work)] for name, work in LUA.items()}
    return rows


def seconds(job):
    """Of processor time, the user's and the system's: they are counted together, and told apart by guessing."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    if isinstance(job, str):
        run(job)
    else:
        *command, source = job
        subprocess.run(command, input=source.encode(), stdout=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def write_texts(folder, name, lines):
    kind, text = KINDS[name]
    number = random.Random(7).randrange
    file = os.path.join(folder, kind)
    with open(file, "w", encoding="ascii") as sink:
        sink.writelines(text(number) + "\n" for _ in range(lines))
    return file


def measured(builds, name, folder, lines, rounds):
    """Microseconds a line by the job's name and the build's place; others have the place of the first alone."""
    kind = KINDS[name][0]
    file, empty = write_texts(folder, name, lines), os.path.join(folder, "empty")
    run(f"{builds[-1]}/tool/bgpdt convert {kind} --to json {file} -o {file}.json; : >{empty}; : >{empty}.json")
    table = {}
    for place, build in enumerate(builds):
        rows, starts = jobs(build, kind, file), jobs(build, kind, empty)
        table |= {(row, place): (rows[row], starts[row]) for row in rows}
    table |= {(row, -1): (command.format(file), command.format(empty)) for row, command in OTHERS.items()}
    times = {cell: [] for cell in table}
    for _ in range(rounds):
        for cell, (job, start) in table.items():
            times[cell].append(seconds(job) - seconds(start))
    results = {cell: statistics.median(all_times) / lines * 1e6 for cell, all_times in times.items()}
    return results


def print_table(results, builds):
    words = [", before", ", now"] if len(builds) > 1 else [""]
    head = ["job"] + [name + word for name in KINDS for word in words]
    print("| " + " | ".join(head) + " |\n|" + "---|" * len(head))
    for row in dict.fromkeys(row for row, _ in next(iter(results.values()))):
        cells = [f"`{row}`" if row in OTHERS else row]
        for times in results.values():
            places = [-1] if row in OTHERS else range(len(builds))
            told = [f"{times[row, place]:.2f}" for place in places]
            cells += [""] * (len(builds) - len(told)) + told
        print("| " + " | ".join(cells) + " |", flush=True)


def library(build):
    """The functions that say why a text is refused."""
    functions = ctypes.CDLL(f"{build}/library/libbgpdt.so")
    pointer = ctypes.c_void_p
    functions.bgpdt_type_at.restype = pointer
    functions.bgpdt_type_at.argtypes = [pointer, ctypes.c_size_t]
    functions.bgpdt_type_count.restype = ctypes.c_size_t
    functions.bgpdt_type_count.argtypes = [pointer]
    functions.bgpdt_why.argtypes = [pointer, ctypes.c_char_p, ctypes.c_size_t, pointer]
    functions.bgpdt_error_free.argtypes = [pointer]
    return functions


def slowest_refusal(build):
    """Seconds, the type's place, the piece and the size."""
    functions = library(build)
    opened, error = ctypes.c_void_p(), ctypes.c_void_p()
    if functions.bgpdt_open(None, ctypes.byref(opened), ctypes.byref(error)) != 0:
        sys.exit("there is no plug-in")
    worst = (0.0,)
    for place in range(functions.bgpdt_type_count(opened)):
        for size in SIZES:
            for piece in PIECES:
                octets = piece.encode()
                text = (octets * (size // len(octets) + 1))[:size]
                begin = time.process_time()
                functions.bgpdt_why(functions.bgpdt_type_at(opened, place), text, size, ctypes.byref(error))
                worst = max(worst, (time.process_time() - begin, place, piece, size))
                functions.bgpdt_error_free(error)
                error = ctypes.c_void_p()
    return worst


def main(build, *rest):
    builds = [rest[0], build] if rest and not rest[0].isdigit() else [build]
    lines, rounds = (list(map(int, rest[len(builds) - 1:])) + [200_000, 5][len(rest) - len(builds) + 1:])[:2]
    with tempfile.TemporaryDirectory() as folder:
        print_table({name: measured(builds, name, folder, lines, rounds) for name in KINDS}, builds)
    took, place, piece, size = slowest_refusal(build)
    print(f"\nThe slowest refusal of {len(PIECES) * len(SIZES)} hostile texts to each type: {took * 1000:.0f} ms, "
          f"type {place}, {piece!r} to {size} bytes")
    if took > LIMIT * BUSY:
        sys.exit(f"that is more than {LIMIT * BUSY * 1000:.0f} ms")


if __name__ == "__main__":
    main(*sys.argv[1:])
