#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check_tidy.sh BUILD: fails where clang-tidy finds anything in the sources that are not tests, as BUILD would compile
# them. The static analyzer, most of the time by far, walks through the plug-in and the host alone. What
# was clean with the same headers is not looked at again: BUILD keeps a list.
set -eu
build=$1
cd "$(dirname -- "$0")/.."
sources="src host toolkit library grammar tool lua sqlite web/module.cpp"
clean=$build/clean.txt
touch "$clean"
# shellcheck disable=SC2086 # a list of words
rules=$({ cat .clang-tidy setup/check_tidy.sh; find include $sources -name '*.h' -o -name '*.hpp' | sort | xargs cat; } | sha256sum)
export build rules clean

# tidy OPTION: the files of the list on standard input
tidy() {
    # shellcheck disable=SC2016 # the inner shell's
    xargs -P "$(nproc)" -n 1 sh -c '
        key=$(printf "%s %s\n" "$rules" "$(sha256sum "$1")" | sha256sum)
        grep -qxF "$key" "$clean" && exit 0
        clang-tidy -p "$build" --quiet --warnings-as-errors="*" "$0" "$1" 2>/dev/null && echo "$key" >>"$clean"
    ' "$1"
}

# plugin_linked.cpp is compiled by builds alone that load no plug-in.
status=0
find src host -name '*.cpp' | sort | tidy --checks= || status=1
find toolkit library grammar tool lua sqlite web/module.cpp -name '*.cpp' ! -name plugin_linked.cpp | sort | tidy '--checks=-clang-analyzer-*' || status=1
echo "proved: $(find src host toolkit library grammar tool lua sqlite web/module.cpp -name '*.cpp' ! -name plugin_linked.cpp | wc -l) sources are clean"
exit "$status"
