#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# interface.sh NM PLUGIN PROGRAM...: prints the plug-in's binary interface: what the program prints of the types, and the
# names that the plug-in exports.
set -eu
nm=$1 plugin=$2
shift 2
echo "# What the plug-in shows its host. The target renew writes it: what protects the interface is the difference."
BGPDT_PLUGIN=$plugin "$@"
echo exports
"$nm" --dynamic --defined-only --format=posix "$plugin" | cut -d' ' -f1 | LC_ALL=C sort | sed 's/^/    /'
