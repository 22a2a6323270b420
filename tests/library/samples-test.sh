#!/usr/bin/env bash
# samples-test.sh TRAINER LIBRARY FOLDER: the samples of the library's guide, built in FOLDER, read the shipped images with a
# font that the trainer has taught, and tell what goes wrong; each is shorter than fifty lines.
set -euo pipefail
root=$(readlink -f "$(dirname "$0")/../..")
trainer=$1 samples=$3
export DRAVIK_LIBRARY=$2 PYTHONPATH=$root/src/library/python PYTHONDONTWRITEBYTECODE=1 QT_QPA_PLATFORM=offscreen
fail() { echo "FAILED: $*" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export MPLCONFIGDIR=$work/matplotlib
for sample in "$root"/docs/library-samples/*; do
    [ "$(wc -l <"$sample")" -lt 50 ] || fail "$(basename "$sample") has $(wc -l <"$sample") lines"
done
grep '^hack_' "$root/data/parts/rendered_charset/lines.tsv" | sed "s,^,$root/data/parts/rendered_charset/," >"$work/hack.tsv"
"$trainer" learn --font hack --samples "$work/hack.tsv" --jobs "$work/jobs" >/dev/null
font=$work/jobs/Fonts/hack.nnd
mkdir "$work/images"
cp "$root"/data/parts/rendered_lines/hack_00{0,5}.png "$work/images"
touch "$work/images/notes.txt"

"$samples/read-folder" "$font" "$work/images" >"$work/read"
diff - "$work/read" <<END || fail "the folder reader reads otherwise"
$work/images/hack_000.png	EXP2026/07/26
$work/images/hack_005.png	Batch:4285c
END
echo 'no image' >"$work/images/bad.png"
"$samples/read-folder" "$font" "$work/images" >"$work/read" 2>"$work/problems" && fail "a bad image is no failure"
[ "$(wc -l <"$work/read")" = 2 ] && grep -q 'bad\.png: ' "$work/problems" || fail "a bad image stops the others or has no reason"

# A text may have several lines; each image begins with its number.
[ "$("$samples/camera-loop" "$font" Fake_1 3 | grep -cP "^\d+\t")" = 3 ] || fail "the camera loop does not read three images"
"$samples/camera-loop" "$font" None_1 3 2>"$work/problems" && fail "a camera that is not there is no failure"
[ -s "$work/problems" ] || fail "a camera that is not there has no reason"

rm "$work/images/bad.png"
/usr/bin/python3 "$root/docs/library-samples/confidences.py" "$font" "$work/plot.png" "$work"/images/*.png >"$work/read"
head -n 1 "$work/read" | grep -qF "hack_000.png	EXP2026/07/26" || fail "the Python sample reads otherwise: $(head -n 1 "$work/read")"
[ "$(stat -c %s "$work/plot.png")" -gt 5000 ] || fail "the Python sample draws nothing"
echo "Library: all samples read"
