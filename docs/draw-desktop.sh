#!/usr/bin/env bash
# Draws the desktop of the README from the example calendars, at the moment of its other pictures, with the release
# build. Needs Debian's faketime, hsetroot, imagemagick and xdotool beside what the tests need.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export PATH=$PWD/build/release/bin:$PATH

home=$(mktemp -d)
processes=()
end() {
    kill "${processes[@]}" 2>/dev/null || true
    wait
    rm -rf "$home"
}
trap end EXIT
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_CACHE_HOME=$home/cache
export XDG_RUNTIME_DIR=$home NO_AT_BRIDGE=1
unset LC_ALL LC_TIME LC_MESSAGES LANGUAGE WAYLAND_DISPLAY
export TZ=Europe/Berlin LANG=en_GB.UTF-8

mkfifo "$home/display"
Xvfb -displayfd 3 -screen 0 1280x760x24 3>"$home/display" 2>/dev/null &
processes+=($!)
DISPLAY=:$(head -n 1 "$home/display")
export DISPLAY
{ read -r DBUS_SESSION_BUS_ADDRESS && read -r bus; } \
    < <(dbus-daemon --session --fork --print-address=1 --print-pid=1)
processes+=("$bus")
export DBUS_SESSION_BUS_ADDRESS
openbox 2>/dev/null &
processes+=($!)
hsetroot -add '#27496d' -add '#8fb8ca' -gradient 20
picom --backend xrender >/dev/null 2>&1 &
processes+=($!)

heedbanner setup examples --email me@example.org >/dev/null
heedbanner settings set timeOffsetSeconds 10m >/dev/null
heedbanner settings set includeTravelTime true >/dev/null
heedbanner-desktop --add upcoming:large
heedbanner-desktop --add countdown:small --at bottom-end
heedbanner-desktop --add current:small --at bottom-end
# Nothing takes notifications here, so the alert that is due opens a card.
faketime '2026-11-24 09:06:00' heedbanner-desktop 2>/dev/null &
processes+=($!)
xdotool search --sync --name '^Daily Standup$' windowmove --sync 40 30
sleep 1
import -window root -quality 95 -depth 8 docs/pictures/desktop.png
