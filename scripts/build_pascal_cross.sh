#!/bin/sh
# Builds Free Pascal's compiler for 32-bit Windows and its run-time units from the sources that Debian
# has of them, with Debian's compiler, in build/pascal; silent when they are there.
set -eu
cd "$(dirname "$0")/.."

[ ! -e build/pascal/complete ] || exit 0
echo "Building Free Pascal for 32-bit Windows"
rm -rf build/pascal
mkdir -p build/pascal/objects build/pascal/units
root=$PWD/build/pascal
version=$(fpc -iV)
cp -r "/usr/share/fpcsrc/$version/compiler" "/usr/share/fpcsrc/$version/rtl" "$root"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
build() {
    # The compiler's own messages are an include file of it.
    cd "$root/compiler" &&
        fpc -FU"$root/objects" -o"$root/msg2inc" utils/msg2inc.pp &&
        "$root/msg2inc" "$(find "/usr/lib/$(gcc -print-multiarch)/fpc/$version" \
            -name errore.msg)" msg msg &&
        fpc -di386 -Fii386 -Fui386 -Fux86 -Fix86 -Fusystems -FU"$root/objects" \
            -o"$root/ppcross386" -O1 pp.pas &&
        cd "$root/rtl/win32" &&
        set -- "$root/ppcross386" -n -Twin32 -O2 -FU"$root/units" -FE"$root/units" &&
        for each in win win/wininc inc i386 objpas objpas/sysutils objpas/classes charmaps; do
            set -- "$@" "-Fi../$each" "-Fu../$each"
        done &&
        "$@" -Us system.pp && "$@" buildrtl.pp
}
if ! (build) >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
touch build/pascal/complete
