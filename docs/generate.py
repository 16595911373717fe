#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Writes docs/types, a page for each type, from what the tool tells of it and from the vectors, docs/man, the manual
pages, from what the tool and bgpdt.h tell of themselves, docs/pictures/grammar, the grammars as pictures, and docs/yang,
as a module.

    docs/generate.py BGPDT           writes them
    docs/generate.py BGPDT --check   fails where a page is not what it would write
"""
import json
import os
import pathlib
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from itertools import groupby

from library_manual import library_manuals
from roff import item, manual_head, roff, shown

top = pathlib.Path(__file__).resolve().parent.parent
tool = ""
examples_wanted = 3
# What the host's own types take and refuse is no matter of the vectors: indexes, and strings of the type's size.
index_texts = {"in": ["0", "7", "4294967295"], "bad": ["", "-1", "4294967296"]}
string_texts = {"in": ["vpn1", "a", "x" * 31], "bad": ["x" * 32, "x" * 33, "x" * 100]}
# The vectors of a dispatch row that has no type of its own are told with the type that dispatches to it.
dispatching = "BOLPREFIX"
generated = ("man", "types", "pictures/grammar", "yang")


# What the help of the tool has no room for.
environment = [
    ("BGPDT_PLUGIN", "The plug-in's file, where --plugin names none."),
    ("NO_COLOR", "If it is set and not empty, there are no colours but by --color always."),
    ("TERM", "On a terminal called dumb there are none either."),
    ("TMPDIR", "The folder for what a sort has no room for in memory; /tmp without it."),
]
json_notes = [
    "With --json each answer is one object on one line, refusals included.",
    "Of many values it tells what is refused, an object a line on standard error, then how many there were.",
    "The member schema, 2, is raised when another is gone or means something else;",
    "bgpdt.schema.json, a JSON Schema, says what each means.",
]
shown_calls = [
    ("bgpdt explain EVNPREFIX 100:32:192.0.2.1", "What each byte of a value is."),
    ("bgpdt check rt 64496:100", "Whether a route target is one; types go by the names that people use too."),
    ("bgpdt diff VRFRD 64496:100 64496:101", "In which fields two values differ."),
    ("bgpdt convert COMMUNITY --to csv <communities.txt", "A table of the values of many lines, with their fields."),
    ("bgpdt sort VRFRD -u -o rds.txt rds.txt", "Sorts a file in its place, each value once."),
    ("tshark -r bgp.pcap -Y bgp -T json -x | bgpdt import", "The communities and route keys of a capture."),
    ("bgpdt check COMMUNITY --json --in communities.txt", "What is wrong with which line, for a program."),
]


def ask(*words):
    """What the tool answers in JSON, refusals included."""
    run = subprocess.run([tool, "--json", *words[:2], "--", *words[2:]], capture_output=True, text=True, check=False)
    if run.returncode > 1:
        sys.exit(f"bgpdt {' '.join(words)}: {run.stdout}{run.stderr}")
    return json.loads(run.stdout)


def ask_text(*words):
    return subprocess.run([tool, *words[:2], *(["--"] if words[2:] else []), *words[2:]], capture_output=True, text=True, check=True).stdout


def grammar(name, language="notation"):
    """What is told of the grammar of a type, or of "TYPE KIND"; None if it has none, or if the language cannot tell it."""
    run = subprocess.run([tool, "--json", "grammar", *name.split(), "--as", language], capture_output=True, text=True, check=False)
    return json.loads(run.stdout) if run.returncode == 0 else None


def quoted(text):
    """A word of the shell."""
    return text if re.fullmatch(r"[\w.,:/-]+", text) else "'" + text + "'"


class VectorFile:
    """The comment at the head of a file of vectors, and its lines that are about a type."""

    def __init__(self, path):
        self.name = path.name
        lines = path.read_text(encoding="utf-8").splitlines()
        end = next(i for i, line in enumerate(lines) if not line.startswith("#"))
        head = [line[2:] for line in lines[:end] if not re.match(r"# (-{8}|SPDX-)", line)]
        start = next((i for i, line in enumerate(head) if re.match(r" *\(\d+\)", line)), len(head))
        numbered = head[start:]
        self.about = "\n".join(line for line in head[:start] if not line.startswith("Deliberate")).strip()
        self.irregularities, self.more = [], []
        for line in numbered:
            if item := re.match(r" *\((\d+)\) (.*)", line):
                self.irregularities.append([item[1], item[2]])
            elif line.startswith(" ") and self.irregularities:
                self.irregularities[-1][1] += " " + line.strip()
            else:
                self.more.append(line)
        self.lines = []
        subject = None
        for line in re.sub(r"\\\n\s*", "", "\n".join(lines[end:])).splitlines():
            if name := re.match(r"(type|row) (\S+)", line):
                subject = name[2] if name[1] == "type" else None
            elif subject is not None:
                self.lines.append((subject, line))


def read_vectors():
    return [VectorFile(path) for path in sorted((top / "tests/vectors").glob("*/*.vec"))]


def expanded(word):
    """The bytes of the vectors' grammar, as hexadecimal digits."""
    word = re.sub(r"([0-9a-f]{2})\*(\d+)", lambda m: m[1] * int(m[2]), word)
    return re.sub(r"\(([^()]*)\)\*(\d+)", lambda m: m[1] * int(m[2]), word).replace("_", "")


def texts_of(files, type_name, verb):
    """Plain texts of lines that hold in mode 2, with the bytes that are told for them."""
    for file in files:
        for subject, line in file.lines:
            found = re.match(verb + r'(?:@([\d,]+))? +"([ -\[\]-~]{1,300})" +([0-9a-f_*()]+|[A-Z_]+)( !\w+)? *(#.*)?$', line)
            text = found[2].replace('""', "") if found else '"'
            if subject == type_name and '"' not in text and "2" in (found[1] or "2").split(","):
                yield text, found[3]


def shape(text):
    """What sets the forms of a type apart: words, and how many there are of each other character."""
    return re.findall("[g-zG-Z]+", text), sorted(re.findall("[^0-9a-zA-Z]", text))


def known_texts(description, files, verb):
    """By text the bytes, or null, of what the vectors say; what they do not is the host's."""
    if description["storage"] != "structured" and not any(texts_of(files, description["type"], "bad")):
        return dict.fromkeys((string_texts if description["storage"] == "string" else index_texts)[verb])
    return {text: word for text, word in texts_of(files, description["type"], verb) if text.strip()}


def good_texts(description, files):
    """Each of another form as long as there are any, checked against their bytes."""
    known = known_texts(description, files, "in")
    bare = [text for text in known if text == text.strip()]
    chosen = {}
    for text in bare:
        chosen.setdefault(str(shape(text)), text)
    answers = []
    for text in list(dict.fromkeys([*chosen.values(), *bare]))[:examples_wanted]:
        answer = ask("parse", description["type"], text)
        if "hex" not in answer or (known[text] and not same_bytes(answer["hex"], expanded(known[text]))):
            sys.exit(f"{description['type']}: {text!r} is not what the vectors say: {answer}")
        answers.append((text, answer["hex"]))
    return answers


def same_bytes(first, second):
    size = max(len(first), len(second))
    return first.ljust(size, "0") == second.ljust(size, "0")


def bad_texts(description, files):
    """Each refused for another reason as long as there are any, those first of which the tool tells where they err."""
    chosen, others = {}, []
    for text in list(known_texts(description, files, "bad"))[:40]:
        answer = ask("parse", description["type"], text)
        if "error" not in answer:
            sys.exit(f"{description['type']}: {text!r} is taken, the vectors say that it is not")
        entry = (text, answer.get("reason") or "it is " + answer["error"].split(": it is ")[-1].split(" (SYSDT")[0],
                 answer.get("repair", ""))
        if "at" not in answer or chosen.setdefault(re.sub(r'"[^"]*"|\d+', "9", entry[1]), entry) is not entry:
            others.append(entry)
        if len(chosen) == examples_wanted:
            break
    return (list(chosen.values()) + others)[:examples_wanted]


def first_value(files, type_name, size):
    """Bytes of a type without text."""
    for file in files:
        for subject, line in file.lines:
            found = re.match(r"(?:out|bare|copy|set)(?:@[\d,]+)? +([0-9a-f_*()]+) ", line)
            if subject == type_name and found and len(expanded(found[1])) == 2 * size and expanded(found[1]).strip("0"):
                return "0x" + expanded(found[1])
    return "0x" + "00" * size


def pictures(description, files):
    """A value of every layout that the samples, or the kinds without text, have."""
    values = description["examples"] or [first_value(files, description["type"], description["size"])]
    kinds = {}
    for kind in description.get("kinds", []):
        kinds[kind["kind"]] = "0x%08x" % kind["kind_number"] + "00" * (description["size"] - 4)
    seen = {}
    for value in values + list(kinds.values()):
        answer = ask("explain", description["type"], value)
        layout = tuple((part["offset"], part["size"], part.get("name")) for part in answer["parts"])
        kind_told = answer.get("kind") in {other.get("kind") for other, _ in seen.values()}
        if layout not in seen and not (value in kinds.values() and kind_told):
            seen[layout] = (answer, value)
    return list(seen.values())


def escaped(text):
    return re.sub(r"([*\[\]\\|`])", r"\\\1", text).replace("<", "&lt;")


def code(text):
    fence = "``" if "`" in text else "`"
    return fence + text.replace("|", "\\|") + fence if text else "(the empty text)"


def table(heads, rows):
    lines = ["| " + " | ".join(row) + " |" for row in [heads, ["---"] * len(heads), *rows]]
    return "\n".join(lines) + "\n"


def sentence(words):
    return words[0].upper() + words[1:] + "."


def text_section(description, files):
    name = description["type"]
    if "parse" not in description["operations"]:
        return "## Text\n\nThe type takes no text" + (
            "; it prints one.\n" if "print" in description["operations"] else ".\n")
    parts = ["## Text\n"]
    if description["grammar"]:
        parts.append(escaped(sentence(description["grammar"])) + "\n")
    if description["takes"]:
        parts.append("Its help says: " + " or ".join(code(text) for text in description["takes"]) + "\n")
    if description["examples"]:
        parts.append("One text of each form:\n\n```text\n" + "\n".join(description["examples"]) + "\n```\n")
    if any(kind.get("form") for kind in description.get("kinds", [])):
        parts.append(table(["kind", "number", "what it is", "its help says"],
                           [[kind["kind"], str(kind["kind_number"]), kind["about"],
                             code(kind["form"]) if kind.get("form") else ""]
                            for kind in description["kinds"]]))
    good = good_texts(description, files)
    if good:
        parts.append("Taken:\n\n" + table(["text", "bytes"],
                                          [[code(text), code(shortened(digits))] for text, digits in good]))
        bad = bad_texts(description, files)
        parts.append("Refused:\n\n" + table(["text", "why", "would be accepted"],
                                            [[code(text), escaped(why), code(repair) if repair else ""]
                                             for text, why, repair in bad]))
    else:
        parts.append("No text gives a value.\n")
    return "\n".join(parts)


def proofs(name):
    """What grammar/proof.txt says of the name."""
    what = {"texts": "equal to the parser", "fields": "field by field equal to the parser",
            "rows": "how many, and how long", "orders": "its groups in every order",
            "numbers": "", "canonical": "the canonical texts, too", "values": "", "printed": ""}
    told = {}
    for line in (top / "grammar/proof.txt").read_text(encoding="utf-8").splitlines():
        if found := re.match(re.escape(name) + r" (\w+): (\d+) states, (\d+) texts, (\d+) more states, "
                             r"runs of (\d+)(, .*)?$", line):
            states = "" if found[1] == "rows" else f"{found[2]} states, "
            more = f", up to {found[4]} more states" * (found[4] != "0")
            runs = f", one character up to {found[5]} times in a row" * (found[5] != "0")
            told[found[1]] = f"{what[found[1]]}: {states}{int(found[3]):,} texts{more}{runs}{found[6] or ''}"
        elif found := re.match(re.escape(name) + r" numbers: every value of (\d+), (\d+) texts$", line):
            told["numbers"] = f"every value of {found[1]} large number{'s' * (found[1] != '1')}, {int(found[2]):,} texts"
        elif found := re.match(re.escape(name) + r" values: (\d+) printed$", line):
            told["values"] = f"what {int(found[1]):,} values print as"
        elif found := re.match(re.escape(name) + r" printed: (\d+) of (\d+) steps met, (\d+) values compared$", line):
            met = "all" if found[1] == found[2] else f"{int(found[1]):,} of the"
            compared = f", and {int(found[3]):,} values print as no other does" * (found[3] != "0")
            told["printed"] = f"{met} {int(found[2]):,} steps of the automaton of `printed` met{compared}"
    return [told[key] for key in what if key in told]


def grammar_section(description):
    name = description["type"]
    named = [name] + [f"{name} {kind['kind']}" for kind in description.get("kinds", [])]
    parts = []
    for subject in named:
        told = grammar(subject)
        if told is None:
            continue
        parts.append(f"### {subject.split()[-1]}\n" if len(named) > 2 else "")
        parts.append(f"```text\n{told['grammar']}```\n")
        parts.append(told["printing"] + "\n")
        proved = "; ".join(proofs(subject))
        parts.append(f"Proved: {proved}.\n" if proved else "")
        if grammar(subject, "svg"):
            parts.append(f"![The grammar of {subject} as a railroad](../pictures/grammar/{subject.replace(' ', '.')}.svg)\n")
    if not parts:
        return ""
    pictured = any(grammar(subject, "svg") for subject in named)
    others = " `bgpdt grammar` has it as ABNF, regular expression, YANG and picture." * pictured
    return f"## Grammar\n\n[The notation](../../grammar/README.md).{others}\n\n" + "\n".join(parts)


def yang_module(names):
    head = ("module bgpdt-texts {\n  yang-version 1.1;\n  namespace \"urn:bgpdt:texts\";\n  prefix bgpdt;\n\n  description\n"
            "    \"The texts of BGP data types, without white space at their ends.\";\n")
    typedefs = [told["grammar"] for name in names if (told := grammar(name, "yang"))]
    return head + "".join("\n" + re.sub("^(?=.)", "  ", written, flags=re.M) for written in typedefs) + "}\n"


def shortened(digits):
    """What is repeated at the end is counted."""
    found = re.search(r"((?:..){1,8}?)\1{8,}$", digits)
    if not found or found.start() % 2:
        return digits
    return f"{digits[:found.start()]} {found[1]} x {len(found[0]) // len(found[1])}".strip()


def counted(text):
    """Equal lines that follow each other are counted, so are the last ones of a list, which lack a comma."""
    lines = []
    for line, same in groupby(text.splitlines(), lambda line: line.rstrip(",")):
        same = list(same)
        lines += same if len(same) < 4 else [same[0], f"{line[:len(line) - len(line.lstrip())]}... {len(same) - 1} more"]
    return "\n".join(lines) + "\n"


def picture_section(description, files):
    parts = ["## Bytes\n"]
    answers = pictures(description, files)
    for answer, value in answers:
        if len(answers) > 1:
            route = next((part["meaning"] for part in answer["parts"] if part.get("name") == "route type"), "number")
            kind = answer.get("kind") if "kinds" in description else None
            parts.append(f"### {' '.join(filter(None, [kind, '' if route == 'number' else route]))}\n")
        box = counted(ask_text("explain", description["type"], value))
        parts.append(f"```text\n$ bgpdt explain {description['type']} {quoted(value)}\n{box}```\n")
        keyed = [[str(part["offset"]), str(part["size"]), escaped(part["name"]), code(part["key"])]
                 for part in answer["parts"] if part.get("key")]
        if keyed:
            parts.append(table(["offset", "size", "field", "script field"], keyed))
    return "\n".join(parts)


def irregularity_section(files):
    parts = ["## Deliberate irregularities\n"]
    for file in files:
        if len(files) > 1:
            parts.append(f"### {file.name.removesuffix('.vec')}\n\n{escaped(file.about)}\n")
        # A number that goes on from another file's would be counted anew by a list of Markdown's.
        parts += [f"- ({number}) {escaped(text)}" for number, text in file.irregularities]
        parts.append("\n" + escaped("\n".join(file.more)) + "\n" if file.more else "")
    if not any(file.irregularities for file in files):
        parts.append("None.\n")
    return "\n".join(parts)


def page(name, files):
    description = ask("describe", name)
    head = f"# {name}: {description['about']}\n\n"
    head += f"Type {description['id']:#06x}, {description['storage']}, {description['size']} bytes, "
    head += "with " + " ".join(description["operations"]) + ".\n\n"
    if len(files) == 1:
        head += escaped(files[0].about) + "\n\n"
    text = head + text_section(description, files) + "\n" + grammar_section(description) + "\n"
    text += picture_section(description, files) + "\n"
    text += irregularity_section(files) if files else ""
    return re.sub(r"\n{3,}", "\n\n", text).rstrip() + "\n"


def file_of_type(file, names):
    """The type whose page tells a file: the longest name that the file's begins with."""
    stem = file.name.removesuffix(".vec")
    return max((name for name in names if re.match(re.escape(name) + r"(_[a-z]|$)", stem)), key=len, default=dispatching)


def shown_call(call, meaning):
    return f".TP\n.B {roff('$ ' + call)}\n{roff(meaning)}\n"


def rows_of(page, head):
    """The two columns below a head of the help."""
    lines = re.search(f"^{head}:\n((?:  .*\n)+)", page, re.M)[1].splitlines()
    rows = [re.fullmatch(r"  (\S.*?) {2,}(\S.*)|  (.{29,}?\S) (\S.*)", line) for line in lines]
    if not all(rows):
        sys.exit(f"not every row of {head} is understood")
    return [(row[1] or row[3], row[2] or row[4]) for row in rows]


def version():
    return ask_text("--version").strip()


def tool_manual():
    page = ask_text("--help")
    commands, options = rows_of(page, "Commands"), rows_of(page, "Options")
    helps = {call: ask_text(call.split()[0], "--help") for call, _ in commands}
    special = {call: [option for option, _ in rows_of(text, "Options")] for call, text in helps.items()}
    common = [option for option, _ in options if all(option in known for known in special.values())]
    text = manual_head("BGPDT", 1, version(), "bgpdt \\- convert, check and explain the values of BGP data types")
    text += ".SH SYNOPSIS\n.B bgpdt\n.I COMMAND\n[\\fIARGUMENTS\\fR] [\\fIOPTIONS\\fR]\n.SH COMMANDS\n"
    for call, summary in commands:
        own = [option for option in special[call] if option not in common]
        example = re.search(r"for example\n\n  (.*)\n", helps[call])[1]
        text += item(call, summary + ".") + ("Options: " + roff(", ".join(own)) + ".\n" if own else "")
        text += ".IP\n.EX\n" + roff("$ " + example) + "\n.EE\n"
    octets = next(text for call, text in helps.items() if call.startswith("wire "))
    text += ".SH OCTETS\nWhat the octets that wire reads may be.\n"
    text += "".join(item(form, meaning + ".") for form, meaning in rows_of(octets, "What the octets may be"))
    text += ".SH OPTIONS\n" + "".join(item(option, meaning + ".") for option, meaning in options)
    notes = page[page.rindex(options[-1][1]) + len(options[-1][1]):].strip()
    for paragraph in notes.split("\n\n"):
        if status := re.fullmatch(r"Exit status: (.*)", paragraph):
            text += ".SH EXIT STATUS\n" + roff(status[1]) + "\n"
        else:
            text += ".PP\n" + "".join(roff(line) + "\n" for line in paragraph.splitlines())
    text += ".SH ENVIRONMENT\n" + "".join(item(name, meaning) for name, meaning in environment)
    text += ".SH JSON\n" + "".join(roff(line) + "\n" for line in json_notes)
    text += ".SH EXAMPLES\n" + "".join(shown_call(call, meaning) for call, meaning in shown_calls)
    return text + ".SH SEE ALSO\n.BR bgpdt\\-texts (7)\n"


def texts_manual(descriptions):
    text = manual_head("BGPDT-TEXTS", 7, version(), "bgpdt\\-texts \\- the text forms of BGP data types")
    text += ".SH DESCRIPTION\nWhat the types of\n.BR bgpdt (1)\ntake as text, with a text of each form.\n.SH TYPES\n"
    for description in descriptions:
        text += f".SS {description['type']}\n{roff(description['about'])}, {description['size']} bytes.\n"
        if description["grammar"]:
            text += roff(sentence(description["grammar"])) + "\n"
        if description["takes"]:
            text += "Its help says: " + roff(" or ".join(description["takes"])) + ".\n"
        if description["examples"]:
            text += shown(description["examples"])
        else:
            text += "It takes no text.\n"
        if told := grammar(description["type"]):
            text += shown(told["grammar"].splitlines())
        for kind in description.get("kinds", []):
            told = f"Kind {kind['kind_number']}, {kind['about']}."
            text += item(kind["kind"], told + (f" Its help says: {kind['form']}." if kind.get("form") else ""))
    return text + ".SH SEE ALSO\n.BR bgpdt (1)\n"


def pages():
    names = [entry["type"] for entry in ask("types")["types"]]
    vectors = read_vectors()
    files = {name: [file for file in vectors if file_of_type(file, names) == name] for name in names}
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        texts = list(pool.map(lambda name: page(name, files[name]), names))
    descriptions = [ask("describe", name) for name in names]
    rows = [[f"[{entry['type']}]({entry['type']}.md)", entry["about"], str(entry["size"])] for entry in descriptions]
    index = "# The types\n\n" + table(["type", "what it is", "bytes"], rows)
    subjects = [path.stem.replace(".", " ", 1) for path in sorted((top / "grammar/texts").glob("*.grammar"))]
    drawn = {f"pictures/grammar/{name.replace(' ', '.')}.svg": told["grammar"] for name in subjects
             if (told := grammar(name, "svg"))}
    return {**drawn, "yang/bgpdt-texts.yang": yang_module(subjects), "types/README.md": index, **{f"types/{name}.md": text for name, text in zip(names, texts)},
            "man/bgpdt.1": tool_manual(), "man/bgpdt-texts.7": texts_manual(descriptions), **library_manuals(version())}


def main():
    global tool
    if len(sys.argv) not in (2, 3) or sys.argv[2:] not in ([], ["--check"]):
        sys.exit(__doc__)
    tool = sys.argv[1]
    folder = top / "docs"
    made = pages()
    for own in generated:
        (folder / own).mkdir(exist_ok=True)
    there = {str(path.relative_to(folder)) for own in generated for path in (folder / own).iterdir()}
    if len(sys.argv) == 3:
        stale = sorted(name for name in there | set(made)
                       if name not in made or name not in there
                       or (folder / name).read_text(encoding="utf-8") != made[name])
        if stale:
            sys.exit("not current, write them with docs/generate.py: " + " ".join(stale))
        return
    for name in there - set(made):
        (folder / name).unlink()
    for name, text in made.items():
        (folder / name).write_text(text, encoding="utf-8")


main()
