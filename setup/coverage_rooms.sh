#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# coverage_rooms.sh BUILD: what the tests of the instrumented build reached of each room; coverage.py judges it.
set -eu
build=$1
cd "$(dirname -- "$0")/.."

llvm-profdata-19 merge -o "$build/rooms.profdata" "$build"/profiles/*.profraw
status=0
for room in host toolkit wire library tool lua sqlite; do
    setup/coverage.py "$room" "$build/rooms.profdata" "$build/tool/bgpdt" "$build/host/libbgpdt_host.so" \
        "$build/library/libbgpdt.so" "$build/lua/bgp.so" "$build/sqlite/bgpdt_sqlite.so" || status=1
done
exit "$status"
