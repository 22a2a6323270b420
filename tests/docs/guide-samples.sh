#!/usr/bin/env bash
# Every piece of code in the guides is part of a sample, which the tests compile or run. Pieces may be indented otherwise.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
flat() { tr -s ' \t\r\n' ' ' | sed 's/^ //; s/ $//'; }
samples=$(cat docs/samples/* | flat)
found=0
while IFS= read -r -d '' piece; do
    found=$((found + 1))
    case "$samples" in
        *"$(flat <<<"$piece")"*) ;;
        *) printf 'In no sample:\n%s\n' "$piece" >&2; exit 1 ;;
    esac
done < <(awk '/^```(cpp|vbs|js)$/ { inside = 1; next } /^```$/ { if (inside) printf "%c", 0; inside = 0; next } inside' docs/host-integrators-guide.md)
[ "$found" -gt 0 ] || { echo "The guide has no code" >&2; exit 1; }
for link in $(grep -oE '\]\([a-z][^):]*\)' docs/host-integrators-guide.md | sed -E 's/\]\((.*)\)/\1/'); do
    [ -e "docs/$link" ] || { echo "The guide links to docs/$link, which does not exist" >&2; exit 1; }
done
