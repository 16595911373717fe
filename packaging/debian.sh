#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# debian.sh quick FOLDER: builds the Debian packages of debian/ on this machine, without their tests, and asks lintian.
# debian.sh clean FOLDER: does all that a distribution would, in clean chroots of Debian 12 and as root: builds them twice
# from the source package and compares the bytes, asks lintian, runs their autopkgtests, installs, upgrades and removes
# them. Source and binary packages are then in FOLDER.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
. "$top/setup/setup.sh"
way=$1 out=$2
mkdir -p "$out"
out=$(CDPATH='' cd -- "$out" && pwd)
unpacked=$out/bgpdt-$(project_version)

# source_package: the archive as a distribution names it, and debian/ beside it
source_package() {
    rm -rf "$out"/*
    archive=$("$top/packaging/source.sh" "$out")
    tar -x -C "$out" -f "$archive"
    mv "$archive" "$out/bgpdt_$(project_version).orig.tar.gz"
    (cd "$top" && git ls-files -z debian | tar -c --null -T -) | tar -x -C "$unpacked"
    (cd "$out" && dpkg-source --before-build "$unpacked" && dpkg-source -b "$unpacked")
}

# ask_lintian: no error and no warning; what is less is shown
ask_lintian() {
    lintian --pedantic --display-info --fail-on error --fail-on warning --tag-display-limit 0 --allow-root "$out"/*.changes
    echo "proved: lintian has no error and no warning for $(find "$out" -name '*.deb' ! -name '*-dbgsym_*' | wc -l) packages"
}

# fresh_chroot: $chroot, a minimal Debian 12 that knows the archive's packages
fresh_chroot() {
    base=$top/build/debian/base.tar.gz
    [ -s "$base" ] || { mkdir -p "${base%/*}" && mmdebstrap --variant=buildd bookworm "$base"; }
    chroot=$(mktemp -d)
    trap end_chroot EXIT
    chmod 755 "$chroot"
    tar -x -C "$chroot" -f "$base"
    mount -t proc proc "$chroot/proc"
    mount -t devpts -o newinstance,ptmxmode=666 devpts "$chroot/dev/pts"
    ln -sf pts/ptmx "$chroot/dev/ptmx"
    echo '#!/bin/sh
exit 101' >"$chroot/usr/sbin/policy-rc.d" # no service is started
    chmod 755 "$chroot/usr/sbin/policy-rc.d"
    inside apt-get update
}

# inside COMMAND...: runs it in the chroot
inside() { DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 chroot "$chroot" "$@"; }

end_chroot() {
    umount -q "$chroot/proc" "$chroot/dev/pts" || true
    rm -rf --one-file-system "$chroot"
}

# build_inside FOLDER ENVIRONMENT...: builds the source package there as a user without rights
build_inside() {
    folder=$chroot$1 name=$1
    shift
    mkdir -p "$folder"
    cp "$out"/*.dsc "$out"/*.tar.* "$folder"
    inside chown -R build "$name"
    inside env "$@" su build -s /bin/sh -c "cd $name && dpkg-source -x *.dsc tree && cd tree && dpkg-buildpackage -us -uc -b"
}

build_twice() {
    fresh_chroot
    inside useradd --create-home build
    cp "$out"/*.dsc "$chroot/tmp"
    inside sh -c 'apt-get build-dep -y --no-install-recommends /tmp/*.dsc'
    build_inside /build/one DEB_BUILD_OPTIONS="parallel=$(nproc)"
    build_inside /build/another/farther/away DEB_BUILD_OPTIONS="nocheck parallel=1" TZ=Asia/Tokyo
    for package in "$chroot"/build/one/*.deb; do
        cmp "$package" "$chroot/build/another/farther/away/${package##*/}" || fail "${package##*/} is not reproducible"
        cp "$package" "$out"
    done
    cp "$chroot"/build/one/*.buildinfo "$chroot"/build/one/*.changes "$out"
    end_chroot
    echo "proved: built in a clean chroot; the bytes of all packages are the same from another folder"
}

run_autopkgtests() {
    fresh_chroot
    status=0
    autopkgtest "$out"/*.dsc "$out"/*.deb -- chroot "$chroot" >"$out/autopkgtest.log" 2>&1 || status=$?
    sed -n '/@@@@ summary/,/^autopkgtest .*Binaries/p' "$out/autopkgtest.log"
    [ "$status" -eq 0 ] || fail "autopkgtest ended with status $status: $out/autopkgtest.log"
    end_chroot
    echo "proved: $(sed '1,/@@@@ summary/d' "$out/autopkgtest.log" | grep -c ' PASS$') autopkgtests pass in a clean chroot"
}

# older_packages FOLDER: an archive of the packages as if of the version before
older_packages() {
    mkdir -p "$1"
    version=$(dpkg-parsechangelog -l "$top/debian/changelog" -S Version)
    for package in "$out"/*.deb; do
        case $package in *-dbgsym_*) continue ;; esac
        dpkg-deb -R "$package" "$1/tree"
        sed -i "s/$version/$version~before/" "$1/tree/DEBIAN/control"
        dpkg-deb --root-owner-group -b "$1/tree" "$1" >/dev/null
        rm -rf "$1/tree"
    done
    (cd "$1" && dpkg-scanpackages --multiversion . >Packages 2>/dev/null)
}

# install_and_remove: nothing stays behind, neither after an upgrade
install_and_remove() {
    before=$(mktemp -d)
    trap 'rm -rf "$before"' EXIT
    chmod 755 "$before"
    older_packages "$before"
    # shellcheck disable=SC2046 # paths without blanks
    piuparts --basetgz="$top/build/debian/base.tar.gz" --distribution=bookworm --no-eatmydata --warn-on-others \
        --bindmount="$before" --extra-repo="deb [trusted=yes] file:$before ./" --log-file="$out/piuparts.log" \
        $(find "$out" -name '*.deb' ! -name '*-dbgsym_*') >/dev/null || { tail -n 40 "$out/piuparts.log"; exit 1; }
    grep -q 'Installation, upgrade and purging tests' "$out/piuparts.log" || fail "piuparts tried no upgrade"
    echo "proved: the packages are installed, upgraded and removed without a trace"
}

case $way in
quick)
    # shellcheck disable=SC2086 # a list of words
    need_packages $deb_packages
    source_package
    (cd "$unpacked" && DEB_BUILD_OPTIONS="nocheck parallel=$(nproc)" dpkg-buildpackage -us -uc -b -d)
    ask_lintian
    ;;
clean)
    [ "$(id -u)" -eq 0 ] || fail "chroots need root"
    # shellcheck disable=SC2086 # a list of words
    need_packages $clean_deb_packages
    source_package
    build_twice
    ask_lintian
    run_autopkgtests
    install_and_remove
    ;;
*) fail "debian.sh quick|clean FOLDER" ;;
esac
