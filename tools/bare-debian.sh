# A bare Debian 12 in a folder, for checks of what a stranger's machine lacks. Sourced; needs root.

# debian_mirror : the archive from which this machine's apt has Debian 12.
debian_mirror() {
    apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Codename: bookworm' | sed -n 1p | grep . ||
        { echo "apt knows no archive of Debian 12 (after apt-get update)" >&2; return 1; }
}
# bare_debian FOLDER
bare_debian() {
    install_packages debootstrap || return 1
    local mirror
    mirror=$(debian_mirror) || return 1
    debootstrap --variant=minbase --include=ca-certificates bookworm "$1" "$mirror" >"$1.log" 2>&1 ||
        { tail -n 20 "$1.log" >&2; return 1; }
    rm -f "$1.log"
}
