#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# needs.sh READELF PLUGIN: the plug-in needs the C library alone, and holds neither writable data nor code that runs
# when it is loaded.
set -eu
readelf=$1 plugin=$2

# The dynamic linker's own name is added on some processors.
others=$("$readelf" --dynamic --wide "$plugin" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -v -x -e 'libc\.so\.6' -e 'ld.*\.so\.[0-9]*' || true)
[ -z "$others" ] || { echo "needs $others"; exit 1; }
"$readelf" --dynamic --wide "$plugin" | grep -q -F '[libc.so.6]' || { echo "needs no C library"; exit 1; }

# Section lines: "[ 9] .data PROGBITS address offset size ...", all numbers hexadecimal.
"$readelf" --sections --wide "$plugin" | sed -n 's/^ *\[ *[0-9]*\] *//p' | awk '
    { sections++ }
    $1 ~ /^\.(data|bss|tdata|tbss|sdata|sbss|init_array|fini_array|ctors|dtors|init|fini)(\.|$)/ &&
    $1 !~ /^\.data\.rel\.ro/ && $5 !~ /^0+$/ { print "holds " $1 " of 0x" $5 " bytes"; bad = 1 }
    END { if (sections < 5) { print "no sections found"; bad = 1 }; exit bad }'
