#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# package_test.sh OCTAVE TARBALL VERSION DATE: installs the Octave package where nothing else is, and uses it as its
# readers are told.
set -euo pipefail
octave=$1 tarball=$2 version=$3 date=$4
HOME=$(mktemp -d)
trap 'rm -rf "$HOME"' EXIT
export HOME
unset XDG_DATA_HOME XDG_CACHE_HOME XDG_CONFIG_HOME
cd "$HOME"

run() { "$octave" --norc --no-history --no-window-system --eval "$1" 2>&1 | tee output; }
shows() { grep -qF -- "$1" output || { printf 'FAILED: no such line: %s\n' "$1"; exit 1; } }

run "pkg install -local '$tarball'"
run "pkg load attribute_profile; help attribute_profile"
shows 'ATTRIBUTE_PROFILE  Attribute profile of a two-dimensional integer image.'
run "pkg load attribute_profile; pkg describe -verbose attribute_profile"
for file in "$(dirname "$0")"/../../toolbox/*.m; do
  name=$(basename "$file" .m)
  [[ $name == build_attribute_profile ]] || shows "$name"
done
run "news attribute_profile"
shows "User-visible changes in attribute_profile $version ($date)"
! grep -E '^#|Python|raster' output || { echo 'FAILED: the news tell of more than the package'; exit 1; }
run "pkg load attribute_profile; pkg test attribute_profile"
[[ $(awk '$1 == "PASS" { print $2 }' output) -gt 0 && $(awk '$1 == "FAIL" { print $2 }' output) == 0 ]]
