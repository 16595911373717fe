# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""What editors and type checkers are told holds, and the page's few lines for pydantic and pytest work."""
import re
import subprocess
import sys
from pathlib import Path

import pytest

import bgpdt

HERE = Path(__file__).resolve().parent
TOP = HERE.parents[2]
BLOCKS = re.findall(r"^```python\n(.*?)^```$", (TOP / "docs/python.md").read_text(), re.MULTILINE | re.DOTALL)


def run(*command, **options):
    done = subprocess.run([sys.executable, *command], capture_output=True, text=True, check=False, **options)
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


def test_mypy(tmp_path):
    for number, block in enumerate(BLOCKS):
        (tmp_path / f"block{number}.py").write_text(block)
    run("-m", "mypy", "--strict", HERE / "typed.py", cwd=tmp_path)
    run("-m", "mypy", "--strict", "block0.py", cwd=tmp_path)


def test_pyright(tmp_path):
    (tmp_path / "typed.py").write_text((HERE / "typed.py").read_text())
    assert "0 errors" in run("-m", "pyright", "--pythonpath", sys.executable, "typed.py", cwd=tmp_path)


def test_stubtest(tmp_path):
    run("-m", "mypy.stubtest", "bgpdt", "--allowlist", HERE / "stubtest.txt", "--ignore-unused-allowlist", cwd=tmp_path)


def test_pydantic():
    names = {}
    exec(BLOCKS[0], names)
    names["Vrf"].model_rebuild(_types_namespace=names)
    vrf = names["Vrf"](name="red", rd="64496:1")
    assert vrf.rd == bgpdt.VRFRD("64496:1") and vrf.model_dump_json() == '{"name":"red","rd":"64496:1"}'
    assert names["Vrf"].model_validate_json(vrf.model_dump_json()) == vrf
    with pytest.raises(ValueError, match="70000 is too large here"):
        names["Vrf"](name="red", rd="192.0.2.1:70000")


def test_pytest_fixture(tmp_path):
    (tmp_path / "conftest.py").write_text(BLOCKS[1])
    (tmp_path / "test_it.py").write_text("def test_same(same_value):\n    same_value('VRFRD', '64496:1', '064496:01')\n\n\n"
                                         "def test_other(same_value):\n    same_value('VRFRD', '64496:1', '64496:2')\n")
    done = subprocess.run([sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider"], cwd=tmp_path,
                          capture_output=True, text=True, check=False)
    assert "1 failed, 1 passed" in done.stdout and "differ in" in done.stdout
