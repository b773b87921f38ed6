#!/bin/sh
# Checks the format of every source file, then looks for common slips in the shipped code.
set -eu

echo "Checking the format"
git ls-files '*.h' '*.c' '*.cpp' | xargs clang-format --dry-run --Werror

echo "Looking for common slips"
cmake --preset debug >/dev/null
git ls-files 'src/*.cpp' 'reference/*.cpp' 'host/*.cpp' | grep -v win32 |
    xargs -n 4 -P "$(nproc)" clang-tidy --quiet -p build/debug --extra-arg=-Wno-unknown-warning-option 2>/dev/null
