# shellcheck shell=bash
# shellcheck disable=SC2034 # used by the sourcing scripts
# The Debian packages needed to build, run, test and check, and the installation of missing ones.

# Configuring the tree needs GoogleTest and Google Benchmark too.
build_packages=(
    g++ cmake ninja-build
    qt6-base-dev qt6-svg-dev libxcb1-dev
    libtomlplusplus-dev libssl-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    pkg-config libnl-3-dev libnl-genl-3-dev
)
# The window: image plug-ins, fonts, the session bus for accessibility, the software renderer.
window_packages=(libqt6svg6 fonts-dejavu-core dbus libgl1-mesa-dri)
# A virtual display, its input and screenshots.
virtual_display_packages=(xvfb xauth openbox xdotool x11-utils imagemagick)
# The desktop tests use the accessibility bus; the packaging tests check the menu entry, metainfo and man pages.
test_packages=(python3 python3-pyatspi at-spi2-core strace desktop-file-utils appstream mandoc)
# A native window on Wayland without an X server.
wayland_packages=(qt6-wayland)
lint_packages=(clang-14 clang-format-14 clang-tidy-14 shellcheck libxml2-utils python3)
# The Debian package, its checks, and a fresh system to install it in.
package_packages=(cmake dpkg-dev gzip desktop-file-utils appstream lintian)
package_test_packages=(debootstrap util-linux)
# Compresses the images of scripts/screenshots.
screenshot_packages=(optipng)

missingPackages() {
    local package
    for package in "$@"; do
        # dpkg-query fails for an unknown package, which counts as missing.
        if [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            printf '%s\n' "$package"
        fi
    done
}

# ensurePackages PACKAGE …: installs missing packages; needs no root rights or network if none is missing.
ensurePackages() {
    command -v dpkg-query >/dev/null || {
        say "Not a Debian system; make sure that these packages are installed: $*" >&2
        return
    }
    local missing
    mapfile -t missing < <(missingPackages "$@")
    if ((${#missing[@]} == 0)); then
        return
    fi
    local asRoot=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "these packages are missing: ${missing[*]}
Installing them needs root or sudo: as root, run  apt-get install ${missing[*]}"
        asRoot=(sudo)
    fi
    say "Installing ${missing[*]} …"
    local apt=("${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o Dpkg::Use-Pty=0)
    "${apt[@]}" update >/dev/null || fail "updating the package lists failed"
    "${apt[@]}" install -y --no-install-recommends "${missing[@]}" >/dev/null \
        || fail "installing these packages failed: ${missing[*]}"
}
