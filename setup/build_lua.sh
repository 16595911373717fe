#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# build_lua.sh TARGET OUT [COMPILER OPTION...]: builds Lua for a target such as powerpc-linux-gnu from its Debian source
# package, into OUT.
set -eu
target=$1 out=$2
shift 2
compiler=${*:-$target-gcc -O2} archiver=$target-ar options="-fPIC -DLUA_USE_LINUX"
if [ "$target" = wasm32-emscripten ]; then
    compiler="emcc -Oz -flto -fwasm-exceptions -sSUPPORT_LONGJMP=wasm -Dluai_makeseed(L)=0" archiver=emar options=
fi
[ ! -f "$out/lib/liblua.a" ] || exit 0
mkdir -p "$out/apt/lists/partial" "$out/source" "$out/include" "$out/lib"
cd "$out"

# A bare machine lists no source packages: take its own binary archives, as sources, in lists of our own.
apt-get indextargets --format "deb-src \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' 'Origin: Debian' |
    sort -u >apt/sources.list
[ -s apt/sources.list ] || { echo "apt knows no Debian archive; run 'apt-get update' first" >&2; exit 2; }
set -- -qq -o APT::Sandbox::User=root -o Dir::Etc::SourceList="$out/apt/sources.list" -o Dir::Etc::SourceParts=- -o Dir::State::Lists="$out/apt/lists"
apt-get "$@" update
(cd source && apt-get "$@" source lua5.4)

cd source/lua5.4-*/src
echo "#define DEB_HOST_MULTIARCH \"$target\"" >lua5.4-deb-multiarch.h # a file of the package's own build
for file in l*.c; do
    case $file in lua.c | luac.c) continue ;; esac
    $compiler $options -DLUA_COMPAT_5_3 -c "$file"
done
cp lua.h luaconf.h lualib.h lauxlib.h lua.hpp lua5.4-deb-multiarch.h "$out/include/"
"$archiver" rcs "$out/lib/liblua.a" l*.o
