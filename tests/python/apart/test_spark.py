# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""A local cluster converts ten million texts as the tool does: none is lost, and the refused ones have their reasons."""
import json
import subprocess
import sys
from pathlib import Path

import pyarrow.parquet
import pytest

import bgpdt

TOP = Path(__file__).resolve().parents[3]
TOOL = TOP / "build" / "release" / "tool" / "bgpdt"
ROWS = 10_000_000


def text_of(row):
    return f"{'x' if row % 10007 == 0 else ''}{64496 + row % 16}:{row}"


@pytest.fixture(scope="module")
def told(tmp_path_factory):
    """What the tool makes of the same texts, and which lines it refuses."""
    file = tmp_path_factory.mktemp("texts") / "rds.txt"
    with file.open("w") as out:
        out.writelines(text_of(row) + "\n" for row in range(ROWS))
    run = subprocess.run([TOOL, "convert", "VRFRD", "--to", "hex", file], capture_output=True, text=True, check=False)
    assert run.returncode == 1
    return run.stdout.splitlines()


@pytest.mark.parametrize("executors", [1, 2])
def test_a_cluster_converts_as_the_tool_does(executors, tmp_path, told):
    job = [sys.executable, Path(__file__).with_name("spark_job.py"), str(ROWS), str(executors), str(tmp_path / "values")]
    run = subprocess.run(job, capture_output=True, text=True, check=False, timeout=3000)
    assert run.returncode == 0, "\n".join(line for line in run.stderr.splitlines() if not line.startswith("\tat "))[:5000]
    answer = json.loads(run.stdout.splitlines()[-1])
    table = pyarrow.parquet.read_table(tmp_path / "values").sort_by("id")
    assert table["id"].to_numpy().tolist() == list(range(ROWS))
    refused = range(0, ROWS, 10007)
    assert table["hex"].drop_null().to_pylist() == told
    assert table["hex"].null_count == len(refused) == ROWS - table["reason"].null_count
    reasons = table["reason"].take(list(refused)[:50]).to_pylist()
    assert reasons == [bgpdt.why("VRFRD", text_of(row)).message for row in list(refused)[:50]]
    assert answer["column"] == [100_000 - len(range(0, 100_000, 10007)), len(range(0, 100_000, 10007))]
    print(f"proved: {ROWS} texts on {executors} executor(s) in {answer['seconds']:.0f} s, "
          f"{answer['without']:.0f} s of it for what is no conversion; {len(refused)} refused, none lost")
