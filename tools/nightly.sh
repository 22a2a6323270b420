#!/usr/bin/env bash
# What takes too long for every change, installing what it needs: nightly.sh [STEP...], all of them by default.
#   clang    builds everything for Linux by the second compiler, warnings as errors, and runs its tests
#   tidy     every check of clang-tidy over every file
#   fuzz     each fuzzer for FUZZ_SECONDS (default 300)
#   mutants  faults planted in the engine, which its tests must find
#   faults   every fault of a file operation in every story of tests/faults
#   bare     ./run on a bare Debian 12 in a folder of its own, without a display; needs root
# Goes on after a step that failed, names those that did, and ends with 1 if any did.
set -uo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh

clang_step() {
    install_packages "${build_packages[@]}" "${test_packages[@]}" clang || return 1
    cmake --preset clang >/dev/null && ninja -C build-clang all && QT_QPA_PLATFORM=offscreen ctest --test-dir build-clang --output-on-failure -j2
}
tidy_step() {
    install_packages "${build_packages[@]}" "${test_packages[@]}" || return 1
    cmake --preset dev >/dev/null && ninja -C build all && cmake --preset windows >/dev/null && ninja -C build-windows all && tools/lint.sh all
}
fuzz_step() {
    local target
    for target in font list image; do tools/fuzz.sh $target "${FUZZ_SECONDS:-300}" || return 1; done
}
mutants_step() { tools/mutate.sh; }
faults_step() { tools/faults.sh; }
bare_step() {
    install_packages debootstrap || return 1
    local root
    root=$(mktemp -d) || return 1
    local mirror
    mirror=$(awk '$1 == "URIs:" { print $2; exit } $1 == "deb" { for (i = 2; i <= NF; ++i) if ($i ~ /^http/) { print $i; exit } }' \
        /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list 2>/dev/null)
    debootstrap --variant=minbase --include=ca-certificates bookworm "$root" "${mirror:-http://deb.debian.org/debian}" >/dev/null &&
        mkdir "$root/dravik" && git archive HEAD | tar x -C "$root/dravik" &&
        chroot "$root" env -u DISPLAY -u WAYLAND_DISPLAY /dravik/run &&
        [ -n "$(find "$root/dravik/screenshots" -name '*.png' -size +10k)" ]
    local code=$?
    rm -rf "$root"
    return $code
}

[ $# -gt 0 ] || set -- clang tidy fuzz mutants faults bare
failed=()
for step; do
    declare -F "${step}_step" >/dev/null || { echo "nightly.sh: there is no step $step" >&2; exit 2; }
    printf '\n== %s\n' "$step"
    begun=$(date +%s)
    "${step}_step" || failed+=("$step")
    printf '== %s took %d min\n' "$step" $((($(date +%s) - begun) / 60))
done
[ ${#failed[@]} -eq 0 ] || { printf '\n== FAILED: %s\n' "${failed[*]}" >&2; exit 1; }
printf '\n== All passed\n'
