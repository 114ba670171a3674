#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# cluster_test.sh OCTAVE TOOLBOX: the bands of an image on a server of Octave's own cluster on 127.0.0.1. The server refuses
# to run as root. Ends with 77 where Octave's package parallel is missing, or its ports are in use.
set -euo pipefail
octave=$1 toolbox=$2
server=/usr/libexec/octave-pserver
[[ -x $server ]] && command -v setpriv >/dev/null || exit 77
! (exec 3<>/dev/tcp/127.0.0.1/12502) 2>/dev/null || exit 77

folder=$(mktemp -d)
# The server writes its number where it always does, and ends with its clients only if it is told to.
number=/tmp/.octave-$(hostname).pid
trap '[[ ! -s $number ]] || kill "$(cat "$number")"; rm -rf "$folder" "$number"' EXIT
cp -r "$toolbox" "$folder/toolbox"
mkdir "$folder/home"
# On the server a band that begins with 8 fails with the threshold 7, as if there was no memory for it.
cp -r "$folder/toolbox" "$folder/server"
mv "$folder/server/attribute_profile.mex" "$folder/server/whole_profile.mex"
cat >"$folder/server/attribute_profile.m" <<'STANDIN'
function AP = attribute_profile (I, A, L, varargin)
  if isequal (L, 7) && I(1) == 8
    error ('out of memory');
  end
  AP = whole_profile (I, A, L, varargin{:});
end
STANDIN
chmod -R a+rX "$folder" && chmod 777 "$folder/home"
user=()
((EUID != 0)) || user=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
HOME=$folder/home OCTAVE_PATH=$folder/server "${user[@]}" "$server" --no-auth --octave-binary="$octave" </dev/null
for ((k = 0; k < 50; ++k)); do
  (exec 3<>/dev/tcp/127.0.0.1/12502) 2>/dev/null && break
  sleep 0.1
done

"$octave" --norc --no-history --no-window-system --path "$folder/toolbox" --eval "
  pkg load parallel
  connections = pconnect ({'127.0.0.1'}, struct ('use_tls', false));
  X = uint8 (cat (3, magic (9), magic (9) - 39, mod (7 * magic (9), 81)));
  assert (reshape (X(1,1,:), 1, []), uint8 ([47 8 5]));
  for settings = {{'area', [2 9], 8}, {'std', 5, 4, 'max'}}
    alone = cellfun (@(band) attribute_profile (band, settings{1}{:}), num2cell (X, [1 2]), 'UniformOutput', false);
    assert (extended_attribute_profile (X, settings{1}{:}, 'cluster', connections), cat (3, alone{:}));
  end
  [EAP, failures] = extended_attribute_profile (X, 'area', 7, 'cluster', connections);
  assert (failures, {''; 'out of memory'; ''});
  assert (EAP(:,:,[1:3 7:9]), extended_attribute_profile (X(:,:,[1 3]), 'area', 7));
  assert (~any (any (any (EAP(:,:,4:6)))));
  message = '';
  try
    extended_attribute_profile (X, 'area', 7, 'cluster', connections);
  catch problem
    message = problem.message;
  end
  assert (message, 'band 2: out of memory');
  for call = {\"'cluster', connections, 'progress'\", \"'progress', 'cluster', connections\"}
    message = '';
    eval (['extended_attribute_profile (X, ''area'', 3, ' call{1} ')'], 'message = lasterr ();');
    assert (! isempty (strfind (message, 'a cluster tells no progress')));
    assert (size (extended_attribute_profile (X, 'area', 3)), [9 9 9]);
    assert (size (extended_attribute_profile (X, 'area', 3, 'cluster', connections)), [9 9 9]);
  end
  sclose (connections);"
