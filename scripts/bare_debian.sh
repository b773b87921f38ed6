#!/bin/sh
# Puts a bare Debian of one architecture into a root directory. What an earlier attempt has left
# there may go, and nothing else.
set -eu
cd "$(dirname "$0")/.."

. scripts/become_root.sh
root=$1 architecture=$2
if [ -e "$root" ] && [ ! -e "$root.started" ]; then
    echo "$root is not a directory of these scripts: remove it, or name another root" >&2
    exit 1
fi
# The package source that this machine is configured for.
source=$(apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
    sed -n 's/^bookworm main //p' | head -n 1)
[ -n "$source" ] || { echo "apt-get has no source of bookworm main" >&2 && exit 1; }
$as_root mkdir -p "$(dirname "$root")"
$as_root touch "$root.started"
$as_root rm -f "$root.installed"
$as_root rm -rf --one-file-system "$root"
$as_root mkdir "$root"
$as_root unshare --mount \
    debootstrap --arch="$architecture" --variant=minbase bookworm "$root" "$source"
