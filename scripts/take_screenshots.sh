#!/bin/sh
# Takes the pictures of the rating screen in the documentation anew, on the release build's service
# and sample data of its own.
set -eu
cd "$(dirname "$0")/.."

out=build/screenshots
rm -rf "$out"
mkdir -p "$out"
build/release/bin/cwt sample "$out/sample"
echo "Taking pictures of the rating screen"
CWT=build/release/bin/cwt SAMPLE=$out/sample AXE=/dev/null OUT=$out \
    exec /usr/bin/python3 -B tests/web/screenshots.py "${1:-docs/screen}"
