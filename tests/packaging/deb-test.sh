#!/usr/bin/env bash
# deb-test.sh FOLDER: the Debian packages and the wheel in it have no errors that Debian's own tools find, hold all that belongs to
# an installed program, and their files are hardened.
set -euo pipefail
root=$(readlink -f "$(dirname "$0")/../..")
folder=$(readlink -f "$1")
fail() { echo "FAILED: $*" >&2; exit 1; }
version=$(sed -nE 's/^project\(Dravik VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
machine=$(dpkg --print-architecture)
for name in dravik-trainer_${version}_$machine libdravik0_${version}_$machine libdravik-dev_${version}_$machine python3-dravik_${version}_all; do
    [ -f "$folder/$name.deb" ] || fail "there is no $name.deb"
    dpkg-deb -x "$folder/$name.deb" "$work/${name%%_*}"
done
lintian --allow-root "$folder"/*_"$version"_*.deb || fail "lintian"
usr=$work/dravik-trainer/usr
appstreamcli validate --no-net "$usr"/share/metainfo/*.xml || fail "AppStream"
desktop-file-validate "$usr"/share/applications/*.desktop || fail "desktop file"
grep -q '^MimeType=.*application/x-dravik-font;' "$usr"/share/applications/*.desktop || fail "a font file does not open"
icon=$(sed -n 's/^Icon=//p' "$usr"/share/applications/*.desktop)
for size in 16 22 24 32 48 64 128 256 512; do
    for file in apps/$icon mimetypes/application-x-dravik-font; do
        file $usr/share/icons/hicolor/${size}x$size/$file.png | grep -q "$size x $size" || fail "no $file of $size pixels"
    done
done
XDG_DATA_DIRS=$usr/share update-mime-database "$usr/share/mime" || fail "type of the font file"
grep -q ':application/x-dravik-font:\*\.nnd' "$usr/share/mime/globs2" || fail "*.nnd has no type"
# Every link and picture of the guides is there.
for page in "$usr"/share/doc/dravik-trainer/html/*.html "$work"/libdravik-dev/usr/share/doc/libdravik-dev/html/*.html; do
    for target in $(grep -oE '(src|href)="[^"#:]+"' "$page" | sed -E 's/.*="(.*)"/\1/'); do
        [ -e "$(dirname "$page")/$target" ] || fail "$(basename "$page") links to $target, which is not there"
    done
done
[ -s "$work/libdravik-dev/usr/share/doc/libdravik-dev/html/reference/dravik_8h.html" ] || fail "there is no reference"
"$root/tests/packaging/hardening-test.sh" "$usr/bin/dravik-trainer" "$work"/libdravik0/usr/lib/*/libdravik.so.0
! grep -rqF "$root" "$work" || fail "a file names the folder of the sources"
/usr/bin/python3 -m zipfile -l "$folder/dravik-$version"-py3-none-manylinux_*.whl | grep -q 'dravik/libdravik.so.0' || fail "the wheel has no library"
echo "Debian packages of $version: no errors"
