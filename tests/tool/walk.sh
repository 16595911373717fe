# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Takes a value through every command: TYPE VALUE [OPTIONS], the value as text or in hexadecimal behind 0x. More than
# eight zero bytes at the end of bytes are counted, carriage returns are left out, a table is cut behind its fourth line.
type=$1 value=$2
shift 2
run() { bgpdt "$@" 2>&1 || echo "exit $?"; }
counted()
{
    awk '{ all = $0; zeros = 0
           for (; length > 2 && /00$/; zeros++) $0 = substr($0, 1, length - 2)
           print (zeros > 8 ? $0 " 00*" zeros : all) }'
}

run describe "$type" | sed -n 's/^  about  *//p'
case $value in
0x*)
    run parse "$type" x "$@"
    hex=$value
    ;;
*)
    hex=$(run parse "$type" "$value" "$@")
    echo "$hex" | counted
    ;;
esac
run print "$type" "$hex" "$@" | tr -d '\r'
run check "$type" "0x${hex#0x}" "$@"
run compare "$type" "$value" "0x${hex#0x}" "$@"
run table "$type" "$value" "$@" | sed -n 1,4p
run swap "$type" "$hex" "$@" | counted
