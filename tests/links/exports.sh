#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# exports.sh NM PLUGIN NAMES: the plug-in exports exactly the names of the list.
set -eu
nm=$1 plugin=$2 names=$3
. "$(dirname -- "$0")/compare.sh"
"$nm" --dynamic --defined-only --format=posix "$plugin" | cut -d' ' -f1 | compare "$names" "exported"
