# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# What the commands of this project share: they find or install what they need, then build. Source it with $top set to
# the project's folder. Everything said here goes to stderr, so that the commands' own output stays clean.

say() { printf '%s\n' "$*" >&2; }
fail() {
    say "$(basename "$0"): $*"
    exit 2
}

build_packages="g++ cmake ninja-build pkg-config liblua5.4-dev"
tool_packages="$build_packages libcli11-dev nlohmann-json3-dev"
bench_packages="$build_packages nlohmann-json3-dev libbenchmark-dev valgrind python3"
fuzz_packages="$tool_packages clang libclang-rt-dev llvm libsqlite3-dev"
target_packages="g++-powerpc-linux-gnu qemu-user dpkg-dev"
web_packages="g++ cmake ninja-build dpkg-dev nlohmann-json3-dev emscripten zopfli nodejs"
deb_packages="$tool_packages dpkg-dev debhelper dh-python libsqlite3-dev python3-dev libgtest-dev lintian"
job_packages="$deb_packages valgrind python3 lua5.4 sqlite3 jq mawk"
clean_deb_packages="dpkg-dev lintian mmdebstrap autopkgtest piuparts"
web_test_packages="chromium libgtest-dev"
speaker_packages="gobgpd frr bird2 exabgp tshark python3"
test_packages="$tool_packages $fuzz_packages $target_packages libgtest-dev googletest clang-format clang-tidy
    g++-i686-linux-gnu abigail-tools valgrind clang-19 libclang-rt-19-dev llvm-19 python3 libyang-tools lua5.4
    libsqlite3-dev sqlite3 zsh fish mandoc groff-base file time python3-dev python3-venv"

# missing_packages PACKAGE...: those that are not installed
missing_packages() {
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || printf ' %s' "$package"
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "this is needed, as root: $*"
    fi
}

# Installs the Debian packages that are missing.
need_packages() {
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    command -v apt-get >/dev/null || fail "these packages are needed, and there is no apt-get to install them:$missing"
    say "installing$missing"
    export DEBIAN_FRONTEND=noninteractive
    # shellcheck disable=SC2086 # a list of words
    { as_root apt-get -qq update && as_root apt-get -qq install -y --no-install-recommends $missing; } >&2 ||
        fail "apt-get could not install$missing"
}

# The one place of the version is CMakeLists.txt.
project_version() { sed -n 's/^project(bgp_datatype VERSION \([0-9.]*\) .*/\1/p' "$top/CMakeLists.txt"; }

# When what is built was last changed, in seconds; it stands for the time in what is built.
changed_at() { echo "${SOURCE_DATE_EPOCH:-$(git -C "$top" log -1 --format=%ct)}"; }

# configure PRESET
configure() {
    [ ! -f "$top/build/$1/build.ninja" ] || return 0
    say "configuring $1"
    (cd "$top" && cmake --preset "$1" -G Ninja) >&2 || fail "cmake --preset $1 failed"
}

# build PRESET [TARGET...]; other builds may run beside it
build() {
    preset=$1
    shift
    (cd "$top" && cmake --build --preset "$preset" -j "$(nproc)" ${1:+--target "$@"}) >&2 || fail "the $preset build failed"
}

# The playground and the npm package, by the tools that web/package-lock.json names.
build_web() {
    command -v npm >/dev/null || need_packages npm # which other packages of Node than Debian's hold
    "$top/setup/build_lua.sh" wasm32-emscripten "$top/build/wasm-lua" >&2
    configure web
    build web bgpdt_web
    [ "$top/web/node_modules" -nt "$top/web/package-lock.json" ] || npm --prefix "$top/web" ci --no-audit --no-fund >&2 ||
        fail "npm could not install what web/package-lock.json names"
    node "$top/web/build.mjs" "$top/build/web/web/bgpdt.wasm" "$top/build/web"
}
