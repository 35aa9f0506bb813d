# Sourced by run.sh and test.sh: installs Debian packages that are missing.

build_packages="g++ cmake ninja-build pkg-config libicu-dev libcairo2-dev libpango1.0-dev
librsvg2-dev libpng-dev libglib2.0-dev libplist-dev nlohmann-json3-dev libtomlplusplus-dev libcli11-dev
zlib1g-dev libgtk-3-dev libgtk-layer-shell-dev libwayland-dev fonts-inter fonts-noto-cjk fonts-noto-color-emoji fonts-dejavu-core"

test_packages="libgtest-dev libgmock-dev libbenchmark-dev libical-dev clang-format-19 fonts-noto-core
libx11-dev libxtst-dev xvfb openbox picom sway weston dbus-daemon at-spi2-core python3-pyatspi gir1.2-atspi-2.0
desktop-file-utils appstream mandoc librsvg2-bin"

clang_packages="clang-19 libclang-rt-19-dev"

# need PACKAGE ...
need() {
    local missing=() package
    if ! command -v dpkg-query >/dev/null; then
        echo "No dpkg here; going on in the hope that these are installed:" "$@" >&2
        return 0
    fi
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if ! command -v apt-get >/dev/null; then
        echo "Please install first: ${missing[*]}" >&2
        return 1
    fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "Please install first, as root: ${missing[*]}" >&2; return 1; }
        as_root=(sudo)
    fi
    local install=(env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}")
    echo "${as_root[*]:-} ${install[*]}"
    "${as_root[@]}" "${install[@]}" </dev/null >/dev/null && return 0
    # Package lists may be missing or old.
    "${as_root[@]}" apt-get update -qq </dev/null
    "${as_root[@]}" "${install[@]}" </dev/null >/dev/null
}
