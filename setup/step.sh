#!/bin/sh
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# step.sh STEP: one step of ./test, whose builds are there. "step.sh build PRESET [TARGET]" makes such a build. A line
# "proved: ..." tells what came out.
set -eu
top=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
. "$top/setup/setup.sh"
jobs=$(nproc)

# run_tests PRESET [OPTION...]: the limit is for what hangs; a busy machine stays far below it. Results go to a file
# beside the build, for the summary.
run_tests() {
    tests=$top/build/$1
    shift
    results=results-$step.${BGPDT_TEST_SHARE-usual}.xml
    rm -f "$tests/$results"
    ctest --test-dir "$tests" --output-on-failure --test-output-size-passed 65536 -j "$jobs" --timeout 3600 \
        --output-junit "$results" "$@"
}

# answers NAME PRESET [EMULATOR...]: the answers of that build's program, for the step under the name
answers() {
    to=$top/build/steps/$step-$1.txt preset=$2
    shift 2
    "$@" "$top/build/$preset/tests/bgpdt_answers" >"$to"
}

# same_answers NAME: as those of the release build
same_answers() {
    cmp "$top/build/steps/$step-release.txt" "$top/build/steps/$step-$1.txt" || {
        diff "$top/build/steps/$step-release.txt" "$top/build/steps/$step-$1.txt" | head -n 20
        fail "the $1 build answers differently"
    }
}

# fuzz TARGET...: for a short while
fuzz() {
    told=$top/build/steps/$step.txt
    "$top/fuzz" 10 "$@" >"$told" || { cat "$told"; exit 1; }
    sed 's/^/proved: /' "$told"
}

# what the step sweeps alone runs, all of it
apart='install|library[.]examples|tool[.]bounds|grammar[.](large|engines|yang)'

step=$1
case $step in
build)
    preset=$2
    case $preset in
    ppc) "$top/setup/build_lua.sh" powerpc-linux-gnu "$top/build/powerpc-lua" ;;
    i686) "$top/setup/build_lua.sh" i686-linux-gnu "$top/build/i686-lua" ;;
    msan) "$top/setup/build_lua.sh" x86_64-linux-gnu "$top/build/msan-lua" clang-19 -O1 -g1 -fsanitize=memory ;;
    esac
    configure "$preset"
    shift 2
    build "$preset" "$@"
    ;;
style) "$top/setup/check_style.sh" ;;
tidy) "$top/setup/check_tidy.py" "$top/build/release" ;;
release | asan | ppc) run_tests "$step" -E "^(valgrind.*|tool[.]files|$apart)\$" ;;
i686 | i686-whole)
    # What is freed and kept apart would fill 32 bits of addresses; the loader, run as a program, leaks its own lists.
    [ "$step" = i686 ] && wanted='^vectors$' || wanted=.
    ASAN_OPTIONS=quarantine_size_mb=16:detect_leaks=0 run_tests i686 -R "$wanted"
    ;;
sanitize) run_tests asan -R '^vectors$' ;;
msan) run_tests msan -R '^vectors$' ;;
tsan) run_tests tsan -R '^(library\.)?threads$' ;;
tsan-fronts)
    TSAN_OPTIONS=suppressions=$top/cmake/no_races.txt run_tests tsan-fronts -R '^(modules|(lua|sqlite)[.]install)$'
    ;;
tsan-tool) run_tests tsan-tool -R '^tool[.]threads$' ;;
asan-fronts) run_tests asan-fronts -R '^(modules|lua[.].*|sqlite[.].*)$' ;;
abi) "$top/tests/library/abi.sh" ;;
valgrind) run_tests release -R '^valgrind' ;;
sweeps)
    BGPDT_TEST_SHARE=${BGPDT_TEST_SHARE-3} run_tests release -R '^(formats|order_laws|tool[.]files)$'
    BGPDT_TEST_SHARE=1 run_tests release -R "^(sweep|printers|tool[.]stream|$apart)\$"
    BGPDT_TEST_SHARE=${BGPDT_TEST_SHARE-11} run_tests ppc -R '^(faults|mistakes)$'
    ;;
answers)
    answers release release
    answers i686 i686 /usr/i686-linux-gnu/lib/ld-linux.so.2 --library-path /usr/i686-linux-gnu/lib
    answers ppc ppc qemu-ppc -L /usr/powerpc-linux-gnu
    same_answers i686
    same_answers ppc
    echo "proved: $(wc -l <"$top/build/steps/answers-release.txt") answers are the same on all three processors"
    ;;
small)
    answers release release
    export BGPDT_PLUGIN="$top/build/small/src/libbgp_datatype.so"
    answers small release
    BGPDT_PLUGIN=$top/build/small-ppc/src/libbgp_datatype.so
    answers small-ppc ppc qemu-ppc -L /usr/powerpc-linux-gnu
    same_answers small
    same_answers small-ppc
    sizes=$(python3 "$top/tests/footprint/footprint.py" "$BGPDT_PLUGIN" "$top/src" "$top/tests/footprint/limits.toml") || {
        echo "$sizes"
        fail "built for size the plug-in is too large"
    }
    echo "proved: built for size it answers alike, and has $(echo "$sizes" | awk '$2 == "text" { print $1 }') bytes of text on the target"
    ;;
packages)
    "$top/packaging/debian.sh" quick "$top/build/packages"
    "$top/tests/install/packages.sh" "$top/build/packages" "$top/build/packages/tried"
    ;;
debian) "$top/packaging/debian.sh" clean "$top/build/debian/packages" ;;
luarocks)
    need_packages luarocks
    "$top/tests/lua/luarocks.sh"
    ;;
python) "$top/tests/python/run.sh" core ;;
python-columns | python-everywhere) "$top/tests/python/run.sh" "${step#python-}" ;;
recipes) "$top/tests/recipes/recipes.py" "$top/build/recipes" ;;
recipes-whole) "$top/tests/recipes/recipes.py" "$top/build/recipes-whole" --whole ;;
coverage) "$top/setup/coverage.sh" "$top/build/coverage" "$top/build/release" ;;
coverage-rooms)
    rm -rf "$top/build/coverage/profiles" # earlier runs' counts
    # Not those that look at the plug-in alone, or at what the compiler makes without instruments.
    plugin='vectors|plugin|faults|mistakes|sweep|threads|printers|order_laws|pairs|common|formats|format[.].*'
    LLVM_PROFILE_FILE=$top/build/coverage/profiles/%2m.profraw BGPDT_TEST_SEED=0 \
        run_tests coverage -E "^($plugin|links[.].*|install|grammar.*|dialects|library[.](exports|threads))\$"
    "$top/setup/coverage_rooms.sh" "$top/build/coverage"
    ;;
fuzz) fuzz display_record library wire records ;;
fuzz-fronts) fuzz sequence command_line lines names lua sql ;;
web)
    # shellcheck disable=SC2086 # lists of words
    need_packages $web_packages $web_test_packages
    build_web
    (cd "$top/web" && npx prettier --check --log-level warn . && node --test --test-reporter=spec tests/*.test.mjs)
    ;;
size) run_tests ppc -R '^footprint$' --verbose ;;
*) fail "there is no step $step" ;;
esac
