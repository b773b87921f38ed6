#!/bin/sh
# Holds the optimised libraries of this tree against those of another build, in the directory OLD:
# both get the same COUNT inputs of each fuzz target (100000 unless told), and every result, text
# shown and field of the record must be the same. Exit code: 1 when one is not.
set -eu
cd "$(dirname "$0")/.."

old=$(cd "${1:?the directory of the libraries to compare with}" && pwd)
count=${2:-100000}
[ "$count" -ge 100 ] || { echo "COUNT is to be 100 or more, and is $count" >&2 && exit 2; }
targets=${FUZZ_TARGETS:-engine record reference service_guide set user_files}

scripts/build.sh release
HWT_TARGET=outcomes scripts/build.sh fuzz
HWT_TARGET=fuzz_seeds scripts/build.sh fuzz
work=$PWD/build/fuzz
rm -rf "$work/seeds" "$work/outcomes"
"$work/bin/fuzz_seeds" "$work/seeds"
mkdir -p "$work/outcomes"

run() {
    # shellcheck disable=SC2086
    LD_LIBRARY_PATH=$1 ASAN_OPTIONS=detect_leaks=0 "$work/bin/outcomes_$3" "$work/seeds/$3" \
        $4 >"$work/outcomes/$3-$2" 2>/dev/null
}

found=0
for target in $targets; do
    for side in old new; do
        libraries=$old
        [ $side = old ] || libraries=$PWD/build/release/lib
        run "$libraries" $side "$target" "0 $count 100" &
    done
    wait
    lines=$(wc -l <"$work/outcomes/$target-new")
    if [ "$lines" -eq $((count / 100)) ] &&
        cmp -s "$work/outcomes/$target-old" "$work/outcomes/$target-new"; then
        printf '%-14s %9d inputs, alike\n' "$target" "$count"
    else
        found=1
        echo "$target: not alike; the first hundreds of inputs that differ:"
        diff "$work/outcomes/$target-old" "$work/outcomes/$target-new" | head -3
    fi
done
exit $found
