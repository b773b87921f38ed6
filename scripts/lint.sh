#!/bin/sh
# Checks the format of every source file, then looks for common slips in the shipped code.
set -eu
cd "$(dirname "$0")/.."

files=$(git ls-files '*.h' '*.c' '*.cpp')
[ -n "$files" ] || { echo "no sources to check" >&2; exit 1; }

echo "Checking the format"
echo "$files" | xargs clang-format --dry-run --Werror

echo "Looking for common slips"
cmake --preset debug -B build/lint -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
# Those of Windows have no compile commands here; their compiler's warnings are errors.
echo "$files" | grep -E '^(src|reference|host)/.*\.cpp$' | grep -v '/win32/' |
    xargs -n 4 -P "$(nproc)" clang-tidy --quiet -p build/lint --extra-arg=-Wno-unknown-warning-option 2>/dev/null
