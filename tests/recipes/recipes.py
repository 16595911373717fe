#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Tries the recipes of CONTRIBUTING.md: recipes.py FOLDER [--whole] copies the project there, adds the invented type of
type/ and the invented kind of route key of row/, renews what is generated, and runs the tests of all that together: those
of the plug-in and its tables, or with --whole all.

What stands beside this program is what a recipe lets somebody write: new files as they are, and parts of files that are
there already, each part behind the place where it goes.
"""
import pathlib
import re
import shlex
import subprocess
import sys

here = pathlib.Path(__file__).resolve().parent
top = here.parent.parent
recipes = {"type": 4, "row": 5}  # how many files may be written by hand
options = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCMAKE_UNITY_BUILD=ON", "-DBGPDT_HOST=ON",
           "-DBGPDT_TESTS=ON"]
whole = [*options, "-DBGPDT_TOOL=ON", "-DBGPDT_LUA_MODULE=ON"]
# Where a table is told of what is new.
targets = ["bgp_datatype", "bgpdt_vectors_test", "bgpdt_plugin_test", "bgpdt_interface"]
tests = "^(vectors|plugin|interface|links[.](header|parsers|rooms|steps))$"
# What an installation has and what the project's own pages say is no matter of a type; what is imported shows only in
# optimized code.
left_out = "^(install|readme|links[.]imports|lua[.](install|module)|tool[.]stream|completion[.].*)$"


def run(*command):
    print("$", shlex.join(map(str, command)), flush=True)
    subprocess.run(list(map(str, command)), check=True)


def tree():
    """The project's files by their names."""
    paths = []
    for path in top.iterdir():
        if path.name not in ("build", ".git"):
            paths += path.rglob("*") if path.is_dir() else [path]
    paths = [path for path in paths if path.is_file() and here not in path.parents]
    return {path.relative_to(top): path.read_bytes() for path in paths if "__pycache__" not in path.parts}


def put(text, place, part):
    """The text with the part at its place: at the end of a macro, or before the first line that has those words."""
    lines = text.split("\n")
    if name := re.fullmatch(r"end of (\w+)", place):
        at = next(i for i, line in enumerate(lines) if line.startswith(f"#define {name[1]}("))
        while lines[at].endswith("\\"):
            at += 1
        lines[at] += " \\"
        lines[at + 1:at + 1] = [line + " \\" for line in part[:-1]] + part[-1:]
    else:
        words = place.removeprefix("before ")
        at = next(i for i, line in enumerate(lines) if words in line)
        lines[at:at] = part + [""]
    return "\n".join(lines)


def apply(recipe, project):
    """Adds what the recipe lets write, and tells how much that was."""
    folder = here / recipe
    written = sorted(path for path in folder.rglob("*") if path.is_file())
    count = 0
    for path in written:
        name = path.relative_to(folder)
        text = path.read_text(encoding="utf-8")
        if path.suffix != ".part":
            project[name] = text.encode()
            count += text.count("\n")
            continue
        name = name.with_suffix("")
        for place, part in re.findall(r"^@(.*)\n((?:(?!@).*\n)+)", text, re.M):
            lines = part.rstrip("\n").split("\n")
            count += len(lines)
            project[name] = put(project[name].decode(), place, lines).encode()
    print(f"proved: the recipe for a {recipe} took {len(written)} files by hand, {count} lines", flush=True)
    if len(written) > recipes[recipe]:
        sys.exit(f"the recipe for a {recipe} may take {recipes[recipe]} files")


def main():
    if len(sys.argv) not in (2, 3) or sys.argv[2:] not in ([], ["--whole"]):
        sys.exit(__doc__)
    folder = pathlib.Path(sys.argv[1]).resolve()
    project = tree()
    for recipe in recipes:
        apply(recipe, project)
    source, build = folder / "source", folder / "build"
    for name, content in project.items():
        path = source / name
        if not path.exists() or path.read_bytes() != content:  # what is as it was is not built again
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
            path.chmod((top / name).stat().st_mode if (top / name).exists() else 0o644)
    for path in source.rglob("*"):
        if path.is_file() and path.relative_to(source) not in project:
            path.unlink()
    ctest = ["ctest", "--test-dir", build, "--output-on-failure", "--timeout", "3600", "-j", "2"]
    if sys.argv[2:]:
        run("cmake", "-S", source, "-B", build, "-G", "Ninja", *whole)
        run("cmake", "--build", build)
        run("cmake", "--build", build, "--target", "renew")
        run(*ctest, "-E", left_out)
    else:
        run("cmake", "-S", source, "-B", build, "-G", "Ninja", *options)
        run("cmake", "--build", build, "--target", *targets)
        run("cmake", "--build", build, "--target", "renew_interface")
        run(*ctest, "-R", tests)


main()
