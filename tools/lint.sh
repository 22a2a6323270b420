#!/usr/bin/env bash
# Checks the layout of every source file by clang-format and the sources by clang-tidy, installing what that needs:
#   lint.sh [quick|all] [FILE...]
# quick (the default): the checks that need no analysis of paths, over the files that differ from the branch main, or the FILEs.
# all: every check over every file, or over the FILEs; that takes the better part of an hour of processor time. Needs the
# configured folder build, and for the sources of Windows build-windows, each built once for what it generates.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
kind=${1:-quick}
case $kind in
    quick | all) ;;
    *) echo "usage: tools/lint.sh [quick|all] [FILE...]" >&2; exit 2 ;;
esac
shift || true
install_packages clang-format clang-tidy

git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
echo "clang-format: $(git ls-files '*.cpp' '*.h' | wc -l) files are clean"

if [ $# -gt 0 ]; then
    files=("$@")
elif [ "$kind" = all ]; then
    mapfile -t files < <(git ls-files 'src/*.cpp')
else
    base=$(git merge-base HEAD "$(git rev-parse -q --verify origin/main || git rev-parse -q --verify main || git rev-parse HEAD)")
    # On main itself, what the last commit changed.
    [ "$base" != "$(git rev-parse HEAD)" ] || base=$(git rev-parse -q --verify HEAD~1 || git rev-parse HEAD)
    mapfile -t files < <(git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp')
fi
options=(--quiet --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-ignored-optimization-argument)
if [ "$kind" = quick ]; then options+=(--checks=-clang-analyzer-*); fi
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# tidy COMMANDS OPTION... : clang-tidy over the files of standard input.
tidy() {
    local commands=$1
    shift
    xargs -r -P2 -n1 clang-tidy "${options[@]}" -p "$commands" "$@" 2>"$scratch/errors" || { grep -v 'warnings generated' "$scratch/errors" >&2; return 1; }
}
linux=() windows=()
for file in ${files[@]+"${files[@]}"}; do
    case $file in
        src/windows/* | *_win.cpp) windows+=("$file") ;;
        *) linux+=("$file") ;;
    esac
done
if [ ${#linux[@]} -gt 0 ]; then
    [ -f build/compile_commands.json ] || { echo "Configure build first: cmake --preset dev" >&2; exit 1; }
    printf '%s\n' "${linux[@]}" | tidy build
fi
if [ ${#windows[@]} -gt 0 ]; then
    [ -f build-windows/compile_commands.json ] || { echo "Configure build-windows first: cmake --preset windows" >&2; exit 1; }
    # The commands are GCC's; clang has headers of its own for the processor's instructions.
    sed 's/ -fno-ipa-ra//g' build-windows/compile_commands.json >"$scratch/compile_commands.json"
    library=$(x86_64-w64-mingw32-g++-posix -print-file-name=include)/c++
    printf '%s\n' "${windows[@]}" | tidy "$scratch" --extra-arg=--target=x86_64-w64-mingw32 --extra-arg=-isystem"$library" \
        --extra-arg=-isystem"$library/x86_64-w64-mingw32" --extra-arg=-isystem/usr/share/mingw-w64/include
fi
echo "clang-tidy ($kind): ${#files[@]} files are clean"
