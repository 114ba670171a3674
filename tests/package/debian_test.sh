#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# debian_test.sh BUILD FOLDER CPACK LINTIAN: makes the Debian packages of a build in FOLDER; lintian finds no error, and
# nothing to warn of, in all four.
set -euo pipefail
build=$1 folder=$2 cpack=$3 lintian=$4
rm -rf "$folder"
cd "$build"
"$cpack" -B "$folder" >"$folder.log" 2>&1 || { cat "$folder.log"; exit 1; }
cd "$folder"
packages=$(echo *.deb | sed -E 's/_[^ ]*//g')
[[ $packages == 'attribute-profile octave-attribute-profile python3-attribute-profile qel-dev' ]] ||
  { echo "FAILED: packages: $packages"; exit 1; }
"$lintian" --fail-on error,warning -- *.deb
