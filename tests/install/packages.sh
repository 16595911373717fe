#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# packages.sh FOLDER WORK: the Debian packages of FOLDER, unpacked to a root of their own in WORK, hold what a program in C
# or C++ needs to be built and to run, the tool, the modules, and the manual.
set -eu
tests=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
packages=$1 work=$2
rm -rf "$work"
mkdir -p "$work/root"
for package in "$packages"/*.deb; do
    dpkg-deb --extract "$package" "$work/root"
done
library=$(find "$work/root/usr/lib" -name 'libbgpdt.so')
"$tests/library/examples.sh" "$work/root/usr/include" "${library%/*}" "$work/examples"

unset BGPDT_PLUGIN
export LD_LIBRARY_PATH="${library%/*}"

# answers COMMAND...: it makes the value of a text
answers() {
    answer=$("$@")
    [ "$answer" = 0001c0000201000700000000 ] || { echo "$1 answers $answer"; exit 1; }
}
answers "$work/root/usr/bin/bgpdt" parse VRFRD 192.0.2.1:7
LUA_CPATH="$LD_LIBRARY_PATH/lua/5.4/?.so" answers lua5.4 -e 'print(require("bgp").parse("VRFRD", "192.0.2.1:7").hex)'
answers sqlite3 :memory: '.load bgpdt_sqlite' "SELECT lower(hex(bgp_value('VRFRD', '192.0.2.1:7')))"
PYTHONPATH=$work/root/usr/lib/python3/dist-packages answers python3 -c 'import bgpdt; print(bgpdt.VRFRD("192.0.2.1:7").hex())'
for page in "$tests"/../docs/man/*; do
    name=${page##*/}
    [ -s "$work/root/usr/share/man/man${name##*.}/$name.gz" ] || { echo "no package has the page $name"; exit 1; }
done
cmp "$tests/../docs/bgpdt.schema.json" "$work/root/usr/share/bgpdt/bgpdt.schema.json"
