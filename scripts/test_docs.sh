#!/bin/sh
# Tests the documentation by the release build: every command and piece of code of its pages, every
# link between them, and the site in a browser. Some pages alone are Pages.test_docs_batch and so on.
set -eu
cd "$(dirname "$0")/.."

export BUILD=build/release
echo "Testing the documentation"
/usr/bin/python3 -B tests/pages/links_test.py
/usr/bin/python3 -B tests/pages/pages_test.py "$@"
mkdir -p build/web
CWT=$BUILD/bin/cwt SAMPLE=/nonexistent AXE=/nonexistent OUT=build/web SITE=build/docs/html \
    exec /usr/bin/python3 -B tests/web/site_test.py
