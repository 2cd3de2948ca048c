#!/bin/sh
# Checks that layer-rules.sh detects violations: writes one line at a time into a temporary tree and checks the output.
# Each row: expected reason (- for none), file, line. Usage: breaches.sh FOLDER-OF-QT-WIDGETS-HEADERS.
set -eu

rules=$(cd "$(dirname "$0")" && pwd)/layer-rules.sh
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
rows=0
failed=0
while IFS='|' read -r wanted file line; do
    [ -n "$wanted" ] || continue
    rows=$((rows + 1))
    rm -rf "${tree:?}/src" "${tree:?}/tests"
    mkdir -p "$tree/$(dirname "$file")"
    printf '#pragma once\n%s\n' "$line" >"$tree/$file"
    if answer=$(sh "$rules" "$tree" "$1" 2>&1); then status=0; else status=$?; fi
    case "$wanted:$status:$answer" in
        -:0:) ;;
        -:*) failed=1; echo "should pass: $file: $line"; echo "$answer" ;;
        *:1:"$file:"[12]": $wanted"*) ;;
        *) failed=1; echo "should fail with '$wanted': $file: $line"; echo "status $status: $answer" ;;
    esac
done <<'ROWS'
-|src/shell/app/A.h|#include "operations/B.h"
-|src/platform/apple/A.h|#include "platform/posix/B.h"
-|src/cli/main.cpp|#include "shell/B.h"
-|src/shell/app/A.cpp|#include "A.moc"
-|src/shell/app/A.h|#include "shell/table/B.h"
-|src/shell/table/A.cpp|#include "shell/toolkit/B.h"
-|src/shell/table/A.cpp|#include "shell/table/A.h"
-|src/shell/sheets/A.cpp|#include "uad/B.h"
shell/sidebar may not use shell/table|src/shell/sidebar/A.cpp|#include "shell/table/B.h"
shell/toolkit may not use shell/bulk|src/shell/toolkit/A.h|#include "shell/bulk/B.h"
shell/updates may not use shell/app|src/shell/updates/A.cpp|#include "shell/app/B.h"
src/shell has no group extra|src/shell/extra/A.cpp|#include "model/B.h"
src/shell has no group B.h|src/shell/app/A.cpp|#include "shell/B.h"
model may not use discovery|src/model/A.h|#include "discovery/B.h"
catalogue may not use discovery|src/catalogue/A.cpp|  #  include "discovery/B.h"
operations may not use shell|src/operations/A.cpp|#include "shell/B.h" // for a colour
cli may not use shell|src/cli/A.cpp|#include "shell/B.h"
includes are written|src/model/A.cpp|#include "A.h"
only a back end|src/platform/A.cpp|#include "platform/freedesktop/B.h"
only a back end|src/shell/app/A.cpp|#include "platform/apple/B.h"
src/extra is no folder|src/extra/A.h|int a;
Qt Widgets belongs|src/operations/A.cpp|#include <QMessageBox>
Qt Widgets belongs|src/records/A.cpp|#include <QtWidgets/QLabel>
-|src/helper/A.cpp|#include <QMenu>
-|src/records/A.cpp|#include <QPdfWriter>
<sqlite3.h> belongs to catalogue|src/operations/A.cpp|#include <sqlite3.h>
-|src/catalogue/A.cpp|#include <sqlite3.h>
no header includes|src/platform/apple/A.h|#import <Foundation/Foundation.h>
Objective-C++ belongs|src/shell/app/A.mm|int a;
only src/platform asks|src/shell/app/A.cpp|#if defined(Q_OS_MACOS)
-|src/platform/A.cpp|#ifdef __linux__
paths of the system|src/shell/app/A.cpp|f(u"https://a.b", u"/Applications/Waves");
paths of the system|src/discovery/A.cpp|p.startsWith(u"/Library"_s);
-|src/discovery/A.cpp|f(u"x"); // lies in "/Library"
-|src/shell/app/A.cpp|bundle.append(u"Contents/Library/LoginItems"_s);
-|src/operations/A.cpp|u"rm -rf ~/Library/Caches/A/*"_s
-|src/model/PluginLocations.cpp|u"/Library/Audio"
folders of the user|src/operations/A.cpp|auto home = QDir::homePath();
QCoro::waitFor never|src/uad/A.cpp|QCoro::waitFor(f());
outside the runner|tests/model/A.cpp|    QVERIFY(true);
-|tests/model/A.cpp|    // QVERIFY passes when it fails
ROWS
echo "$rows rows"
[ "$rows" -gt 20 ] && exit "$failed"
