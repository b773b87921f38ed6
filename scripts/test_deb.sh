#!/bin/sh
# Installs the Debian packages into a bare Debian, uses each as its user would, removes them, and
# holds that no file of theirs is left. HWT_DEBIAN_ROOT is where the bare Debian is kept.
set -eu
cd "$(dirname "$0")/.."

. scripts/become_root.sh
bare=${HWT_DEBIAN_ROOT:-/var/cache/hundredweight-debian}
root=$bare.used
log=build/deb/test.log
mkdir -p build/archives
: >"$log"
# Every step adds to the log, which is shown when one fails.
step() {
    echo "$1"
    echo "== $1" >>"$log"
    shift
    "$@" >>"$log" 2>&1 || { tail -n 40 "$log" >&2; exit 1; }
}

make_bare() {
    scripts/bare_debian.sh "$bare" "$(dpkg --print-architecture)" && $as_root touch "$bare.installed"
}
[ -e "$bare.installed" ] || step "Making a bare Debian in $bare" make_bare

folder=$(mktemp -d)
clear_up() {
    rm -rf "$folder"
    $as_root rm -rf --one-file-system "$root"
}
trap clear_up EXIT
trap 'exit 1' INT TERM
clear_up
mkdir "$folder"
step "Copying it" $as_root cp -a "$bare" "$root"

as_administrator() {
    scripts/in_root.sh "$root" 0:0 env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}
# What was downloaded once is kept beside the build.
apt() {
    as_administrator apt-get -q -y -o Dir::Cache::archives="$PWD/build/archives" \
        -o APT::Keep-Downloaded-Packages=true --no-install-recommends "$@"
}
packages=$(echo ./build/deb/*.deb | sed 's/[^ ]*-dbgsym_[^ ]*//g')
names=$(for package in $packages; do dpkg-deb -f "$package" Package; done)
# The compiler is the C host's, the rest is what our packages say that they need.
install_needed() {
    apt update || return 1
    needed=$(apt install --simulate $packages gcc libc6-dev pkg-config |
        sed -n 's/^Inst \([^ ]*\) .*/\1/p' | grep -vxF "$names")
    [ -n "$needed" ] && apt install $needed
}
# Wherever packages and their scripts leave files; the downloads are apt's own.
list_files() {
    $as_root find "$root" -xdev \( -path "$root/proc" -o -path "$root/dev" -o -path "$root/tmp" \
        -o -path "$root/home" -o -path "$root$PWD" \) -prune -o -printf '/%P\n' | sort
}

step "Installing what they depend on" install_needed
list_files >build/deb/files-before.txt
step "Installing the packages" apt install $packages
for name in $names; do
    step "Looking for $name's files" as_administrator dpkg --verify "$name"
done
# What does not see the files that are there would see none that is left.
list_files | grep -qx /usr/bin/cwt

for language in c text; do
    cmake -DPAGE=docs/hosting.md -DLANGUAGE=$language -DTO="$folder/host.$language" \
        -P tests/support/extract_example.cmake
done
cp packaging/use_installed.sh packaging/use_installed.py "$folder"
$as_root chown -R 1000:1000 "$folder"
step "Using them" scripts/in_root.sh "$root" 1000:1000 timeout 120 "$folder/use_installed.sh"

step "Removing them" apt purge $names
list_files >build/deb/files-after.txt
step "Looking for what is left" diff build/deb/files-before.txt build/deb/files-after.txt
