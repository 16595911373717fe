#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# exports.sh NM LIBRARY MAP HEADER: the library exports exactly the names of the map, and the header declares them.
set -eu
nm=$1 library=$2 map=$3 header=$4
names=$(mktemp)
trap 'rm -f "$names"' EXIT
sed -n 's/^ *\(bgpdt_[a-z_0-9]*\);$/\1/p' "$map" >"$names"
[ "$(wc -l <"$names")" -gt 20 ] || { echo "the map names hardly anything"; exit 1; }

. "$(dirname -- "$0")/../links/compare.sh"
"$nm" --dynamic --defined-only --format=posix "$library" | awk '$2 != "A" { sub(/@.*/, "", $1); print $1 }' |
    compare "$names" "exported"
grep -o '^BGPDT_API .*(' "$header" | grep -o 'bgpdt_[a-z_0-9]*(' | tr -d '(' | compare "$names" "declared"
