#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# rooms.sh TOP: what the files of the toolkit and the fronts include stands below them: the files in no circle, a header
# and its source being one, and the rooms as the list has them.
set -eu
cd "$1"
allowed=' toolkit:bgp_datatype toolkit:host tool:host tool:toolkit tool:grammar grammar:bgp_datatype grammar:host lua:toolkit sqlite:host sqlite:toolkit '
pairs=$(mktemp)
trap 'rm -f "$pairs"' EXIT

grep -H '^#include "' grammar/*.?pp toolkit/*.?pp tool/*.?pp lua/*.?pp sqlite/*.?pp | sed 's/:#include "\(.*\)"$/ \1/' |
    while read -r file included; do
        [ ! -e "${file%/*}/$included" ] || included=${file%/*}/$included
        echo "${file%.?pp} ${included%.?pp}"
    done | awk '$1 != $2' >"$pairs"
[ "$(wc -l <"$pairs")" -gt 100 ] || { echo "hardly any file includes another"; exit 1; }

tsort "$pairs" >/dev/null
sed 's|/[^ ]*||g; s/ /:/' "$pairs" | sort -u | awk -F: -v allowed="$allowed" '
    $1 != $2 && !index(allowed, " " $0 " ") { print $1 " includes files of " $2; wrong = 1 }
    END { exit wrong }'
