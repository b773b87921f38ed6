#!/bin/sh
# Runs the tests of a preset that is built. Windows programs get a display of their own, on which
# message boxes open, and one checkout at a time has it.
set -eu
cd "$(dirname "$0")/.."

preset=$1
if [ "$preset" = win32 ] && [ -z "${HWT_DISPLAY_IS_OURS:-}" ]; then
    scripts/install_packages.sh xvfb xauth
    lock="${TMPDIR:-/tmp}/hundredweight-wine.$(id -u)"
    flock "$lock" scripts/install_wine.sh
    export HWT_DISPLAY_IS_OURS=yes
    exec flock "$lock" \
        xvfb-run --auto-servernum "$0" "$preset"
fi
if [ "$preset" = win32 ]; then
    . scripts/wine_root.sh
    # What runs yet has another display. No window manager is waited for.
    scripts/in_root.sh "$wine_root" "$(id -u):$(id -g)" wineserver --kill || true
    scripts/run_windows_program.sh reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f \
        >/dev/null
fi
echo "Running the tests ($preset)"
ctest --preset "$preset"
