#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# reproducible.sh [FOLDER]: builds the Debian packages from two copies of the sources in folders of different names, and
# fails where a byte of them differs. The packages, all alike, are then in FOLDER (build/packages without it).
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
. "$top/setup/setup.sh"
packages=${1:-$top/build/packages}
# shellcheck disable=SC2086 # a list of words
need_packages $tool_packages dpkg-dev file

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CCACHE_DISABLE=1 # what a cache gives back says nothing
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(cd "$top" && git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

for copy in "$work/one" "$work/another/farther/away"; do
    say "building the packages in $copy"
    mkdir -p "$copy"
    (cd "$top" && git ls-files -z | tar -c --null -T - | tar -x -C "$copy") || fail "cannot copy the sources"
    (cd "$copy" && cmake --preset package -G Ninja && cmake --build --preset package &&
        cpack --config build/package/CPackConfig.cmake -B build/packages) >"$copy.log" 2>&1 ||
        { cat "$copy.log" >&2; fail "the build failed"; }
done

mkdir -p "$packages"
found=0
for package in "$work"/one/build/packages/*.deb; do
    cmp "$package" "$work/another/farther/away/build/packages/${package##*/}" || fail "${package##*/} is not reproducible"
    cp "$package" "$packages"
    found=$((found + 1))
done
[ "$found" -eq 5 ] || fail "$found packages instead of 5"
(cd "$packages" && sha256sum ./*.deb)
