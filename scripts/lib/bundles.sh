# shellcheck shell=bash
# The property lists that the about page reads its versions from.

# provideBundleInformation MADE: where the program is not installed and this user may write there, links stand at the
# fixed places until the script ends; MADE is the folder where the build left the lists. What is installed stays.
provideBundleInformation() {
    linkBundleInformation "$1/Vantrel/Info.plist" /Applications/Vantrel.app/Contents/Info.plist
    linkBundleInformation "$1/Pellvane/Info.plist" /System/Library/Extensions/Pellvane.kext/Contents/Info.plist
}

linkBundleInformation() {
    local made=$1 place=$2 folder made_folders=()
    # A link of ours that an earlier script could not take away is as good as none.
    if [[ ! -f $made || (-e $place && $(readlink "$place") != "$made") ]]; then
        return
    fi
    folder=$(dirname "$place")
    while [[ ! -d $folder ]]; do
        made_folders+=("$folder")
        folder=$(dirname "$folder")
    done
    if [[ ! -w $folder ]]; then
        return
    fi
    # The innermost goes first when the script ends; one that has something else in it by then stays.
    if ((${#made_folders[@]} > 0)); then
        atExit rmdir --ignore-fail-on-non-empty "${made_folders[@]}"
    fi
    mkdir -p "$(dirname "$place")"
    ln -sf "$made" "$place"
    atExit rm -f "$place"
}
