# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What the page about columns shows is what happens, and its pictures are those that it draws."""
import os
import re
import shutil

import matplotlib
import pytest

from test_docs import TOP, run

matplotlib.use("svg")
matplotlib.rcParams |= {"svg.hashsalt": "bgpdt", "svg.fonttype": "none"}


def words(folder):
    """What stands in the pictures; how it is drawn is matplotlib's."""
    return {name: re.findall(r">([^<>]+)</text>", (folder / "docs/pictures" / name).read_text())
            for name in ("communities.svg", "refused.svg")}


@pytest.fixture
def elsewhere(tmp_path, monkeypatch):
    (tmp_path / "docs/pictures").mkdir(parents=True)
    monkeypatch.chdir(tmp_path)
    return tmp_path


def test_the_page(elsewhere):
    failed, attempted = run(TOP / "docs/python-columns.md")
    assert not failed and attempted > 25
    if "BGPDT_RENEW" in os.environ:  # draws them anew
        for name in words(elsewhere):
            shutil.copy(elsewhere / "docs/pictures" / name, TOP / "docs/pictures")
    assert words(elsewhere) == words(TOP) and "What the column holds, rows" in words(TOP)["communities.svg"]
