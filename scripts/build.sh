#!/bin/sh
# Configures and builds a CMake preset; further arguments go to the configuration.
set -eu

preset=$1
shift
echo "Building ($preset)"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! cmake --preset "$preset" "$@" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
if ! cmake --build --preset "$preset" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
