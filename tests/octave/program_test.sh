#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# program_test.sh OCTAVE TOOLBOX PROGRAM: the program on raster files writes what a call in Octave gives, in blocks too.
set -euo pipefail
octave=$1 toolbox=$2 program=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

"$octave" --norc --no-history --no-window-system --path "$toolbox" --eval "
  rand ('twister', 1);
  I = uint16 (filter2 (ones (3), 300 * rand (150, 170)));
  f = fopen ('scene.raw', 'w');
  fwrite (f, I', 'uint16');
  fclose (f);
  f = fopen ('scene.hdr', 'w');
  fprintf (f, 'ENVI\nsamples = 170\nlines = 150\nbands = 1\ndata type = 12\ninterleave = bsq\nbyte order = 0\n');
  fclose (f);
  blocks = ' --block 40 --overlap 2';
  settings = {'area', [4 30 900], 4, 'min', blocks; 'diagonal', [3.5 20], 8, 'max', blocks;
              'inertia', [0.2 0.5], 8, 'sub', ''; 'std', [20 80], 4, 'direct', ''};
  for k = 1:rows (settings)
    [attribute, L, C, rule, options] = settings{k,:};
    command = sprintf ('\"%s\" -q scene.raw out.raw --of ENVI %s%s --connectivity %d --rule %s%s', '$program', ...
                       attribute, sprintf (' %.17g', L), C, rule, options);
    assert (system (command), 0);
    AP = attribute_profile (I, attribute, L, C, rule);
    f = fopen ('out.raw');
    planes = permute (reshape (fread (f, Inf, '*uint16'), 170, 150, []), [2 1 3]);
    fclose (f);
    assert (planes, AP);
    assert (any (AP(:,:,1)(:) != I(:)));
  end"
