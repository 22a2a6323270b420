#!/usr/bin/env bash
# make-msi.sh STAGE ARCH VERSION ROWS OUT: the .msi of a staged folder. ROWS are the registry values of the 64-bit control
# (RegistryRows). Needs wixl and msibuild.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
stage=$(readlink -f "$1") arch=$2 version=$3 rows=$4 out=$(readlink -m "$5")

# The same part of the same architecture keeps its identifier from version to version.
guid() { identifier "$arch $1"; }
identifier() { printf 'Dravik %s' "$1" | sha1sum | sed -E 's/^(.{8})(.{4}).(.{3}).(.{3})(.{12}).*/\1-\2-5\3-a\4-\5/' | tr a-f A-F; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
include() { { echo '<Include xmlns="http://schemas.microsoft.com/wix/2006/wi">'; cat; echo '</Include>'; } >"$work/$1.wxi"; }
# files FOLDER PREFIX: a File element for each file of a folder of the stage.
files() {
    local file key=' KeyPath="yes"'
    for file in "$stage/$1"/*; do
        [ -f "$file" ] || continue
        printf '<File Id="%s" Name="%s" Source="%s"%s/>\n' "$2.$(basename "$file" | tr -c 'A-Za-z0-9.\n' _)" "$(basename "$file")" "stage${1:+/$1}/$(basename "$file")" "$key"
        key=
    done
}

interface='Interface\\{5536B3D3-C530-11D3-B4D9-00609769E417}'
if [ "$arch" = x86 ]; then platform=win32; else platform=win64; fi
sed "s/\\\\0\\\\win64/\\\\0\\\\$platform/" "$rows" >"$work/rows"
# Names of programs and type libraries stand where 32- and 64-bit systems both look; but for the file of a library they
# are a component that both packages have, so that it goes with the last of them.
shared='Key="Software\\Classes\\(TypeLib|DravikDlgLib|Dravik\.)'
library="0\\\\$platform\""
grep -v "$interface" "$work/rows" | grep -E "$shared" | grep -v "$library" | sed '1s,/>, KeyPath="yes"/>,' | include SharedRows
grep -v "$interface" "$work/rows" | { grep -vE "$shared" || true; } >"$work/own"
grep -E "$shared" "$work/rows" | grep "$library" >>"$work/own"
include ControlRows <"$work/own"
grep "$interface" "$work/rows" | sed '1s,/>, KeyPath="yes"/>,' | include InterfaceRows
files contract Contract | include ContractFiles
files docs Doc | include DocumentFiles
files docs/images Image | include ImageFiles
files docs/samples Sample | include SampleFiles
files docs/library-samples LibrarySample | include LibrarySampleFiles
files library Library | include LibraryFiles
files library/dravik Header | include HeaderFiles

win64=no folder=ProgramFilesFolder verb=open.x86
if [ "$arch" = x64 ]; then win64=yes folder=ProgramFiles64Folder verb=open; fi
rm -f "$out"
# wixl looks for files from the folder of its source.
cp "$here/Dravik.wxs" "$work"
ln -s "$stage" "$work/stage"
(cd "$work" && wixl -a "$arch" -o "$out" -I "$work" -D Arch="$arch" -D Version="$version" -D NextVersion="${version%.*}.$((${version##*.} + 1))" -D Win64=$win64 -D Verb=$verb \
    -D ProgramFiles=$folder -D UpgradeCode="$(guid upgrade)" -D ControlGuid="$(guid control)" -D InterfaceGuid="$(guid interface)" \
    -D SharedGuid="$(identifier shared)" -D JobsGuid="$(identifier jobs)" -D ProgramsGuid="$(guid programs)" -D ContractGuid="$(guid contract)" -D DocumentsGuid="$(guid documents)" \
    -D ImagesGuid="$(guid images)" -D SamplesGuid="$(guid samples)" \
    -D LibraryGuid="$(guid library)" -D HeadersGuid="$(guid headers)" -D LibrarySamplesGuid="$(guid library-samples)" Dravik.wxs)
# wixl knows neither searches nor conditions of components. An interface that another library has registered stays what
# it is.
own='{A7230994-BF7A-423D-B658-CCF37FD7E6A8}'
search=2
if [ "$arch" = x64 ]; then search=18; fi
sql() { msibuild "$out" -q "$1"; }
sql "INSERT INTO \`RegLocator\` (\`Signature_\`, \`Root\`, \`Key\`, \`Type\`) VALUES ('FontToolLibrary', 2, 'Software\\Classes\\${interface//\\\\/\\}\\TypeLib', $search)"
sql "INSERT INTO \`AppSearch\` (\`Property\`, \`Signature_\`) VALUES ('FONTTOOLLIBRARY', 'FontToolLibrary')"
sql "INSERT INTO \`InstallExecuteSequence\` (\`Action\`, \`Sequence\`) VALUES ('AppSearch', 50)"
sql "UPDATE \`Component\` SET \`Condition\` = 'NOT FONTTOOLLIBRARY OR FONTTOOLLIBRARY=\"$own\"' WHERE \`Component\` = 'FontToolInterface'"
