#!/usr/bin/env bash
# Makes the Windows packages, installing what that needs: packages/Dravik-VERSION-ARCH.zip and .msi. Usage: tools/package.sh
# [x64] [x86]; both without arguments. Signed when DRAVIK_CERTIFICATE names a certificate (packaging/sign.sh). Whoever cannot install uses the zip: register.cmd in it registers the control.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
install_packages "${windows_packages[@]}"
[ $# -gt 0 ] || set -- x64 x86
version=$(sed -nE 's/^project\(Dravik VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
programs=(DravikDlg DravikTrainer DravikToolCheck)

# build ARCH TARGET... : in the folder of that architecture, quiet unless it fails.
build() {
    local arch=$1 preset folder
    shift
    case $arch in
        x64) preset=windows ;;
        x86) preset=windows-x86 ;;
        *) echo "usage: tools/package.sh [x64] [x86]" >&2; return 2 ;;
    esac
    folder=build-$preset
    [ -f $folder/build.ninja ] || cmake --preset $preset >/dev/null
    ninja -C $folder "$@" >$folder/package.log || { tail -n 60 $folder/package.log >&2; return 1; }
}
# built ARCH NAME : where a built file is.
built() { find "$([ "$1" = x64 ] && echo build-windows/ || echo build-windows-x86/)" -name "$2" -not -path "*/wine/*" -not -path "*/packages/*" | head -n 1; }

mkdir -p packages
# What the control enters in the registry is the same for both; it is asked where it can run.
echo "== Building (x64)" >&2
build x64 "${programs[@]}" RegistryRows
tools/wine-prefix.sh build-windows/wine
DISPLAY='' tools/wine.sh "$(built x64 RegistryRows.exe)" "$(built x64 DravikDlg.ocx)" DravikDlg.ocx | tr -d '\r' >packages/rows
[ -s packages/rows ] || { echo "The control does not tell what it registers" >&2; exit 1; }

for arch; do
    echo "== Packing ($arch)" >&2
    build "$arch" "${programs[@]}"
    name=Dravik-$version-$arch
    stage=packages/$name
    rm -rf "$stage" "$stage.zip" "$stage.msi"
    mkdir -p "$stage/contract" "$stage/docs/samples" "$stage/docs/images"
    strip=$([ "$arch" = x64 ] && echo x86_64 || echo i686)-w64-mingw32-strip
    for file in DravikDlg.ocx DravikTrainer.exe DravikToolCheck.exe; do
        $strip -o "$stage/$file" "$(built "$arch" $file)"
    done
    packaging/sign.sh "$stage"/*.{ocx,exe}
    cp src/windows/idl/*.idl "$stage/contract"
    for library in MerrowLib TollanLib DravikLib DravikDlgLib; do
        cp "$(built "$arch" $library.tlb)" "$(built "$arch" $library.h)" "$stage/contract"
    done
    cp docs/host-integrators-guide.md docs/operator-guide.md docs/font-file.md docs/font-tool-contract.md docs/commands.md "$stage/docs"
    cp docs/samples/* "$stage/docs/samples"
    cp packaging/*.cmd THIRD-PARTY-NOTICES.md CHANGELOG.md "$stage"
    cp LICENSE "$stage/LICENSE.txt"
    find docs/images -maxdepth 1 -name '*.png' -exec cp {} "$stage/docs/images" \;
    (cd packages && zip -qr "$name.zip" "$name")
    packaging/make-msi.sh "$stage" "$arch" "$version" packages/rows "$stage.msi"
    packaging/sign.sh "$stage.msi"
    rm -rf "$stage"
done
rm packages/rows
ls -l packages >&2
