# shellcheck shell=bash
# The property lists from which the about page reads versions.

# provideBundleInformation BUILT: links the property lists in BUILT, the build's packaging directory, to their fixed paths
# until the script ends. Does nothing if they are installed or the user may not write there.
provideBundleInformation() {
    linkBundleInformation "$1/Vantrel/Info.plist" /Applications/Vantrel.app/Contents/Info.plist
    linkBundleInformation "$1/Pellvane/Info.plist" /System/Library/Extensions/Pellvane.kext/Contents/Info.plist
}

linkBundleInformation() {
    local built=$1 path=$2 directory created=()
    # A link to the same file was left by a script that could not clean up.
    if [[ ! -f $built || (-e $path && $(readlink "$path") != "$built") ]]; then
        return
    fi
    directory=$(dirname "$path")
    while [[ ! -d $directory ]]; do
        created+=("$directory")
        directory=$(dirname "$directory")
    done
    if [[ ! -w $directory ]]; then
        return
    fi
    # Innermost first; directories that contain something else by then are kept.
    if ((${#created[@]} > 0)); then
        atExit rmdir --ignore-fail-on-non-empty "${created[@]}"
    fi
    mkdir -p "$(dirname "$path")"
    ln -sf "$built" "$path"
    atExit rm -f "$path"
}
