#!/bin/sh
# Tests the pages of the documentation by the release build: every command and piece of code of
# theirs, and every link between them.
set -eu
cd "$(dirname "$0")/.."

export BUILD=build/release
echo "Testing the documentation"
/usr/bin/python3 -B tests/pages/links_test.py
# Named pages are Pages.test_docs_batch and so on.
exec /usr/bin/python3 -B tests/pages/pages_test.py "$@"
