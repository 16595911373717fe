#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# parsers.sh HEADER VECTORS: every parser that the header declares with a text and a value alone has vectors (fn).
set -eu
header=$1 vectors=$2
parsers=$(sed -n 's/^uint32_t \([A-Za-z0-9_]*\)(char \*text, [A-Za-z0-9_]* \*[A-Za-z]*);$/\1/p' "$header")
[ -n "$parsers" ] || { echo "$header declares no parsers"; exit 1; }
missing=$(for parser in $parsers; do grep -rqw "fn $parser" "$vectors" || echo "$parser"; done)
[ -z "$missing" ] || { printf 'without vectors:\n%s\n' "$missing"; exit 1; }
