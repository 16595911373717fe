# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What the pages show is what happens."""
import doctest
import re
import subprocess
import sys
from pathlib import Path

import pytest

import bgpdt

TOP = Path(__file__).resolve().parent.parent.parent


def run(path):
    text = re.sub(r"^```.*$", "", path.read_text(encoding="utf-8"), flags=re.MULTILINE)  # what ends a block ends an answer
    test = doctest.DocTestParser().get_doctest(text, {}, path.name, str(path), 0)
    return doctest.DocTestRunner().run(test)


@pytest.mark.parametrize("page, least", [("docs/python.md", 40), ("python/README.md", 5)])
def test_pages(page, least):
    if page.startswith("docs"):
        pytest.importorskip("numpy"), pytest.importorskip("pyarrow")
    failed, attempted = run(TOP / page)
    assert not failed and attempted >= least
    print(f"proved: {attempted} examples of {page}")


def test_the_annotations_are_current():
    done = subprocess.run([sys.executable, TOP / "python/annotations/annotate.py", "--check"], capture_output=True, text=True,
                          check=False)
    assert done.returncode == 0, done.stderr


def test_the_packages_own_words():
    assert doctest.testmod(bgpdt).attempted > 2 and doctest.testmod(bgpdt).failed == 0
