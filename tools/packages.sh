# Installs Debian packages that are missing. Sourced by ./run and ./test.

build_packages=(g++ cmake ninja-build libcli11-dev qt6-base-dev qt6-image-formats-plugins qt6-wayland libgl-dev pkg-config libaravis-dev libusb-1.0-0-dev fonts-dejavu-core)
windows_packages=(cmake ninja-build libcli11-dev googletest g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine-dev wine64
    xvfb xauth wixl msitools zip cmark-gfm osslsigncode openssl faketime)
deb_packages=(dpkg-dev librsvg2-bin cmark-gfm doxygen file python3-setuptools python3-wheel lintian appstream desktop-file-utils)
library_packages=(python3-numpy python3-pil python3-matplotlib)
test_packages=(aravis-tools at-spi2-core dbus-daemon python3-pyatspi clang-format clang-tidy git libgtest-dev libgmock-dev libpng-dev mandoc unzip "${library_packages[@]}" "${windows_packages[@]}")

# install_packages NAME... : does nothing, quickly, when all are there.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local sudo=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "Missing packages: ${missing[*]} (run as root, or install sudo)" >&2; return 1; }
        sudo=(sudo)
    fi
    echo "== Installing ${missing[*]}" >&2
    "${sudo[@]}" apt-get update -q -o DPkg::Lock::Timeout=300 >/dev/null || { echo "apt-get update failed" >&2; return 1; }
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends -o DPkg::Lock::Timeout=300 "${missing[@]}" \
        >/dev/null || { echo "Could not install ${missing[*]}" >&2; return 1; }
}
