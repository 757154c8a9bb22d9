# shellcheck shell=bash
# The check of the man pages.

# checkManPages: prints what mandoc finds in them; false when there is something.
checkManPages() {
    local page finding found=0
    for page in "$vantrel_root"/packaging/man/*; do
        while IFS= read -r finding; do
            isReferenceToOurs "$finding" && continue
            say "$finding"
            found=1
        done < <(mandoc -T lint "$page")
    done
    return "$found"
}

# mandoc looks for the pages that a page refers to among those of this system; ours come beside them.
isReferenceToOurs() {
    [[ $1 =~ "referenced manual not found: Xr "([^ ]+)" "([0-9]) ]] \
        && [[ -f $vantrel_root/packaging/man/${BASH_REMATCH[1]}.${BASH_REMATCH[2]} ]]
}
