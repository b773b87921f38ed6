#!/bin/sh
# Lists the project's own source files, in a clone and in a copy without its history.
set -eu
cd "$(dirname "$0")/.."

sources=$(find . \( -path ./build -o -path ./.git \) -prune -o \
    -type f \( -name '*.h' -o -name '*.c' -o -name '*.cpp' \) -print)
echo "$sources" | sed 's,^\./,,' | sort
