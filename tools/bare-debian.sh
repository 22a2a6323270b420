# A bare Debian 12 in a folder, for checks of what a stranger's machine lacks. Sourced; needs root.

# debian_mirror : the archive that this machine's apt uses.
debian_mirror() {
    local mirror
    mirror=$(awk '$1 == "URIs:" { print $2; exit } $1 == "deb" { for (i = 2; i <= NF; ++i) if ($i ~ /^http/) { print $i; exit } }' \
        /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list 2>/dev/null)
    printf '%s\n' "${mirror:-http://deb.debian.org/debian}"
}
# bare_debian FOLDER
bare_debian() {
    install_packages debootstrap || return 1
    debootstrap --variant=minbase --include=ca-certificates bookworm "$1" "$(debian_mirror)" >"$1.log" 2>&1 ||
        { tail -n 20 "$1.log" >&2; return 1; }
    rm -f "$1.log"
}
