#!/bin/sh
# Runs a Windows program in the 32-bit Wine that install_wine.sh has made.
set -eu

export WINEDEBUG="${WINEDEBUG:--all}"
. "$(dirname "$0")/wine_root.sh"
exec "$(dirname "$0")/in_root.sh" "$wine_root" wine "$@"
