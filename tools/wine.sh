#!/usr/bin/env bash
# Runs a Windows program under Wine in the prefix of the build it belongs to.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
export WINEPREFIX=${WINEPREFIX:-$here/../build-windows/wine}
export WINEDLLOVERRIDES='mscoree=;mshtml=' WINEDEBUG=${WINEDEBUG:--all}
wine=$(command -v wine64 || command -v wine || echo /usr/lib/wine/wine64)
exec "$wine" "$@"
