#!/usr/bin/env bash
# Checks the layout of every source file by clang-format and the sources by clang-tidy, installing what that needs:
#   lint.sh [changed|all|FILE...]
# clang-tidy looks at the sources that differ from the branch main (the default), at all, which takes up to half an
# hour of processor time, or at the FILEs. It needs the folder build, and for the sources of Windows build-windows, each built
# once for what it generates.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
case ${1:-changed} in
    -*) echo "usage: tools/lint.sh [changed|all|FILE...]" >&2; exit 2 ;;
esac
install_packages clang-format clang-tidy git

# Sources that were unpacked without their history have no base to differ from.
if git rev-parse -q --verify HEAD >/dev/null 2>&1; then
    mapfile -t sources < <(git ls-files '*.cpp' '*.h')
else
    mapfile -t sources < <(find bench cmake docs fuzz packaging src tests tools -name '*.cpp' -o -name '*.h')
fi
printf '%s\n' "${sources[@]}" | xargs clang-format --dry-run -Werror
echo "clang-format: ${#sources[@]} files are clean"

if [ "${1:-changed}" = all ]; then
    mapfile -t files < <(printf '%s\n' "${sources[@]}" | grep '^src/.*\.cpp$')
elif [ "${1:-changed}" != changed ]; then
    files=("$@")
elif ! git rev-parse -q --verify HEAD >/dev/null 2>&1; then
    files=()
    echo "clang-tidy: these sources have no history to tell what is new; tools/lint.sh all looks at all of them"
else
    base=$(git merge-base HEAD "$(git rev-parse -q --verify origin/main || git rev-parse -q --verify main || git rev-parse HEAD)")
    # On main itself, what the last commit changed.
    [ "$base" != "$(git rev-parse HEAD)" ] || base=$(git rev-parse -q --verify HEAD~1 || git rev-parse HEAD)
    mapfile -t files < <(git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp')
fi
options=(--quiet --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-ignored-optimization-argument)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# commands FOLDER: takes its commands, which are GCC's, without what clang does not know: precompiled headers are the plain ones.
commands() {
    sed -E "s| -include [^ ]*windows_precompiled\.dir/cmake_pch\.hxx| -include $PWD/src/windows/headers/Windows.h|g
        "'s/ -fno-ipa-ra| -fno-keep-inline-dllexport| -fpch-preprocess| -Winvalid-pch| -include [^ ]*cmake_pch\.hxx//g' "$1/compile_commands.json" >"$scratch/compile_commands.json"
}
# tidy OPTION... : clang-tidy over the files of standard input.
tidy() {
    xargs -r -P2 -n1 clang-tidy "${options[@]}" -p "$scratch" "$@" 2>"$scratch/errors" || { grep -v 'warnings generated' "$scratch/errors" >&2; return 1; }
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
    commands build
    printf '%s\n' "${linux[@]}" | tidy
fi
if [ ${#windows[@]} -gt 0 ]; then
    [ -f build-windows/compile_commands.json ] || { echo "Configure build-windows first: cmake --preset windows" >&2; exit 1; }
    # clang has headers of its own for the processor's instructions.
    commands build-windows
    library=$(x86_64-w64-mingw32-g++-posix -print-file-name=include)/c++
    printf '%s\n' "${windows[@]}" | tidy --extra-arg=--target=x86_64-w64-mingw32 --extra-arg=-isystem"$library" \
        --extra-arg=-isystem"$library/x86_64-w64-mingw32" --extra-arg=-isystem/usr/share/mingw-w64/include
fi
echo "clang-tidy: ${#files[@]} files are clean"
