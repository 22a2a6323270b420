#!/usr/bin/env bash
# no-display-test.sh PROGRAM: without a display it can use the program says what is missing and ends with 1, instead of by a signal.
set -euo pipefail
program=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# says TEXT VARIABLE=VALUE...
says() {
    local text=$1 said code=0
    shift
    said=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM XDG_RUNTIME_DIR="$scratch" "$@" "$program" 2>&1) || code=$?
    [ $code -eq 1 ] || { echo "FAILED: $*: ends with $code: $said" >&2; exit 1; }
    grep -q "$text" <<<"$said" || { echo "FAILED: $*: says $said" >&2; exit 1; }
}
says 'there is no display'
# Whether Qt's plug-in is installed or not.
says 'Wayland display' WAYLAND_DISPLAY=wayland-9
