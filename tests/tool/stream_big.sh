#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# What only big inputs show: order with threads, constant memory, spilling, lines without an end, the progress bar.
# Usage: stream_big.sh BGPDT
set -eu
bgpdt=$1
lines=100000
[ "${BGPDT_TEST_SHARE-}" != 1 ] || lines=1000000
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
fail() { echo "stream_big.sh: $*" >&2; exit 1; }
equal() { cmp "$1" "$2" || fail "$3"; }

# In a fixed disorder: 7919 is a prime, which no number of lines here is a multiple of.
awk -v n="$lines" 'BEGIN { for (i = 0; i < n; i++) print (i * 7919) % n + 1 }' >numbers
awk '{ printf "%08x00000000\n", $1 }' numbers >hex

"$bgpdt" convert ASNUM numbers >out
equal out hex "one thread does not convert as awk does"
cat numbers | "$bgpdt" convert ASNUM -j 2 | cat >out
equal out hex "two threads through pipes lose the order"
"$bgpdt" convert ASNUM -j 3 --from hex hex | "$bgpdt" convert ASNUM --to binary -j 2 >binary
"$bgpdt" convert ASNUM --from binary -j 2 binary --to text >out
equal out numbers "from hexadecimal and binary the lines do not come back"

# Every tenth line refused: none is lost, none told beyond the limit, the numbers of the first are right.
awk 'NR % 10 == 0 { print "x" $1; next } { print }' numbers >mixed
grep x mixed >refused
grep -v x mixed >taken
code=0
"$bgpdt" canon ASNUM --in mixed -j 2 --rejects rejects >out 2>told || code=$?
[ "$code" -eq 1 ] || fail "exit status $code, not 1"
equal out taken "lines beside refused ones are lost"
equal rejects refused "the rejects are not the refused lines"
[ "$(grep -c ^mixed: told)" -eq 10 ] || fail "not 10 lines told"
tail -n 1 told | grep -q '^bgpdt: .* refused, 10 told$' || fail "no summary told"
grep ^mixed: told | sed -n 10p | grep -q '^mixed:100: ASNUM refuses "x' || fail "the tenth refusal is not of line 100"

# Memory, in KiB of addresses; a sanitizer takes all there are.
if [ "${SANITIZED:-}" = "" ]; then
    (ulimit -v 250000 && "$bgpdt" convert ASNUM -j 2 --to json numbers >/dev/null) || fail "JSON takes more"
    # A line without an end, and output far larger than its input.
    { head -c 104857600 /dev/zero | tr '\0' 7; printf '\n1\n'; } >long
    code=0
    (ulimit -v 100000 && "$bgpdt" convert ASNUM long --rejects rejects --quiet >out) || code=$?
    [ "$code" -eq 1 ] || fail "a line of 100 MB: exit status $code, not 1"
    head -n 1 long | cmp - rejects || fail "a line of 100 MB does not come back whole"
    [ "$(cat out)" = 0000000100000000 ] || fail "the line behind the long one is lost"
    yes 1 | head -n 100000 | (ulimit -v 100000 && "$bgpdt" convert ASNUM_ENHANCE) | wc -c >out
    [ "$(cat out)" -eq 256100000 ] || fail "lists of AS numbers: $(cat out) characters"
    (ulimit -v 200000 && "$bgpdt" sort ASNUM --memory 4M numbers >out) || fail "sorting takes more than it is given"
fi

sort -n numbers >sorted
"$bgpdt" sort ASNUM numbers >out
equal out sorted "sorting in memory"
"$bgpdt" sort ASNUM --memory 64K - <numbers >out # more runs than are open at a time
equal out sorted "sorting in files"
cat numbers numbers | "$bgpdt" sort ASNUM --unique --memory 1M >out
equal out sorted "each once"

# Few descriptors, many parts.
(ulimit -n 30 && "$bgpdt" sort ASNUM --memory 64K numbers -o out --rejects rejects) || fail "30 descriptors do not suffice"
equal out sorted "sorting with few descriptors"

# Ended by a signal while it sorts, nothing is left; the file that would have been written is as it was.
mkdir temporary outputs
echo old >outputs/out
mkfifo pipe
{ cat numbers; exec sleep 10; } >pipe &
feeder=$!
TMPDIR=temporary "$bgpdt" sort ASNUM --memory 256K -o outputs/out --rejects outputs/new <pipe &
pid=$!
sleep 1
kill "$pid" "$feeder"
wait "$pid" 2>/dev/null || true
[ -z "$(ls -A temporary)" ] || fail "temporary files are left"
[ "$(ls -A outputs)$(cat outputs/out)" = outold ] || fail "an output is touched before all is written"

# Also where files must have names: to open one without is not supported (EOPNOTSUPP).
named() { BGPDT_FAULTS=unnamed:1+:95 LD_PRELOAD=$FAULTY_FILES TMPDIR=temporary "$bgpdt" "$@" -o outputs/out; }
if [ "${FAULTY_FILES:-}" != "" ]; then
    { cat numbers; sleep 2; } | named sort ASNUM --memory 256K &
    pid=$!
    sleep 1
    ls -A outputs | grep -q bgpdt || fail "files need no names"
    wait "$pid"
    equal outputs/out sorted "sorting without unnamed files"
    named convert ASNUM numbers no_such_file 2>told && fail "a file that is not there is read"
    equal outputs/out sorted "an output that is not whole, without unnamed files"
    [ "$(ls -A temporary outputs | tr '\n' ' ')" = "outputs: out  temporary: " ] || fail "named temporary files are left"
fi

# A terminal is shown what would control it.
on_terminal() { script -qec "$1" /dev/null </dev/null; }
name=72656420411b5b33316d7fc29b
for command in "print CVRFNAME $name" "canon CVRFNAME 0x$name" "convert CVRFNAME --from hex --to text names.hex"; do
    echo "$name" >names.hex
    on_terminal "$bgpdt $command" | tr -d '\r' >out
    printf '%s\n' 'red A\x1b[31m\x7f\xc2\x9b' | cmp - out || fail "$command: a terminal gets control characters"
    "$bgpdt" $command >out
    printf 'red A\033[31m\177\302\233\n' | cmp - out || fail "$command: a file does not get what there is"
done
"$bgpdt" explain CVRFNAME 0x$name --json | grep -qF 'red A\u001b[31m\u007f\u009b' || fail "JSON holds control characters"

# The bar is for terminals and files alone.
seq 2000000 >part
on_terminal "$bgpdt convert ASNUM part -o out --to json" | grep -q ' %' || fail "no progress bar for a file"
on_terminal "cat part | $bgpdt convert ASNUM -o out --to json" | grep -q ' %' && fail "a progress bar for a pipe"
"$bgpdt" convert ASNUM numbers 2>told >out
[ ! -s told ] || fail "a progress bar where no terminal is"
