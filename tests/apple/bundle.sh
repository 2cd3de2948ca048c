#!/usr/bin/env bash
# bundle.sh <check-bundle>
# Creates a small bundle of macOS programs and libraries and runs check-bundle on it, first intact and then with one
# fault at a time.
set -euo pipefail
check=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PATH=$work/bin:$PATH
app=$work/Orvanlite.app
agent=$app/Contents/Library/LoginItems/OrvanliteHelper.app/Contents
mkdir -p "$work/bin"
ln -s "$(command -v llvm-otool || command -v llvm-otool-14)" "$work/bin/otool"
ln -s "$(command -v ld64.lld || command -v ld64.lld-14)" "$work/bin/ld64.lld"

# make <file> <version of macOS> <install name, or none for a program> <options of the linker...>
make() {
    local file=$1 version=$2 name=$3
    shift 3
    mkdir -p "$(dirname "$file")"
    echo 'void orv(void) {}' | clang -target "arm64-apple-macos$version" -x c -c - -o "$work/object.o"
    if [[ $name == none ]]; then set -- -e _orv "$@"; else set -- -dylib -install_name "$name" "$@"; fi
    ld64.lld -arch arm64 -platform_version macos "$version" "$version" "$work/object.o" -o "$file" "$@" \
        2>"$work/log" || { cat "$work/log" >&2; exit 1; }
}
make_bundle() {
    local core=$app/Contents/Frameworks/libcore.dylib
    rm -rf "$app"
    make "$work/libsqlite3.dylib" 13.0 "${sqlite:-/usr/lib/libsqlite3.dylib}"
    make "$core" "${newest:-13.0}" @rpath/libcore.dylib
    make "$app/Contents/PlugIns/platforms/libqcocoa.dylib" 13.0 libqcocoa.dylib "$core"
    make "$app/Contents/MacOS/plugin-manager" 13.0 none "$core" "$work/libsqlite3.dylib" -rpath @executable_path/../Frameworks
    make "$app/Contents/MacOS/orvanlite-script" 13.0 none "$core" -rpath @loader_path/../Frameworks
    make "$agent/MacOS/OrvanliteHelper" 13.0 none "$core" -rpath "@loader_path/${rpath:-../../../../../Frameworks}"
    for contents in "$app/Contents" "$agent"; do
        mkdir -p "$contents/Resources"
        echo picture >"$contents/Resources/AppIcon.icns"
        printf '<key>LSMinimumSystemVersion</key>\n<string>13.0</string>\n' >"$contents/Info.plist"
    done
}

# says passed|refused [<text>]: the expected result of check-bundle and a part of its output; without a text the
# output must be empty.
says() {
    local end=refused said
    said=$("$check" "$app" 2>&1) && end=passed
    if [[ $end != "$1" || $said != *"${2-}"* || (-z ${2-} && -n $said) ]]; then
        printf 'wanted: %s\ngot: %s %s\n' "$*" "$end" "$said" >&2
        exit 1
    fi
}
make_bundle
says passed
rm "$app/Contents/Frameworks/libcore.dylib"
says refused "there is no @rpath/libcore.dylib"
rpath=../Frameworks make_bundle
says refused "OrvanliteHelper has no way to @rpath/libcore.dylib"
sqlite=/opt/homebrew/opt/sqlite/lib/libsqlite3.dylib make_bundle
says refused "an SQLite that is not the system's: /opt/homebrew"
newest=14.0 make_bundle
says passed "check-bundle: good for this machine only"
ORV_SIGN_IDENTITY=someone says refused "libcore.dylib asks for macOS 14.0, the bundle for 13.0"
make_bundle
rm "$agent/Resources/AppIcon.icns" "$app/Contents/MacOS/orvanlite-script"
says refused "MacOS/orvanlite-script is missing"
