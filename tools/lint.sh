#!/usr/bin/env bash
# Checks the layout of every source file and runs clang-tidy over the portable code. Needs clang-format and clang-tidy
# and a configured build folder (default: build).
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=${1:-build}
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
git ls-files 'src/*.cpp' ':!src/desktop' | xargs -P2 -n4 clang-tidy -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option 2>/dev/null
echo "Clean"
