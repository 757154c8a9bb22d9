# shellcheck shell=bash
# shellcheck disable=SC2154 # work and pictures are set by the sourcing script
# Screenshots of the program's windows in a virtual display. Expects work (a directory for temporary files), pictures (the
# directory of the results) and window (the number of the program's window).

findWindow() {
    window=$(xdotool search --onlyvisible --name '^Vantrel$' 2>/dev/null | head -n 1)
    [[ -n $window ]]
}

press() {
    xdotool key --clearmodifiers "$@"
}

# grab WINDOW FILE: takes a screenshot of the window.
grab() {
    import -silent -window "$1" "$2"
}

# isDrawn WINDOW: two screenshots in a row are equal, show more than an empty frame, and differ from the last result.
isDrawn() {
    grab "$1" "$work/first.ppm" && sleep 0.15 && grab "$1" "$work/second.ppm" || return 1
    cmp -s "$work/first.ppm" "$work/second.ppm" || return 1
    (($(identify -format %k "$work/second.ppm") > 16)) || return 1
    [[ ! -f $work/last.ppm ]] || ! cmp -s "$work/last.ppm" "$work/second.ppm"
}

# picture NAME [WINDOW]: waits until the window has changed and is drawn, and saves a screenshot.
picture() {
    waitUntil 15 isDrawn "${2:-$window}" || fail "the window does not show what $1 should"
    cp "$work/second.ppm" "$work/last.ppm"
    convert "$work/second.ppm" "$pictures/$1.png"
    say "  $1.png"
}

failWithPicture() {
    import -silent -window root "$pictures/failure.png"
    fail "$1: $pictures/failure.png"
}

# isOpen TITLE: sets sheet to the number of the sheet's window.
isOpen() {
    sheet=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1)
    [[ -n $sheet ]]
}

isGone() {
    ! xdotool search --onlyvisible --name "^$1\$" >/dev/null 2>&1
}

expectSheet() {
    waitUntil 15 isOpen "$1" || failWithPicture "the sheet \"$1\" did not open"
    xdotool windowactivate --sync "$sheet"
}

# leave TITLE KEY: closes the sheet with the key.
leave() {
    press "$2"
    waitUntil 15 isGone "$1" || failWithPicture "the sheet \"$1\" did not close"
    xdotool windowactivate --sync "$window"
}
