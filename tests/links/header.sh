#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# header.sh CXX HEADER INTERFACE SERVICES: the header declares exactly the names that the plug-in exports, each with a
# comment of its own or on top of its paragraph, or by a function type, whose own comment tells what it is. The host's own
# callbacks, which types share, are declared again.
set -eu
cxx=$1 header=$2 interface=$3 services=$4
. "$(dirname -- "$0")/compare.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sed '1,/^exports$/d; s/^ *//' "$interface" >"$work/names"
names_of "$services" >"$work/services"

"$cxx" -w -E -C -x c++ -std=c++20 -I "$(dirname -- "$header")/.." "$header" | awk -v header="${header##*/}" '
    /^# [0-9]+ "/ { ours = $3 ~ header "\"$"; next }
    ours' | sed -e '/^ *\/\*/b' -e '/^ \*/b' -e 's/; \([^ ]\)/;\n\1/g' >"$work/header"
declarations=$(awk '
    /^$/ { told = 0; next }
    /^#|^extern "C"/ { next }
    /^\/\*/ { told = !/^\/\* ---/ }
    comment { comment = !/\*\//; next }
    { sub(/\/\*.*\*\//, "") }
    /\/\*/ { comment = 1; sub(/\/\*.*/, "") }
    { text = text (text == "" ? "" : " ") $0 }
    index($0, "{") { depth++ }
    index($0, "}") { depth-- }
    depth > 0 || text !~ /; *$/ { next }
    text !~ /^ *(typedef|struct|enum|})/ {
        sub(/^ */, "", text)
        typed = text ~ /^[A-Za-z]+(_[A-Za-z]+)? [A-Za-z_0-9, ]+; *$/
        sub(/^(extern )?(const )?[A-Za-z_0-9]+ /, "", text)
        sub(/[([].*/, "", text)
        gsub(/[*;,]/, " ", text)
        for (count = split(text, declared, " "); count > 0; count--)
            print declared[count], (typed || told ? "told" : "bare")
    }
    { text = "" }' "$work/header")
bare=$(echo "$declarations" | sed -n 's/ bare$//p')
[ -z "$bare" ] || { printf 'without a comment:\n%s\n' "$bare"; exit 1; }
echo "$declarations" | sed 's/ .*//' | LC_ALL=C sort -u | grep -v -x -F -f "$work/services" | compare "$work/names" "declared"
