#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# coverage.sh COVERAGE RELEASE: what the tests of the build RELEASE reach of the plug-in that the build COVERAGE
# instruments; coverage.py judges it. The sweeps reach every line long before their end.
set -eu
coverage=$1 release=$2
cd "$(dirname -- "$0")/.."

rm -f "$coverage"/*.profraw # earlier runs' counts
export BGPDT_PLUGIN="$coverage/src/libbgp_datatype.so" BGPDT_TEST_SEED=0 LLVM_PROFILE_FILE="$coverage/%p.profraw"
for program in vectors plugin faults mistakes; do
    BGPDT_TEST_SHARE=7 "$release/tests/bgpdt_${program}_test" --gtest_brief=1
done
for program in printers sweep; do
    BGPDT_TEST_SHARE=100 "$release/tests/bgpdt_${program}_test" --gtest_brief=1
done
# The building blocks by themselves: no type's own limits stand in front of theirs.
flags=$(sed -n '/bgp_datatype.cpp"/!s/.*"command": "[^ ]* \(.*\) -o .*/\1/p' "$coverage/compile_commands.json" | head -n 1)
# shellcheck disable=SC2086 # a list of words
clang++-19 $flags -fexceptions -frtti tests/common/scan_test.cpp tests/common/print_test.cpp \
    tests/common/dispatch_test.cpp -lgtest_main -lgtest -o "$coverage/common_test"
"$coverage/common_test" --gtest_brief=1

llvm-profdata-19 merge -o "$coverage/all.profdata" "$coverage"/*.profraw
setup/coverage.py src "$coverage/all.profdata" "$coverage/src/libbgp_datatype.so" "$coverage/common_test"
