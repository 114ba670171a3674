#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# parallel_test.sh PROGRAM PICTURE: the code of cluster/README.md by hand and for GNU parallel runs, and gives what one run gives. Ends
# with 77 where GNU parallel is missing.
set -euo pipefail
program=$1 picture=$2
recipes=$(cd "$(dirname "$0")/../../cluster" && pwd)
command -v parallel >/dev/null || exit 77

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
export HOME=$folder PATH="${program%/*}:$PATH"
ln -s "$recipes" cluster
mkdir scenes
gdal_translate -q -srcwin 400 100 700 600 "$picture" scene.tif
for k in 1 2; do gdal_translate -q -b $k scene.tif scenes/$k.tif; done

# shellcheck disable=SC2016  # the backquotes are the page's
sed -n '/^```bash$/,/^```$/{/^```/!p}' "$recipes/README.md" | sed 's/4096/256/' >code
bash -euo pipefail code
attribute-profile -q scene.tif one.tif area 100 1000
cmp one.tif profile.tif
[[ ! -e parts ]]
pixels() { gdalinfo -checksum "$1" | grep Checksum; }
diff <(pixels one.tif | head -n 10) <(pixels profiles/1.tif && pixels profiles/2.tif)

# A side that is none is refused, not a loop without end.
for side in 0 -5 abc 1e3; do
  status=0
  timeout 10 cluster/windows scene.tif $side >windows 2>message || status=$?
  [[ $status == 2 && ! -s windows ]] || { echo "cluster/windows with SIDE $side: status $status"; exit 1; }
done
