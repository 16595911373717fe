#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# coverage.sh COVERAGE RELEASE: what the tests of the build RELEASE reach of the plug-in that the build COVERAGE
# instruments; fails below all of its lines and 99 % of its branches. Code that only the compiler runs is not in what it
# makes, and so not counted. The sweeps reach every line long before their end.
set -eu
coverage=$1 release=$2
cd "$(dirname -- "$0")/.."

find "$coverage" -name '*.gcda' -delete # earlier runs' counts
export BGPDT_PLUGIN="$coverage/src/libbgp_datatype.so" BGPDT_TEST_SEED=0
for program in vectors plugin faults mistakes; do
    BGPDT_TEST_SHARE=1 "$release/tests/bgpdt_${program}_test" --gtest_brief=1
done
for program in printers sweep; do
    BGPDT_TEST_SHARE=100 "$release/tests/bgpdt_${program}_test" --gtest_brief=1
done
# The building blocks by themselves: no type's own limits stand in front of theirs.
c++ -std=c++20 --coverage -I"$PWD/src" -I"$PWD/include" "$PWD/tests/common/scan_test.cpp" \
    "$PWD/tests/common/print_test.cpp" -lgtest_main -lgtest -o "$coverage/common_test"
"$coverage/common_test" --gtest_brief=1

measure() { gcovr --root . --filter src/ "$@" "$coverage"; }
branches() { measure "$@" --json-summary-pretty | sed -n 's/^    "branch_total": \([0-9]*\).*/\1/p'; }

# Left out: the branches that end in an exception, of which the plug-in has none.
leave_out=--exclude-throw-branches

measure $leave_out --branches --print-summary --fail-under-line 100 --fail-under-branch 99 >"$coverage/report.txt" || {
    cat "$coverage/report.txt"
    exit 1
}
sed -n 's/^lines: /proved: lines /p; s/^branches: /proved: branches /p' "$coverage/report.txt"
echo "left out: $(($(branches) - $(branches $leave_out))) branches that end in an exception"
