% SPDX-License-Identifier: MIT
% Runs the %! blocks of NAME, a function on the path or a file, against the module in TOOLBOX. An error ends Octave
% with a non-zero status: for a block that fails and for a file in which none was found.
function run_octave_tests (name, toolbox)
  addpath (toolbox);
  assert (exist ('attribute_profile'), 3);  % the module, not the help text beside it
  [passed, total] = test (name, 'quiet', stdout);
  printf ('%d of %d passed\n', passed, total);
  assert (passed == total && total > 0);
endfunction
