# shellcheck shell=bash
# The check of the man pages.

# checkManPages FOLDER: prints what mandoc finds in the pages there; false when there is something.
checkManPages() {
    local folder=$1 page finding found=0
    for page in "$folder"/*; do
        while IFS= read -r finding; do
            isReferenceWithin "$folder" "$finding" && continue
            say "$finding"
            found=1
        done < <(mandoc -T lint "$page")
    done
    return "$found"
}

# mandoc looks for the pages that a page refers to among those of this system; ours come beside them.
isReferenceWithin() {
    local folder=$1 finding=$2
    [[ $finding =~ "referenced manual not found: Xr "([^ ]+)" "([0-9]) ]] \
        && [[ -f $folder/${BASH_REMATCH[1]}.${BASH_REMATCH[2]} ]]
}
