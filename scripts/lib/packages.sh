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
# A virtual machine with simulated radios, access points and clients. make and gcc-12 build a module for its kernel.
kernel_test_packages=(
    qemu-system-x86 kmod util-linux make gcc-12 libelf1
    hostapd wpasupplicant iw wireless-regdb iproute2 python3
)
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

# ensurePackagesWithoutServices PACKAGE …: like ensurePackages, but does not start the services of the packages.
ensurePackagesWithoutServices() {
    local policy=/usr/sbin/policy-rc.d
    if [[ -e $policy || ! -w ${policy%/*} || -z $(missingPackages "$@") ]]; then
        ensurePackages "$@"
        return
    fi
    atExit rm -f "$policy"
    printf '#!/bin/sh\nexit 101\n' >"$policy"
    chmod 0755 "$policy"
    ensurePackages "$@"
    rm -f "$policy"
}

# fetchPackages DIRECTORY PACKAGE …: downloads packages without installing them. Needs no root rights if the package
# lists are up to date.
fetchPackages() {
    local directory=$1
    shift
    (cd "$directory" && apt-get -q -o APT::Sandbox::User=root download "$@") >"$directory/apt.log" 2>&1 && return
    if ((EUID == 0)); then
        apt-get -q update >>"$directory/apt.log" 2>&1 || true
        (cd "$directory" && apt-get -q -o APT::Sandbox::User=root download "$@") >>"$directory/apt.log" 2>&1 && return
    fi
    cat "$directory/apt.log" >&2
    fail "downloading these packages failed: $*"
}
