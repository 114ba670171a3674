#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# completion_test.sh PROGRAM LIBRARY COMPLETION: what bash completes of the program's command line, by the LIBRARY of
# bash-completion.
set -euo pipefail
program=$1 library=$2 completion=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
PATH=$(dirname "$program"):$PATH
cd "$folder"
mkdir scenes && touch scene.tif

set +eu  # the library is written for shells without
source "$library"
source "$completion"
completes() {  # LINE EXPECTED...: the last word of LINE can be these
  read -ra COMP_WORDS <<<"$1"
  [[ $1 != *' ' ]] || COMP_WORDS+=('')
  COMP_LINE=$1 COMP_POINT=${#1} COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) COMPREPLY=()
  _attribute_profile attribute-profile "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
  shift
  [[ ${COMPREPLY[*]} == "$*" ]] || { printf 'FAILED: %s gives %s, not %s\n' "$COMP_LINE" "${COMPREPLY[*]}" "$*"; exit 1; }
}
completes 'attribute-profile sc' scenes scene.tif
completes 'attribute-profile -q scene.tif profile.tif a' area
completes 'attribute-profile scene.tif profile.tif ' scenes scene.tif area diagonal inertia std
completes 'attribute-profile scene.tif profile.tif area '
completes 'attribute-profile scene.tif profile.tif d '
completes 'attribute-profile scene.tif profile.tif area 100 --rule m' min max
completes 'attribute-profile --connectivity ' 4 8
completes 'attribute-profile --parts s' scenes
completes 'attribute-profile --memory '
mapfile -t options < <(attribute-profile --help | grep -oE -- '^  (-.,)?--[a-z]+' | grep -oE -- '--.*')
((${#options[@]} > 10)) || { echo 'FAILED: no options in the help'; exit 1; }
completes 'attribute-profile --' "${options[@]}"
