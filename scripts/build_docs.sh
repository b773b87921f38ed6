#!/bin/sh
# Builds the site of the documentation, by the release build's command and record.json unless another
# build is told: build/docs/html/. Warnings are errors.
set -eu
cd "$(dirname "$0")/.."

build=${1:-build/release} out=${2:-build/docs}
echo "Building the documentation"
rm -rf "$out"
mkdir -p "$out"
{
    cat site/Doxyfile
    echo "OUTPUT_DIRECTORY = $out/doxygen"
} >"$out/Doxyfile"
doxygen "$out/Doxyfile"
/usr/bin/python3 -B site/gather.py "$build" "$out/source"
HWT_VERSION=$(scripts/version.sh)
HWT_HEADERS=$(realpath "$out/doxygen/xml")
export HWT_VERSION HWT_HEADERS
/usr/bin/python3 -B -m sphinx -q -W --keep-going -c site -d "$out/doctrees" \
    "$out/source" "$out/html"
rm -f "$out/html/.buildinfo"
/usr/bin/python3 -B site/links.py "$out/html"
echo "$out/html/index.html"
