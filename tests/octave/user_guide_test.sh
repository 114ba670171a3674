#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# user_guide_test.sh OCTAVE TOOLBOX: the code of docs/user_guide.md runs, and shows what the text around it says.
set -euo pipefail
octave=$1 toolbox=$2
cd "$(dirname "$0")/../.."
TMPDIR=$(mktemp -d)
trap 'rm -rf "$TMPDIR"' EXIT
export TMPDIR

code=$TMPDIR/guide.m
# shellcheck disable=SC2016  # the backquotes are the guide's
sed -n '/^```matlab$/,/^```$/{/^```/!p}' docs/user_guide.md >"$code"
"$octave" --norc --no-history --no-window-system --path "$toolbox" --eval "
  source ('$code');
  assert (isequal (size (A), [190 170 14]) && isequal (size (DAP), [190 170 6]) && isequal (size (F), [32300 28]));
  assert ({class(DAP), class(PC)}, {'int16', 'int16'});
  assert ([map(40,10), map(60,60)], [2 2]);
  assert ([map(110,150), map(130,120)], [1 1]);"
