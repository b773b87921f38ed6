#!/bin/sh
# Installs 32-bit Wine in a root directory of its own, where its packages do not clash with the
# system's; silent when it is there.
set -eu
cd "$(dirname "$0")/.."

. scripts/wine_root.sh
. scripts/become_root.sh
root=$wine_root
! wine_is_installed || exit 0

echo "Installing 32-bit Wine in $root"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
    scripts/bare_debian.sh "$root" i386 &&
        scripts/in_root.sh "$root" 0:0 sh -euc '
            export DEBIAN_FRONTEND=noninteractive
            apt-get -q update
            apt-get -q install -y --no-install-recommends wine wine32
            apt-get clean' &&
        $as_root touch "$root.installed"
}
if ! install >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
