#!/usr/bin/env bash
# run.sh [FOLDER|FILE ...]: builds the programs and shows your calendars (or the examples): the agenda in
# the terminal, the widgets as pictures in out/. Touches nothing outside this folder.
set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

case ${1:-} in
-h | --help)
    sed -n '2,3s/^# //p' "${BASH_SOURCE[0]}"
    exit 0
    ;;
esac

locations=()
for location in "$@"; do
    if [ ! -e "$location" ]; then
        echo "run.sh: $location: no such file or folder" >&2
        exit 1
    fi
    locations+=("$(realpath -s -- "$location")")
done

cd "$project"
if [ ${#locations[@]} -eq 0 ]; then
    locations=("$project/examples")
fi

. packaging/debian-packages.sh
need $build_packages

if [ ! -f build/release/build.ninja ]; then
    cmake --preset release -DHEEDBANNER_TESTS=OFF -DHEEDBANNER_BENCHMARKS=OFF >/dev/null
fi
mkdir -p out
echo "Building; the first time takes some minutes ..."
if ! cmake --build build/release --target heedbanner heedbanner-widgets heedbanner-desktop >out/build.log 2>&1; then
    { grep -E -A12 'FAILED|[Ee]rror' out/build.log || tail -n 20 out/build.log; } | head -n 60 >&2 || true
    echo "run.sh: the build failed; see $project/out/build.log" >&2
    exit 1
fi

# A home of its own: nothing of yours is read or changed. Made anew each time, so that the accounts are
# those asked for now.
home="$project/out/home"
rm -rf "$home"
mkdir -p "$home"
export HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share"
export XDG_CACHE_HOME="$home/.cache" XDG_STATE_HOME="$home/.local/state"

bin="$project/build/release/bin"
"$bin/heedbanner" setup "${locations[@]}" --email me@example.org
echo
"$bin/heedbanner" agenda --days 1
echo

draw() {
    local picture="out/$1-$2.png"
    "$bin/heedbanner-widgets" render "$1" --family "$2" --scale 2 -o "$picture"
    echo "$1, $2: $project/$picture"
}
draw countdown small
draw countdown medium
draw upcoming small
draw upcoming medium
draw upcoming large
draw current small
draw current medium
draw current large

echo
echo "On your desktop, with these calendars:"
echo "    HOME=$home XDG_CONFIG_HOME=$XDG_CONFIG_HOME XDG_DATA_HOME=$XDG_DATA_HOME \\"
echo "        $bin/heedbanner-desktop"
