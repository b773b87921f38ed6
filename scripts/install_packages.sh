#!/bin/sh
# Installs those of the named Debian packages that are missing; silent when none is.
set -eu

missing=""
for package in "$@"; do
    state=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
    [ "$state" = "install ok installed" ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=""
[ "$(id -u)" -eq 0 ] || as_root="sudo"
echo "Installing$missing"
# A shared machine's package lock may be held for a while.
apt="$as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300"
log=$(mktemp)
# shellcheck disable=SC2086
if ! { $apt update && $apt install -y --no-install-recommends $missing; } >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    exit 1
fi
rm -f "$log"
