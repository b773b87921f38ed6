#!/bin/sh
# Compares, byte for byte, what the tests of the three targets and the optimised Linux build made of
# the same data.
set -eu
cd "$(dirname "$0")/.."

echo "Comparing bills, records and written files of the targets"
for preset in release linux32 win32; do
    if ! diff -r build/debug/transcript "build/$preset/transcript" >"build/$preset/differences"; then
        echo "debug and $preset differ:" >&2
        head -n 40 "build/$preset/differences" | cut -c 1-200 >&2
        exit 1
    fi
done
bills=$(find build/debug/transcript -name '*.bill' | wc -l)
refusals=$(find build/debug/transcript -name '*.refusal' | wc -l)
files=$(find build/debug/transcript -type f | wc -l)
[ "$bills" -gt 0 ] && [ "$refusals" -gt 0 ] || { echo "there is nothing to compare" >&2 && exit 1; }
echo "All $files files are the same on all targets: $bills bills, $refusals refusals"
