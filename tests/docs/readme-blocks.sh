#!/usr/bin/env bash
# readme-blocks.sh HEADING LANGUAGE: prints what the README has in blocks of that language under that heading.
set -euo pipefail
awk -v heading="## $1" -v language="$2" '
    /^## / { here = $0 == heading }
    /^```/ { inside = here && $0 == "```" language; next }
    inside' "$(dirname "$(readlink -f "$0")")/../../README.md"
