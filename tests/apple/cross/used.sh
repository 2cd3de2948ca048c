#!/bin/sh
# used.sh <object files...>
# Prints the classes and selectors of Apple's that Objective-C++ objects use, sorted: everything sent or implemented,
# without what the compiler adds for C++ members.
set -eu
for object; do
    llvm-nm --undefined-only "$object" | sed -n 's/.*_OBJC_CLASS_\$_/class /p'
    llvm-readobj --string-dump=__objc_methname "$object" |
        sed -n 's/^ *\[ *[0-9a-f]*\] \([A-Za-z][A-Za-z0-9_:]*\)$/selector \1/p'
done | LC_ALL=C sort -u
