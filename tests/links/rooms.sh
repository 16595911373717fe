#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# rooms.sh TOP: what the files of host, toolkit, library and fronts include stands below them: the files in no
# circle, a header and its source being one, and the rooms as the list has them.
set -eu
cd "$1"
below=' host:bgp_datatype toolkit:bgp_datatype toolkit:host library:bgp_datatype library:bgpdt library:host library:toolkit wire:bgp_datatype wire:toolkit grammar:bgp_datatype grammar:host grammar:toolkit '
fronts=' tool:wire tool:grammar tool:host tool:library tool:toolkit lua:bgpdt lua:library lua:toolkit sqlite:bgpdt python:bgpdt '
pairs=$(mktemp)
trap 'rm -f "$pairs"' EXIT

grep -H '^#include ".*[.]h' host/*.?pp toolkit/*.?pp library/*.?pp wire/*.?pp grammar/*.?pp tool/*.?pp lua/*.?pp sqlite/*.?pp python/*.?pp | sed 's/:#include "\([^"]*\)".*/ \1/' |
    while read -r file included; do
        [ ! -e "${file%/*}/$included" ] || included=${file%/*}/$included
        echo "${file%.?pp} ${included%.?pp}"
    done | awk '$1 != $2' >"$pairs"
[ "$(wc -l <"$pairs")" -gt 100 ] || { echo "hardly any file includes another"; exit 1; }

tsort "$pairs" >/dev/null
sed 's|/[^ ]*||g; s/ /:/' "$pairs" | sort -u | awk -F: -v allowed="$below$fronts" '
    $1 != $2 && !index(allowed, " " $0 " ") { print $1 " includes files of " $2; wrong = 1 }
    END { exit wrong }'
