#!/bin/sh
# Writes the sample data to a directory by a cwt, unless there is one: what a user has changed stays.
set -eu
cd "$(dirname "$0")/.."

sample=$1 cwt=$2
if [ -e "$sample" ]; then
    echo "Keeping $sample/ as it is (remove it to have it written anew)"
    exit 0
fi
echo "Writing the sample data to $sample/"
# A directory of the name is a whole one.
rm -rf build/sample
"$cwt" sample build/sample
mv build/sample "$sample"
