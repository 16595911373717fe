# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Where memory is out: each request refused in turn."""
import os
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

HERE = Path(__file__).resolve().parent


@pytest.mark.skipif(shutil.which("cc") is None, reason="there is no compiler")
def test_each_request_refused_in_turn(tmp_path):
    shim = tmp_path / "lacking_memory.so"
    subprocess.run(["cc", "-O1", "-shared", "-fPIC", "-o", shim, HERE / "lacking_memory.c"], check=True)
    environment = os.environ | {"LD_PRELOAD": str(shim), "PYTHONMALLOC": "malloc"}
    run = subprocess.run([sys.executable, HERE / "memory_job.py", shim], env=environment, capture_output=True, text=True,
                         check=False, timeout=900)
    assert run.returncode == 0, run.stdout + run.stderr[-2000:]
    assert int(run.stdout) > 1000
    print(f"proved: {run.stdout.strip()} requests for memory refused, each call raises MemoryError or answers as ever")
