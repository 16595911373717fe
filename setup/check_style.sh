#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Fails where clang-format would change a line, or a file does not tell its copyright and licence.
set -eu
cd "$(dirname -- "$0")/.."
sources=$(find include src host toolkit library wire grammar tool lua sqlite python tests benchmarks fuzzing web/*.?pp web/tests -name '*.[ch]pp' -o -name '*.h')
# shellcheck disable=SC2086 # a list of words
clang-format --dry-run -Werror $sources
setup/reuse.sh lint --quiet || setup/reuse.sh lint
echo "proved: $(echo "$sources" | wc -l) sources are formatted; all files tell their copyright and licence"
