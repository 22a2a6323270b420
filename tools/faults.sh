#!/usr/bin/env bash
# Lets every file operation of every story of tests/faults fail, in every way that it can, and ends the program at each; the tests
# take some of them. tools/faults.sh [STORY], for instance DeleteAFont. Ends with a line per story and the number of points.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
install_packages "${build_packages[@]}" "${test_packages[@]}"
cmake --preset dev >/dev/null
ninja -C build faults_tests >build/faults.log || { tail -n 60 build/faults.log >&2; exit 1; }
log=build/faults.log workers=$(nproc) failed=0
rm -f "$log".*
for shard in $(seq 0 $((workers - 1))); do
    DRAVIK_FAULTS_ALL=1 GTEST_TOTAL_SHARDS=$workers GTEST_SHARD_INDEX=$shard \
        build/tests/faults_tests --gtest_filter="*${1:-}*" >"$log.$shard" 2>&1 &
done
for job in $(jobs -p); do wait "$job" || failed=1; done
cat "$log".* | grep -v -e '^\[' -e '^Note' -e '^Running' || true
cat "$log".* | awk '/: [0-9]+ points$/ { points += $2 } END { print points + 0 " points" }'
exit $failed
