#!/bin/sh
# Installs 32-bit Wine in a root directory of its own, where its packages do not clash with the
# system's; silent when it is there. Prints nothing but progress.
set -eu

. "$(dirname "$0")/wine_root.sh"
root=$wine_root
[ ! -e "$root/installed" ] || exit 0

echo "Installing 32-bit Wine in $root"
as_root=""
[ "$(id -u)" -eq 0 ] || as_root="sudo"
# The package source that this machine is configured for.
source=$(apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
    sed -n 's/^bookworm main //p' | head -n 1)
log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
    $as_root rm -rf --one-file-system "$root" &&
        $as_root mkdir -p "$root" &&
        $as_root debootstrap --arch=i386 --variant=minbase bookworm "$root" "$source" &&
        "$(dirname "$0")/in_root.sh" "$root" sh -euc '
            export DEBIAN_FRONTEND=noninteractive
            apt-get -q update
            apt-get -q install -y --no-install-recommends wine wine32
            apt-get clean
            # The first start lays out the system directories. No window manager is waited for.
            export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
            wineboot --init
            wine reg add "HKCU\\Software\\Wine\\X11 Driver" /v Managed /d N /f
            wineserver --wait' &&
        $as_root touch "$root/installed"
}
if ! install >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
