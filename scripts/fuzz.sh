#!/bin/sh
# Fuzzes in 64 and 32 bits: each target for FUZZ_SECONDS (60), or with --minute for its share of a
# minute on two cores. FUZZ_TARGETS names the targets, all unless set. Exit code: 1 on a finding.
set -eu
cd "$(dirname "$0")/.."

known=$(grep -l '^extern "C" int LLVMFuzzerTestOneInput.*{' fuzz/*.cpp |
    sed 's,.*/\(.*\)\.cpp,\1,' | paste -sd ' ')
[ -n "$known" ] || { echo "there are no fuzz targets" >&2 && exit 1; }
targets=${FUZZ_TARGETS:-$known}
seconds=${FUZZ_SECONDS:-60}
for target in $targets; do
    case " $known " in
        *" $target "*) ;;
        *) echo "no target '$target'; there are: $known" >&2; exit 2 ;;
    esac
done
if [ "${1:-}" = --minute ]; then
    # shellcheck disable=SC2086
    set -- $targets
    seconds=$((60 / $#))
fi

for preset in fuzz fuzz32; do
    HWT_TARGET=fuzz scripts/build.sh $preset
done

work=build/fuzz
rm -rf $work/seeds $work/findings $work/logs
mkdir -p $work/findings $work/logs
$work/bin/fuzz_seeds $work/seeds

# Files that an input carries stay in memory.
memory=/dev/shm
[ -d $memory ] || memory=${TMPDIR:-/tmp}
TMPDIR=$(mktemp -d "$memory/hundredweight-fuzz.XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

echo "Fuzzing each target and width for $seconds seconds"
jobs=""
for target in $targets; do
    # What an earlier run found worth keeping is where this one sets out.
    mkdir -p "$work/corpus/$target"
    jobs="$jobs $target 64 build/fuzz $target 32 build/fuzz32"
done
# Paths from the root, since a target works in a directory of its own.
# shellcheck disable=SC2016,SC2086
printf '%s %s %s\n' $jobs | xargs -P "$(nproc)" -L 1 sh -c '
    all=$PWD/build/fuzz
    seeds=$all/seeds/$2
    [ ! -d "fuzz/seeds/$2" ] || seeds="$seeds $PWD/fuzz/seeds/$2"
    "$4/bin/fuzz_$2" -max_total_time="$1" -max_len=40000 -timeout=10 -close_fd_mask=2 \
        -print_final_stats=1 -artifact_prefix="$all/findings/$2-$3-" \
        "$all/corpus/$2" $seeds >"$all/logs/$2-$3" 2>&1 || true' fuzz "$seconds"

row='%-14s %5s %9s %8s %7s %9s\n'
# shellcheck disable=SC2059
printf "$row" target width runs runs/s edges findings
# shellcheck disable=SC2086
printf '%s %s %s\n' $jobs | while read -r target width tree; do
    log=$work/logs/$target-$width
    findings=$(find $work/findings -name "$target-$width-*" | wc -l)
    # A target that ends before its time has found something, even when it left no input.
    grep -q '^Done ' "$log" || [ "$findings" -gt 0 ] || findings=1
    # shellcheck disable=SC2059
    printf "$row" "$target" "$width" \
        "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
        "$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")" \
        "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -1)" "$findings"
    [ "$findings" -eq 0 ] || echo "$target $width $tree" >>$work/logs/found
done

[ -f $work/logs/found ] || exit 0
while read -r target width tree; do
    echo
    echo "$target, $width bits: $work/logs/$target-$width says"
    grep -E 'Does not hold|differs|runtime error|ERROR: ' $work/logs/"$target-$width" | head -5 || true
    find $work/findings -name "$target-$width-*" -exec echo "  $tree/bin/fuzz_$target" {} \;
done <$work/logs/found
exit 1
