#!/usr/bin/env bash
# installer-tables-test.sh MSI: what can be told of the 32-bit installer without a 32-bit system: it goes to the 32-bit
# folders and registry, and enters the 32-bit type libraries.
set -euo pipefail
msi=$1
fail() { echo "FAILED: $msi: $*" >&2; exit 1; }
rows() { msiinfo export "$msi" "$1" | tr -d '\r' | tail -n +4; }

msiinfo suminfo "$msi" | grep '^Template: Intel;' >/dev/null || fail "is not for 32-bit systems"
rows Directory | grep '^ProgramFilesFolder' >/dev/null || fail "does not go to the 32-bit programs"
wide=$(rows Component | awk -F'\t' 'int($4 / 256) % 2 { print $1 }')
[ -z "$wide" ] || fail "64-bit components: $wide"
[ "$(rows Registry | grep -c '\\1\.0\\0\\win32')" -eq 4 ] || fail "does not register four 32-bit type libraries"
if rows Registry | grep 'win64' >/dev/null; then fail "registers 64-bit type libraries"; fi
rows Registry | grep 'CLSID\\{5F056630-CDF2-479E-9EC4-3A9E7A82A96A}\\InprocServer32.*\[#DravikDlg.ocx\]' >/dev/null || fail "does not register the control"
echo "$(basename "$msi"): tables are right"
