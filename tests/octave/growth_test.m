% SPDX-License-Identifier: MIT
% Whatever a call takes it gives back, also when it ends by an error, and so does the module when it is unloaded: the
% process does not grow. Nor does a call change what a later one gives.
%
% 10000 calls, or as many as the environment variable GROWTH_CALLS says.

%!function unload ()
%!  clear attribute_profile
%!  assert (! any (strfind (fileread ('/proc/self/maps'), 'attribute_profile.mex')));
%!endfunction

%!test <*all kinds of calls in turn, nearly half of them failing; then fewer, and the module is unloaded after each>
%! for run = {max([10000, str2double(getenv ('GROWTH_CALLS'))]), 200; [], @unload}
%!   [grown, same] = growth_of_calls (16, run{1} / 5, run{2});
%!   printf ('%d calls in rounds that grew by %s kB\n', run{1}, mat2str (grown));
%!   assert (same);
%!   % The first round warms up, later ones may settle; what leaks shows in most. 2000 blocks of the least size of the
%!   % heap, 32 bytes, come to 62 kB.
%!   assert (median (grown(3:5)) < 50);
%! endfor
