#!/usr/bin/env bash
# Checks the layout of every source file and runs clang-tidy over the sources: lint.sh [BUILD] [WINDOWS_BUILD]. Needs
# clang-format, clang-tidy and a configured and built folder (default: build); the code for Windows is looked at when its
# folder (default: build-windows) is there too.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=${1:-build} windows=${2:-build-windows}
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
tidy() { xargs -P2 -n4 clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option "$@" 2>/dev/null; }
git ls-files 'src/*.cpp' ':!src/windows' | tidy -p "$build"
if [ -f "$windows/compile_commands.json" ]; then
    # The commands are GCC's; clang has headers of its own for the processor's instructions.
    commands=$(mktemp -d)
    trap 'rm -rf "$commands"' EXIT
    sed 's/ -fno-ipa-ra//g' "$windows/compile_commands.json" >"$commands/compile_commands.json"
    library=$(x86_64-w64-mingw32-g++-posix -print-file-name=include)/c++
    git ls-files 'src/windows/*.cpp' | tidy -p "$commands" --extra-arg=--target=x86_64-w64-mingw32 \
        --extra-arg=-Wno-ignored-optimization-argument --extra-arg=-isystem"$library" \
        --extra-arg=-isystem"$library/x86_64-w64-mingw32" --extra-arg=-isystem/usr/share/mingw-w64/include
fi
echo "Clean"
