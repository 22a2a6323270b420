#!/usr/bin/env bash
# installed-test.sh FOLDER: the Debian packages of a folder on a bare Debian 12 of its own. An older version is installed, used by
# an ordinary user who has no sources, upgraded with fonts kept, programs are built with the library, the commands of the README
# are run, and all is removed without a trace. The older version is the new one under a lower number, with a file that the new one
# does not have. Needs root.
set -euo pipefail
root=$(readlink -f "$(dirname "$0")/../..")
folder=$(readlink -f "$1")
. "$root/tools/packages.sh"
. "$root/tools/bare-debian.sh"
fail() { echo "FAILED: $*" >&2; exit 1; }
step() { printf '== %s\n' "$*" >&2; }
bare=$(mktemp -d)
chmod 755 "$bare" # the root folder of an ordinary user too
finish() {
    umount "$bare/proc" 2>/dev/null || true
    rm -rf "$bare"
}
trap finish EXIT
in_bare() { chroot "$bare" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
quietly() { "$@" >"$bare.log" 2>&1 || { tail -n 40 "$bare.log" >&2; fail "$*"; }; rm -f "$bare.log"; }
install() { quietly in_bare apt-get install -y -q --no-install-recommends "$@"; }
# as_user COMMAND : by bash as an ordinary user in an empty home, without a display.
as_user() { in_bare runuser -u stranger -- env -i PATH=/usr/bin:/bin HOME=/home/stranger LANG=C.UTF-8 QT_QPA_PLATFORM=offscreen bash -Eeuc "trap 'echo \"\$BASH_COMMAND\" >&2' ERR; cd; $1"; }
# What is on the machine but for logs, caches and the packet manager's own books.
listing() {
    (cd "$bare" && find . -xdev \( -path ./proc -o -path ./var/log -o -path ./var/cache -o -path ./var/lib/apt -o -path ./var/lib/dpkg -o -path ./tmp \
        -o -path ./home -o -path ./packages -o -path ./etc/ld.so.cache \) -prune -o -print | sort)
}

step "A bare Debian 12"
bare_debian "$bare"
mount -t proc proc "$bare/proc"
cp /etc/apt/apt.conf.d/*proxy* "$bare/etc/apt/apt.conf.d/" 2>/dev/null || true
mkdir "$bare/packages" "$bare/packages/older"
cp "$folder"/*.deb "$folder"/*.whl "$bare/packages"
for deb in "$folder"/*.deb; do
    name=$(basename "$deb")
    dpkg-deb -R "$deb" "$bare/older"
    sed -i -E 's/^Version: .*/Version: 0.9.0/; s/\(= [0-9.]+\)/(= 0.9.0)/; s/(libdravik0 )\(>= [0-9.]+\)/\1(>= 0.9.0)/' "$bare/older/DEBIAN/control"
    package=${name%%_*}
    mkdir -p "$bare/older/usr/share/doc/$package"
    echo gone >"$bare/older/usr/share/doc/$package/only-in-0.9.0"
    dpkg-deb -b --root-owner-group "$bare/older" "$bare/packages/older/${package}_0.9.0.deb" >/dev/null
    rm -rf "$bare/older"
done
quietly in_bare apt-get update -q
in_bare useradd -m stranger
# What the packages need, and what belongs to a desktop, is there before, so that what stays behind is theirs.
needs=$(for deb in "$folder"/*.deb; do dpkg-deb -f "$deb" Depends; done | tr ',' '\n' | sed 's/^ *//' | grep -v '^libdravik' | sort -u | paste -sd,)
quietly in_bare apt-get satisfy -y -q --no-install-recommends "$needs, man-db, shared-mime-info, desktop-file-utils, hicolor-icon-theme, gtk-update-icon-cache, bash-completion, python3-pil"
listing >"$bare/tmp/before"

step "The older version, and a font that it teaches"
install /packages/older/dravik-trainer_0.9.0.deb /packages/older/libdravik0_0.9.0.deb /packages/older/python3-dravik_0.9.0.deb
parts=/usr/share/dravik-trainer/parts
as_user "dravik-trainer learn --font older --samples $parts/teach/lines.tsv" | grep -q '100.0 % right' || fail "the older version does not learn"
[ -e "$bare/usr/share/doc/dravik-trainer/only-in-0.9.0" ] || fail "the older version was not installed"

step "Upgrade by the command of the README"
debs=(dravik-trainer libdravik0 python3-dravik)
readme() { "$root/tests/docs/readme-blocks.sh" "$1" "$2"; }
install_command=$(readme Install sh | grep '^sudo apt install') || fail "the README does not say how to install"
for deb in "${debs[@]}"; do [[ "$install_command" == *"./${deb}_"* ]] || fail "the README does not install $deb"; done
quietly in_bare bash -euc "sudo() { env \"\$@\" -y -q --no-install-recommends; }; cd /packages; $install_command"
for deb in "${debs[@]}"; do
    [ ! -e "$bare/usr/share/doc/$deb/only-in-0.9.0" ] || fail "$deb leaves files of the older version"
done
as_user "dravik-trainer read --font older $parts/read/hack_000.png" | grep -q 'EXP2026/07/26' || fail "the font did not survive the upgrade"

step "The commands of the README, as an ordinary user"
as_user "$(readme 'Train a font' sh)" >"$bare/tmp/told" 2>&1 || { cat "$bare/tmp/told" >&2; fail "training by the README"; }
grep -q 'EXP2026/07/26' "$bare/tmp/told" || fail "what the README trains does not read: $(tail -n 3 "$bare/tmp/told")"
readme 'Read from Python' python >"$bare/home/stranger/read.py"
[ -s "$bare/home/stranger/read.py" ] || fail "the README does not read from Python"
as_user 'python3 read.py' | grep -q 'EXP2026/07/26' || fail "the README's Python does not read"

step "The program on a desktop"
code=0
as_user "timeout 5 dravik-trainer $parts/teach" || code=$?
[ $code = 124 ] || fail "the window does not stay open: status $code"
in_bare man -w dravik-trainer >/dev/null || fail "no man page"
grep -q 'application/x-dravik-font:\*\.nnd' "$bare/usr/share/mime/globs2" || fail "the font file has no type"
grep -q 'image/png=.*dravik-trainer\.desktop' "$bare/usr/share/applications/mimeinfo.cache" || fail "images do not offer the program"
grep -q 'application/x-dravik-font=.*dravik-trainer\.desktop' "$bare/usr/share/applications/mimeinfo.cache" || fail "a font file does not open"
jobs=.local/share/tamlux/Jobs
as_user "timeout 5 $(sed -n 's/^Exec=\([^ ]*\) %F$/\1/p' "$bare/usr/share/applications/dravik-trainer.desktop") $jobs/Fonts/older.nnd || [ \$? = 124 ]; grep -qx older $jobs/selected_font.txt" ||
    fail "a font file that is opened is not shown"
grep -q dravik-trainer "$bare/usr/share/icons/hicolor/icon-theme.cache" || fail "the icons are not in the cache"
[ -s "$bare/usr/share/doc/dravik-trainer/html/operator-guide.html" ] || fail "Help > Operator Guide has nothing to show"
as_user '. /usr/share/bash-completion/bash_completion; _completion_loader dravik-trainer || [ $? = 124 ]; complete -p dravik-trainer' >/dev/null || fail "no completion"

step "Programs built with the library, in C, C++ and by CMake"
install "/packages/$(basename "$folder"/libdravik-dev_*.deb)" gcc g++ cmake make pkgconf libpng-dev libaravis-dev libusb-1.0-0-dev python3-venv
as_user 'cp /usr/share/doc/libdravik-dev/examples/* .
    for sample in read-folder.c camera-loop.cpp; do eval "$(grep -oE "\b(cc|c\+\+) .*-o [a-z-]+" $sample)"; done
    font=.local/share/tamlux/Jobs/Fonts/older.nnd
    ./read-folder $font '$parts'/read | grep -q "EXP2026/07/26"
    # A text may have several lines; each image begins with its number.
    [ $(./camera-loop $font Fake_1 2 | grep -cP "^\d+\t") = 2 ]
    mkdir by-cmake && cd by-cmake && cp ../camera-loop.cpp .
    cat >CMakeLists.txt <<END
cmake_minimum_required(VERSION 3.16)
project(inspection LANGUAGES C CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(dravik 1.0 REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(ARAVIS REQUIRED IMPORTED_TARGET aravis-0.8)
add_executable(inspection camera-loop.cpp)
target_link_libraries(inspection PRIVATE dravik::dravik PkgConfig::ARAVIS)
END
    cmake -B build . >/dev/null && cmake --build build >/dev/null && ldd build/inspection | grep -q "libdravik.so.0 => /"' || fail "a program cannot be built"

step "The wheel, without the library's package"
quietly in_bare apt-get purge -y -q python3-dravik libdravik-dev libdravik0
as_user 'python3 -m venv --system-site-packages wheel && wheel/bin/pip install -q --no-index --disable-pip-version-check /packages/*.whl && wheel/bin/python3 read.py' |
    grep -q 'EXP2026/07/26' || fail "the wheel does not read"

step "Removed"
quietly in_bare apt-get purge -y -q dravik-trainer gcc g++ cmake make pkgconf libpng-dev libaravis-dev libusb-1.0-0-dev python3-venv
quietly in_bare apt-get autoremove --purge -y -q
listing >"$bare/tmp/after"
left=$(comm -13 "$bare/tmp/before" "$bare/tmp/after")
grep -i dravik <<<"$left" && fail "something stays behind"
named=$(grep -rlIia dravik "$bare"/usr/share/{applications,icons,mime} "$bare/etc" "$bare/var/lib/dpkg/info" 2>/dev/null || true)
[ -z "$named" ] || fail "named still in $named"
[ -s "$bare/home/stranger/.local/share/tamlux/Jobs/Fonts/older.nnd" ] || fail "the operator's fonts went with the program"
echo "Installed, used, upgraded and removed on a bare Debian 12"
