#!/bin/bash
# Counts the keys that it takes to teach a font in the real window, by the keyboard alone: from the start of
# the program to a font that reads the next part, and for each of many labels of a fixed format.
#
#     tools/count-keys.sh [IMAGES]
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
ninja -C build qt_tests >/dev/null
DRAVIK_LABELLED_IMAGES=${1:-200} build/tests/qt_tests --gtest_filter='LabellingKeys.*' 2>&1 | grep -E 'images|FAILED|Failure|Expected'
