#!/usr/bin/env bash
# Makes a release from the last commit in releases/VERSION: the packages for Debian 12 and Windows, the wheel, the sources, the
# licence, the notices of what others wrote, the changes, and SHA256SUMS over all. Installs what it needs. Usage: tools/release.sh [--check]
# The version is that of CMakeLists.txt alone. It refuses a tree with changes that are not committed, and a version without a heading
# in CHANGELOG.md or with changes under "Unreleased" left.
# With --check everything is made once more, and what differs is told.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
root=$PWD
case ${1:-} in
    '' | --check) ;;
    *) echo "usage: tools/release.sh [--check]" >&2; exit 2 ;;
esac
refuse() { echo "release.sh: $*" >&2; exit 1; }
[ -z "$(git status --porcelain)" ] || refuse "there are changes that are not committed"
version=$(sed -nE 's/^project\(Dravik VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
grep -qx "## $version" CHANGELOG.md || refuse "CHANGELOG.md has no heading \"## $version\""
[ -z "$(sed -n '/^## Unreleased/,/^## [0-9]/p' CHANGELOG.md | grep -v '^##' | tr -d '[:space:]')" ] ||
    refuse "changes stand under \"Unreleased\" in CHANGELOG.md"
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH

# make_release FOLDER: from the sources of the commit, unpacked where no other build has been.
make_release() {
    local work
    work=$(mktemp -d)
    git archive --prefix="dravik-$version/" HEAD | tar x -C "$work"
    (cd "$work/dravik-$version" && tools/package.sh deb x64 x86 >/dev/null)
    rm -rf "$1"
    mkdir -p "$1"
    cp "$work/dravik-$version"/packages/*.{deb,whl,zip,msi} "$1"
    cp LICENSE THIRD-PARTY-NOTICES.md CHANGELOG.md "$1"
    git archive --prefix="dravik-$version/" HEAD | gzip -9n >"$1/dravik-$version.tar.gz"
    rm -rf "$work"
    find "$1" -type f -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
    (cd "$1" && LC_ALL=C sha256sum -- * >"$root/releases/sums" && mv "$root/releases/sums" SHA256SUMS)
}

mkdir -p releases
make_release "releases/$version"
tests/packaging/deb-test.sh "releases/$version" >&2
cat "releases/$version/SHA256SUMS"
if [ "${1:-}" = --check ]; then
    make_release releases/again
    differing=()
    for file in $(diff "releases/$version/SHA256SUMS" releases/again/SHA256SUMS | awk '/^</ { print $3 }' || true); do
        # Each installer has a product code, a package code and a date of its own.
        if [[ "$file" == *.msi ]]; then
            for folder in "$version" again; do msiextract -C "releases/$folder-files" "releases/$folder/$file" >/dev/null; done
            diff -r "releases/$version-files" releases/again-files >/dev/null || differing+=("$file")
            rm -rf "releases/$version-files" releases/again-files
        else
            differing+=("$file")
        fi
    done
    [ ${#differing[@]} -eq 0 ] || refuse "made again in releases/again, these differ: ${differing[*]}"
    rm -rf releases/again
    echo "Made again, all is the same but for the codes and dates of the installers"
fi
