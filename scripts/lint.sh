#!/bin/sh
# Checks the format of every source file, then looks for common slips in the scripts and in the
# shipped code.
set -eu
cd "$(dirname "$0")/.."

echo "Checking the format"
sources=$(scripts/sources.sh)
[ -n "$sources" ] || { echo "there are no sources" >&2 && exit 1; }
echo "$sources" | xargs clang-format --dry-run --Werror

echo "Checking scripts and JSON"
shellcheck --shell sh --external-sources --source-path SCRIPTDIR --severity warning \
    .ci/run packaging/*.sh scripts/*.sh scripts/hooks/*
shellcheck --shell bash --severity warning host/completions/cwt.bash
documents=$(find . \( -path ./build -o -path ./sample -o -path ./.git \) -prune -o -name '*.json' -print)
for file in $documents; do
    /usr/bin/python3 -m json.tool "$file" /dev/null || { echo "$file" >&2 && exit 1; }
done

echo "Looking for common slips"
cmake --preset debug -B build/lint -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
scripts/find_slips.py build/lint
