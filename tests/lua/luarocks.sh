#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# luarocks.sh: `luarocks make --local` builds and installs the module, one file and nothing else, for a user without
# rights; and for root, where this is run by root. It does there what its tests say.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/../.." && pwd)
work=$(mktemp -d) # where every user may read
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"
mkdir "$work/tree"
(cd "$top" && git ls-files -z | tar -c --null -T -) | tar -x -C "$work/tree"
cd "$work"

# installs WHO COMMAND...: into a home of its own
installs() {
    who=$1
    shift
    home=$work/home.$who
    mkdir "$home"
    [ "$who" != nobody ] || chown -R nobody "$home" tree
    "$@" env -i PATH="$PATH" HOME="$home" sh -c 'cd tree && luarocks --lua-version 5.4 make --local' >log 2>&1 ||
        { tail -n 30 log; exit 1; }
    found=$(find "$home/.luarocks" -path '*/lib/luarocks' -prune -o '(' -type f -o -type l ')' -print)
    [ "$found" = "$home/.luarocks/lib/lua/5.4/bgp.so" ] || { echo "for $who are installed: $found"; exit 1; }
    # shellcheck disable=SC2016 # it is the inner shell's
    answer=$("$@" env -i PATH="$PATH" HOME="$home" sh -c \
        'eval "$(luarocks --lua-version 5.4 path)" && exec lua5.4 tree/tests/lua/module.lua tree/lua/bgp.d.lua')
    [ "$answer" = ok ] || { echo "for $who: $answer"; exit 1; }
}

if [ "$(id -u)" -ne 0 ]; then
    installs user
    echo "proved: luarocks installs the module for a user"
else
    installs nobody setpriv --reuid=nobody --regid=nogroup --clear-groups
    installs root
    echo "proved: luarocks installs the module for a user and for root"
fi
