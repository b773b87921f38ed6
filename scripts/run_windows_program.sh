#!/bin/sh
# Runs a Windows program in the 32-bit Wine that install_wine.sh has installed, as the calling user.
set -eu

export WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="mscoree,mshtml="
. "$(dirname "$0")/wine_root.sh"
if ! wine_is_installed; then
    echo "32-bit Wine is not installed: make test-win32 installs it" >&2
    exit 1
fi
exec "$(dirname "$0")/in_root.sh" "$wine_root" "$(id -u):$(id -g)" wine "$@"
