#!/usr/bin/env bash
# side-by-side-test.sh X64.msi X86.msi: what the two packages share stays until the last of them goes, whichever that is; an
# older version does not install over a newer one. Of a 32-bit package Wine without 32-bit programs runs nothing, but it enters
# and takes away its registry values.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
root=$(readlink -f "$here/../..")
scratch=$(mktemp -d)
"$root/tools/wine-prefix.sh" "$scratch/wine"
export WINEPREFIX=$scratch/wine DISPLAY=''
wine() { timeout 120 "$root/tools/wine.sh" "$@"; }
server() { "$(command -v wineserver || echo /usr/lib/wine/wineserver64)" "$1" 2>/dev/null || true; }
finish() { server -k; server -w; rm -rf "$scratch"; }
trap finish EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
default() { wine reg query "HKLM\\Software\\Classes\\$1" /ve 2>/dev/null | tr -d '\r' | sed -nE 's/.*REG_SZ *//p'; }
msi() { wine msiexec "$1" "C:\\$2.msi" /qn; }
cp "$1" "$WINEPREFIX/drive_c/x64.msi"
cp "$2" "$WINEPREFIX/drive_c/x86.msi"
library='TypeLib\{C3975B05-1E7B-44D3-8653-3DDB24C5FF4E}\1.0'
complete() {
    [ -n "$(default "$library")" ] || fail "$1: the type library has no name"
    [ -n "$(default "$library\\0\\$2")" ] || fail "$1: the type library has no file"
}
for last in x64 x86; do
    first=$([ $last = x64 ] && echo x86 || echo x64)
    platform=$([ $last = x64 ] && echo win64 || echo win32)
    msi /i x64 && msi /i x86 || fail "not both can be installed"
    [ -d "$WINEPREFIX/drive_c/Tamlux/Jobs" ] || fail "no jobs folder"
    complete "both installed" $platform
    msi /x $first || fail "$first cannot be taken away"
    complete "$first taken away" $platform
    msi /x $last || fail "$last cannot be taken away"
    [ -z "$(default "$library")" ] || fail "the type library stays when both packages are gone"
    # Wine, unlike Windows, has program identifiers of 32-bit systems elsewhere.
    [ $last = x86 ] || [ -z "$(default 'Dravik.EmbeddedStep')$(default 'DravikDlgLib.DravikDlg')" ] || fail "program identifiers stay"
done
cp "$1" "$scratch/newer.msi"
msibuild "$scratch/newer.msi" -q "UPDATE \`Property\` SET \`Value\` = '99.0.0' WHERE \`Property\` = 'ProductVersion'"
msibuild "$scratch/newer.msi" -q "UPDATE \`Property\` SET \`Value\` = '{11111111-2222-4333-8444-555555555555}' WHERE \`Property\` = 'ProductCode'"
cp "$scratch/newer.msi" "$WINEPREFIX/drive_c/newer.msi"
msi /i newer || fail "the newer version cannot be installed"
if msi /i x64; then fail "an older version installs over a newer one"; fi
echo "Side by side, and no older version over a newer one: $(basename "$1") $(basename "$2")"
