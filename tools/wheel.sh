#!/usr/bin/env bash
# Makes the wheel of the Python module with a built library in it: wheel.sh LIBRARY VERSION FOLDER. It is for Linux of this
# machine's processor with this system's C library or a later one.
set -euo pipefail
root=$(readlink -f "$(dirname "$0")/..")
library=$(readlink -f "$1") out=$(readlink -m "$3")
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cp -r "$root/src/library/python/dravik" "$root/packaging/linux/wheel/setup.py" "$root/LICENSE" "$stage"
rm -rf "$stage/dravik/__pycache__"
strip --strip-unneeded -o "$stage/dravik/libdravik.so.0" "$library"
find "$stage" -exec touch -d "@${SOURCE_DATE_EPOCH:-$(date +%s)}" {} +
export DRAVIK_VERSION=$2
DRAVIK_PLATFORM=manylinux_$(getconf GNU_LIBC_VERSION | sed 's/.* //; s/\./_/')_$(uname -m)
export DRAVIK_PLATFORM
cd "$stage"
/usr/bin/python3 setup.py -q bdist_wheel --dist-dir "$out" 2>"$stage/log" || { cat "$stage/log" >&2; exit 1; }
