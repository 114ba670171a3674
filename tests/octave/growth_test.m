% SPDX-License-Identifier: MIT
% Whatever a call takes it gives back, also when it ends by an error, and so does the module when it is unloaded: the
% process does not grow. Nor does any call change what a later one gives.
%
% 10000 calls, or as many as GROWTH_CALLS says.

%!function kilobytes = resident ()
%!  kilobytes = str2double (regexp (fileread ('/proc/self/status'), 'VmRSS:\s*(\d+)', 'tokens'){1}{1});
%!endfunction

%!function inputs = all_inputs ()  % every class, attribute and rule, then every message
%!  image = uint8 (magic (16));
%!  classes = {'uint8', 'int8', 'uint16', 'int16', 'uint32', 'int32', 'uint64', 'int64'};
%!  attributes = {'area', 'diagonal', 'inertia', 'std'};
%!  rules = {'min', 'max', 'direct', 'sub'};
%!  for k = 0:15
%!    inputs{k+1} = {cast(image, classes{mod (k, 8) + 1}), attributes{floor (k / 4) + 1}, [0.2 5 20], ...
%!                   4 + 4 * (k > 7), rules{mod (k, 4) + 1}};
%!  endfor
%!  inputs = [inputs, {{image}, {image, 'a', 3, 4, 5}, {image, 'a', 3, [4 8]}, {'image', 'a', 3}, ...
%!            {cat(3, image, image), 'a', 3}, {image, 5, 3}, {image, 'a', []}, {double(image), 'a', 3}, ...
%!            {image, 'i', 3, 6}, {image, 'none', 3}, {image, 's', [1; 2]}, {image, 'd', 3, 4, 'none'}, ...
%!            {zeros(32766, 1, 'uint8'), 'a', 3}}];
%!endfunction

%!function found = outcome (inputs)
%!  try
%!    found = attribute_profile (inputs{:});
%!  catch failure
%!    found = failure.message;
%!  end_try_catch
%!endfunction

%!function call_in_turn (n, inputs, first, unloading)
%!  for k = mod (1:n, numel (inputs)) + 1
%!    assert (outcome (inputs{k}), first{k});
%!    if (unloading)
%!      clear attribute_profile
%!      assert (! any (strfind (fileread ('/proc/self/maps'), 'attribute_profile.mex')));
%!    endif
%!  endfor
%!endfunction

%!function check_growth (calls, unloading)
%!  inputs = all_inputs ();
%!  evalc ('first = cellfun (@outcome, inputs, "UniformOutput", false);');
%!  assert (cellfun (@ischar, first), [false(1, 16), true(1, 13)]);
%!  for round = 1:5
%!    before = resident ();
%!    evalc ('call_in_turn (calls / 5, inputs, first, unloading)');
%!    grown(round) = resident () - before;
%!  endfor
%!  printf ('%d calls: grew by %s kB, to %d kB\n', calls, mat2str (grown), resident ());
%!  % The heap takes some rounds to settle; what leaks shows in each of them. The least block of the heap has 32 bytes,
%!  % which come to 62 kB if every one of 2000 calls loses one.
%!  assert (min (grown) < 50);
%!endfunction

%!shared calls
%! calls = str2double (getenv ('GROWTH_CALLS'));
%! calls(isnan (calls)) = 10000;

%!test <*all kinds of calls in turn, nearly half of them failing>
%! check_growth (calls, false);

%!test <*the module is unloaded after each call>
%! check_growth (calls / 500, true);
