#!/usr/bin/env bash
# Builds the measuring programs, installing what they need, and runs the one named: `evaluate` (the six sample fonts:
# images included and refused, characters read right), `engine` or `screen` (Google Benchmark). Further arguments go to it.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
install_packages "${build_packages[@]}" libbenchmark-dev libpng-dev
cmake -S . -B build-bench -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DDRAVIK_TESTS=OFF -DDRAVIK_BENCH=ON >/dev/null
case "${1:-}" in
    evaluate) program=dravik_evaluate ;;
    engine) program=engine_bench ;;
    screen) program=dravik_screen_bench ;;
    *) echo "usage: tools/bench.sh evaluate|engine|screen [ARGUMENT...]" >&2; exit 2 ;;
esac
ninja -C build-bench "$program" >build-bench/build.log || { tail -n 60 build-bench/build.log >&2; exit 1; }
shift
QT_QPA_PLATFORM=offscreen exec "build-bench/bench/$program" "$@"
