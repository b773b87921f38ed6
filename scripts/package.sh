#!/bin/sh
# Packs the Windows build with headers, documentation and sample data, and looks into the package.
set -eu
cd "$(dirname "$0")/.."

rm -rf build/win32/sample build/win32/package
build/release/bin/cwt sample build/win32/sample
cmake --preset win32 -DBUILD_TESTING=OFF -DHWT_SAMPLE="$PWD/build/win32/sample" >/dev/null
cpack --config build/win32/CPackConfig.cmake -B build/win32/package >/dev/null
cd build/win32/package
rm -rf _CPack_Packages
package=$(ls ./*.zip)
cmake -E tar xf "$package"
for file in README.md bin/hundredweight.dll bin/tolvex.dll bin/servgd.dll bin/cwt.exe \
    lib/hundredweight.lib lib/libhundredweight-platform.a include/hundredweight/exports.h \
    docs/hosting.md share/hundredweight/record.json share/hundredweight/languages/Hundredweight.bas \
    sample/SAMPLE.SET sample/shipments/01-deficit-and-discount.json; do
    [ -s "${package%.zip}/$file" ] || { echo "$file is missing in the package" >&2; exit 1; }
done
cmake -DOBJDUMP=i686-w64-mingw32-objdump -DLIBRARY="${package%.zip}/bin/hundredweight.dll" \
    -DNAMES=../../../src/frame/exported_names.txt \
    -P ../../../tests/support/exported_names.cmake
ls -l "$PWD/$package"
