#!/usr/bin/env bash
# Makes the guides as HTML with their pictures, one page each, that link to each other: guides.sh FOLDER GUIDE.md... Links to
# files that are not among them, but for samples, become plain text. Needs cmark-gfm.
set -euo pipefail
root=$(dirname "$(readlink -f "$0")")/..
out=$1
shift
mkdir -p "$out"
cp "$root/packaging/guides/guide.css" "$out"
title() { sed -n '1,5s/^# //p' "$1" | head -n 1; }

navigation= known=
for guide; do
    name=$(basename "$guide" .md)
    navigation+="<a href=\"$name.html\">$(title "$guide")</a>"$'\n'
    known+="${known:+|}$name"
done
for guide; do
    name=$(basename "$guide" .md)
    {
        printf '<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8">\n'
        printf '<meta name="viewport" content="width=device-width, initial-scale=1">\n'
        printf '<title>%s</title>\n<link rel="stylesheet" href="guide.css">\n</head>\n<body>\n' "$(title "$guide")"
        printf '<nav>\n%s</nav>\n' "$navigation"
        cmark-gfm -e table "$guide" | sed -E "s/<a href=\"($known)\.md(#[^\"]*)?\">/<a href=\"\1.html\">/g
            s/<a href=\"(samples\/|library-samples\/|https?:)([^\"]*)\">/<A href=\"\1\2\">/g; s/<a href=\"($known)\.html\">/<A href=\"\1.html\">/g
            s/<a href=\"[^\"]*\">([^<]*(<code>[^<]*<\/code>)?[^<]*)<\/a>/\1/g; s/<A /<a /g"
        printf '</body>\n</html>\n'
    } >"$out/$name.html"
done
# What the pages show and link to.
for kind in images samples library-samples; do
    for file in $(cat "$out"/*.html | grep -oE "(src|href)=\"$kind/[^\"]*\"" | sed -E 's/.*="(.*)"/\1/' | sort -u); do
        mkdir -p "$out/$kind"
        if [ "$file" = samples/ ]; then cp "$root"/docs/samples/* "$out/samples"; else cp "$root/docs/$file" "$out/$file"; fi
    done
done
