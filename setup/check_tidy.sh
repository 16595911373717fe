#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check_tidy.sh BUILD: fails where clang-tidy finds anything in the plug-in, the host, the tool or its modules, as BUILD
# compiles them. The static analyzer, most of the time by far, walks through the plug-in and the host alone.
set -eu
build=$1
cd "$(dirname -- "$0")/.."

# tidy [OPTION...]: the files of the list on standard input
tidy() { sort | xargs -P "$(nproc)" -n 2 clang-tidy -p "$build" --quiet "$@" 2>&1; }

{
    find src host -name '*.cpp' | tidy
    find tool lua sqlite -name '*.cpp' | tidy '--checks=-clang-analyzer-*'
} |
    grep -v -e '^[0-9]* warnings' -e '^Suppressed' || status=$?
# grep answers 1 when it printed nothing: then there is nothing to report.
[ "${status:-0}" -eq 1 ]
