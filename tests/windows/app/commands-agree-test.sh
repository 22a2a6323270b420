#!/usr/bin/env bash
# commands-agree-test.sh LINUX_PROGRAM WINDOWS_PROGRAM PREFIX: both programs learn the same font from the sample parts, down to
# the bytes of its file but for the names of the images, and read the same in them with the same confidences, whatever decodes the images. The Windows program
# runs in the Wine prefix and finds the images by wildcards.
set -euo pipefail
root=$(readlink -f "$(dirname "$(readlink -f "$0")")/../../..")
linux=$(readlink -f "$1") windows=$(readlink -f "$2")
export WINEPREFIX=$(readlink -f "$3") DISPLAY='' LC_ALL=C
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
wine() { timeout 120 "$root/tools/wine.sh" "$windows" "$@" | tr -d '\r'; }
same() { diff "$scratch/$1.linux" "$scratch/$1.windows" >&2 || fail "the programs differ in what they print: $1"; }

cd "$root/data/parts/rendered_charset"
grep '^hack_' lines.tsv | sed "s|^|$PWD/|" >"$scratch/linux.tsv"
sed 's|^|Z:|' "$scratch/linux.tsv" >"$scratch/windows.tsv"
figures() { sed 's/\tZ:/\t/; /^seconds /d; /^saved /d'; }
"$linux" learn --font hack --samples "$scratch/linux.tsv" --jobs "$scratch/linux" | figures >"$scratch/learn.linux"
wine learn --font hack --samples "Z:$scratch/windows.tsv" --jobs "Z:$scratch/windows" | figures >"$scratch/learn.windows"
same learn
grep -q '^Held-out check' "$scratch/learn.linux" || fail "no figures of a check"
# The font itself, from behind the size of the file to the pictures of samples, and the last of the pictures.
parts() {
    local end; end=$(grep -abo SEEN "$1" | head -n 1 | cut -d: -f1)
    head -c "$end" "$1" | tail -c +25
    tail -c 20004 "$1" | head -c 20000
}
for system in linux windows; do parts "$scratch/$system/Fonts/hack.nnd" >"$scratch/parts.$system"; done
cmp "$scratch/parts.linux" "$scratch/parts.windows" || fail "the fonts differ"

cd ../rendered_lines
for options in '--confidence' '--reject 0.98'; do
    # shellcheck disable=SC2086
    "$linux" read --font hack --jobs "$scratch/linux" $options *.png >"$scratch/read.linux"
    # shellcheck disable=SC2086
    wine read --font hack --jobs "Z:$scratch/windows" $options '*.png' >"$scratch/read.windows"
    same read
done
echo "Linux and Windows agree: the font learnt, and $(wc -l <"$scratch/read.linux") images read with it"
