#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# The extension in the real shell: run.sh SQLITE3 EXTENSION
set -eu
sqlite3=$1
extension=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# sql [DATABASE]: runs standard input
sql() {
    "$sqlite3" -batch -bail -noheader -cmd ".load $extension" "${1:-:memory:}"
}

# gives: the statements of standard input in front of the line "--" write the lines behind it
gives() {
    cat >"$work/case"
    sed '/^--$/,$d' "$work/case" | sql >"$work/out" 2>&1 || { cat "$work/case" "$work/out" >&2; exit 1; }
    sed '1,/^--$/d' "$work/case" | diff - "$work/out" >&2
}

# refuses STATEMENT PART: fails with the part in what is said
refuses() {
    if echo "$1" | sql >"$work/out" 2>&1; then
        echo "no error: $1" >&2
        exit 1
    fi
    grep -qF "$2" "$work/out" || { cat "$work/out" >&2; exit 1; }
}

gives <<'END'
SELECT hex(bgp_value('ASNUM', '1.10'));
SELECT bgp_text('ASNUM', x'0001000a00000001'), bgp_text('VRFRT', bgp_value('VRFRT', '64496:1'));
SELECT bgp_valid('VRFRD', '64496:1'), bgp_valid('VRFRD', '64496:1x'), bgp_valid('VRFRD', '64496:1' || char(0));
SELECT bgp_why('VRFRD', '64496:1') IS NULL, bgp_why('VRFRD', '64496:1x') LIKE 'VRFRD refuses "64496:1x"%';
SELECT bgp_why('L2VPNPREFIX', '1');
SELECT bgp_canon('VRFRD', '01:1'), bgp_canon('COMMUNITY', '4294967041'), bgp_canon('ASNUM', NULL) IS NULL;
SELECT bgp_field('VRFRD', v, 'administrator') + 1, typeof(bgp_field('VRFRD', v, 'assigned number')),
    bgp_field('VRFRD', v, 'text form') FROM (SELECT bgp_value('VRFRD', '64496:7') v);
SELECT bgp_field('EVNPREFIX', bgp_value('EVNPREFIX', '100:32:192.0.2.1'), 'originator'),
    bgp_field('EVNPREFIX', bgp_value('EVNPREFIX', '100:32:192.0.2.1'), 'ESI') IS NULL;
SELECT bgp_json('ASNUM', x'0001000a00000001'),
    json_extract(bgp_json('VRFRT', bgp_value('VRFRT', '64496:1')), '$.RtValue[3]');
SELECT json_object('key', bgp_json('ASNUM', bgp_value('ASNUM', 7)));
SELECT bgp_value('ASNUM', NULL) IS NULL, bgp_value(NULL, '1') IS NULL, bgp_text('ASNUM', NULL) IS NULL;
SELECT bgp_text('CVRFNAME', bgp_value('CVRFNAME', 'abc')), bgp_valid('CVRFNAME', printf('%.32c', 'a'));
SELECT rtrim(bgp_text('ATTRIDBITMAP', CAST(x'2e' || zeroblob(31) AS BLOB)), char(13, 10));
SELECT size, operations LIKE 'parse print%' FROM bgp_types WHERE name = 'EVNPREFIX';
SELECT count(*) FROM bgp_types a JOIN bgp_types b USING (id);
SELECT about, rowid < 33 FROM bgp_types WHERE name = 'VRFRD';
SELECT bgp_field('BGPLSPREFIX', v, 'identifier'), typeof(bgp_field('BGPLSPREFIX', v, 'identifier')) FROM (
    SELECT CAST(substr(w, 1, 8) || x'ffffffffffffffff' || substr(w, 17) AS BLOB) v FROM (
    SELECT bgp_value('BGPLSPREFIX', '[NODE][OSPFv2][IDENTIFIER1][LOCAL[as64496][bgp-ls-identifier192.0.2.1]' ||
        '[ospf-area-id0.0.0.0][igp-router-id192.0.2.2]]') w));
SELECT name, type, flags & 0x200800 = 0x200800 FROM pragma_function_list WHERE name LIKE 'bgp%' ORDER BY name;
--
0001000A00000001
1.10|64496:1
1|0|0
1|1
L2VPNPREFIX makes no value of text; its values are blobs
1:1|no-export|1
64497|integer|2-octet AS and number
192.0.2.1|1
{"asNumValue":65546,"asType":1}|240
{"key":{"asNumValue":7,"asType":0}}
1|1|1
abc|0
Attribute ID: 1 to 3 5
89|1
33
route distinguisher|1
18446744073709551615|text
bgp_canon|s|1
bgp_field|s|1
bgp_json|s|1
bgp_text|s|1
bgp_valid|s|1
bgp_value|s|1
bgp_why|s|1
END

refuses "SELECT bgp_field('VRFRD', bgp_value('VRFRD', '1:1'), 'admin');" 'VRFRD has no field admin (did you mean administrator?)'
refuses "SELECT bgp_why('COMMUNITY', '1:2:3'), bgp_canon('COMMUNITY', '1:2:3');" 'it is a text of LARGECOMMUNITY (large community)'
refuses "SELECT bgp_value('VRFRD', '64496:1x');" 'VRFRD refuses "64496:1x"'
refuses "SELECT bgp_value('VRFRX', '1');" 'did you mean VRFRT'
refuses "SELECT bgp_valid('NONE', '1');" 'there is no type NONE; the table bgp_types lists the types'
refuses "SELECT bgp_value('SID_STRUCTURE', '1');" 'SID_STRUCTURE takes no text; its values are blobs'
refuses "SELECT bgp_text('ASNUM', x'00');" '1 byte, must be 8'
refuses "SELECT bgp_text('ASNUM', 'text');" 'must be a blob'
refuses "SELECT bgp_text('ASNUM', zeroblob(0));" '0 bytes, must be 8'
refuses "CREATE VIRTUAL TABLE t USING bgp_types;" 'no such module'

# What the extension needs is told where it cannot be found.
(
    export BGPDT_PLUGIN=/nowhere/plugin.so
    refuses "SELECT 1;" 'cannot load the plug-in: /nowhere/plugin.so'
)

# By value, not by letters; what is no value stands behind, by its bytes; one value is one key however it is written.
gives <<'END'
CREATE TABLE t(k TEXT COLLATE bgp_ASNUM UNIQUE);
INSERT INTO t VALUES ('100'), ('20'), ('x'), ('1.10'), ('3'), ('');
INSERT OR IGNORE INTO t VALUES ('020');
SELECT group_concat(k, ' ') FROM (SELECT k FROM t ORDER BY k);
--
3 20 100 1.10  x
END
# 1.10 and 65546 are one number in two notations, which are two values: neither takes the other's place.
gives <<'END'
SELECT '1.10' = '65546' COLLATE bgp_ASNUM, '0' || '7' = '7' COLLATE bgp_ASNUM;
--
0|1
END

# A text counts with the blanks at its ends; beyond the tool's longest line no type takes it, and it stands behind.
gives <<'END'
SELECT bgp_valid('ASNUM', printf('%65536s', '7')), bgp_valid('ASNUM', printf('%65537s', '7'));
SELECT hex(bgp_value('ASNUM', printf('%65536s', '7'))), bgp_why('ASNUM', printf('%65537s', '7')) LIKE '%than 65536 %';
SELECT '7' = printf('%65536s', '7') COLLATE bgp_ASNUM, '8' < printf('%65537s', '7') COLLATE bgp_ASNUM;
--
1|0
0000000700000000|1
1|1
END
refuses "SELECT bgp_value('ASNUM', printf('%65537s', '7'));" 'more than 65536 characters'

# A database that trusts no schema takes the functions in one: they are innocuous; in an index, and in columns that are
# generated: they are deterministic.
gives <<'END'
PRAGMA trusted_schema = OFF;
CREATE TABLE t(k TEXT CHECK (bgp_valid('VRFRD', k)), v BLOB AS (bgp_value('VRFRD', k)) STORED);
CREATE INDEX v ON t(bgp_value('VRFRD', k));
CREATE VIEW names AS SELECT name FROM bgp_types WHERE bgp_valid('ASNUM', id);
INSERT INTO t VALUES ('64496:1');
SELECT count(*), bgp_text('VRFRD', v) FROM t WHERE bgp_value('VRFRD', k) = bgp_value('VRFRD', '64496:1');
SELECT count(*) FROM names;
--
1|64496:1
33
END

# 100,000 AS numbers, a third in either notation, a third that are none: by number, then by notation, then by bytes.
gives <<'END'
PRAGMA threads = 4;
CREATE TABLE t(k TEXT COLLATE bgp_ASNUM, number INTEGER, form INTEGER);
WITH RECURSIVE i(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM i WHERE n < 99999),
    mixed(j, v, form) AS (SELECT n * 7919 % 100000, 65536 + n * 7919 % 100000 / 3 * 37, n * 7919 % 100000 % 3 FROM i)
INSERT INTO t SELECT CASE form WHEN 0 THEN v WHEN 1 THEN printf('%d.%d', v >> 16, v & 65535) ELSE 'x' || j END, v, form
    FROM mixed;
CREATE INDEX by_key ON t(k);
PRAGMA integrity_check;
SELECT count(DISTINCT k), sum(bgp_valid('ASNUM', k)) FROM t;
SELECT count(*) FROM (SELECT row_number() OVER (ORDER BY k) AS is_at,
    row_number() OVER (ORDER BY form = 2, iif(form = 2, 0, number), form, k COLLATE BINARY) AS must_be FROM t)
    WHERE is_at <> must_be;
SELECT count(*) FROM (SELECT * FROM t LIMIT 300) WHERE bgp_valid('ASNUM', k) <> (bgp_why('ASNUM', k) IS NULL);
--
4
ok
100000|66667
0
0
END

# 100,000 route keys, in an order that is none, in an index that survives the connection.
sql "$work/keys.db" <<'END'
CREATE TABLE keys(k TEXT COLLATE bgp_EVNPREFIX, n INTEGER);
WITH RECURSIVE i(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM i WHERE n < 99999)
INSERT INTO keys
    SELECT printf('%d:192.0.2.%d:32', 1 + n * 7919 % 100000 / 250, n * 7919 % 250), n * 7919 % 100000 FROM i;
CREATE INDEX by_key ON keys(k);
END
cat >"$work/case" <<'END'
PRAGMA integrity_check;
SELECT count(*), count(DISTINCT k) FROM keys;
SELECT n FROM keys WHERE k = '321:192.0.2.17:32';
SELECT count(*) FROM keys WHERE k BETWEEN '99:192.0.2.0:32' AND '100:192.0.2.249:32';
SELECT count(*) FROM (SELECT n, lag(n) OVER (ORDER BY k) AS before FROM keys) WHERE n < before;
EXPLAIN QUERY PLAN SELECT n FROM keys WHERE k = '321:192.0.2.17:32';
--
ok
100000|100000
80017
500
0
QUERY PLAN
`--SEARCH keys USING INDEX by_key (k=?)
END
sed '/^--$/,$d' "$work/case" | sql "$work/keys.db" >"$work/out"
sed '1,/^--$/d' "$work/case" | diff - "$work/out" >&2
