#!/bin/sh
# Tests the ways past one machine on hosts that are network namespaces of this one, within one more:
# nothing of this machine's network is touched, and all ends when this script does.
set -eu
cd "$(dirname "$0")/.."

wanted=${1:-*_test.py}
files=$(find tests/cluster -name "$wanted" -printf '%f\n')
[ -n "$files" ] || { echo "tests/cluster has no $wanted" >&2 && exit 2; }
PYTHONPATH=$(echo "$PWD"/build/release/lib/python3.*/dist-packages)
export PYTHONPATH CWT="$PWD/build/release/bin/cwt"
apart="--net --mount"
[ "$(id -u)" -eq 0 ] || apart="$apart --map-root-user"
# shellcheck disable=SC2086
if ! unshare $apart ip link add probe type bridge; then
    echo "The tests of a cluster need network namespaces, which may not be made here" >&2
    [ -z "${HWT_MAY_SKIP:-}" ] || exit 0
    exit 1
fi
TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
echo "Testing on several hosts"
# Side by side, since hosts are waited for more than they compute. The shell within takes leave of
# processes whose parents have died.
runs=""
for file in $files; do
    # shellcheck disable=SC2086
    unshare $apart --pid --mount-proc --fork --kill-child sh -c '"$@"; exit $?' sh \
        /usr/bin/python3 -B -W ignore::DeprecationWarning -m unittest discover -v -s tests/cluster \
        -p "$file" >"$TMPDIR/$file.log" 2>&1 &
    runs="$runs $!"
done
# They heed no other signal.
# shellcheck disable=SC2086
trap 'kill -KILL $runs 2>/dev/null; exit 2' INT TERM
failed=""
for run in $runs; do wait "$run" || failed=yes; done
cat "$TMPDIR"/*.log
[ -z "$failed" ]
