#!/usr/bin/env bash
# debian-changelog.sh CHANGELOG.md PACKAGE VERSION MAINTAINER: the changes of that version, and those that are in no version
# yet, in the form of Debian's changelogs. The date is SOURCE_DATE_EPOCH, or now.
set -euo pipefail
printf '%s (%s) unstable; urgency=medium\n\n' "$2" "$3"
awk -v version="$3" '
    /^## / { inside = $2 == version || $2 == "Unreleased"; next }
    inside && /^- / { sub(/^- /, "  * ") }
    inside && /^  [^*]/ { sub(/^  /, "    ") }
    inside && NF' "$1" | fold -s -w 78 | sed -E 's/^([^ ])/    \1/; s/ +$//'
printf '\n -- %s  %s\n' "$4" "$(LC_ALL=C date -u -R -d "@${SOURCE_DATE_EPOCH:-$(date +%s)}")"
