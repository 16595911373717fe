#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# examples.sh INCLUDE FOLDER WORK: the examples of the manual build as strict C99 and C++20 with the headers of INCLUDE and
# the libbgpdt of FOLDER, run without being told more, and print what stands beside them.
set -eu
examples=$(CDPATH='' cd -- "$(dirname -- "$0")/../../library/examples" && pwd)
include=$1 folder=$2 work=$3
mkdir -p "$work"
unset BGPDT_PLUGIN
tried=0
for source in "$examples"/*.c "$examples"/*.cpp; do
    case $source in
    *.c) compiler="${CC:-cc} -std=c99" ;;
    *) compiler="${CXX:-c++} -std=c++20" ;;
    esac
    $compiler -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -I"$include" -o "$work/example" "$source" \
        -L"$folder" -lbgpdt -Wl,-rpath-link,"$folder"
    LD_LIBRARY_PATH=$folder${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH} "$work/example" >"$work/answer"
    diff "${source%.*}.out" "$work/answer"
    tried=$((tried + 1))
done
[ "$tried" -ge 6 ] || { echo "there are hardly any examples"; exit 1; }
echo "proved: $tried examples of the manual print what it says"
