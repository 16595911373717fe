# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Sourced by the checks of this folder.

# The names of a list: a word a line, comments behind '#'.
names_of() { sed -e 's/[[:space:]]*#.*//' -e '/^$/d' "$@" | LC_ALL=C sort; }

# compare LIST WHAT <names: fails with the differences unless the names are those of the list.
compare() {
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    names_of "$1" >"$work/expected"
    LC_ALL=C sort >"$work/actual"
    [ -s "$work/expected" ] || { echo "$1 holds no names"; exit 1; }
    diff "$work/expected" "$work/actual" >"$work/differences" && return 0
    sed -n -e "s/^</missing among the $2:/p" -e "s/^>/not to be $2:/p" "$work/differences"
    exit 1
}
