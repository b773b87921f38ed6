#!/bin/sh
# Installs 32-bit Wine in a root directory of its own, where its packages do not clash with the
# system's; silent when it is there.
set -eu
cd "$(dirname "$0")/.."

. scripts/wine_root.sh
. scripts/become_root.sh
root=$wine_root
! wine_is_installed || exit 0
# What an earlier attempt has left may go, and nothing else.
if [ -e "$root" ] && [ ! -e "$root.started" ]; then
    echo "$root is not a directory of these scripts: remove it, or set HWT_WINE_ROOT" >&2
    exit 1
fi

echo "Installing 32-bit Wine in $root"
# The package source that this machine is configured for.
source=$(apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
    sed -n 's/^bookworm main //p' | head -n 1)
log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
    $as_root mkdir -p "$(dirname "$root")" &&
        $as_root touch "$root.started" &&
        $as_root rm -f "$root.installed" &&
        $as_root rm -rf --one-file-system "$root" &&
        $as_root mkdir "$root" &&
        $as_root unshare --mount \
            debootstrap --arch=i386 --variant=minbase bookworm "$root" "$source" &&
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
