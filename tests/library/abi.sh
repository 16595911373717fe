#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# abi.sh: the binary interface that bgpdt.h declares is the released one, library/libbgpdt.abi, or has more of it.
# "abi.sh --release" writes that file anew, when a version is released.
#
# What is compared is a library of the header's own functions, each without a body: the header is what the real one is
# compiled with, and library.exports sees that it has those functions and no others.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/../.." && pwd)
base=$top/library/libbgpdt.abi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cd "$work"
{
    echo '#include <bgpdt/bgpdt.h>'
    awk '/^BGPDT_API/ { inside = 1 } inside { print } /;$/ { inside = 0 }' "$top/include/bgpdt/bgpdt.h" |
        sed 's/;$/ { __builtin_trap(); }/'
} >interface.c
${CC:-cc} -std=c99 -g -w -shared -fPIC -I"$top/include" -Wl,-soname,libbgpdt.so.1 -o libbgpdt.so interface.c
if [ "${1-}" = --release ]; then
    abidw --no-show-locs --no-corpus-path --no-comp-dir-path libbgpdt.so >"$base"
    exit
fi

# 4 says that something changed, 8 that it breaks programs, 1 and 2 that nothing could be compared.
status=0
abidiff --no-added-syms "$base" libbgpdt.so || status=$?
[ "$status" -eq 0 ] || { echo "the binary interface changed in another way than by additions ($status)"; exit 1; }
echo "proved: $(grep -c '<elf-symbol ' "$base") functions are as they were released"
