#!/bin/bash -eu
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Builds the fuzzers with the compiler, the flags and the engine that the environment tells, and puts them to $OUT with all
# that they need there: libraries, the plug-in, the vectors, a dictionary and seeds.
build=$WORK/bgpdt
cmake -S "$SRC/bgpdt" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=None -DBGPDT_HOST=ON -DBGPDT_LIBRARY=ON \
    -DBGPDT_FUZZING=ON -DBGPDT_FUZZING_ENGINE="$LIB_FUZZING_ENGINE" -DBGPDT_SANITIZE="$SANITIZER" \
    -DCMAKE_BUILD_RPATH="\$ORIGIN" -DCMAKE_UNITY_BUILD=ON
cmake --build "$build"

cp "$build"/fuzzing/*_fuzzer "$build"/host/libbgpdt_host.so.?.? "$build"/library/libbgpdt.so.? \
    "$build/src/libbgp_datatype.so" "$(pkg-config --variable=libdir lua5.4)"/liblua5.4.so.0 \
    "$(pkg-config --variable=libdir sqlite3)"/libsqlite3.so.0 "$OUT"
cp -r "$SRC/bgpdt/tests/vectors" "$OUT"
for fuzzer in "$build"/fuzzing/*_fuzzer; do
    name=$(basename "$fuzzer")
    cp "$build/seeds/records.dict" "$OUT/$name.dict"
    (cd "$build/seeds/${name%_fuzzer}" && zip -q -r "$OUT/${name}_seed_corpus.zip" .)
done
