#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# manual.sh FOLDER: the manual pages are what mandoc and groff take without a warning, and a page that leads to another
# leads to one that is there.
set -eu
folder=$1
checked=0
for page in "$folder"/*.[137]; do
    if read -r request target <"$page" && [ "$request" = .so ]; then
        [ -s "$folder/${target#man3/}" ] || { echo "$page leads nowhere"; exit 1; }
        continue
    fi
    told=$({ mandoc -T lint -W warning "$page"; groff -man -ww -T utf8 -z "$page"; } 2>&1) || true
    [ -z "$told" ] || { echo "$told"; exit 1; }
    checked=$((checked + 1))
done
[ "$checked" -ge 8 ] || { echo "there are $checked manual pages"; exit 1; }
echo "proved: $checked manual pages are without a warning"
