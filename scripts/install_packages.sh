#!/bin/sh
# Installs those of the named Debian packages that are missing; silent when none is. A user who
# cannot is told what an administrator is to run.
set -eu

. "$(dirname "$0")/become_root.sh"
missing=""
for package in "$@"; do
    state=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
    [ "$state" = "install ok installed" ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

refuse() {
    echo "Packages are missing, and installing them takes an administrator:" >&2
    echo "    apt-get install --no-install-recommends$missing" >&2
    exit 1
}
can_become_root || refuse
echo "Installing$missing"
# A shared machine's package lock may be held for a while.
apt="$as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# shellcheck disable=SC2086
if ! { $apt update && $apt install -y --no-install-recommends $missing; } >"$log" 2>&1; then
    cat "$log" >&2
    [ -z "$as_root" ] || refuse
    exit 1
fi
