#!/bin/sh
# Runs a Windows program in the 32-bit Wine that install_wine.sh has made.
set -eu

export WINEDEBUG="${WINEDEBUG:--all}"
exec "$(dirname "$0")/in_root.sh" "${HWT_WINE_ROOT:-/var/cache/hundredweight-wine}" wine "$@"
