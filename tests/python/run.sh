#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# run.sh core|columns|everywhere: tries the package for Python, each in environments of its own below build/python.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/../.." && pwd)
. "$top/setup/setup.sh"
work=$top/build/python
export PYTHONDONTWRITEBYTECODE=1
mkdir -p "$work"

# environment NAME PYTHON PACKAGE...: a fresh one with the packages, of known versions; $python is its interpreter
environment() {
    "$2" -m venv --clear "$work/$1"
    python=$work/$1/bin/python
    shift 2
    [ $# -eq 0 ] || "$python" -m pip install -q --disable-pip-version-check -c "$top/tests/python/versions.txt" "$@"
}

# install_package: builds it and installs it into the environment
install_package() {
    "$python" -m pip install -q --disable-pip-version-check --no-build-isolation "$top"
}

# try NAME OPTION...: runs the tests against the installed package
try() {
    "$python" -m pytest -q -p no:cacheprovider -rP --rootdir "$top/tests/python" "$@" >"$work/tests.txt" || {
        cat "$work/tests.txt"
        exit 1
    }
    grep '^proved: ' "$work/tests.txt" | sort -u
    tail -n 1 "$work/tests.txt" | sed 's/^/proved: /'
}

case $1 in
core)
    environment core python3 scikit-build-core pytest numpy pyarrow
    install_package
    try "$top/tests/python" --ignore "$top/tests/python/apart"
    ;;
columns)
    command -v java >/dev/null || need_packages default-jre-headless # for Spark
    environment columns python3 scikit-build-core pytest numpy pyarrow polars duckdb pandas pyspark pydantic mypy pyright matplotlib
    install_package
    try "$top/tests/python/apart"
    ;;
everywhere) "$top/tests/python/apart/everywhere.sh" "$work" ;;
*) fail "run.sh core|columns|everywhere" ;;
esac
