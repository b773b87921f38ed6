#!/bin/sh
# Packs the Windows build with headers, documentation and sample data.
set -eu

build/release/bin/cwt sample build/win32/sample
cmake --preset win32 -DHWT_SAMPLE="$PWD/build/win32/sample" >/dev/null
cpack --config build/win32/CPackConfig.cmake -B build/win32/package >/dev/null
ls -l build/win32/package/*.zip
