#!/usr/bin/env bash
# A header that changes while it is being compiled is compiled again by the next build: changed-header-test.sh COMPILE (cmake/compile.sh).
set -euo pipefail
compile=$(readlink -f "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
# A compiler that has read its header long before it ends.
printf '#!/bin/sh\ntext=$(cat header)\ntouch reading\nwhile [ ! -e go-on ]; do sleep 0.05; done\necho "$text" >"$2"\n' >compiler
chmod +x compiler
printf 'rule compile\n  command = %s ./compiler -o $out\nbuild object: compile | header\n' "$compile" >build.ninja
echo old >header
ninja >log &
for _ in $(seq 200); do [ -e reading ] && break; sleep 0.05; done
echo new >header
touch go-on
wait $!
ninja >>log
[ "$(cat object)" = new ] || { echo "What was compiled with the old header stays"; cat log; exit 1; }
[ "$(ninja | tail -n 1)" = "ninja: no work to do." ] || { echo "Built again although nothing changed"; exit 1; }
