#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# packages.sh FOLDER WORK: the Debian packages of FOLDER, unpacked to a root of their own in WORK, hold what a program in C
# or C++ needs to be built and to run, the tool, and the manual.
set -eu
tests=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
packages=$1 work=$2
rm -rf "$work"
mkdir -p "$work/root"
for package in "$packages"/*bgpdt*.deb; do
    dpkg-deb --extract "$package" "$work/root"
done
library=$(find "$work/root/usr/lib" -name 'libbgpdt.so')
"$tests/library/examples.sh" "$work/root/usr/include" "${library%/*}" "$work/examples"

unset BGPDT_PLUGIN
answer=$(LD_LIBRARY_PATH=${library%/*} "$work/root/usr/bin/bgpdt" parse VRFRD 192.0.2.1:7)
[ "$answer" = 0001c0000201000700000000 ] || { echo "the packaged tool answers $answer"; exit 1; }
for page in "$tests"/../docs/man/*; do
    name=${page##*/}
    [ -s "$work/root/usr/share/man/man${name##*.}/$name" ] || { echo "no package has the page $name"; exit 1; }
done
cmp "$tests/../docs/bgpdt.schema.json" "$work/root/usr/share/bgpdt/bgpdt.schema.json"
