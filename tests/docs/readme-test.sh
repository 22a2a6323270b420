#!/usr/bin/env bash
# readme-test.sh TRAINER LIBRARY: what the README and the guide of the library say of training and of reading from Python happens, with
# the sample parts of the sources for those of the installed program. Other commands of the README are run elsewhere: ./run and the
# installation by tools/nightly.sh (bare, installed).
set -euo pipefail
root=$(readlink -f "$(dirname "$0")/../..")
fail() { echo "FAILED: $*" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/parts"
ln -s "$(readlink -f "$1")" "$work/bin/dravik-trainer"
ln -s "$root/data/parts/rendered_lines" "$work/parts/read"
mkdir "$work/parts/teach"
ln -s "$root"/data/parts/rendered_charset/hack_* "$work/parts/teach"
grep '^hack_' "$root/data/parts/rendered_charset/lines.tsv" >"$work/parts/teach/lines.tsv"
export PATH=$work/bin:$PATH XDG_DATA_HOME=$work DRAVIK_LIBRARY=$2 PYTHONPATH=$root/src/library/python PYTHONDONTWRITEBYTECODE=1 QT_QPA_PLATFORM=offscreen
block() { "$root/tests/docs/readme-blocks.sh" "$1" "$2" | sed "s,/usr/share/dravik-trainer,$work,"; }
bash -euc "$(block 'Train a font' sh)" >"$work/told" || fail "training"
grep -q $'hack_000.png\tEXP2026/07/26' "$work/told" && tail -n 1 "$work/told" | grep -q '^hack	' || fail "the commands tell $(tail -n 3 "$work/told")"
block 'Read from Python' python >"$work/read.py"
/usr/bin/python3 "$work/read.py" >"$work/told" || fail "reading from Python"
[ "$(head -n 1 "$work/told")" = 'EXP2026/07/26' ] && [ "$(tail -n 1 "$work/told")" = 'as expected: True' ] || fail "Python tells $(cat "$work/told")"
# The pieces of the library's guide, one after the other, on the same image.
{
    sed '/^font = /,$d' "$work/read.py"
    grep '^image = ' "$work/read.py"
    awk '/^```/ { inside = $0 == "```python"; next } inside' "$root/docs/library.md"
    echo 'print(reading.text)'
} >"$work/guide.py"
/usr/bin/python3 "$work/guide.py" >"$work/told" || fail "the Python of docs/library.md"
grep -q 'wrong=0' "$work/told" && [ "$(tail -n 1 "$work/told")" = 'EXP2026/07/26' ] || fail "docs/library.md tells $(cat "$work/told")"
# No block of commands stands where nothing runs it.
blocks=$(awk '/^## / { here = substr($0, 4) } /^```[a-z]*$/ { inside = !inside; if (inside) print here " " $0 }' "$root/README.md")
wanted='Try it ```
Install ```sh
Train a font ```sh
Read from Python ```python'
[ "$blocks" = "$wanted" ] || fail "there are other blocks of commands: $blocks"
for link in $(grep -oE '\]\([^):#]*\)' "$root/README.md" | tr -d '])('); do
    [ -e "$root/$link" ] || fail "there is no $link"
done
echo "README: its commands do what it says"
