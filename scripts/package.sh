#!/bin/sh
# Packs the Windows build with headers, documentation and sample data, and looks into the package.
set -eu
cd "$(dirname "$0")/.."

rm -rf build/win32/sample build/win32/package
build/release/bin/cwt sample build/win32/sample
cmake --preset win32 -DBUILD_TESTING=OFF -DHWT_SAMPLE="$PWD/build/win32/sample" >/dev/null
name=hundredweight-$(scripts/version.sh)-win32
# The same bytes wherever, whenever and by whomever they are packed: files, and the programs within,
# bear the time of the release.
released=$(sed -n '/^ -- /{s/.*>  //p;q}' packaging/debian/changelog)
[ -n "$released" ]
SOURCE_DATE_EPOCH=$(date -d "$released" +%s) \
    cmake --install build/win32 --strip --prefix "build/win32/package/$name" >/dev/null
cd build/win32/package
find "$name" -exec touch -h -d "$released" {} +
chmod -R u=rwX,go=rX "$name"
find "$name" | LC_ALL=C sort | TZ=UTC zip -q -X -@ "$name.zip"
rm -r "$name"
unzip -q "$name.zip"
for file in README.md bin/hundredweight.dll bin/tolvex.dll bin/servgd.dll bin/cwt.exe \
    lib/hundredweight.lib lib/libhundredweight-platform.a include/hundredweight/exports.h \
    docs/hosting.md share/hundredweight/record.json share/hundredweight/languages/Hundredweight.bas \
    sample/SAMPLE.SET sample/shipments/01-deficit-and-discount.json; do
    [ -s "$name/$file" ] || { echo "$file is missing in the package" >&2; exit 1; }
done
cmake -DOBJDUMP=i686-w64-mingw32-objdump -DLIBRARY="$name/bin/hundredweight.dll" \
    -DNAMES=../../../src/frame/exported_names.txt \
    -P ../../../tests/support/exported_names.cmake
ls -l "$PWD/$name.zip"
