#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# How fast bgpdt converts a file of route distinguishers: lines a second of processor time, user's and system's, the
# best of some runs, beside the hand-written least with and without the host's calls, the C library's way, and sed
# replacing a character.
# Usage: batch.sh BGPDT [LINES [RUNS]]
set -eu
bgpdt=${1:?usage: batch.sh BGPDT [LINES [RUNS]]} lines=${2:-4000000} runs=${3:-5}
here=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

host=$(ldd "$bgpdt" | sed -n 's/.*libbgpdt_host.* => \(.*\) (.*/\1/p')
"${CXX:-c++}" -std=c++20 -O2 -I"$here/../include" -o "$folder/floor" "$here/batch_floor.cpp" "$host" \
    -Wl,-rpath,"${host%/*}"
"${CXX:-c++}" -std=c++20 -O2 -o "$folder/plain" "$here/batch_plain.cpp"
awk -v n="$lines" 'BEGIN {
    srand(7)
    for (i = 0; i < n; i++) {
        number = int(rand() * 65535) + 1
        form = i % 4
        if (form == 0) printf "%d:%d\n", 64496 + int(rand() * 16), number
        else if (form == 1) printf "192.0.2.%d:%d\n", int(rand() * 256), number
        else if (form == 2) printf "%d:%d\n", 65536 + int(rand() * 16), number
        else printf "%d.%d:%d\n", 1 + int(rand() * 16), int(rand() * 65536), number
    }
}' >"$folder/input"

# The least processor time of the runs, in seconds.
seconds()
{
    for _ in $(seq "$runs"); do
        sh -c '"$@" >/dev/null; times' sh "$@" <"$folder/input" | tail -n 1
    done | tr 'ms' '  ' | awk '{ t = $1 * 60 + $2 + $3 * 60 + $4; if (NR == 1 || t < best) best = t } END { print best }'
}

for program in floor plain; do
    "$folder/$program" <"$folder/input" >"$folder/$program.out"
    "$bgpdt" convert VRFRD "$folder/input" | cmp - "$folder/$program.out"
done
printf '%-22s %14s %12s %10s\n' program lines/s ns/line 'of floor'
floor=$(seconds "$folder/floor")
row() { awk -v name="$1" -v n="$lines" -v t="$2" -v f="$floor" \
    'BEGIN { printf "%-22s %14d %12.1f %10.2f\n", name, n / t, t / n * 1e9, f / t }'; }
row "hand-written, no host" "$(seconds "$folder/floor" bare)"
row "floor, host's calls" "$floor"
row "bgpdt convert -j 1" "$(seconds "$bgpdt" convert VRFRD)"
row "bgpdt convert -j 2" "$(seconds "$bgpdt" convert VRFRD -j 2)"
row "sed 's/:/ /'" "$(seconds sed 's/:/ /')"
row "sscanf, snprintf" "$(seconds "$folder/plain")"
