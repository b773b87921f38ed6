#!/bin/sh
# Tests the rating screen in a browser, on the release build's service and sample data of its own.
# What the browser shows is kept in build/web/.
set -eu
cd "$(dirname "$0")/.."

axe="axe-core@4.10.2"
out=build/web
mkdir -p "$out"
# The checker of accessibility; a fetched one is kept.
if [ ! -f build/node_modules/axe-core/axe.min.js ]; then
    echo "Fetching $axe"
    npm install --silent --no-audit --no-fund --no-save --prefix build "$axe"
fi
rm -rf "$out/sample"
build/release/bin/cwt sample "$out/sample"
echo "Testing the rating screen"
export CWT=build/release/bin/cwt SAMPLE=$out/sample AXE=build/node_modules/axe-core/axe.min.js OUT=$out
# Side by side, since a browser is waited for more than it computes.
# shellcheck disable=SC2016
printf '%s\n' screen clerk | xargs -P 2 -I '{}' sh -c '
    log=$OUT/{}.log
    /usr/bin/python3 -B tests/web/{}_test.py >"$log" 2>&1 && code=0 || code=1
    cat "$log"
    exit $code'
