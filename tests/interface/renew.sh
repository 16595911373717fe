#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# renew.sh FILE COMMAND...: puts what the command prints into the file.
set -eu
file=$1
shift
"$@" >"$file.new"
mv "$file.new" "$file"
