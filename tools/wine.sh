#!/usr/bin/env bash
# Runs a Windows program under Wine in the prefix of the build it belongs to, on a display of its own unless there is one.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
export WINEPREFIX=${WINEPREFIX:-$here/../build-windows/wine}
# Wine names files by the locale's letters: without one of UTF-8 it finds no file with others than ASCII ones.
export LC_ALL=C.UTF-8
export WINEDLLOVERRIDES='mscoree=;mshtml=' WINEDEBUG=${WINEDEBUG:--all}
wine=$(command -v wine64 || command -v wine || echo /usr/lib/wine/wine64)
if [ -z "${DISPLAY+set}" ] && command -v xvfb-run >/dev/null; then
    exec xvfb-run -a -s '-screen 0 1600x1200x24' "$wine" "$@"
fi
exec "$wine" "$@"
