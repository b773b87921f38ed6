#!/bin/sh
# Tests what other languages are given, on the release build: the layout of the records, and hosts
# that rate a shipment of sample data of their own.
set -eu
cd "$(dirname "$0")/.."

build=build/release
echo "Testing the other languages"
/usr/bin/python3 -B tests/languages/layout_test.py "$build/share/hundredweight" \
    docs/schema/record.json "$build/lib"
/usr/bin/python3 -B tests/languages/hosts_test.py "$build" docs/hosts
