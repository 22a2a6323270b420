#!/usr/bin/env bash
# What takes too long for every change, installing what it needs: nightly.sh [STEP...], all of them by default.
#   clang    builds everything for Linux by the second compiler, warnings as errors, and runs its tests
#   tidy     every check of clang-tidy over every file
#   fuzz     each fuzzer for FUZZ_SECONDS (default 300)
#   stories  10,000 stories of random acts and crashes on fonts
#   mutants  faults planted in the engine, which its tests must find
#   fit      fits the networks twice on a small part of their images, to the same digit
#   faults   every fault of a file operation in every story of tests/faults
#   bare     ./run on a bare Debian 12 in a folder of its own, without a display; needs root
#   installed  the Debian packages installed, used, upgraded and removed on a bare Debian 12; needs root
# Goes on after a step that failed, names those that did, and ends with 1 if any did.
set -uo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
. tools/bare-debian.sh

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
    for target in font journal list image; do tools/fuzz.sh $target "${FUZZ_SECONDS:-300}" || return 1; done
}
stories_step() {
    install_packages "${build_packages[@]}" "${test_packages[@]}" || return 1
    cmake --preset dev >/dev/null && ninja -C build engine_tests && DRAVIK_STORIES=10000 build/tests/engine_tests --gtest_filter='FontStories.*'
}
mutants_step() { tools/mutate.sh; }
fit_step() {
    local made
    made=$(mktemp -d) || return 1
    tools/fit.sh --small "$made/one" && tools/fit.sh --small "$made/two" && diff -r "$made/one" "$made/two"
    local code=$?
    rm -rf "$made"
    return $code
}
faults_step() { tools/faults.sh; }
bare_step() {
    local root
    root=$(mktemp -d) || return 1
    bare_debian "$root" &&
        mkdir "$root/dravik" && git archive HEAD | tar x -C "$root/dravik" &&
        chroot "$root" env -u DISPLAY -u WAYLAND_DISPLAY /dravik/run &&
        [ -n "$(find "$root/dravik/screenshots" -name '*.png' -size +10k)" ]
    local code=$?
    rm -rf "$root"
    return $code
}

installed_step() { tools/package.sh deb && tests/packaging/installed-test.sh packages; }

[ $# -gt 0 ] || set -- clang tidy fuzz stories mutants faults fit bare installed
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
