#!/usr/bin/env bash
# side-by-side-test.sh X64.msi X86.msi: what the two packages share stays until the last of them goes, whichever that is; an
# older version does not install over a newer one. Of a 32-bit package Wine without 32-bit programs runs nothing, but it enters
# and takes away its registry values.
set -euo pipefail
. "$(dirname "$(readlink -f "$0")")/installing.sh"
cp "$1" "$drive/x64.msi"
cp "$2" "$drive/x86.msi"
library='TypeLib\{C3975B05-1E7B-44D3-8653-3DDB24C5FF4E}\1.0'
complete() {
    [ -n "$(default "$library")" ] || fail "$1: the type library has no name"
    [ -n "$(default "$library\\0\\$2")" ] || fail "$1: the type library has no file"
}
# verbs : the programs that open a font file, in the order in which they are taken.
verbs() {
    local classes
    for classes in 'Software\Classes' 'Software\Wow6432Node\Classes'; do
        wine reg query "HKLM\\$classes\\Dravik.Font\\shell" 2>/dev/null | tr -d '\r' | sed -nE 's/.*shell\\(open)/\1/p'
    done | paste -sd' '
}
for last in x64 x86; do
    first=$([ $last = x64 ] && echo x86 || echo x64)
    platform=$([ $last = x64 ] && echo win64 || echo win32)
    msi /i x64 && msi /i x86 || fail "not both can be installed"
    [ -d "$drive/Tamlux/Jobs" ] || fail "no jobs folder"
    complete "both installed" $platform
    [ "$(verbs)" = "open open.x86" ] || fail "fonts are opened by: $(verbs)"
    msi /x $first || fail "$first cannot be taken away"
    complete "$first taken away" $platform
    [ "$(verbs)" = $([ $last = x64 ] && echo open || echo open.x86) ] || fail "without $first fonts are opened by: $(verbs)"
    msi /x $last || fail "$last cannot be taken away"
    [ -z "$(default "$library")$(verbs)" ] || fail "the type library or what opens fonts stays when both packages are gone"
    # Wine, unlike Windows, has program identifiers of 32-bit systems elsewhere.
    [ $last = x86 ] || [ -z "$(default 'Dravik.EmbeddedStep')$(default 'DravikDlgLib.DravikDlg')$(default .nnd)$(default Dravik.Font)" ] || fail "program identifiers stay"
done
cp "$1" "$scratch/newer.msi"
msibuild "$scratch/newer.msi" -q "UPDATE \`Property\` SET \`Value\` = '99.0.0' WHERE \`Property\` = 'ProductVersion'"
msibuild "$scratch/newer.msi" -q "UPDATE \`Property\` SET \`Value\` = '{11111111-2222-4333-8444-555555555555}' WHERE \`Property\` = 'ProductCode'"
cp "$scratch/newer.msi" "$drive/newer.msi"
msi /i newer || fail "the newer version cannot be installed"
if msi /i x64; then fail "an older version installs over a newer one"; fi
echo "Side by side, and no older version over a newer one: $(basename "$1") $(basename "$2")"
