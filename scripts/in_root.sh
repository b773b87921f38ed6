#!/bin/sh
# Runs a command in another root directory as a user, given as uid:gid. The command sees this
# system's devices, its temporary files and this project, in the current directory; the mounts end
# with it.
set -eu

root=$1 user=$2
shift 2
as_root=""
[ "$(id -u)" -eq 0 ] || as_root="sudo --preserve-env"
project=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck disable=SC2016
exec $as_root unshare --mount sh -euc '
    root=$0 user=$1 project=$2 directory=$3
    shift 3
    for each in /proc /dev /tmp "$project"; do
        mkdir -p "$root$each"
        mount --rbind "$each" "$root$each"
    done
    home=/home/${user%:*}
    mkdir -p "$root$home"
    chown "$user" "$root$home"
    exec chroot --userspec="$user" "$root" env -u WINEPREFIX -u TMPDIR HOME="$home" \
        sh -c "cd \"\$0\" && exec \"\$@\"" "$directory" "$@"' \
    "$root" "$user" "$project" "$PWD" "$@"
