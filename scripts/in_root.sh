#!/bin/sh
# Runs a command in another root directory that sees this system's devices, its temporary files
# and this project, in the current directory; the mounts end with the command.
set -eu

root=$1
shift
as_root=""
[ "$(id -u)" -eq 0 ] || as_root="sudo --preserve-env"
project=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck disable=SC2016
exec $as_root unshare --mount sh -euc '
    root=$0 project=$1 directory=$2
    shift 2
    for each in /proc /dev /tmp "$project"; do
        mkdir -p "$root$each"
        mount --rbind "$each" "$root$each"
    done
    exec chroot "$root" env HOME=/root sh -c "cd \"\$0\" && exec \"\$@\"" "$directory" "$@"' \
    "$root" "$project" "$PWD" "$@"
