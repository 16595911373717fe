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
    rm -f "$out"/*.deb "$out"/*.dsc "$out"/*.tar.* "$out"/*.changes "$out"/*.buildinfo "$out"/*.log
    rm -rf "$unpacked"
    archive=$("$top/packaging/source.sh" "$out")
    tar -x -C "$out" -f "$archive"
    mv "$archive" "$out/bgpdt_$(project_version).orig.tar.gz"
    (cd "$top" && git ls-files -z debian | tar -c --null -T -) | tar -x -C "$unpacked"
    (cd "$out" && dpkg-source --before-build "$unpacked" && dpkg-source -b "$unpacked")
}

# The packages that users install.
packages() { find "$out" -name '*.deb' ! -name '*-dbgsym_*'; }

# ask_lintian: no error and no warning; what is less is shown
ask_lintian() {
    lintian --pedantic --display-info --fail-on error --fail-on warning --tag-display-limit 0 --allow-root "$out"/*.changes
    echo "proved: lintian has no error and no warning for $(packages | wc -l) packages"
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
inside() {
    chroot "$chroot" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

end_chroot() {
    trap - EXIT
    umount "$chroot/proc" "$chroot/dev/pts" 2>/dev/null || true
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
    env -i PATH="$PATH" autopkgtest "$out"/*.dsc "$out"/*.deb -- chroot "$chroot" >"$out/autopkgtest.log" 2>&1 ||
        status=$?
    sed -n '/@@@@ summary/,/^autopkgtest .*Binaries/p' "$out/autopkgtest.log"
    [ "$status" -eq 0 ] || fail "autopkgtest ended with status $status: $out/autopkgtest.log"
    end_chroot
    echo "proved: $(sed '1,/@@@@ summary/d' "$out/autopkgtest.log" | grep -c ' PASS$') autopkgtests pass in a clean chroot"
}

# older_packages FOLDER: the packages as if of the version before
older_packages() {
    version=$(dpkg-parsechangelog -l "$top/debian/changelog" -S Version)
    mkdir "$1"
    for package in $(packages); do
        dpkg-deb -R "$package" "$1/tree"
        sed -i "s/$version/$version~before/g" "$1/tree/DEBIAN/control"
        dpkg-deb --root-owner-group -b "$1/tree" "$1" >/dev/null
        rm -rf "$1/tree"
    done
}

upgrade() {
    fresh_chroot
    older_packages "$chroot/tmp/before"
    mkdir "$chroot/tmp/now"
    # shellcheck disable=SC2046 # paths without blanks
    cp $(packages) "$chroot/tmp/now"
    # shellcheck disable=SC2016 # it is the inner shell's
    inside sh -ec '
        apt-get install -y /tmp/before/*.deb
        bgpdt parse VRFRD 192.0.2.1:7
        apt-get install -y /tmp/now/*.deb
        bgpdt parse VRFRD 192.0.2.1:7
        names=$(for package in /tmp/now/*.deb; do dpkg-deb -f $package Package; done)
        [ -z "$(dpkg-query -W $names | grep "~before$")" ]
        [ -z "$(dpkg --verify $names)" ]
        dpkg -L $names | sort -u >/tmp/files
        apt-get purge -y $names
        while read -r path; do [ -d "$path" ] || [ ! -e "$path" ] || { echo "left: $path"; exit 1; }; done </tmp/files'
    end_chroot
    echo "proved: the packages take the place of older ones, and go without leaving a file"
}

# install_and_remove: by piuparts, which compares all of the chroot with what it was before, and wants the packages that
# others need in an archive.
install_and_remove() {
    archive=$(mktemp -d)
    trap 'rm -rf "$archive"' EXIT
    chmod 755 "$archive"
    # shellcheck disable=SC2046 # paths without blanks
    cp $(packages) "$archive"
    (cd "$archive" && dpkg-scanpackages . >Packages)
    piuparts --basetgz="$base" --distribution=bookworm --no-eatmydata --warn-on-others --no-upgrade-test \
        --bindmount="$archive" --extra-repo="deb [trusted=yes] file:$archive ./" \
        --log-file="$out/piuparts.log" "$archive"/*.deb >/dev/null || { tail -n 40 "$out/piuparts.log"; exit 1; }
    echo "proved: piuparts finds nothing left of installed and removed packages"
}

case $way in
quick)
    # shellcheck disable=SC2086 # a list of words
    need_packages $deb_packages
    source_package
    (cd "$unpacked" && DEB_BUILD_OPTIONS="nocheck parallel=$(nproc)" dpkg-buildpackage -us -uc -b)
    ask_lintian
    ;;
clean)
    [ "$(id -u)" -eq 0 ] || fail "chroots need root"
    # shellcheck disable=SC2086 # a list of words
    need_packages $clean_deb_packages
    source_package
    rm -rf "$unpacked"
    build_twice
    ask_lintian
    run_autopkgtests
    upgrade
    install_and_remove
    ;;
*) fail "debian.sh quick|clean FOLDER" ;;
esac
