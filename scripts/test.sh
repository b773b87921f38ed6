#!/bin/sh
# Runs the tests of a preset that is built. Windows programs get a display of their own, on which
# message boxes open, and one test run at a time has it.
set -eu
cd "$(dirname "$0")/.."

preset=$1
if [ "$preset" = win32 ] && [ -z "${HWT_DISPLAY_IS_OURS:-}" ]; then
    . scripts/become_root.sh
    if ! can_become_root; then
        echo "Wine has a root directory of its own: an administrator runs make test-win32" >&2
        exit 1
    fi
    # Wine sees no other directory of temporary files.
    export TMPDIR=/tmp HWT_DISPLAY_IS_OURS=yes
    lock=/tmp/hundredweight-wine.$(id -u)
    flock --nonblock "$lock" true || echo "Waiting for another run of the Windows tests"
    flock --close "$lock" scripts/install_wine.sh
    exec flock --close "$lock" xvfb-run --auto-servernum "$0" "$preset"
fi
if [ "$preset" = win32 ]; then
    . scripts/wine_root.sh
    # Programs left from an earlier run have another display, and windows are not to wait for a
    # window manager.
    scripts/in_root.sh "$wine_root" "$(id -u):$(id -g)" wineserver --kill || true
    scripts/run_windows_program.sh reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f \
        >/dev/null
fi
echo "Running the tests ($preset)"
ctest --preset "$preset"
