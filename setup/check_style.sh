#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Fails where clang-format would change a line, or a source lacks its licence line.
set -eu
cd "$(dirname -- "$0")/.."
sources=$(find include src host toolkit library grammar tool lua sqlite python tests benchmarks fuzzing web/*.?pp web/tests -name '*.[ch]pp' -o -name '*.h')
# shellcheck disable=SC2086 # a list of words
clang-format --dry-run -Werror $sources
# shellcheck disable=SC2086 # a list of words
missing=$(grep -L 'SPDX-License-Identifier: Apache-2.0' $sources bgpdt test bench fuzz mutate prove interop playground setup/* web/*.mjs web/npm/*.[jt]s web/page/* web/tests/*.*s grammar/*.py grammar/texts/* grammar/standards/* benchmarks/*.py docs/*.py dialects/*.py completions/* pyproject.toml python/*/*.py* tests/python/*.* tests/python/apart/*.*)
[ -z "$missing" ] || { printf 'no licence line:\n%s\n' "$missing" >&2; exit 1; }
echo "proved: $(echo "$sources" | wc -l) sources are formatted, and all have their licence line"
