#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check_tidy.sh BUILD: fails where clang-tidy finds anything in the plug-in, the host, the tool or its modules, as BUILD
# compiles them.
set -eu
build=$1
cd "$(dirname -- "$0")/.."
find src host tool lua sqlite -name '*.cpp' | sort |
    xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet 2>&1 | grep -v -e '^[0-9]* warnings' -e '^Suppressed' || status=$?
# grep answers 1 when it printed nothing: then there is nothing to report.
[ "${status:-0}" -eq 1 ]
