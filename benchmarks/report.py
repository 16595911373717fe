#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Tables of what bgpdt_bench measured.

report.py time BENCHMARK.JSON          medians in ns
report.py instructions CALLGRIND.OUT   instructions per conversion
report.py check CALLGRIND.OUT RATIOS   fails where a ratio is 5 % (script tables: 20 %) above the one in the file, or
                                       where other blocks are taken than the contract names (which are those of the floor)
report.py ratios CALLGRIND.OUT         prints such a file
report.py growth TABLE FILE.SVG        plots cost against length; fails where a longest input costs more than its limit

Instructions are told gross and net. "gross" is everything but the benchmark's own loop. "net" is without the host
calls that every column makes: trim, blank test, a block taken and released. "own" is without any host service.
"""
import json
import re
import statistics
import sys

from plot import COLOURS, Line, Panel, plot

LOOP = re.compile(r"measured_|_M_invoke|bench::\(anonymous namespace\)::(count|parse_once)")
COMMON = re.compile(r"^(SYSDT_BTrim|PAL_StrTrim|NCF_IsSpaceInString|SYS_DataType\w+)$")
TAKE = re.compile(r"^SYS_DataTypeMalloc")
HOST = "libbgpdt_host"
TOLERANCE = 1.05
SCRIPT_TOLERANCE = 1.2  # Lua seeds its hashes by the time
FLOOR_LIMIT = 1.5
BGPLS_PARSE_LIMIT = 2
DISPATCHER_LIMIT = 2
PORT_LIMITS = {("decimal", "parse"): 4, ("decimal", "print"): 2.7, ("structured", "parse"): 1.4, ("structured", "print"): 7}


class Count:
    """Instructions of one dump."""

    def __init__(self):
        self.gross = self.common = self.host = self.takes = 0

    def per(self, conversions):
        self.gross /= conversions
        self.net = self.gross - self.common / conversions
        self.own = self.gross - self.host / conversions
        self.takes /= conversions
        return self


def read_callgrind(path):
    """{(kind, direction): {column: Count}}, {(kind, direction): shape}"""
    counts, shapes = {}, {}
    name, count, obj, fn, cobj, cfn, is_call = "", None, "", "", None, "", False

    def close():
        if name:
            kind, direction, column, shape, conversions = name.rsplit("/", 4)
            counts.setdefault((kind, direction), {})[column] = count.per(int(conversions))
            shapes[kind, direction] = shape

    with open(path, encoding="utf-8", errors="replace") as lines:
        for line in lines:
            line = line.rstrip("\n")
            key, _, value = line.partition("=")
            if line.startswith("part:"):
                close()
                name, count = "", Count()
            elif line.startswith("desc: Trigger: Client Request: "):
                name = line[31:]
            elif key == "ob":
                obj = value
            elif key == "fn":
                fn = value
            elif key == "cob":
                cobj = value
            elif key == "cfn":
                cfn = value
            elif key == "calls":
                is_call, calls = True, int(value.split()[0])
            elif line[:1].isdigit():
                cost = int(line.split()[1]) if " " in line else 0
                if not is_call:
                    if not LOOP.search(fn):
                        count.gross += cost
                    continue
                is_call = False
                if HOST in (cobj or obj) and HOST not in obj:
                    count.host += cost
                    count.common += cost if COMMON.match(cfn) else 0
                    count.takes += calls if TAKE.match(cfn) else 0
                cobj = None
    close()
    return counts, shapes


def read_times(path):
    """{(kind, direction): {column: median ns}}, shapes"""
    samples, shapes = {}, {}
    with open(path, encoding="utf-8") as file:
        for run in sorted(json.load(file)["benchmarks"], key=lambda run: run["family_index"]):
            if run["run_type"] != "iteration":
                continue
            kind, direction, column, shape = run["run_name"].rsplit("/", 1)[0].rsplit("/", 3)
            samples.setdefault((kind, direction), {}).setdefault(column, []).append(1e9 / run["items_per_second"])
            shapes[kind, direction] = shape
    return {row: {column: statistics.median(runs) for column, runs in columns.items()}
            for row, columns in samples.items()}, shapes


def table(header, rows):
    rows = [header] + rows
    widths = [max(len(row[i]) for row in rows) for i in range(len(header))]
    for row in rows:
        print("  ".join(cell.ljust(width) if i < 2 else cell.rjust(width)
                        for i, (cell, width) in enumerate(zip(row, widths))).rstrip())


def ratio(a, b, mark=False):
    return "-" if not a or not b else f"{a / b:.2f}" + ("!" if mark else " ")


def floor_limit(kind, direction):
    return BGPLS_PARSE_LIMIT if kind.startswith("BGP-LS ") and direction == "parse" else FLOOR_LIMIT


def print_instructions(counts, shapes):
    rows = []
    for (kind, direction), of in counts.items():
        ours, floor, port, via = (of.get(column) for column in ("ours", "floor", "port", "dispatcher"))
        row = [kind, direction, f"{ours.gross:.0f}"]
        if port is None:
            rows.append(row + [f"{floor.gross:.0f}" if floor else "-", "-",
                               ratio(ours.gross, floor.gross if floor else None)] + ["-"] * 8 + [f"{ours.takes:.1f}"])
            continue
        wanted = PORT_LIMITS[shapes[kind, direction], direction]
        row += [f"{floor.gross:.0f}", f"{port.gross:.0f}",
                ratio(ours.gross, floor.gross, ours.gross > floor_limit(kind, direction) * floor.gross),
                f"{via.gross:.0f}" if via else "-",
                ratio(via.gross, floor.gross, via.gross > DISPATCHER_LIMIT * floor.gross) if via else "-",
                f"{ours.net:.0f}", f"{floor.net:.0f}", ratio(ours.net, floor.net),
                f"{ours.own:.0f}", f"{port.own:.0f}", ratio(port.own, ours.own, port.own < wanted * ours.own),
                f"{ours.takes:.1f}"]
        rows.append(row)
    table(["kind", "", "ours", "floor", "port", "ours/F ", "disp", "disp/F ", "ours net", "F net", "net/F ", "ours own",
           "port own", "port/ours ", "blocks"], rows)


def print_times(times, shapes):
    rows = []
    for (kind, direction), of in times.items():
        ours, floor, port, via = (of.get(column) for column in ("ours", "floor", "port", "dispatcher"))
        numbers = [f"{ns:.1f}" if ns else "-" for ns in (ours, floor, port, via)]
        rows.append([kind, direction] + numbers + [ratio(ours, floor, floor and ours > 1.6 * floor),
                                                   ratio(via, floor), ratio(port, ours)])
    table(["kind", "", "ours ns", "floor", "port", "disp", "ours/F ", "disp/F ", "port/ours "], rows)


def ratios(counts):
    for (kind, direction), of in counts.items():
        for column in ("ours", "dispatcher"):
            if column in of and "floor" in of:
                yield f"{kind}/{direction}/{column}", of[column].gross / of["floor"].gross


def tolerance(name):
    return SCRIPT_TOLERANCE if name.startswith("script ") else TOLERANCE


def check(counts, path):
    with open(path, encoding="utf-8") as file:
        committed = dict(line.rsplit(" ", 1) for line in file if not line.startswith("#"))
    measured = dict(ratios(counts))
    problems = [f"{name}: {value:.3f}, committed {float(committed[name]):.3f}" for name, value in measured.items()
                if name in committed and value > float(committed[name]) * tolerance(name)]
    problems += [f"{kind}/{direction}: takes {of['ours'].takes:.2f} blocks, not the contract's {of['floor'].takes:.2f}"
                 for (kind, direction), of in counts.items()
                 if "port" in of and abs(of["ours"].takes - of["floor"].takes) > 0.001]
    problems += [f"{name}: no ratio is committed" for name in measured.keys() - committed.keys()]
    problems += [f"{name}: committed, but not measured" for name in committed.keys() - measured.keys()]
    print("\n".join(sorted(problems)) or f"{len(measured)} ratios kept")
    return 1 if problems else 0


NS_PER_BYTE = 1000 / 16


def read_growth(path):
    """{series: [(bytes, ns)]}"""
    series = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            name, size, cost = line.rstrip("\n").split("\t")
            series.setdefault(name, []).append((int(size), float(cost)))
    return series


def print_growth(series, path):
    shown = {name: points for name, points in series.items() if not name.startswith("limit ")}
    plot([Panel(name, ("bytes", "ns"), [Line("measured", colour, points)], limit=NS_PER_BYTE)
          for (name, points), colour in zip(shown.items(), COLOURS)], path)
    too_slow = False
    rows = []
    for name, points in series.items():
        size, cost = points[-1]
        limit = size * NS_PER_BYTE
        too_slow = too_slow or cost > limit
        rows.append([name.removeprefix("limit "), "longest" if name.startswith("limit ") else "series", str(size),
                     f"{cost:.0f}", f"{limit:.0f}", "too slow" if cost > limit else ""])
    table(["input", "", "bytes", "ns", "limit", ""], rows)
    return 1 if too_slow else 0


def main(arguments):
    command, path = arguments[0], arguments[1]
    if command == "time":
        print_times(*read_times(path))
        return 0
    if command == "growth":
        return print_growth(read_growth(path), arguments[2])
    counts, shapes = read_callgrind(path)
    if command == "check":
        return check(counts, arguments[2])
    if command == "ratios":
        print("# Instructions over those of the floor: of a type's or row's own callback, and through the type that dispatches.")
        for name, value in ratios(counts):
            print(f"{name} {value:.3f}")
        return 0
    print_instructions(counts, shapes)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
