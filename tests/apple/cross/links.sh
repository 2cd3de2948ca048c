#!/usr/bin/env bash
# links.sh <top of the project> <folder to build in> <file of flags> <file of flags for precompiling> <oldest macOS>
# Compiles the three programs for macOS and links them with LLVM's linker against stubs of Apple's frameworks and
# libraries, written by hand in stubs/, and of the exports of the other libraries. Undefined symbols and frameworks that
# are not linked fail. Then compares the classes and selectors that the objects use with used.txt.
set -euo pipefail
top=$1
build=$2
flags=$3
precompiling=$4
oldest=$5
here=$top/tests/apple/cross
clang=$(command -v clang++ || command -v clang++-14)
mkdir -p "$build/bin" "$build/usr/lib"
for tool in nm readobj ar ranlib otool; do
    ln -sf "$(command -v llvm-$tool || command -v llvm-$tool-14)" "$build/bin/llvm-$tool"
done
export PATH=$build/bin:$PATH
unset LIBRARY_PATH CPATH

# Only headers of the system are precompiled, so this is needed once.
if [[ ! $build/cxx.pch -nt $flags || ! $build/cxx.pch -nt $here/prefix.h ]]; then
    "$clang" "@$flags" "@$precompiling" -x objective-c++-header "$here/../include/missing.h" -o "$build/objcxx.pch" &
    "$clang" "@$flags" "@$precompiling" -x c++-header "$here/prefix.h" -o "$build/cxx.pch"
    wait $!
fi
sqlite=$build/usr/lib/libsqlite3.tbd
sh "$here/stub.sh" "$("$clang" -print-file-name=libsqlite3.so)" "$sqlite"
cmake -S "$top" -B "$build" -G Ninja -Wno-dev --log-level=WARNING \
    -DCMAKE_PROJECT_Orvanlite_INCLUDE="$here/crossing.cmake" -DORV_CROSS_FLAGS="$flags" \
    -DCMAKE_CXX_COMPILER="$clang" -DCMAKE_OBJCXX_COMPILER="$clang" -DORV_MACDEPLOYQT=none -DORV_RSVG_CONVERT=none \
    -DSQLite3_LIBRARY="$sqlite" -DSQLite3_INCLUDE_DIR=/usr/include -DORV_SQLITE_TAKES_SELECTIONS=ON \
    -DORV_BUILD_DEMO=OFF -DORV_BUILD_TESTS=OFF
ninja -C "$build" -j "$(nproc)" --quiet plugin-manager OrvanliteHelper orvanlite-script
for program in plugin-manager OrvanliteHelper orvanlite-script; do
    file=$(find "$build/Orvanlite.app" -type f -name "$program")
    llvm-otool -l "$file" | grep "minos $oldest" >/dev/null || { echo "$program is no program for macOS $oldest" >&2; exit 1; }
    echo "$program: $(llvm-otool -L "$file" | tail -n +2 | awk '{ print $1 }' | xargs)"
done

find "$build" -name '*.mm.o' -exec sh "$here/used.sh" {} + >"$build/used"
sed '/^#/d' "$here/used.txt" | cut -d ' ' -f 1,2 | LC_ALL=C sort | diff - "$build/used" ||
    { echo "used.txt differs from what the objects use: look up and add (>), or remove (<)" >&2; exit 1; }
newer=$(sed '/^#/d' "$here/used.txt" | awk -v oldest="$oldest" '$3 + 0 > oldest + 0')
[[ -z $newer ]] || { echo "newer than macOS $oldest: $newer" >&2; exit 1; }
