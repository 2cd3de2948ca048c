#!/usr/bin/env bash
# bundle.sh <top of the project>
# Creates a small bundle of macOS programs and libraries and runs check-bundle on it, first intact and then with one
# fault at a time; then notarises it with recording stand-ins for Apple's tools.
set -euo pipefail
check=$1/packaging/macos/check-bundle
notarise=$1/packaging/macos/notarise
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PATH=$work/bin:$PATH
app=$work/Orvanlite.app
agent=$app/Contents/Library/LoginItems/OrvanliteHelper.app/Contents
# Where the application starts it.
script=$app/$(sed -n 's|.*u"/\(Contents/.*/orvanlite-script\)"_s.*|\1|p' "$1/src/platform/apple/AppleServices.cpp")
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
    for plugin in platforms/libqcocoa tls/libqsecuretransportbackend iconengines/libqsvgicon; do
        make "$app/Contents/PlugIns/$plugin.dylib" 13.0 "${plugin#*/}.dylib" "$core"
    done
    make "$app/Contents/MacOS/plugin-manager" 13.0 none "$core" "$work/libsqlite3.dylib" -rpath @executable_path/../Frameworks
    make "$script" 13.0 none "$core" -rpath @loader_path/../../../../Frameworks
    make "$agent/MacOS/OrvanliteHelper" 13.0 none "$core" -rpath "@loader_path/${rpath:-../../../../../Frameworks}"
    for contents in "$app/Contents" "$agent" "${script%/MacOS/*}"; do
        mkdir -p "$contents/Resources"
        echo picture >"$contents/Resources/AppIcon.icns"
        echo '[Paths]' >"$contents/Resources/qt.conf"
        printf '<key>%s</key>\n<%s>\n' LSMinimumSystemVersion 'string>13.0</string' LSUIElement true/ >"$contents/Info.plist"
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
cp -R "$app" "$work/intact"
sed -i 's/true/false/' "${script%/MacOS/*}/Info.plist"
says refused "Contents/Helpers/Orvanlite.app would show an icon in the Dock"
for part in "$script" "$agent/Resources/"{AppIcon.icns,qt.conf} "$app/Contents/Resources/qt.conf" \
    "$app/Contents/PlugIns/"{tls/libqsecuretransportbackend,iconengines/libqsvgicon}.dylib; do
    rm -rf "$app"
    cp -R "$work/intact" "$app"
    rm "$part"
    says refused "${part#"$app"/} is missing"
done

# The application gets its ticket before the image; an image around an application without one is refused.
for tool in codesign ditto hdiutil spctl xcrun; do
    cat >"$work/bin/$tool" <<'END'
#!/bin/sh
echo "$(basename "$0") $1 $2" >>"$ORV_RECORD"
case "$1 $2" in
"notarytool submit") echo "status: Accepted" ;;
"stapler staple") touch "$3.ticket" ;;
"stapler validate") [ -e "$ORV_TICKETS/$(basename "$3").ticket" ] ;;
esac
END
    chmod +x "$work/bin/$tool"
done
export ORV_RECORD=$work/record ORV_TICKETS=$work ORV_SIGN_IDENTITY=someone ORV_NOTARY_PROFILE=some
image=$work/Orvanlite.dmg
echo image >"$image"
if said=$("$notarise" "$image" 2>&1) || [[ $said != *"has no ticket"* || -e $image.ticket ]]; then exit 1; fi
"$notarise" "$app" >"$work/log"
"$notarise" "$image" >"$work/log"
[[ -e $app.ticket && -e $image.ticket && $(grep -c 'notarytool submit' "$ORV_RECORD") -eq 2 ]]
