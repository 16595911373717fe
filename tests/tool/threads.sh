#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Lines that four threads work at are answered as one thread answers them, and told in the same words.
# Usage: threads.sh BGPDT
set -eu
bgpdt=$1
lines=40000 # some blocks for each thread
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
fail() { echo "threads.sh: $*" >&2; exit 1; }

# run JOBS ARGUMENT...: all that it answers to files of that name
run() {
    jobs=$1
    shift
    code=0
    "$bgpdt" "$@" -j "$jobs" --rejects "$jobs.rejects" >"$jobs.out" 2>"$jobs.told" || code=$?
    echo "exit status $code" >>"$jobs.told"
}

alike() {
    run 1 "$@"
    run 4 "$@"
    for part in out told rejects; do
        cmp "1.$part" "4.$part" >&2 || { cat 4.told >&2; fail "$*: another $part with four threads"; }
    done
}

awk -v n="$lines" 'BEGIN { for (i = 0; i < n; i++) print i % 97 == 96 ? "x" i : 64496 + i % 16 ":" i }' >mixed
grep -v x mixed >taken
grep x mixed >refused

alike canon VRFRD --in mixed --show 1000
cmp 4.out taken || fail "canon loses lines"
cmp 4.rejects refused || fail "the rejects are not the refused lines"
grep -q '^exit status 1$' 4.told || fail "canon takes what is none"
alike check VRFRD --in mixed --summary
alike convert VRFRD --to hex mixed
alike convert VRFRD --to csv mixed
alike convert VRFRD --to json mixed
"$bgpdt" convert VRFRD --to json taken >lines.json
alike convert VRFRD --from json --to text lines.json
cmp 4.out taken || fail "JSON does not come back"
sed 's/"hex".*//; s/,$/}/' lines.json >tables # by their script tables
alike convert VRFRD --from json --to hex tables
grep -q '^exit status 0$' 4.told || fail "script tables are refused"

# The other threads stop where one fails.
code=0
"$bgpdt" convert VRFRD --to json -j 4 taken >/dev/full 2>told || code=$?
[ "$code" -eq 2 ] || { cat told >&2; fail "a full device: exit status $code, not 2"; }
echo "proved: four threads answer $lines lines as one does"
