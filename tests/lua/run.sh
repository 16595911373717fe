#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# The module and the examples in the stock interpreter: run.sh LUA FOLDER-OF-THE-MODULE
set -eu
lua=$1
LUA_CPATH="$2/?.so"
export LUA_CPATH
here=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd)
examples=$here/../../lua/examples
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# expect STATUS COMMAND...: runs it on standard input, its output goes to $work/out
expect() {
    status=$1
    shift
    is=0
    "$@" >"$work/out" 2>"$work/err" || is=$?
    [ "$is" -eq "$status" ] || {
        echo "$*: status $is, must be $status" >&2
        cat "$work/out" "$work/err" >&2
        exit 1
    }
}

# written: standard input is what the last command wrote to the file
written() {
    diff - "$work/$1" >&2
}

expect 0 "$lua" "$here/module.lua" "$here/../../lua/bgp.d.lua"
echo ok | written out

# An interpreter that has the engine in itself tells so by where its string library is; one without it tells nothing.
expect 1 "$lua" -e 'string.byte = require("bgp").parse; package.loaded.bgp = nil; require "bgp"'
grep -q 'the interpreter does not export its engine' "$work/err"
for strange in 'string = nil' 'string.byte = nil' 'string.byte = function() end'; do
    expect 0 "$lua" -e "$strange; assert(require('bgp').parse('VRFRD', '64496:1'))"
done

# What the module needs is told where it cannot be found.
expect 1 env BGPDT_PLUGIN=/nowhere/plugin.so "$lua" -e 'require "bgp"'
grep -q 'cannot load the plug-in: /nowhere/plugin.so' "$work/err"

expect 1 "$lua" "$examples/filter_keys.lua" 2 100 <<END
100:48:0000-5e00-5301:32:192.0.2.1
200:48:0000-5e00-5301:32:192.0.2.1
100:192.0.2.0:24
100:48:0000-5e00-5302:128:[2001:db8::1]
100:48:0000-5e00-53zz:32:192.0.2.1
END
written out <<END
100:48:0000-5e00-5301:32:192.0.2.1
100:48:0000-5e00-5302:128:[2001:db8::1]
END
grep -q '^18: EVNPREFIX refuses "100:48:0000-5e00-53zz:32:192.0.2.1"' "$work/err"
expect 0 "$lua" "$examples/filter_keys.lua" 1 100 <<END
0011.2233.4455.6677.8899:100
0011.2233.4455.6677.8899:200
END
echo 0011.2233.4455.6677.8899:100 | written out
echo 0011.2233.4455.6677.8899:32:192.0.2.1 | expect 0 "$lua" "$examples/filter_keys.lua" 4 32
: | written out
expect 2 "$lua" "$examples/filter_keys.lua" two 100 </dev/null

# The old target of the second row is written in another way than in the input.
printf '%s\n' '64496:1 64497:10' '1.15:1 192.0.2.1:7' >"$work/table"
expect 0 "$lua" "$examples/rewrite_targets.lua" "$work/table" <<END
64496:1
64496:2
1.15:1
65551:1
END
written out <<END
64497:10
64496:2
192.0.2.1:7
192.0.2.1:7
END
expect 1 "$lua" "$examples/rewrite_targets.lua" "$work/table" <<END
64496
END
grep -q '^line 1: VRFRT refuses' "$work/err"

expect 1 "$lua" "$examples/audit_communities.lua" 64496 64497 <<END
64496:1 no-export 64497:2
64496:1 64511:7
64496:x
END
grep -qx '2: 64511:7 is of AS 64511' "$work/out"
grep -q '^3: CMNTY_ENHANCE refuses "64496:x".* at byte 7$' "$work/out"
[ "$(wc -l <"$work/out")" -eq 2 ]
echo 64496:1 no-advertise | expect 0 "$lua" "$examples/audit_communities.lua" 64496
: | written out
