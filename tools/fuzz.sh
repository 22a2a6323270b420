#!/usr/bin/env bash
# Builds a fuzzer with clang and the address and undefined-behaviour sanitizers, installing what it needs, and runs it:
# tools/fuzz.sh font|journal|list|image SECONDS. It starts from fuzz/inputs and what earlier runs found (build-fuzz/corpus). An
# input that makes it fail is left in fuzz/inputs, where the tests run it from then on.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
case "${1:-}" in
    font | journal | list | image) ;;
    *) echo "usage: tools/fuzz.sh font|journal|list|image SECONDS" >&2; exit 2 ;;
esac
install_packages cmake ninja-build g++ clang-14 libclang-rt-14-dev
cmake --preset fuzz >/dev/null
ninja -C build-fuzz "fuzz_$1" >build-fuzz/build.log || { tail -n 60 build-fuzz/build.log >&2; exit 1; }
corpus=build-fuzz/corpus/$1 inputs=fuzz/inputs/$1
mkdir -p "$corpus" "$inputs"
# Longer than 30 seconds for one input counts as a hang; no input may need more than 1 GB.
exec "build-fuzz/fuzz/fuzz_$1" -max_total_time="${2:-600}" -timeout=30 -rss_limit_mb=1024 -max_len=20000 -print_final_stats=1 \
    -artifact_prefix="$inputs/" "$corpus" "$inputs"
