#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# header.sh HEADER NAMES: the header declares exactly the names of the list, each with a comment of its own or on top of
# its paragraph, or by a function type, whose own comment tells what it is.
set -eu
header=$1 names=$2
. "$(dirname -- "$0")/compare.sh"

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
    text !~ /^(typedef|struct|enum|})/ {
        typed = text ~ /^[A-Za-z]+(_[A-Za-z]+)? [A-Za-z_0-9, ]+; *$/
        sub(/^(extern )?(const )?[A-Za-z_0-9]+ /, "", text)
        sub(/[([].*/, "", text)
        gsub(/[*;,]/, " ", text)
        for (count = split(text, declared, " "); count > 0; count--)
            print declared[count], (typed || told ? "told" : "bare")
    }
    { text = "" }' "$header")
bare=$(echo "$declarations" | sed -n 's/ bare$//p')
[ -z "$bare" ] || { printf 'without a comment:\n%s\n' "$bare"; exit 1; }
echo "$declarations" | sed 's/ .*//' | compare "$names" "declared"
