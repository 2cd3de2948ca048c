#!/bin/sh
# Checks the layer rules in every source file of a tree: a folder uses only lower folders, a group of the window only
# the toolkit, only src/platform depends on the system, and banned calls stay out. Prints "file:line: reason" for each
# violation and fails if there is one.
# Usage: layer-rules.sh TREE [FOLDER], where FOLDER contains the headers of Qt Widgets; without it only the most
#        common ones are known.
set -eu

tree=$1
widgets=
if [ -n "${2-}" ]; then
    widgets=$(ls "$2" | sed -n '/^Q[A-Za-z]*$/p' | tr '\n' ' ')
fi
: "${widgets:=QWidget QApplication QMainWindow QDialog QLabel QPushButton QTableView QMessageBox QFileDialog QMenu}"

cd "$tree"
files=$(find src tests demo bench fuzz -type f \( -name '*.h' -o -name '*.cpp' -o -name '*.mm' \) 2>/dev/null | sort)
[ -n "$files" ] || { echo "layer-rules.sh: no source file below $tree" >&2; exit 1; }

# File names of the project contain no spaces, so the list may be split at whitespace. shellcheck disable=SC2086
exec awk -v widgets="$widgets" '
function allow(folder, list,    names, i) {
    split(list, names, " ")
    for (i in names) allowed[folder, names[i]] = 1
    known[folder] = 1
}
function breach(reason) {
    printf "%s:%d: %s\n    %s\n", FILENAME, FNR, reason, $0
    failed = 1
}
# The line without its comment. Quoted text may contain two slashes.
function code_of(line,    i, c, quoted) {
    if (line ~ /^[ \t]*(\*|\/\*)/) return ""
    if (index(line, "//") == 0) return line
    for (i = 1; i <= length(line); ++i) {
        c = substr(line, i, 1)
        if (quoted && c == "\\") ++i
        else if (c == "\"") quoted = !quoted
        else if (!quoted && substr(line, i, 2) == "//") return substr(line, 1, i - 1)
    }
    return line
}
BEGIN {
    base = "platform model"
    records = base " discovery catalogue profiles records"
    allow("platform", "platform")
    allow("model", base)
    allow("discovery", base " discovery")
    allow("catalogue", base " catalogue")
    allow("profiles", base " profiles")
    allow("records", base " records")
    allow("operations", records " operations")
    allow("uad", records " operations uad")
    allow("shell", records " operations uad shell")
    allow("cli", base " cli")
    allow("helper", base " helper")

    count = split("toolkit table bulk sidebar sheets onboarding progress updates app", names, " ")
    for (i = 1; i <= count; ++i) group[names[i]] = 1

    # External headers reserved for certain folders.
    only["sqlite3.h"] = " catalogue "
    only["expat.h"] = " platform "
    only["CLI/"] = " cli "
    count = split(widgets, names, " ")
    for (i = 1; i <= count; ++i) widget[names[i]] = 1
}
FNR == 1 {
    split(FILENAME, path, "/")
    in_source = path[1] == "src"
    folder = path[2]
    back_end = FILENAME ~ /^src\/platform\/(apple|freedesktop|posix)\//
    header = FILENAME ~ /\.h$/
    if (in_source && !(folder in known)) breach("src/" folder " is no folder of the layer table")
    own = folder == "shell" ? path[3] : ""
    if (in_source && own && !(own in group)) breach("src/shell has no group " own)
    if (in_source && FILENAME ~ /\.mm$/ && FILENAME !~ /^src\/platform\/apple\//) breach("Objective-C++ belongs to src/platform/apple")
}
{ code = code_of($0) }
in_source && code ~ /^[ \t]*#[ \t]*include[ \t]*"/ {
    split(code, parts, "\"")
    name = parts[2]
    split(name, used, "/")
    # main() passes the function that opens the window to the command line.
    free = FILENAME == "src/cli/main.cpp"
    if (name ~ /\.moc$/) next
    else if (!(used[1] in known)) breach("includes are written \"folder/File.h\"")
    else if (!free && !((folder, used[1]) in allowed)) breach(folder " may not use " used[1])
    else if (folder == "shell" && used[1] == "shell") {
        if (!(used[2] in group)) breach("src/shell has no group " used[2])
        else if (own != "app" && used[2] != own && used[2] != "toolkit") breach("shell/" own " may not use shell/" used[2])
    }
    else if (name ~ /^platform\/(apple|freedesktop|posix)\// && !back_end) breach("only a back end includes a back end")
}
in_source && code ~ /^[ \t]*#[ \t]*include[ \t]*</ {
    name = code
    sub(/^[^<]*</, "", name)
    sub(/>.*/, "", name)
    if (folder != "shell" && folder != "helper" && (name in widget || name ~ /^QtWidgets/))
        if (FILENAME != "src/cli/main.cpp") breach("Qt Widgets belongs to shell and helper")
    for (outside in only)
        if (index(name, outside) == 1 && index(only[outside], " " folder " ") == 0) breach("<" outside "> belongs to" only[outside])
    if (header && name ~ /^(Foundation|AppKit|Cocoa|CoreFoundation|ServiceManagement|objc)\//)
        breach("no header includes a header of the Apple systems")
}
in_source && header && code ~ /^[ \t]*#[ \t]*import/ { breach("no header includes a header of the Apple systems") }
in_source && folder != "platform" {
    if (code ~ /^[ \t]*#[ \t]*(if|ifdef|ifndef|elif).*(Q_OS_|__APPLE__|__MACH__|__linux|__unix|__FreeBSD__|_WIN32|TARGET_OS_)/)
        breach("only src/platform asks which system this is")
    if (code ~ /(^|[^A-Za-z0-9_.%}~])\/(Library|Applications)([^A-Za-z0-9_]|$)/ && FILENAME != "src/model/PluginLocations.cpp")
        breach("paths of the system come from SystemLayout")
    if (code ~ /QDir::(home|temp)|QStandardPaths|NSHomeDirectory|getpwuid|getenv\(.*"(HOME|TMPDIR|XDG_)/)
        breach("folders of the user come from SystemLayout")
}
code ~ /QCoro::waitFor/ { breach("QCoro::waitFor never returns when the task throws; tests use runTask()") }
path[1] == "tests" && code ~ /(^|[^A-Za-z0-9_])(QVERIFY|QCOMPARE|QTRY_)/ {
    breach("outside the runner of Qt a failed one passes; use EXPECT_...")
}
END { exit failed }
' $files
