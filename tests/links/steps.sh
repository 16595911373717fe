#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# steps.sh NAMES FOLDER...: every name of the list stands in the sources of the folders, so that who looks for a step by
# its name finds it.
set -eu
export LC_ALL=C
names=$1
shift
found=$(mktemp)
trap 'rm -f "$found"' EXIT
grep -rhowE '[A-Za-z_][A-Za-z0-9_]*' "$@" | sort -u >"$found"
[ -s "$found" ] || { echo "there are no sources"; exit 1; }
missing=$(sed '/^#/d' "$names" | sort -u | comm -23 - "$found")
[ -z "$missing" ] || { printf 'nowhere in the sources:\n%s\n' "$missing"; exit 1; }
