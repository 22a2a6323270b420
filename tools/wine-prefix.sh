#!/usr/bin/env bash
# Makes a Wine prefix in the given folder unless it is there. A crash ends a program instead of waiting in a debugger.
set -euo pipefail
mkdir -p "$1"
folder=$(readlink -f "$1")
[ -f "$folder/ready" ] && exit 0
rm -rf "$folder"
mkdir -p "$folder"
here=$(dirname "$(readlink -f "$0")")
export WINEPREFIX=$folder
# Runs a Windows program in it; once more after a moment, since one of these was seen to fail for once without a word.
within() {
    for wait in 5 0; do
        DISPLAY='' timeout 300 "$here/wine.sh" "$@" >"$folder/log" 2>&1 && return
        sleep "$wait"
    done
    cat "$folder/log" >&2
    echo "$* failed in the new Wine prefix" >&2
    exit 1
}
within wineboot -i
within reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f
within reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
# Without a window manager a managed window waits two seconds for one.
within reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
# The desktop, which the first look at windows starts, takes a while; what shows windows before it is there fails.
timeout 100 "$here/wine.sh" taskkill.exe /im nothing.exe >/dev/null 2>&1 || true
touch "$folder/ready"
