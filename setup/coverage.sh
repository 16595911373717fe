#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# coverage.sh BUILD: what the tests that ran in BUILD reached of the plug-in; fails below all of its lines and 99 % of its
# branches. Code that only the compiler runs is not in what it makes, and so not counted.
set -eu
build=$1
cd "$(dirname -- "$0")/.."

measure() { gcovr --root . --filter src/ "$@" "$build"; }
branches() { measure "$@" --json-summary-pretty | sed -n 's/^    "branch_total": \([0-9]*\).*/\1/p'; }

# Left out: the branches that end in an exception. The plug-in has none; the tests of src/common are built with them.
leave_out=--exclude-throw-branches

measure $leave_out --branches --print-summary --fail-under-line 100 --fail-under-branch 99
echo "left out: $(($(branches) - $(branches $leave_out))) branches that end in an exception"
