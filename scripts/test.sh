#!/bin/sh
# Runs the tests of a preset that is built. Windows programs get a display of their own, on which
# message boxes open.
set -eu

preset=$1
echo "Running the tests ($preset)"
if [ "$preset" = win32 ]; then
    . scripts/wine_root.sh
    # What runs yet has no display, or that of earlier tests.
    scripts/in_root.sh "$wine_root" wineserver --kill 2>/dev/null || true
    exec xvfb-run --auto-servernum ctest --preset "$preset"
fi
exec ctest --preset "$preset"
