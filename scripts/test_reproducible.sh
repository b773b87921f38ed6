#!/bin/sh
# Builds the packages for Debian and for Windows twice, in folders, time zones and with permissions of
# their own, the second later than the first, and holds that they are the same bytes. What was built
# stays in build/reproducible/ until the next time.
set -eu
cd "$(dirname "$0")/.."

where=$PWD/build/reproducible
# A compiler's cache would hand out the first build's files for the second.
export CCACHE_DISABLE=1
# Writes what is built and its sums to the file that has the name of the folder.
build_in() {
    echo "Building in $where/$1, time zone $2, permissions masked by $3"
    (
        umask "$3"
        mkdir -p "$where/$1"
        tar -cf - --exclude=./build --exclude=./.git --exclude=./sample . |
            tar -xf - --no-same-permissions -C "$where/$1"
        cd "$where/$1"
        TZ=$2 make win32 deb >"$where/log" 2>&1
    ) || { tail -n 100 "$where/log" >&2; exit 1; }
    (cd "$where/$1/build" && sha256sum deb/*.deb win32/package/*.zip) >"$where/$(basename "$1").sums"
}
rm -rf "$where"
build_in first UTC 022
build_in at/another/place/second Pacific/Auckland 027
cat "$where/second.sums"
diff "$where/first.sums" "$where/second.sums" >&2 || { echo "The packages differ" >&2; exit 1; }
