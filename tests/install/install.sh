#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# install.sh BUILD WORK CXX: installs the build into a folder of WORK, moves that elsewhere, and builds the project beside
# this script against it, found by CMake and by pkg-config. The installed tool must find the plug-in.
set -eu
sources=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd)
build=$1 work=$2 compiler=$3
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/installed" >/dev/null
mv "$work/installed" "$work/moved"
unset BGPDT_PLUGIN LD_LIBRARY_PATH

pc=$(find "$work/moved" -name bgpdt_host.pc)
for way in cmake pkg-config; do
    echo "found by $way"
    PKG_CONFIG_PATH=${pc%/*} cmake -S "$sources" -B "$work/$way" -DFOUND_BY=$way \
        -DEXAMPLES="$sources/../../library/examples" -DCMAKE_CXX_COMPILER="$compiler" \
        -DCMAKE_PREFIX_PATH="$([ $way = pkg-config ] || echo "$work/moved")"
    cmake --build "$work/$way"
    ctest --test-dir "$work/$way" --output-on-failure --no-tests=error
done

tool=$work/moved/bin/bgpdt
[ ! -e "$tool" ] || [ "$("$tool" parse VRFRD 192.0.2.1:7)" = 0001c0000201000700000000 ] || {
    echo "the installed tool does not find the plug-in"
    exit 1
}
