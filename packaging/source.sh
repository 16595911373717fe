#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# source.sh FOLDER: writes the source archive, bgpdt-VERSION.tar.gz, of the files that git knows to FOLDER, and prints its
# path. The same files make the same bytes, wherever and whenever. debian/ is not part of it: a distribution has its own.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
. "$top/setup/setup.sh"
name=bgpdt-$(project_version)
archive=$1/$name.tar.gz
mkdir -p "$1"
cd "$top"
LC_ALL=C git ls-files -z -- . ':!debian' |
    tar -c --null -T - --sort=name --format=gnu --mtime="@$(changed_at)" --owner=0 --group=0 --numeric-owner \
        --mode=u=rwX,go=rX --transform="flags=r;s,^,$name/," | gzip -9n >"$archive"
echo "$archive"
