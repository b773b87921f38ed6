#!/bin/sh
# Tests the Python package of the release build, one file after another.
set -eu
cd "$(dirname "$0")/.."

tests=${1:-*_test.py}
# A run of no tests would be a success.
[ -n "$(find tests/python -name "$tests")" ] || { echo "tests/python has no $tests" >&2 && exit 2; }
PYTHONPATH=$(echo "$PWD"/build/release/lib/python3.*/dist-packages)
export PYTHONPATH CWT="$PWD/build/release/bin/cwt"
echo "Testing the Python package"
exec /usr/bin/python3 -B -m unittest discover -s tests/python -p "$tests"
