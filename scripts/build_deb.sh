#!/bin/sh
# Builds the Debian packages in a folder, build/deb unless told, and has lintian look at them.
set -eu
cd "$(dirname "$0")/.."

folder=${1:-build/deb}
package=$(dpkg-parsechangelog -l packaging/debian/changelog -S Version)
epoch=$(dpkg-parsechangelog -l packaging/debian/changelog -S Timestamp)
version=$(scripts/version.sh)
if [ "$package" != "$version" ]; then
    echo "packaging/debian/changelog is of $package, include/hundredweight/version.h of $version" >&2
    exit 1
fi

echo "Building the Debian packages in $folder/"
sources=$folder/hundredweight-$version
rm -rf "$sources" "$folder"/*.deb "$folder"/*.changes "$folder"/*.buildinfo
mkdir -p "$sources"
# Files that are installed as they are bear the time of the release.
tar -cf "$folder/sources.tar" --mtime="@$epoch" --exclude=./build --exclude=./.git \
    --exclude=./sample .
tar -xf "$folder/sources.tar" -C "$sources"
rm "$folder/sources.tar"
cp -a "$sources/packaging/debian" "$sources/debian"
log=$folder/build.log
if ! (cd "$sources" && dpkg-buildpackage -b -us -uc) >"$log" 2>&1; then
    tail -n 100 "$log" >&2
    exit 1
fi
lintian --fail-on error,warning --tag-display-limit 0 "$folder"/*.changes
(cd "$folder" && sha256sum ./*.deb)
