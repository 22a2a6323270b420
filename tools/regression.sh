#!/usr/bin/env bash
# Writes tests/engine/regression/expected.tsv anew: how many characters are found in each labelled image of the tests, and how many
# are read wrong without a font. The tests fail when an image comes out worse or better than the table says; look at its diff
# before it is committed.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
cmake --preset dev >/dev/null
ninja -C build engine_tests
printf 'image\tcharacters\tfound\tread wrong without a font\n' >tests/engine/regression/expected.tsv
DRAVIK_REWRITE_EXPECTED=1 build/tests/engine_tests --gtest_filter='*Regression*' --gtest_brief=1
git diff --stat -- tests/engine/regression/expected.tsv
