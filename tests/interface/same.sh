#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# same.sh FILE COMMAND...: the command prints what is in the file.
set -eu
file=$1
shift
printed=$(mktemp)
trap 'rm -f "$printed"' EXIT
"$@" >"$printed"
diff "$file" "$printed" || { echo "meant? then build the target renew, and review what it changes in $file"; exit 1; }
