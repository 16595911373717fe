#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# reuse.sh ARGUMENT...: runs the REUSE tool, of an environment of its own below build.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
home=$top/build/reuse-6.2.0
[ -x "$home/bin/reuse" ] || {
    python3 -m venv --clear "$home"
    "$home/bin/python" -m pip install -q --disable-pip-version-check "reuse==${home##*-}"
} >&2
exec "$home/bin/reuse" --root "$top" "$@"
