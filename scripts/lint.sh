#!/bin/sh
# Checks the format of every source file, then looks for common slips in the scripts and in the
# shipped code.
set -eu
cd "$(dirname "$0")/.."

echo "Checking the format"
scripts/sources.sh | xargs clang-format --dry-run --Werror

echo "Checking scripts and JSON"
shellcheck --shell sh --external-sources --source-path SCRIPTDIR --severity warning \
    .ci/run packaging/*.sh scripts/*.sh scripts/hooks/*
find . \( -path ./build -o -path ./sample -o -path ./.git \) -prune -o -name '*.json' -print |
    while read -r file; do
        /usr/bin/python3 -m json.tool "$file" /dev/null || { echo "$file" >&2 && exit 1; }
    done

echo "Looking for common slips"
cmake --preset debug -B build/lint -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
# Those of Windows have no compile commands here; their compiler's warnings are errors. The host's
# take longest and come first, so that no processor waits for one of them at the end. Reserved names
# are left to the compiler, which finds them in a fraction of the time.
for folder in host languages reference src; do
    scripts/sources.sh | grep "^$folder/.*\.cpp\$" | grep -v '/win32/'
done | xargs -n 1 -P "$(nproc)" clang-tidy --quiet -p build/lint \
    --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wreserved-identifier 2>/dev/null
