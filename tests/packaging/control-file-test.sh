#!/usr/bin/env bash
# control-file-test.sh FILE PLATFORM LISTER PREFIX: what can be told of a control's file without running it: its exports are
# undecorated, it is no console program, it stays under 2.5 MB, and its type libraries can be read. PLATFORM is win64 or
# win32; LISTER is ListTypeLibraries.exe, which runs in the Wine prefix.
set -euo pipefail
root=$(dirname "$(readlink -f "$0")")/../..
file=$1 platform=$2 lister=$3
export WINEPREFIX=$(readlink -f "$4") DISPLAY=''
fail() { echo "FAILED: $file: $*" >&2; exit 1; }

headers=$(x86_64-w64-mingw32-objdump -p "$file")
exports=$(sed -nE '/\[Ordinal\/Name Pointer\] Table/,/^$/ s/^\s*\[ *[0-9]+\]( \+base\[ *[0-9]+\] +[0-9a-f]+)? +(\S+)$/\2/p' <<<"$headers" | sort | tr '\n' ' ')
[ "$exports" = 'DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer ' ] || fail "exports: $exports"
grep -qE '^Subsystem.*Windows GUI' <<<"$headers" || fail "is marked as a console program"
size=$(stat -c %s "$file")
[ "$size" -lt 2621440 ] || fail "has $size bytes, 2.5 MB or more"

said=$("$root/tools/wine.sh" "$lister" "$file" | tr -d '\r') || fail "type libraries: $said"
for line in "DravikDlgLib $platform \"Tamberlux Controls: Dravik Custom Property Pages\"" '  DeleteSamplesByDistance 60030006' \
    '  HighlightIncluded 60030009' '  FontTrainDate 6003000C' "DravikLib $platform \"Dravik OCR Tool Library\"" ' IFontTool' \
    "TollanLib $platform \"Tollan Step Library\"" ' StepEditor' "MerrowLib $platform \"Merrow Core Library\""; do
    grep -qxF "$line" <<<"$said" || fail "the type libraries lack: $line"
done
for library in stdole2.tlb MerrowLib.tlb; do
    grep -qF "$library" "$file" || fail "its type library does not import $library"
done
# Job systems call the font tool by the places of its operations.
operations=$(sed -nE '/^ IFontTool$/,/^ [A-Z]/s/^  (\S+) .*/\1/p' <<<"$said" | tr '\n' ' ')
wanted='LoadFont CreateFont DeleteFont RenameFont DuplicateFont SetCharacterSet IncludeSamples CommitNewSamples SetTrainTimeout
 Reserved1 StartTraining SaveFont RevertFont GetFontList GetCharacterSet GetTrainTimeout Reserved2 IsTrainingDone GetRmsError
 IsTrainingAborted GetTrainCycles StopTraining Reserved3 GetUncommittedSamples DeleteSample GetSampleData '
[ "$operations" = "${wanted//$'\n'/}" ] || fail "the font tool's operations are $operations"
echo "$(basename "$file") ($platform): exports, size ($size bytes) and type libraries are right"
