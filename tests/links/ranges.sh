#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# ranges.sh TOP: the algorithms on ranges that the sources of the web build use are those that web/older_ranges.hpp has, for a
# compiler that `./test all` does without.
set -eu
cd "$1"
used=$(grep -rhoE --include='*.[ch]pp' 'ranges::[a-z_]+' src host toolkit library include web | sort -u)
[ "$(echo "$used" | wc -l)" -gt 10 ] || { echo "hardly any algorithm is used"; exit 1; }
for algorithm in $used; do
    grep -q "^constexpr .* ${algorithm#ranges::}(" web/older_ranges.hpp ||
        { echo "web/older_ranges.hpp has no $algorithm"; missing=1; }
done
[ -z "${missing-}" ]
