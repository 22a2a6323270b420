#!/usr/bin/env bash
# Makes packages in packages/, installing what that needs: tools/package.sh [deb] [x64] [x86], the Windows ones without arguments.
#   deb       dravik-trainer, libdravik0, libdravik-dev and python3-dravik for Debian 12, and the wheel of the Python module
#   x64, x86  Dravik-VERSION-ARCH.zip and .msi. Whoever cannot install uses the zip: register.cmd in it registers the control.
# They are signed when DRAVIK_CERTIFICATE names a certificate (packaging/sign.sh).
# The same sources give the same files: their dates are SOURCE_DATE_EPOCH, or the date of the last commit.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
[ $# -gt 0 ] || set -- x64 x86
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CHANGELOG.md)}
version=$(sed -nE 's/^project\(Dravik VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
programs=(DravikDlg DravikTrainer DravikToolCheck libdravik)

# build ARCH TARGET... : in the folder of that architecture, quiet unless it fails.
build() {
    local arch=$1 preset folder
    shift
    case $arch in
        x64) preset=windows ;;
        x86) preset=windows-x86 ;;
    esac
    folder=build-$preset
    [ -f $folder/build.ninja ] || cmake --preset $preset >/dev/null
    ninja -C $folder "$@" >$folder/package.log || { tail -n 60 $folder/package.log >&2; return 1; }
}
# built ARCH NAME : where a built file is.
built() { find "$([ "$1" = x64 ] && echo build-windows/ || echo build-windows-x86/)" -name "$2" -not -path "*/wine/*" -not -path "*/packages/*" | head -n 1; }

# The Debian packages and the wheel.
package_deb() {
    echo "== Building (Debian)" >&2
    install_packages "${build_packages[@]}" "${deb_packages[@]}"
    { cmake --preset release && ninja -C build-release; } >packages/deb.log 2>&1 || { tail -n 60 packages/deb.log >&2; return 1; }
    echo "== Packing (Debian)" >&2
    rm -rf build-release/packed packages/*.deb packages/*.whl
    (cd build-release && cpack -G DEB -B packed) >packages/deb.log 2>&1 || { tail -n 60 packages/deb.log >&2; return 1; }
    mv build-release/packed/*.deb packages
    rm -rf build-release/packed packages/deb.log
    tools/wheel.sh build-release/src/library/libdravik.so.0 "$version" packages
}

mkdir -p packages
rest=()
for kind; do
    case $kind in
        deb) package_deb ;;
        x64 | x86) rest+=("$kind") ;;
        *) echo "usage: tools/package.sh [deb] [x64] [x86]" >&2; exit 2 ;;
    esac
done
set -- ${rest[@]+"${rest[@]}"}
if [ $# -eq 0 ]; then ls -l packages >&2; exit; fi

install_packages "${windows_packages[@]}"
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
    mkdir -p "$stage/contract" "$stage/docs" "$stage/library/dravik"
    strip=$([ "$arch" = x64 ] && echo x86_64 || echo i686)-w64-mingw32-strip
    for file in DravikDlg.ocx DravikTrainer.exe DravikToolCheck.exe; do
        $strip -o "$stage/$file" "$(built "$arch" $file)"
    done
    cp src/windows/idl/*.idl "$stage/contract"
    for library in MerrowLib TollanLib DravikLib DravikDlgLib; do
        cp "$(built "$arch" $library.tlb)" "$stage/contract"
        # Its first line names the folder in which it was made.
        sed '1s|from .*/|from |' "$(built "$arch" $library.h)" >"$stage/contract/$library.h"
    done
    $strip -o "$stage/library/dravik-0.dll" "$(built "$arch" dravik-0.dll)"
    cp "$(built "$arch" libdravik.dll.a)" "$stage/library"
    cp src/library/include/dravik/* "$stage/library/dravik"
    tools/guides.sh "$stage/docs" docs/operator-guide.md docs/host-integrators-guide.md docs/commands.md docs/font-file.md docs/font-tool-contract.md docs/library.md
    cp packaging/*.cmd THIRD-PARTY-NOTICES.md CHANGELOG.md "$stage"
    cp LICENSE "$stage/LICENSE.txt"
    packaging/sign.sh "$stage"/*.{ocx,exe} "$stage/library/dravik-0.dll"
    find "$stage" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
    rm -f "packages/$name.zip"
    (cd packages && find "$name" -print | LC_ALL=C sort | TZ=UTC zip -qX@ "$name.zip")
    packaging/make-msi.sh "$stage" "$arch" "$version" packages/rows "$stage.msi"
    packaging/sign.sh "$stage.msi"
    rm -rf "$stage"
done
rm packages/rows
ls -l packages >&2
