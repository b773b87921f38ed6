#!/bin/sh
# Configures and builds a CMake preset; further arguments go to the configuration. HWT_TARGET names
# one target to build instead of all.
set -eu
cd "$(dirname "$0")/.."

preset=$1
shift
echo "Building ($preset)"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! cmake --preset "$preset" "$@" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
if ! cmake --build --preset "$preset" --target "${HWT_TARGET:-all}" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
