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
  assert ({L, L_area, round(10 * L_std)}, {[154 288 538], [18 182 475], [1529 3670 6728]});
  for A = {'area', 'diagonal', 'inertia', 'std'}
    L = attribute_profile_thresholds (I, A{1}, 3);
    spread = std (double (reshape (attribute_profile (I, A{1}, L), [], 7)));
    assert (max (spread([3 2 1]), spread(5:7)) > 0.1 * spread(4));  % no pair of planes is flat
  end
  assert (L, [6.952 18.54 39.39], 0.01);
  assert ([map(40,10), map(60,60)], [2 2]);
  assert ([map(110,150), map(130,120)], [1 1]);"
