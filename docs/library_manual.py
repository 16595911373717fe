# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""The manual pages of libbgpdt, made of what bgpdt.h says: bgpdt(3), a page for each of its sections with an example that
is tested, and for every function that such a page tells a page of its name that leads to it."""
import pathlib
import re
import sys
import textwrap
from dataclasses import dataclass

from roff import manual_head, roff, shown

top = pathlib.Path(__file__).resolve().parent.parent
header = top / "include/bgpdt/bgpdt.h"
# By the header's sections: the page, what it is about, its example.
pages_of_sections = {
    "codes, errors": ("bgpdt_error", "what libbgpdt answers, and why", "errors.c"),
    "library and types": ("bgpdt_open", "libbgpdt and what is known of its types", "types.c"),
    "text and values": ("bgpdt_parse", "texts, values and their fields", "values.c"),
    "script tables": ("bgpdt_table", "values as script tables", "tables.c"),
    "many at a time": ("bgpdt_parse_many", "columns of texts and values", "columns.c"),
}


@dataclass
class Declared:
    """A declaration with its docstring: paragraphs, parameters, what is returned."""
    name: str
    kind: str  # function, struct, enum, type or macro
    code: str
    paragraphs: list[str]
    parameters: list[tuple[str, str]]
    returned: str


def plain(comment):
    """Its lines without stars."""
    return "\n".join(re.sub(r"^ ?\*? ?", "", line) for line in comment.strip().splitlines()).strip()


def declared(comment, code):
    told, *tags = re.split(r"^@", plain(comment), flags=re.M)
    paragraphs = [" ".join(part.split()) for part in told.strip().split("\n\n")]
    parameters, returned = [], ""
    for tag in tags:
        word, text = tag.split(None, 1)
        text = " ".join(text.split())
        if word == "param":
            name, text = text.split(None, 1)
            parameters.append((name, text))
        elif word == "return":
            returned = text
        else:
            sys.exit(f"{header.name}: @{word} is not understood")
    for kind, pattern in (("function", r"BGPDT_API .*?(bgpdt_\w+)\("), ("struct", r"typedef struct (bgpdt_\w+) \{"),
                          ("type", r"typedef struct (bgpdt_\w+) \w+;"), ("enum", r"(enum) \{"),
                          ("macro", r"#define (\w+) ")):
        if found := re.match(pattern, code, re.S):
            return Declared(found[1], kind, code.removeprefix("BGPDT_API "), paragraphs, parameters, returned)
    sys.exit(f"{header.name}: not understood: {code}")


def sections():
    """What is said of the whole, and by section what it declares."""
    text = header.read_text(encoding="utf-8")
    about = plain(re.search(r"/\*\*\n \* @file\n(.*?)\*/", text, re.S)[1])
    parts = re.split(r"^/\* -+ (.*) \*/$", text[text.index("struct lua_State;"):], flags=re.M)
    made = {}
    for name, part in zip(parts[1::2], parts[2::2]):
        found = re.findall(r"^/\*\*(.*?)\*/\n(.*?)\n(?=\n|$)", part, re.S | re.M)
        made[name] = [declared(comment, code) for comment, code in found]
    return [" ".join(paragraph.split()) for paragraph in about.split("\n\n")], made


def members(code):
    """The members of a structure or an enumeration, each with what it is."""
    inner = code[code.index("{") + 1:code.rindex("}")]
    found = re.findall(r"^ +(.*?)[;,]? +/\*\*< (.*?) \*/$", inner, re.M)
    if len(found) != len(inner.strip().splitlines()):
        sys.exit(f"{header.name}: not every member says what it is: {inner}")
    return found


def prototype(code):
    """In bold, the names of the parameters in italics; broken between parameters."""
    line = re.sub(r"(?<!,) ", "\x03", re.sub(r"\(\s*", "(", " ".join(code.split())))
    lines = textwrap.wrap(line, 76, initial_indent="", subsequent_indent=" " * 8, break_long_words=False)
    marked = [re.sub(r"\b(?!void\))(\w+)(?=[,)])", "\x01\\1\x02", one).replace("\x03", " ") for one in lines]
    return "".join(f"\\fB{roff(one)}\\fR\n".replace("\x01", "\\fI").replace("\x02", "\\fB") for one in marked)


def synopsis(declarations):
    text = ".SH SYNOPSIS\n.nf\n.B #include <bgpdt/bgpdt.h>\n"
    for one in declarations:
        if one.kind == "function":
            text += ".PP\n" + prototype(one.code)
    return text + ".fi\n"


def described(one):
    head = {"function": one.name + "()", "struct": "struct " + one.name, "enum": "Constants"}.get(one.kind, one.name)
    text = f".SS {roff(head)}\n" + "\n.PP\n".join(roff(paragraph) for paragraph in one.paragraphs) + "\n"
    for name, meaning in one.parameters:
        text += f".TP\n.I {roff(name)}\n{roff(meaning)}\n"
    if one.returned:
        text += f".PP\nIt returns {roff(one.returned)}.\n"
    if one.kind in ("struct", "enum"):
        text += "".join(f".TP\n.B {roff(name)}\n{roff(meaning)}\n" for name, meaning in members(one.code))
    return text


def example(source):
    """A program, and what it prints."""
    path = top / "library/examples" / source
    lines = [line for line in path.read_text(encoding="utf-8").splitlines() if "SPDX-" not in line]
    answer = path.with_suffix(".out").read_text(encoding="utf-8").splitlines()
    return ".SH EXAMPLES\n" + shown(lines).removeprefix(".PP\n") + ".PP\nprints\n" + shown(answer)


def see_also(names):
    lines = [f".BR {roff(name)} ({section})" for name, section in names]
    return ".SH SEE ALSO\n" + " ,\n".join(lines) + "\n"


def names_of(declarations):
    return [one.name for one in declarations if one.kind == "function"]


def section_page(version, name, declarations, others):
    page, about, source = pages_of_sections[name]
    named = ", ".join(dict.fromkeys([page, *names_of(declarations)]))
    text = manual_head(page.upper(), 3, version, f"{roff(named)} \\- {about}")
    text += ".SH LIBRARY\nlibbgpdt (\\-lbgpdt)\n" + synopsis(declarations)
    text += ".SH DESCRIPTION\n" + "".join(described(one) for one in declarations) + example(source)
    return text + see_also([("bgpdt", 3), *((other, 3) for other in others if other != page)])


def whole_page(version, about, made):
    text = manual_head("BGPDT", 3, version, "bgpdt \\- BGP data types in C and C++")
    text += ".SH LIBRARY\nlibbgpdt (\\-lbgpdt)\n.SH SYNOPSIS\n.nf\n.B #include <bgpdt/bgpdt.h>\n.fi\n.PP\nin C++:\n"
    text += ".nf\n.B #include <bgpdt/bgpdt.hpp>\n.fi\n.SH DESCRIPTION\n"
    text += "\n.PP\n".join(roff(paragraph) for paragraph in about) + "\n"
    for name, declarations in made.items():
        page, what, _ = pages_of_sections[name]
        text += f".TP\n.BR {roff(page)} (3)\n{roff(what)}: {roff(', '.join(names_of(declarations)))}\n"
    text += example("values.cpp")
    pages = [(page, 3) for page, _, _ in pages_of_sections.values()]
    return text + see_also([("bgpdt", 1), *pages, ("bgpdt-texts", 7)])


def library_manuals(version):
    """The pages by their files."""
    about, made = sections()
    if set(made) != set(pages_of_sections):
        sys.exit(f"{header.name} has other sections than there are pages: {', '.join(made)}")
    others = [page for page, _, _ in pages_of_sections.values()]
    pages = {"bgpdt": whole_page(version, about, made)}
    for name, declarations in made.items():
        page = pages_of_sections[name][0]
        pages |= {own: f".so man3/{page}.3\n" for own in names_of(declarations)}
        pages[page] = section_page(version, name, declarations, others)
    return {f"man/{name}.3": text for name, text in pages.items()}
