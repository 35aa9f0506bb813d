#!/usr/bin/env bash
# Builds and runs all tests: the release build, the address and undefined-behaviour sanitizers, the thread
# sanitizer on the tests that use threads, the fuzzers for a while, and the formatting. Ends with ctest's own
# counts; any failing stage makes the result non-zero.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

. packaging/debian-packages.sh
need $build_packages $test_packages $clang_packages

jobs=$(nproc)
logs=out/tests
mkdir -p "$logs"
rm -f "$logs"/*.log
failed=()

stage() {
    local name=$1
    shift
    echo "== $name"
    local begin=$SECONDS
    if "$@"; then
        echo "== $name: passed in $((SECONDS - begin)) s"
    else
        echo "== $name: FAILED after $((SECONDS - begin)) s"
        failed+=("$name")
    fi
}

build() {
    cmake --preset "$1" -DHEEDBANNER_TESTS=ON -DHEEDBANNER_BENCHMARKS=OFF -DHEEDBANNER_TEST_NAMES="${test_names-}" >"$logs/$1-configure.log" || { cat "$logs/$1-configure.log"; return 1; }
    cmake --build "build/$1" -j"$jobs" "${@:2}" >"$logs/$1-build.log" 2>&1 ||
        { grep -E 'FAILED|error|Error' -A12 "$logs/$1-build.log" | tail -n 80; return 1; }
}

# Formatted as .clang-format says, every C++ file that is tracked.
formatted() {
    git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format-19 --dry-run --Werror
}

# No two types of the programs with one name: the linker would mix them up.
type_names() {
    git ls-files -z '*.h' '*.cpp' ':!tests' ':!benchmarks' ':!fuzz' | xargs -0 python3 tests/duplicate-types.py
}

export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export TSAN_OPTIONS=halt_on_error=1:suppressions=$PWD/tests/support/thread-suppressions.txt

release() { build release && ctest --preset release -j"$jobs" >"$logs/release.log" 2>&1; }
address() { build address && ctest --preset address -j"$jobs" >"$logs/address.log" 2>&1; }
# Tests that use threads say so in their names; only the rooms that have some are built.
concurrent='Thread|SameTime|AtOnce|Concurren|DefaultsDomain|NotificationCenter|MainQueue|FileWatcher|WallClockTimer|EventStore|EventManager'
concurrent_targets() {
    local folder
    for folder in tests/*/; do
        [ "$folder" = tests/journeys/ ] && continue
        grep -rqsE "^TEST.*($concurrent)" --include='*.cpp' "$folder" || continue
        sed -n 's/^ *hbr_room_tests(\([A-Za-z]*\).*/\1/p' "$folder/CMakeLists.txt"
    done
}
thread() {
    test_names=$concurrent build thread --target $(concurrent_targets) &&
        ctest --preset thread -j"$jobs" -R "$concurrent" >"$logs/thread.log" 2>&1
}

# From the handwritten seeds on, always the same way; what it finds new is forgotten.
fuzz_one() {
    local found=out/fuzz/$1
    rm -rf "$found" && mkdir -p "$found"
    "build/fuzz/bin/fuzz-$1" -runs="$2" -seed=1 -max_len=1024 -timeout=20 -max_total_time=25 \
        -artifact_prefix="$found/" "$found" "fuzz/seeds/$1" >>"$logs/fuzz.log" 2>&1
}
fuzz() {
    local ok=0
    build fuzz --target fuzz-links fuzz-parser fuzz-services fuzz-calendar fuzz-cards || return 1
    fuzz_one links 100000 || ok=1
    fuzz_one parser 20000 || ok=1
    fuzz_one services 2000 || ok=1
    fuzz_one calendar 8000 || ok=1
    fuzz_one cards 20000 || ok=1
    [ "$ok" -eq 0 ] || grep -E 'does not hold|ERROR|SUMMARY|Test unit written' -A12 "$logs/fuzz.log" | tail -n 80
    return "$ok"
}

stage "formatting" formatted
stage "names of types" type_names
stage "release" release
stage "address and undefined behaviour" address
stage "threads" thread
stage "fuzzing" fuzz

for log in release address thread; do
    [ -f "$logs/$log.log" ] || continue
    echo
    echo "-- $log"
    # From the failures on (with their output) when there are some, else the counts.
    if grep -q 'The following tests FAILED' "$logs/$log.log"; then
        grep -vE '^ *[0-9]+/[0-9]+ Test .* Passed|^ *Start ' "$logs/$log.log" | tail -n 200
    else
        grep -E 'tests passed|Total Test time' "$logs/$log.log" || tail -n 20 "$logs/$log.log"
    fi
done

if [ ${#failed[@]} -gt 0 ]; then
    printf 'failed: %s\n' "${failed[@]}" >&2
    exit 1
fi
