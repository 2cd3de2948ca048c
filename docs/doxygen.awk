# What a code host does with a page by itself and doxygen does not: headings can be linked by their words, and links to
# what is no page, such as folders and scripts, do no harm. Used by docs/Doxyfile; the number of lines stays.

function anchor(title) {
    title = tolower(title)
    gsub(/[^a-z0-9 -]/, "", title)
    gsub(/ /, "-", title)
    page = FILENAME
    gsub(/^.*\/|\.md$/, "", page)
    return tolower(page) "-" title
}

/^```/ { isCode = !isCode }
isCode { print; next }

/^##+ / {
    title = $0
    sub(/^#+ /, "", title)
    id = anchor(title)
    print used[id]++ ? $0 : $0 " {#" id "}" # a changelog has the same headings in each release
    next
}
{
    rest = $0
    line = ""
    while (match(rest, /\[[^][]*\]\([^()]*\)/)) {
        link = substr(rest, RSTART, RLENGTH)
        before = substr(rest, 1, RSTART - 1)
        rest = substr(rest, RSTART + RLENGTH)
        target = link
        sub(/^.*\]\(/, "", target)
        sub(/\)$/, "", target)
        if (target ~ /^#/)
            sub(/\(#.*$/, "(#" anchor(substr(target, 2)) ")", link)
        else if (target !~ /^https?:/ && target !~ /\.(md|png|svg)$/) {
            sub(/^\[/, "", link)
            sub(/\]\(.*$/, "", link)
        }
        line = line before link
    }
    print line rest
}
