#!/bin/sh
# Prints the version that the headers tell, 0.1.0 say.
set -eu
cd "$(dirname "$0")/.."

header=include/hundredweight/version.h
sed -n 's/^#define HWT_VERSION_[MP][A-Z]* \([0-9]*\)$/\1/p' $header |
    paste -sd . | grep -x '[0-9]\{1,\}\.[0-9]\{1,\}\.[0-9]\{1,\}' || {
    echo "$header tells no version" >&2
    exit 1
}
