#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# imports.sh NM PLUGIN SERVICES LIBC: the plug-in imports exactly the host services of the first list, and beside them
# only names of the second one, the C library's.
set -eu
nm=$1 plugin=$2 services=$3 libc=$4
. "$(dirname -- "$0")/compare.sh"
allowed=$(mktemp)
trap 'rm -f "$allowed"' EXIT
names_of "$libc" >"$allowed"
"$nm" --dynamic --undefined-only --format=posix "$plugin" | cut -d' ' -f1 | sed 's/@.*//' |
    grep -v -x -F -f "$allowed" | compare "$services" "imported"
