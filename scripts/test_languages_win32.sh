#!/bin/sh
# Tests the Pascal unit and its host as programs of 32-bit Windows, under Wine.
set -eu
cd "$(dirname "$0")/.."

scripts/build_pascal_cross.sh
scripts/install_wine.sh
# Wine sees no other directory of temporary files.
export TMPDIR=/tmp
# One test run at a time has Wine.
lock=/tmp/hundredweight-wine.$(id -u)
echo "Testing Pascal on 32-bit Windows"
flock --close "$lock" /usr/bin/python3 -B tests/languages/layout_test.py build/win32/share/hundredweight \
    docs/schema/record.json build/win32/bin build/pascal
flock --close "$lock" /usr/bin/python3 -B tests/languages/hosts_test.py build/release docs/hosts build/win32/bin \
    build/pascal
