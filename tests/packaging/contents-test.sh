#!/usr/bin/env bash
# contents-test.sh FOLDER MSI: the licence, the notices of what others wrote and the changes are in the unpacked zip and in the
# installer, the version that both are named after is the one in the files, and no file says where or when it was made.
set -euo pipefail
root=$(dirname "$(readlink -f "$0")")/../..
folder=$1 msi=$2
fail() { echo "FAILED: $*" >&2; exit 1; }
listed=$(msiinfo export "$msi" File | tr -d '\r' | cut -f3 | sed 's/.*|//')
for file in LICENSE.txt THIRD-PARTY-NOTICES.md CHANGELOG.md; do
    [ -s "$folder/$file" ] || fail "$folder has no $file"
    grep -qxF "$file" <<<"$listed" || fail "$msi has no $file"
done
version=$(basename "$folder" | sed -E 's/^Dravik-(.*)-x(64|86)$/\1/')
[ "$(msiinfo export "$msi" Property | tr -d '\r' | sed -n 's/^ProductVersion\t//p')" = "$version" ] || fail "$msi is not of version $version"
for file in DravikDlg.ocx DravikTrainer.exe library/dravik-0.dll; do
    tr -d '\0' <"$folder/$file" | grep -a "FileVersion$version" >/dev/null || fail "$file is not of version $version"
    tr -d '\0' <"$folder/$file" | grep -a "LegalCopyrightCopyright (c) " >/dev/null || fail "$file names no copyright"
done
! grep -rlaF "$(readlink -f "$root")" "$folder" || fail "a file names the folder of the sources"
for file in "$folder"/contract/*.tlb "$folder/DravikDlg.ocx"; do
    ! grep -aoE 'WIDL version [0-9.]+ at .{20}[0-9]{4}' "$file" | grep -v ' 1 00:00:00 2026$' || fail "$file tells when it was made"
done
head -n 3 "$folder/LICENSE.txt" | grep -q "$(sed -n 3p "$root/LICENSE")" || fail "LICENSE.txt is not the licence"
echo "$(basename "$folder"): licence, notices, changes and version are right"
