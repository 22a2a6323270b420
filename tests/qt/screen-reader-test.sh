#!/usr/bin/env bash
# screen-reader-test.sh PROGRAM IMAGE: what a screen reader is given of the window, over the accessibility bus as it gets it.
set -euo pipefail
program=$(realpath "$1") image=$(realpath "$2")
for needed in Xvfb dbus-run-session /usr/libexec/at-spi-bus-launcher; do
    command -v $needed >/dev/null || { echo "SKIPPED: there is no $needed"; exit 77; }
done
/usr/bin/python3 -c 'import pyatspi' 2>/dev/null || { echo "SKIPPED: there is no pyatspi"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
chmod 700 "$scratch"
export HOME=$scratch XDG_RUNTIME_DIR=$scratch XDG_CONFIG_HOME=$scratch QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
unset WAYLAND_DISPLAY
xvfb-run -a -s '-screen 0 1600x1000x24' dbus-run-session -- bash -euc '
    /usr/libexec/at-spi-bus-launcher --launch-immediately &
    "$1" --jobs "$3/jobs" "$2" &
    trap "kill %2 %1 2>/dev/null || true" EXIT
    /usr/bin/python3 "$0"' "${BASH_SOURCE[0]%.sh}.py" "$program" "$image" "$scratch"
