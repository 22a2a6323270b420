#!/usr/bin/env bash
# symbols-test.sh LIBRARY HEADER: just the functions of the header are seen from outside, each under the version in which it
# came, and none that an earlier release had is missing.
set -euo pipefail
library=$1 header=$2
fail() { echo "FAILED: $*" >&2; exit 1; }
declared=$(sed -E 's/^DRAVIK_API .*[ *](dravik_[a-z_]+)\(.*/\1/;t;d' "$header" | sort)
exported=$(nm -D --defined-only "$library" | awk '$2 == "T" { print $3 }' | sort)
[ -n "$declared" ] || fail "$header declares nothing"
[ "$(sed 's/@@.*//' <<<"$exported")" = "$declared" ] || fail "declared and exported differ:"$'\n'"$(diff <(echo "$declared") <(sed 's/@@.*//' <<<"$exported"))"
others=$(nm -D --defined-only "$library" | awk '$2 != "T" && $2 != "A"' | head -n 5)
[ -z "$others" ] || fail "other things are seen from outside: $others"
while read -r name; do
    grep -qxF "$name" <<<"$exported" || fail "$name of an earlier release is missing"
done < <(grep -v '^#' "$(dirname "$0")/released-symbols")
readelf -d "$library" | grep -q 'SONAME.*libdravik\.so\.0\]' || fail "the name for programs is not libdravik.so.0"
echo "libdravik: $(wc -l <<<"$exported") functions, those of the header"
