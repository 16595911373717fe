#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What the plug-in takes on its target: its sizes in memory, and the deepest stack of each callback.

The stack comes from the call graph that g++ writes with -fcallgraph-info=su (a .ci file for each object), joined with
the plug-in itself: the record tables tell the callbacks, the relocations which functions pointers may lead to. What a
call through a pointer may reach is told by the limits file; a call that it does not tell of, or a function whose address
is taken and that no call is told to reach, is an error, as are recursion and frames without a bound. The host's services
and the C library count nothing.
"""
import argparse
import re
import struct
import sys
import tomllib
from collections import defaultdict
from pathlib import Path

RECORD_SLOTS = ["FormatIn", "FormatOut", "Check", "Help", "Compare", "reserved", "LuaSet", "LuaGet", "Endian"]
ROW_SLOTS = ["FormatIn", "FormatOut", "Check", "Help", "Compare", "LuaSet", "LuaGet"]
RECORD_TABLE, RECORD_SIZE, RECORD_NAME = "g_astBgpDataTypeExtendDefineTbl", 60, slice(6, 24)
ROW_TABLES = ["g_astBOL_PREFIX_ProcTable", "g_astBOL_RD_ProcTable"]
ROW_SIZE, ROW_NAME = 52, slice(4, 24)
SLOTS_AT = 24  # in both
POINTER = 4
# Whatever the host calls stands in these, or is exported.
HOST_TABLES = [RECORD_TABLE, *ROW_TABLES]
HOST = "(host)"


class Problem(Exception):
    pass


class Plugin:
    """The shared object: a 32-bit big-endian PowerPC ELF file."""

    OBJECT, FUNCTION = 1, 2
    WRITE, ALLOC, EXECUTE = 1, 2, 4
    PT_GNU_RELRO = 0x6474E552
    R_ADDR32, R_RELATIVE = 1, 22

    def __init__(self, path):
        self.bytes = path.read_bytes()
        if self.bytes[:6] != b"\x7fELF\x01\x02" or self.unpack("H", 18) != (20,):
            raise Problem(f"{path} is not built for a 32-bit big-endian PowerPC")
        programs, sections = self.unpack("II", 28)
        _, program_count, _, section_count, names = self.unpack("HHHHH", 42)
        self.programs = [self.unpack("8I", programs + 32 * i) for i in range(program_count)]
        self.sections = [self.unpack("10I", sections + 40 * i) for i in range(section_count)]
        self.names = {self.string(self.sections[names], s[0]): s for s in self.sections}
        self.objects = {name: (address, size) for name, address, size in self.symbols(".symtab", self.OBJECT)}
        self.imports = {name for name, *_, defined in self.symbols_of(".dynsym") if not defined}
        self.exports = {name for name, _, _ in self.symbols(".dynsym", self.FUNCTION)}
        self.functions = defaultdict(set)  # by address
        for name, address, _ in self.symbols(".symtab", self.FUNCTION):
            self.functions[address].add(name)
        self.pointers = self.read_pointers(self.names[".rela.dyn"])

    def unpack(self, form, offset):
        return struct.unpack_from(">" + form, self.bytes, offset)

    def string(self, section, offset):
        start = section[4] + offset
        return self.bytes[start:self.bytes.index(0, start)].decode()

    def symbol(self, section, index):
        name, address, size, info, _, place = self.unpack("IIIBBH", section[4] + 16 * index)
        return self.string(self.sections[section[6]], name), address, size, info & 15, place != 0

    def symbols(self, section, wanted):
        """(name, address, size) of the defined symbols of that kind."""
        for name, address, size, kind, defined in self.symbols_of(section):
            if kind == wanted and defined:
                yield name, address, size

    def symbols_of(self, section):
        section = self.names[section]
        return (self.symbol(section, i) for i in range(section[5] // 16))

    def read_pointers(self, section):
        """The functions of the plug-in that relocated words point to, by the words' addresses."""
        pointers = {}
        dynamic = self.sections[section[6]]
        for at in range(section[4], section[4] + section[5], 12):
            offset, info, addend = self.unpack("IIi", at)
            if info & 0xFF == self.R_ADDR32:
                _, address, _, _, defined = self.symbol(dynamic, info >> 8)
                if not defined:
                    continue
                target = address + addend
            elif info & 0xFF == self.R_RELATIVE:
                target = addend
            else:
                raise Problem(f"relocation type {info & 0xFF} at {offset:#x} is unknown")
            if target in self.functions:
                pointers[offset] = self.functions[target]
        return pointers

    def extent(self, table):
        if table not in self.objects:
            raise Problem(f"the plug-in has no table {table}")
        return self.objects[table]

    def pointed(self, table, size=None, slot=None):
        """The functions that the table points to; of rows of that size only those in that slot."""
        start, length = self.extent(table)
        return set().union(*(names for at, names in self.pointers.items() if start <= at < start + length and
                             (slot is None or (at - start) % size == SLOTS_AT + POINTER * slot)))

    def rows(self, table, size, name, slots):
        """(name of the row, slot, functions) of each full slot that holds a function of the plug-in's own."""
        start, length = self.extent(table)
        section = next(s for s in self.sections if s[3] <= start < s[3] + s[5] and s[1] == 1)
        for row in range(start, start + length, size):
            content = self.bytes[section[4] + row - section[3]:][:size]
            for i, slot in enumerate(slots):
                names = self.pointers.get(row + SLOTS_AT + POINTER * i)
                if names:
                    yield content[name].split(b"\0")[0].decode(), slot, names

    def sizes(self):
        allocated = [s for s in self.sections if s[2] & self.ALLOC]
        fixed = [s for s in allocated if not s[2] & self.WRITE]
        writable = [s for s in allocated if s[2] & self.WRITE]
        relro = [(p[2], p[2] + p[5]) for p in self.programs if p[0] == self.PT_GNU_RELRO]

        def locked(section):
            return any(start <= section[3] and section[3] + section[5] <= end for start, end in relro)

        return {
            "text": sum(s[5] for s in fixed if s[2] & self.EXECUTE),
            "read_only": sum(s[5] for s in fixed if not s[2] & self.EXECUTE),
            "relocated": sum(s[5] for s in writable if locked(s)),
            "writable": sum(s[5] for s in writable if not locked(s)),
            "constructors": sum(s[5] for n, s in self.names.items() if re.match(r"\.(init|ctors)", n)),
        }


class Function:
    def __init__(self, symbol, pretty):
        self.symbol = symbol
        self.pretty = pretty
        self.frame = None  # None: not the plug-in's own
        self.calls = set()  # (title, place)


def base(symbol):
    """The name in the source of what the compiler cloned."""
    return re.sub(r"\.(constprop|isra|part|cold|localalias|lto_priv)(\.\d+)?", "", symbol)


class Graph:
    NODE = re.compile(r'node: \{ title: "([^"]*)" label: "(.*)"( shape : ellipse)? \}$')
    EDGE = re.compile(r'edge: \{ sourcename: "([^"]*)" targetname: "([^"]*)"(?: label: "([^"]*)")? \}$')
    FRAME = re.compile(r"\\n(\d+) bytes \(([a-z,]*)\)")
    INDIRECT = "__indirect_call"

    def __init__(self, objects):
        self.functions = {}
        self.by_symbol = defaultdict(set)
        for path in objects:
            graph = path.with_suffix(".ci")
            if not graph.exists():
                raise Problem(f"{graph} is missing: build with -DBGPDT_CALL_GRAPH=ON, and not from a compiler cache")
            for line in graph.read_text().splitlines():
                self.read(line, graph)

    def read(self, line, graph):
        if node := self.NODE.match(line):
            title, label, foreign = node.groups()
            function = self.functions.setdefault(title, Function(title.rsplit(":", 1)[-1], label.split("\\n")[0]))
            if foreign:
                return
            frame = self.FRAME.search(label)
            if not frame or frame[2] not in ("static", "dynamic,bounded"):
                raise Problem(f"{function.pretty} has a frame without a bound")
            function.frame = max(int(frame[1]), function.frame or 0)
            self.by_symbol[function.symbol].add(title)
        elif edge := self.EDGE.match(line):
            caller, callee, place = edge.groups()
            self.functions[caller].calls.add((callee, place or ""))
        elif not re.match(r"graph: \{|\}$", line):
            raise Problem(f"{graph}: not understood: {line}")

    def of(self, symbols):
        """The titles behind those symbols, whatever the aliases."""
        return {title for symbol in symbols for title in self.by_symbol.get(symbol) or self.by_symbol[base(symbol)]}


class Calls:
    """What calls through pointers may reach, as the limits file tells it."""

    def __init__(self, rules, sources, plugin, graph):
        self.rules = rules
        self.sources = sources
        self.plugin = plugin
        self.graph = graph
        self.slots = {name: slot for _, slot, names in plugin.rows(RECORD_TABLE, RECORD_SIZE, RECORD_NAME, RECORD_SLOTS)
                      for name in names}
        self.taken = graph.of(set().union(*plugin.pointers.values()))
        self.used = set()
        self.reached = set()

    def targets(self, place, function, via):
        """What a call at "path:line:column" may reach; several calls on one line are not told apart."""
        path, line, _ = place.rsplit(":", 2)
        try:
            path = Path(path).resolve().relative_to(self.sources.resolve()).as_posix()
            text = (self.sources / path).read_text().splitlines()[int(line) - 1].strip()
        except (ValueError, IndexError, OSError) as error:
            raise Problem(f"there is no source line {place}: {error}") from error
        found = set()
        for i, rule in enumerate(self.rules):
            if rule["at"] != path or rule["through"] not in text:
                continue
            for caller in (base(function.symbol), via):
                if re.search(rule.get("from", ""), caller):
                    found |= self.resolve(rule, caller)
                    self.used.add(i)
                    break
        if not found:
            raise Problem(f"the limits file does not tell what the call at {path}:{line} may reach, made by "
                          f"{function.pretty}, which {via} called: {text}")
        self.reached |= found
        return found

    def resolve(self, rule, matched):
        if "rows" in rule:
            slot = ROW_SLOTS.index(self.slots[matched])
            return self.graph.of(self.plugin.pointed(rule["rows"], ROW_SIZE, slot))
        if "tables" in rule:
            return self.graph.of(set().union(*map(self.plugin.pointed, rule["tables"])))
        return {title for title in self.taken if re.search(rule["like"], self.graph.functions[title].pretty)}

    def check_complete(self, called_by_host, uncalled):
        for i, rule in enumerate(self.rules):
            if i not in self.used:
                raise Problem(f"no call is made through {rule['through']} in {rule['at']}"
                              f"{' from ' + rule['from'] if 'from' in rule else ''}: the limits file is out of date")
        left = {title for title in self.taken - self.reached - called_by_host
                if not any(re.search(like, self.graph.functions[title].pretty) for like in uncalled)}
        if left:
            raise Problem("no call is told to reach these, though their addresses are taken:\n  " +
                          "\n  ".join(sorted(self.graph.functions[title].pretty for title in left)))


class Stack:
    """The deepest stack below a function, and the chain of calls that leads there."""

    def __init__(self, graph, calls):
        self.graph = graph
        self.calls = calls
        self.known = {}
        self.open = []
        self.outside = defaultdict(set)

    def deepest(self, title, via=HOST):
        """(bytes, chain, what is called outside)"""
        function = self.graph.functions[title]
        key = (title, via)
        if key in self.known:
            return self.known[key]
        if key in self.open:
            cycle = self.open[self.open.index(key):] + [key]
            raise Problem("recursion: " + " > ".join(name_of(self.graph.functions[t]) for t, _ in cycle))
        self.open.append(key)
        below, chain, outside = 0, [], set()
        for callee, place in sorted(function.calls):
            if callee == Graph.INDIRECT:
                callees = self.calls.targets(place, function, via)
            else:
                callees = {callee} if self.own(callee) else self.graph.of({callee.rsplit(":", 1)[-1]})
                if not callees:
                    outside.add(callee)
            for target in sorted(callees):
                same = base(self.graph.functions[target].symbol) == base(function.symbol)
                depth, path, more = self.deepest(target, via if same else base(function.symbol))
                outside |= more
                if depth > below:
                    below, chain = depth, path
        self.open.pop()
        self.known[key] = function.frame + below, [(name_of(function), function.frame)] + chain, outside
        return self.known[key]

    def own(self, title):
        function = self.graph.functions.get(title)
        return function is not None and function.frame is not None

    def of_symbols(self, names):
        titles = self.graph.of(names)
        if not titles:
            raise Problem(f"{', '.join(sorted(names))}: not in the call graph")
        return max((self.deepest(title) for title in titles), key=lambda found: found[0])


def name_of(function):
    """The name alone, without types, template arguments and namespaces."""
    rest, name = re.sub("^_Z[ZNK]*|^L", "", function.symbol), function.symbol
    while length := re.match(r"L?(\d+)", rest):
        name, rest = rest[length.end():][:int(length[1])], rest[length.end() + int(length[1]):]
    return base(name)


def callbacks(plugin):
    """(type, callback, symbols) in the tables' order."""
    yield from plugin.rows(RECORD_TABLE, RECORD_SIZE, RECORD_NAME, RECORD_SLOTS)
    for table in ROW_TABLES:
        for name, slot, symbols in plugin.rows(table, ROW_SIZE, ROW_NAME, ROW_SLOTS):
            yield "row " + name, slot, symbols


def check_sizes(plugin, limits, expect):
    owners = len({owner for owner, _, _ in callbacks(plugin)})
    for what, bytes_ in plugin.sizes().items():
        expect(what, bytes_, limits["base"][what] + owners * limits["each"][what])
        print(f"{bytes_:6}  {what}")


def check_stacks(plugin, graph, calls, limits, expect):
    stack = Stack(graph, calls)
    outside = set()

    def measure(what, symbols, limit):
        depth, chain, called = stack.of_symbols(symbols)
        outside.update(called)
        expect(f"the stack of {what}", depth, limit)
        print(f"{depth:6}  {what:28} " + " > ".join(f"{name} {frame}" for name, frame in chain))

    in_tables = set()
    for owner, slot, symbols in callbacks(plugin):
        in_tables |= symbols
        measure(f"{owner} {slot}", symbols, limits["stack"].get(owner.split()[-1], limits["stack"]["callbacks"]))
    for symbol in sorted(plugin.exports - in_tables):
        measure(symbol, {symbol}, limits["stack"]["others"])
    calls.check_complete(graph.of(set().union(*(plugin.pointed(table) for table in HOST_TABLES))), limits["uncalled"])
    if unknown := outside - plugin.imports:
        raise Problem("in no call graph and not imported: " + " ".join(sorted(unknown)))
    print("counted as nothing:", " ".join(sorted(outside)))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("plugin", type=Path)
    parser.add_argument("sources", type=Path, help="the folder of the plug-in's sources")
    parser.add_argument("limits", type=Path)
    parser.add_argument("objects", type=Path, nargs="*", help="the plug-in's object files, beside their call graphs; without "
                        "any, as it is built for size, there are its sizes alone")
    arguments = parser.parse_args()

    limits = tomllib.loads(arguments.limits.read_text())
    plugin = Plugin(arguments.plugin)
    excesses = []

    def expect(what, bytes_, limit):
        if bytes_ > limit:
            excesses.append(f"{what}: {bytes_} bytes, {bytes_ - limit} above the limit of {limit}")

    check_sizes(plugin, limits["size" if arguments.objects else "small"], expect)
    if arguments.objects:
        graph = Graph(arguments.objects)
        check_stacks(plugin, graph, Calls(limits["call"], arguments.sources, plugin, graph), limits, expect)
    for excess in excesses:
        print(excess)
    return 1 if excesses else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Problem as problem:
        sys.exit(f"footprint: {problem}")
