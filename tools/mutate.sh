#!/usr/bin/env bash
# Shows whether the tests notice faults. Each list in tools/mutants/ names faults for one or more rooms of src/; each fault
# is put into a copy of the tree alone, what it needs is built there, and the suites that could notice it are run.
#
#   tools/mutate.sh                 every list; goes on where the last run of the same tree was cut off
#   tools/mutate.sh screen base     only these lists
#   tools/mutate.sh --only NAME     only these faults (may be given several times; * and ? stand for any letters)
#   tools/mutate.sh --survivors     only those that survived, or did not build, the last time they were tried
#   tools/mutate.sh --check         only whether every fault still has its place in the code, in a second
#   tools/mutate.sh --jobs 2        so many copies at a time
#   tools/mutate.sh --again         tries again what has a result for this very tree
#
# A list is text, a paragraph for each fault:
#
#   [undo-unmarked] src/screen: screen trainer:-Outlier*
#   Undo does not mark the font changed, so that closing asks nothing.
#   - tool_.setFontChanged(true);
#     includes_.m_IncludedChars = withoutLast(
#   + includes_.m_IncludedChars = withoutLast(
#
# In brackets its name; then the file or the folder that has the place; after the colon the suites in the order in which to
# try them, each with a filter of GoogleTest if not all of it is worth its time. The text after "-" must occur exactly once
# (blanks and line ends do not count) and is replaced by the text after "+"; lines that begin with blanks go on with either,
# and several pairs may follow each other. A list that no longer fits the code is an error and told as such: fit it again,
# or drop the fault. "harmless:" in front of a reason says why nothing need notice the fault.
#
# What is written goes to build-mutants/ alone: copies with their build folders, logs, results. It ends with a table and
# with 1 if a fault survived without a reason, 2 if a list is wrong or the tests fail without any fault.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
install_packages python3
exec python3 tools/mutants/mutate.py "$@"
