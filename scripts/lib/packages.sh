# shellcheck shell=bash
# shellcheck disable=SC2034 # the lists are for the scripts that source this
# Every Debian package that building, running, testing and checking need, and how a missing one gets installed.

# GoogleTest and Google Benchmark are looked for whenever the tree is configured.
build_packages=(
    g++ cmake ninja-build
    qt6-base-dev qt6-svg-dev
    libtomlplusplus-dev libssl-dev
    libgtest-dev libgmock-dev libbenchmark-dev
)
# The window: the picture plug-ins, text, the session bus that carries accessibility, the software renderer.
window_packages=(libqt6svg6 fonts-dejavu-core dbus libgl1-mesa-dri)
# A display for machines without one, input for it and pictures of it.
virtual_display_packages=(xvfb xauth openbox xdotool x11-utils imagemagick)
# The desktop test reads the window as a screen reader does; the menu entry, metainfo and man pages are checked.
test_packages=(python3 python3-pyatspi at-spi2-core strace desktop-file-utils appstream mandoc)
# A native window where there is Wayland and no X server.
wayland_packages=(qt6-wayland)
lint_packages=(clang-14 clang-format-14 clang-tidy-14 shellcheck libxml2-utils python3)
# The Debian package and its checks; a fresh system to try it in.
package_packages=(cmake dpkg-dev gzip desktop-file-utils appstream lintian)
package_test_packages=(debootstrap util-linux)
# What the pictures of scripts/screenshots are made small with.
screenshot_packages=(optipng)

missingPackages() {
    local package
    for package in "$@"; do
        # An unknown package is a missing one: dpkg-query fails for it, and says nothing that helps.
        if [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            printf '%s\n' "$package"
        fi
    done
}

# ensurePackages PACKAGE …: installs what is missing; needs neither rights nor a network when nothing is.
ensurePackages() {
    command -v dpkg-query >/dev/null || {
        say "This is no Debian system: the packages cannot be checked. They are: $*" >&2
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
    "${apt[@]}" update >/dev/null || fail "the package lists could not be brought up to date"
    "${apt[@]}" install -y --no-install-recommends "${missing[@]}" >/dev/null \
        || fail "these packages could not be installed: ${missing[*]}"
}
