# shellcheck shell=bash
# shellcheck disable=SC2034,SC2154 # shared with the sourcing script
# The kernel of the virtual machine: downloaded, unpacked and never installed.

kernel_folder=$vantrel_root/build/kernel

# provideKernel: sets kernel_tree to a directory with the kernel, its modules, the module of the tests and the
# first root of the machine. Later calls reuse it.
provideKernel() {
    mkdir -p "$kernel_folder"
    # Concurrent runs wait for the first one to unpack it.
    exec {kernel_lock}>"$kernel_folder/lock"
    flock "$kernel_lock"
    kernel_tree=$kernel_folder/tree
    if [[ ! -f $kernel_tree/version ]]; then
        say "Fetching a kernel …"
        rm -rf "$kernel_tree"
        local new
        new=$(mktemp -d "$kernel_folder/new-XXXXXX")
        atExit rm -rf "$new"
        unpackKernel "$new"
        mv "$new" "$kernel_tree"
    fi
    kernel_version=$(<"$kernel_tree/version")
    if isOutdated "$kernel_tree/controls.ko" "$vantrel_root"/tests/kernel/controls/*; then
        buildControls
    fi
    if isOutdated "$kernel_tree/initrd" "$vantrel_root/tests/kernel/machine/init" "$vantrel_root/scripts/lib/kernel.sh"; then
        makeInitrd
    fi
    exec {kernel_lock}>&-
}

# isOutdated FILE SOURCE …
isOutdated() {
    local file=$1 source
    shift
    for source in "$@"; do
        [[ $file -nt $source ]] || return 0
    done
    return 1
}

# firstDependency PACKAGE PREFIX: the first dependency of the package whose name starts with the prefix.
firstDependency() {
    apt-cache depends "$1" 2>/dev/null | sed -n "s/^ *Depends: \\($2.*\\)/\\1/p" | head -n 1
}

unpackKernel() {
    local new=$1 image headers package packages
    [[ $(dpkg --print-architecture) == amd64 ]] || fail "the kernel tests need an amd64 system"
    image=$(firstDependency linux-image-amd64 linux-image-)
    if [[ -z $image ]] && ((EUID == 0)); then
        apt-get -q update >/dev/null 2>&1 || true
        image=$(firstDependency linux-image-amd64 linux-image-)
    fi
    [[ -n $image ]] || fail "apt knows no kernel package; as root, run  apt-get update"
    headers=${image/image/headers}
    mapfile -t packages < <(printf '%s\n' busybox-static "$image" "$headers" \
        "$(firstDependency "$headers" linux-headers-)" "$(firstDependency "$headers" linux-kbuild-)")
    fetchPackages "$new" "${packages[@]}"
    for package in "$new"/*.deb; do
        # Drivers that the machine cannot have take most of the space.
        dpkg --fsys-tarfile "$package" | tar -C "$new" -x --exclude='./lib/modules/*/kernel/drivers/gpu' \
            --exclude='./lib/modules/*/kernel/drivers/media' --exclude='./lib/modules/*/kernel/sound' \
            --exclude='./usr/share/doc' || fail "unpacking $package failed"
    done
    rm -f "$new"/*.deb
    # The headers refer to the directory in which they would be installed.
    sed -i "s|^include /usr/src|include $kernel_folder/tree/usr/src|" "$new/usr/src/$headers/Makefile"
    depmod -b "$new" "${image#linux-image-}" || fail "depmod failed"
    printf '%s\n' "${image#linux-image-}" >"$new/version"
}

# Builds the module that controls simulated radios for the tests.
buildControls() {
    local work
    work=$(mktemp -d "${TMPDIR:-/tmp}/vantrel-module-XXXXXX")
    atExit rm -rf "$work"
    cp "$vantrel_root"/tests/kernel/controls/* "$work"
    inRoot "$kernel_folder/module.log" make -C "$kernel_tree/usr/src/linux-headers-$kernel_version" "M=$work" modules \
        || fail "building the kernel module failed"
    cp "$work/controls.ko" "$kernel_tree"
}

# The machine's first root: a shell and the modules that reach the root of this system.
makeInitrd() {
    local first=$kernel_tree/first module
    rm -rf "$first"
    mkdir -p "$first"/{bin,proc,dev,host,layer,new,results,modules}
    cp "$kernel_tree/bin/busybox" "$first/bin"
    cp "$vantrel_root/tests/kernel/machine/init" "$first"
    for module in virtio_pci 9p 9pnet_virtio overlay virtio_rng; do
        modprobe -d "$kernel_tree" -S "$kernel_version" --show-depends "$module" || fail "the kernel has no module $module"
    done | awk '/^insmod/ && !seen[$2]++ { print $2 }' >"$kernel_tree/modules"
    while read -r module; do
        cp "$module" "$first/modules"
        basename "$module"
    done <"$kernel_tree/modules" >"$first/modules/order"
    (cd "$first" && find . | "$kernel_tree/bin/busybox" cpio -o -H newc) 2>/dev/null >"$kernel_tree/initrd.new"
    mv "$kernel_tree/initrd.new" "$kernel_tree/initrd"
}
