#!/usr/bin/env bash
# Draws the pictures of the README from the example calendars at a fixed moment, with the release build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=$PWD/build/release/bin

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_CACHE_HOME=$home/cache
unset LC_ALL LC_TIME LC_MESSAGES LANGUAGE
export TZ=Europe/Berlin LANG=en_GB.UTF-8
now=2026-11-24T09:06:00+01:00

"$bin/heedbanner" setup examples --email me@example.org >/dev/null
"$bin/heedbanner" settings set timeOffsetSeconds 10m >/dev/null
"$bin/heedbanner" settings set includeTravelTime true >/dev/null
draw() {
    "$bin/heedbanner-widgets" render "$1" --family "$2" --scale 2 --now "$now" -o "docs/pictures/$1-$2.png"
}
draw countdown small
draw current small
draw upcoming medium
